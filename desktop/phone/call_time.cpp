// When a call was, in a few words.
#include "desktop/phone/call_time.h"

#include <ctime>

namespace phone {

std::string callTime(std::int64_t secondsSince1970) {
    const std::time_t then = secondsSince1970;
    const std::time_t now = std::time(nullptr);
    std::tm call{};
    std::tm today{};
    localtime_r(&then, &call);
    localtime_r(&now, &today);
    const char* format = "%H:%M";
    if (call.tm_year != today.tm_year)
        format = "%d %b %Y";
    else if (call.tm_yday != today.tm_yday)
        format = "%d %b %H:%M";
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, format, &call));
}

}  // namespace phone

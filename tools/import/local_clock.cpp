// Moments of the machine's time zone, most of them by arithmetic.
#include "tools/import/local_clock.h"

namespace tools {
namespace {

std::int64_t ask(std::tm time) {
    time.tm_isdst = -1;
    return static_cast<std::int64_t>(std::mktime(&time));
}

constexpr int secondOfDay(const std::tm& time) { return (time.tm_hour * 60 + time.tm_min) * 60 + time.tm_sec; }

}  // namespace

std::int64_t LocalClock::secondsOf(const std::tm& time) {
    const auto [day, isNew] = midnights_.try_emplace((time.tm_year * 16 + time.tm_mon) * 32 + time.tm_mday, uneven);
    if (isNew) {
        std::tm first = time;
        first.tm_hour = first.tm_min = first.tm_sec = 0;
        std::tm last = time;
        last.tm_hour = 23;
        last.tm_min = last.tm_sec = 59;
        const std::int64_t midnight = ask(first);
        if (ask(last) - midnight == 86'399) day->second = midnight;
    }
    return day->second == uneven ? ask(time) : day->second + secondOfDay(time);
}

}  // namespace tools

// The offset from UTC is asked at both ends of a UTC day; only on the days of a change is every moment asked for
// itself.
#include "desktop/quorvel/store/local_days.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>

namespace quorvel::store {
namespace {

constexpr std::int64_t secondsADay = 86400;
constexpr std::int64_t changing = INT64_MAX;

std::int64_t floorDay(std::int64_t seconds) {
    return seconds >= 0 ? seconds / secondsADay : -((-seconds + secondsADay - 1) / secondsADay);
}

std::int64_t offsetAt(std::int64_t date) {
    const auto moment = static_cast<std::time_t>(date);
    std::tm parts{};
    return localtime_r(&moment, &parts) ? parts.tm_gmtoff : 0;
}

}  // namespace

std::string dayText(std::int64_t day) {
    const std::chrono::year_month_day parts{
        std::chrono::sys_days{std::chrono::days{std::clamp(day, firstDay, lastDay)}}};
    // Digit by digit: a page makes fifty of these, and the library's formatting is most of a row's time.
    std::string text = "0000-00-00";
    const auto write = [&](std::size_t end, unsigned number) {
        for (; number > 0; number /= 10) text[--end] = static_cast<char>('0' + number % 10);
    };
    write(4, static_cast<unsigned>(static_cast<int>(parts.year())));
    write(7, static_cast<unsigned>(parts.month()));
    write(10, static_cast<unsigned>(parts.day()));
    return text;
}

std::optional<std::int64_t> dayOfText(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto number = [&](std::size_t from, std::size_t length) {
        int value = 0;
        const char* end = text.data() + from + length;
        const auto parsed = std::from_chars(text.data() + from, end, value);
        return parsed.ec == std::errc() && parsed.ptr == end && text[from] != '-' ? value : -1;
    };
    const int year = number(0, 4), month = number(5, 2), dayOfMonth = number(8, 2);
    if (year < 0 || month < 1 || dayOfMonth < 1) return std::nullopt;
    const std::chrono::year_month_day day{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                          std::chrono::day(static_cast<unsigned>(dayOfMonth))};
    if (!day.ok()) return std::nullopt;
    return std::chrono::sys_days{day}.time_since_epoch().count();
}

LocalDays::LocalDays() { tzset(); }

std::int64_t LocalDays::dayOf(std::int64_t date) {
    date = std::clamp(date, firstDay * secondsADay, lastDay * secondsADay);
    const std::int64_t day = floorDay(date);
    auto [known, isNew] = offsets_.try_emplace(day, 0);
    if (isNew) {
        const std::int64_t morning = offsetAt(day * secondsADay);
        known->second = morning == offsetAt(day * secondsADay + secondsADay - 1) ? morning : changing;
    }
    const std::int64_t local = date + (known->second == changing ? offsetAt(date) : known->second);
    return std::clamp(floorDay(local), firstDay, lastDay);
}

}  // namespace quorvel::store

// The clock that remembers days, against the zone's own answers.
#include "tools/import/local_clock.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cstdlib>
#include <set>

#include "tests/store/time_zone.h"

namespace {

using quorvel::store::TimeZone;
using tools::LocalClock;

/// Zones that set their clocks by an hour, by half of one, at midnight, and across the date line.
constexpr const char* zones[] = {"UTC",           "Europe/Berlin",     "America/New_York", "Australia/Lord_Howe",
                                 "Asia/Kolkata",  "America/Sao_Paulo", "Asia/Tehran",      "Pacific/Apia",
                                 "Africa/Cairo",  "America/St_Johns",  "Asia/Kathmandu",   "Pacific/Chatham",
                                 "Europe/Dublin", "Africa/Casablanca", "America/Havana"};

std::tm at(int year, int month, int day, int hour, int minute, int second) {
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

/// What a clock on the wall shows then, as if it were in UTC.
std::int64_t shownAt(std::int64_t moment) {
    const std::time_t seconds = moment;
    std::tm shown{};
    localtime_r(&seconds, &shown);
    return timegm(&shown);
}

/// Every moment at which the wall shows that time: none where the clock skips it, two where it shows it twice.
std::set<std::int64_t> momentsOf(std::tm time) {
    const std::int64_t wall = timegm(&time);
    constexpr std::int64_t quarter = 900;
    constexpr std::int64_t furthest = 15 * 3600;
    std::set<std::int64_t> moments;
    for (std::int64_t offset = -furthest; offset <= furthest; offset += quarter)
        if (shownAt(wall - offset) == wall) moments.insert(wall - offset);
    return moments;
}

TEST(LocalClock, answersAMomentAtWhichTheWallShowsThatTime) {
    const bool holds = rc::check([] {
        const TimeZone zone(*rc::gen::elementOf(std::vector<const char*>(std::begin(zones), std::end(zones))));
        LocalClock clock;
        const int year = *rc::gen::inRange(1973, 2038);
        const int month = *rc::gen::inRange(1, 13);
        for (int asked = 0; asked < 40; ++asked) {
            const int day = *rc::gen::inRange(1, 29);
            std::tm time =
                at(year, month, day, *rc::gen::inRange(0, 24), *rc::gen::inRange(0, 60), *rc::gen::inRange(0, 60));
            const std::int64_t moment = clock.secondsOf(time);
            const auto possible = momentsOf(time);
            // A skipped time is the one just before or behind, by what the clock is set.
            constexpr std::int64_t furthest = 86'400;
            if (possible.empty())
                RC_ASSERT(std::abs(shownAt(moment) - timegm(&time)) <= furthest);
            else
                RC_ASSERT(possible.contains(moment));
        }
    });
    EXPECT_TRUE(holds);
}

struct Day {
    const char* zone;
    int year;
    int month;
    int day;
    std::int64_t hours;  // that the day has
};

/// Every minute of the days on which clocks are set, and of the days beside them.
TEST(LocalClock, isRightInEveryMinuteAroundTheDaysOnWhichClocksAreSet) {
    for (const Day& set : {Day{"Europe/Berlin", 2024, 3, 31, 23}, Day{"Europe/Berlin", 2024, 10, 27, 25},
                           Day{"America/New_York", 2023, 3, 12, 23}, Day{"America/New_York", 2023, 11, 5, 25},
                           Day{"America/Sao_Paulo", 2018, 11, 4, 23}, Day{"America/Sao_Paulo", 2019, 2, 16, 25},
                           Day{"Asia/Tehran", 2020, 3, 21, 23}, Day{"Africa/Cairo", 2024, 4, 26, 23}}) {
        const TimeZone zone(set.zone);
        LocalClock clock;
        std::set<std::int64_t> moments;
        for (int day = set.day - 1; day <= set.day + 1; ++day) {
            for (int minute = 0; minute < 24 * 60; ++minute) {
                const std::tm time = at(set.year, set.month, day, minute / 60, minute % 60, 17);
                const std::int64_t moment = clock.secondsOf(time);
                const auto possible = momentsOf(time);
                if (possible.empty()) continue;
                EXPECT_TRUE(possible.contains(moment)) << set.zone << ' ' << day << ' ' << minute;
                if (day == set.day) moments.insert(possible.begin(), possible.end());
            }
        }
        EXPECT_EQ(static_cast<std::int64_t>(moments.size()), set.hours * 60) << set.zone;
    }
}

TEST(LocalClock, answersTheNextDayWhereTheDateLineTookADayAway) {
    const TimeZone zone("Pacific/Apia");
    LocalClock clock;
    EXPECT_EQ(clock.secondsOf(at(2011, 12, 29, 23, 59, 59)), 1325239199);
    EXPECT_EQ(clock.secondsOf(at(2011, 12, 31, 0, 0, 0)), 1325239200);
}

TEST(LocalClock, answersTimesBefore1970) {
    const TimeZone zone("Europe/Berlin");
    LocalClock clock;
    EXPECT_EQ(clock.secondsOf(at(1969, 12, 31, 12, 0, 0)), -46'800);
    EXPECT_EQ(clock.secondsOf(at(1970, 1, 1, 0, 59, 59)), -1);
}

}  // namespace

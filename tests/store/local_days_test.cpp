// Days of the time zone, as numbers and as texts.
#include "desktop/quorvel/store/local_days.h"

#include <gtest/gtest.h>

#include "time_zone.h"

namespace quorvel::store {
namespace {

TEST(LocalDays, aDayIsWrittenAsYearMonthAndDay) {
    EXPECT_EQ(dayText(0), "1970-01-01");
    EXPECT_EQ(dayText(19782), "2024-02-29");
    EXPECT_EQ(dayOfText("2024-02-29"), 19782);
}

TEST(LocalDays, aTextThatIsNoDayIsRefused) {
    for (const char* text : {"", "2024-2-9", "2023-02-29", "2024-13-01", "2024-00-10", "2024-01-32", "20240-1-01",
                             "abcd-ef-gh", "2024-01-01 ", "-024-01-01", "2024-+1-01"}) {
        EXPECT_EQ(dayOfText(text), std::nullopt) << text;
    }
}

TEST(LocalDays, aCallJustBeforeMidnightBelongsToTheEndingDay) {
    const TimeZone zone("Europe/Berlin");
    LocalDays days;
    EXPECT_EQ(dayText(days.dayOf(1704063599)), "2023-12-31");  // 23:59:59 in Berlin
    EXPECT_EQ(dayText(days.dayOf(1704063600)), "2024-01-01");
}

TEST(LocalDays, daysOfAClockChangeKeepTheirBounds) {
    const TimeZone zone("Europe/Berlin");
    LocalDays days;
    EXPECT_EQ(dayText(days.dayOf(1711839599)), "2024-03-30");  // the last second before the day of 23 hours
    EXPECT_EQ(dayText(days.dayOf(1711839600)), "2024-03-31");
    EXPECT_EQ(dayText(days.dayOf(1711839600 + 23 * 3600 - 1)), "2024-03-31");
    EXPECT_EQ(dayText(days.dayOf(1711839600 + 23 * 3600)), "2024-04-01");
}

TEST(LocalDays, zonesFarFromGreenwichShiftTheDay) {
    {
        const TimeZone zone("Pacific/Kiritimati");
        LocalDays days;
        EXPECT_EQ(dayText(days.dayOf(1704016800)), "2024-01-01");  // 10:00 UTC the day before
    }
    const TimeZone zone("America/Los_Angeles");
    LocalDays days;
    EXPECT_EQ(dayText(days.dayOf(1704067200)), "2023-12-31");
}

}  // namespace
}  // namespace quorvel::store

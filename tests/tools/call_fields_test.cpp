// Times, numbers and kinds as people's files write them.
#include "tools/import/call_fields.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

using tools::CallKind;
using tools::parseInteger;
using tools::parseKind;

std::optional<std::int64_t> parseTime(std::string_view text) {
    tools::LocalClock clock;
    return tools::parseTime(text, clock);
}

constexpr std::int64_t noon = 1718452800;  // 15 June 2024, 12:00 UTC

TEST(Times, areSecondsOrIso8601) {
    for (const char* text : {"1718452800", "2024-06-15T12:00:00Z", "2024-06-15T12:00Z", "2024-06-15 12:00:00.750Z",
                             "2024-06-15T14:00:00+02:00", "2024-06-15T14:00:00+0200", "2024-06-15T08:30:00-03:30",
                             "2024-06-15 14:00:00 +0200", "2024-06-15T14:00:00+02"})
        EXPECT_EQ(parseTime(text), noon) << text;
}

TEST(Times, withoutAnOffsetAreOfTheMachinesZone) {
    setenv("TZ", "Europe/Berlin", 1);
    tzset();
    EXPECT_EQ(parseTime("2024-06-15T14:00:00"), noon);
    EXPECT_EQ(parseTime("2024-06-15 14:00"), noon);
    EXPECT_EQ(parseTime("2024-06-15"), noon - 14 * 3600);
    EXPECT_EQ(parseTime("2024-12-15T13:00:00"), 1734264000);
    setenv("TZ", "UTC", 1);
    tzset();
}

TEST(Times, thatAreNoneAreRefused) {
    for (const char* text :
         {"", "noon", "2024-06-31T12:00Z", "2023-02-29", "2024-13-01", "2024-06-15T24:00Z", "2024-06-15T12:60Z",
          "2024-06-15T12:00:00Q", "2024-06-15T12:00:00+2", "2024-06-15T14+02:00", "15.06.2024", "17184528001718452800"})
        EXPECT_EQ(parseTime(text), std::nullopt) << text;
    EXPECT_TRUE(parseTime("2024-02-29"));
}

TEST(Numbers, fillTheWholeText) {
    EXPECT_EQ(parseInteger("-7"), -7);
    for (const char* text : {"", "7 ", " 7", "7x", "0x7", "1e3", "9223372036854775808"})
        EXPECT_EQ(parseInteger(text), std::nullopt) << text;
}

TEST(Kinds, areFourWordsInAnyCase) {
    EXPECT_EQ(parseKind("dialled"), CallKind::Dialled);
    EXPECT_EQ(parseKind("Dialed"), CallKind::Dialled);
    EXPECT_EQ(parseKind("CANCELLED"), CallKind::Cancelled);
    EXPECT_EQ(parseKind("received"), CallKind::Received);
    EXPECT_EQ(parseKind("missed"), CallKind::Missed);
    EXPECT_EQ(parseKind("recieved"), std::nullopt);
}

}  // namespace

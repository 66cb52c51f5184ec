// Kinds, durations and dates as other programs write them.
#include "tools/import/written_fields.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/store/time_zone.h"

namespace import_tests {
namespace {

using quorvel::store::TimeZone;
using tools::CallKind;
using tools::DateOrder;

TEST(WrittenKind, isKnownByWordsOfSeveralLanguages) {
    const std::pair<const char*, CallKind> kinds[] = {{"Outgoing", CallKind::Dialled},
                                                      {"OUTGOING CALL", CallKind::Dialled},
                                                      {"out", CallKind::Dialled},
                                                      {"Dialed", CallKind::Dialled},
                                                      {"Ausgehend", CallKind::Dialled},
                                                      {"Gewählte Rufnummer", CallKind::Dialled},
                                                      {"Appel sortant", CallKind::Dialled},
                                                      {"Incoming", CallKind::Received},
                                                      {"in", CallKind::Received},
                                                      {"Answered", CallKind::Received},
                                                      {"Eingehender Anruf", CallKind::Received},
                                                      {"Appel REÇU", CallKind::Received},
                                                      {"Missed", CallKind::Missed},
                                                      {"Incoming (missed)", CallKind::Missed},
                                                      {"No answer", CallKind::Missed},
                                                      {"Verpasst", CallKind::Missed},
                                                      {"Appel manqué", CallKind::Missed},
                                                      {"Llamada perdida", CallKind::Missed},
                                                      {"Rejected", CallKind::Missed},
                                                      {"Voicemail", CallKind::Missed},
                                                      {"Cancelled call", CallKind::Cancelled},
                                                      {"Outgoing, unanswered", CallKind::Cancelled},
                                                      {"1", CallKind::Received},
                                                      {"2", CallKind::Dialled},
                                                      {"3", CallKind::Missed},
                                                      {"5", CallKind::Missed}};
    for (const auto& [text, kind] : kinds) {
        const auto found = tools::parseWrittenKind(text);
        ASSERT_TRUE(found.has_value()) << text;
        EXPECT_EQ(*found, kind) << text;
    }
    for (const char* text : {"", "lost", "call", "0", "8", "inside"})
        EXPECT_FALSE(tools::parseWrittenKind(text)) << text;
}

TEST(WrittenDuration, isSecondsAPlaceOnTheClockOrUnits) {
    const std::pair<const char*, std::int64_t> durations[] = {
        {"0", 0},        {"63", 63},         {"63.4", 63},       {"0.2", 1},          {"1:03", 63},
        {"0:01:03", 63}, {"01:00:00", 3600}, {"1m 3s", 63},      {"1 min 3 sec", 63}, {"1 hr, 2 mins", 3720},
        {"20 secs", 20}, {"PT1M3S", 63},     {"PT1H2M3S", 3723}, {" 5 ", 5},          {"2h3m", 7380}};
    for (const auto& [text, seconds] : durations) {
        const auto found = tools::parseWrittenDuration(text);
        ASSERT_TRUE(found.has_value()) << text;
        EXPECT_EQ(*found, seconds) << text;
    }
    for (const char* text : {"", "-3", "x", "1:", ":3", "1:60", "1:2:3:4", "1 year", "m", "nan", "1e3", "PT"})
        EXPECT_FALSE(tools::parseWrittenDuration(text)) << text;
}

TEST(WrittenTime, isReadInManyForms) {
    const TimeZone zone("UTC");
    tools::LocalClock clock;
    for (const char* text :
         {"2024-06-15T14:05:00Z", "2024-06-15 14:05", "1718460300", "1718460300123", "15.06.2024 14:05",
          "15.06.2024, 14:05:00 Uhr", "15/06/2024 2:05 PM", "15/6/24 14:05", "15-06-2024 14:05", "2024/06/15 14:05:00",
          "Jun 15, 2024 2:05:00 PM", "Jun 15, 2024, 2:05:00\u202FPM", "15 June 2024 14:05",
          "Sat, 15 Jun 2024 14:05:00 GMT", "15. Juni 2024 14:05", "Saturday, June 15th, 2024 at 2:05 PM",
          "2024-06-15T14:05:00.250"}) {
        const auto found = tools::parseWrittenTime(text, clock, DateOrder::DayFirst);
        ASSERT_TRUE(found.has_value()) << text;
        EXPECT_EQ(*found, 1718460300) << text;
    }
    EXPECT_EQ(tools::parseWrittenTime("06/15/2024 12:05 AM", clock, DateOrder::MonthFirst), 1718409900);
    EXPECT_EQ(tools::parseWrittenTime("15.06.2024 12:05 PM", clock, DateOrder::MonthFirst), 1718453100);
    EXPECT_EQ(tools::parseWrittenTime("15.06.2024", clock, DateOrder::DayFirst), 1718409600);
}

TEST(WrittenTime, isNoGuess) {
    tools::LocalClock clock;
    for (const char* text : {"", "noon", "06/15/2024 14:05", "30.02.2024", "15.06.2024 25:00", "15.06.2024 13:00 PM",
                             "15.06.2024 14", "15.06", "June", "15.06.2024 14:05 14:05", "99999999999999999999",
                             "15.06.2024 14:05:00 CET", "15 Jun Jul 2024"})
        EXPECT_FALSE(tools::parseWrittenTime(text, clock, DateOrder::DayFirst)) << text;
}

TEST(WrittenTime, withoutAZoneIsTheMachines) {
    const TimeZone zone("Europe/Berlin");
    tools::LocalClock clock;
    EXPECT_EQ(tools::parseWrittenTime("15.06.2024 14:05", clock, DateOrder::DayFirst), 1718460300 - 7200);
    EXPECT_EQ(tools::parseWrittenTime("15.01.2024 14:05", clock, DateOrder::DayFirst), 1705327500 - 3600);
}

TEST(WrittenFields, readAnyTextWithoutHarm) {
    EXPECT_TRUE(rc::check([](const std::string& text) {
        tools::LocalClock clock;
        const auto duration = tools::parseWrittenDuration(text);
        RC_ASSERT(!duration || *duration >= 0);
        tools::parseWrittenKind(text);
        tools::parseWrittenTime(text, clock, DateOrder::MonthFirst);
    }));
}

}  // namespace
}  // namespace import_tests

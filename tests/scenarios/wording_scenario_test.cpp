// What lists say that they count, and what the sheets ask, on every screen and however calls are grouped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr std::int64_t noon = 1718452800;  // Saturday, 15 June 2024 in UTC, the zone of the Phone here
constexpr std::int64_t day = 86400;

/// Two calls of one number in a row and one of another, on each of two days.
std::vector<NewCall> twoDays() {
    std::vector<NewCall> calls;
    for (const std::int64_t start : {noon - day, noon})
        for (int i = 0; i < 3; ++i) {
            NewCall call;
            call.address = i < 2 ? "+493012345601" : "+493012345602";
            call.date = start + i * 60;
            call.duration = 30;
            calls.push_back(call);
        }
    return calls;
}

class Wording : public testing::Test {
  protected:
    Wording() { handset_.fill(twoDays()); }
    scenarios::Outcome run(const std::string& settings, const std::string& script) {
        EXPECT_EQ(handset_.run(settings).status, 0);
        auto shown = handset_.run(script);
        EXPECT_EQ(shown.status, 0) << shown.errors;
        return shown;
    }

  private:
    Handset handset_;
};

constexpr const char* recentsDayAndHistory =
    "show\ntap row 0\nshow\ntap detail 1\ntap \"Call History\"\nshow\ntap back\ntap back\ntap back\nshow\n";

TEST_F(Wording, ofDaysAndOfADaysCalls) {
    const auto shown = run("set isGroupByDate on\n", recentsDayAndHistory);
    EXPECT_THAT(shown.linesOf("header"),
                ElementsAre("header \"Showing 2 days\"", "header \"Saturday, June 15, 2024 · 3 shown\"",
                            "header \"Showing 4 calls\"", "header \"Showing 2 days\""));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"2 days, 0:03:00\"", "footer \"3 calls, 0:01:30\"",
                                                     "footer \"4 calls, 0:02:00\"", "footer \"2 days, 0:03:00\""));
}

TEST_F(Wording, ofEntriesThatFoldTheCallsOfAContact) {
    const auto shown =
        run("set isGroupContacts_Call on\n", "show\ntap segment 2\nshow\ntap detail 1\ntap \"Call History\"\nshow\n");
    EXPECT_THAT(shown.linesOf("header"),
                ElementsAre("header \"Showing 4 entries\"", "header \"Showing 4 entries of received calls\"",
                            "header \"Showing 4 calls\""));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"4 entries, 0:03:00\"", "footer \"4 entries, 0:03:00\"",
                                                     "footer \"4 calls, 0:02:00\""));
}

TEST_F(Wording, ofADaysEntries) {
    const auto shown = run("set isGroupByDate on\nset isGroupContacts_Call on\n", recentsDayAndHistory);
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"2 days, 0:03:00\"", HasSubstr("\"2 entries, "),
                                                     "footer \"4 calls, 0:02:00\"", "footer \"2 days, 0:03:00\""));
}

TEST_F(Wording, saysTheDayBelowWhereNothingStandsAbove) {
    const auto shown = run("set isGroupByDate on\nset isShowHeader_Call off\n", "tap row 1\nshow\n");
    EXPECT_THAT(shown.linesOf("header"), ElementsAre());
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"Friday, June 14, 2024 · 3 calls, 0:01:30\""));
}

TEST_F(Wording, inAnotherLanguage) {
    const auto shown =
        run("set isGroupByDate on\nset language de\n", "show\ntap row 0\nshow\ntap right\ntap left\nshow\n");
    const std::string ofTheDay = "header \"Samstag, 15. Juni 2024 · 3 angezeigt\"";
    EXPECT_THAT(shown.linesOf("header"), ElementsAre("header \"2 Tage werden angezeigt\"", ofTheDay, ofTheDay));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("\"Alle Anrufe löschen (Samstag, 15. Juni 2024)?\"")));
}

TEST_F(Wording, ofTheQuestionsAmongDays) {
    const auto shown = run("set isGroupByDate on\n",
                           "tap right\ntap left\nshow\ntap \"Cancel\"\ntap right\ntap row 0\n"
                           "tap right\ntap left\nshow\n");
    EXPECT_THAT(shown.linesOf("sheet"),
                ElementsAre(HasSubstr("sheet \"Delete all calls?\""),
                            HasSubstr("sheet \"Delete all calls for Saturday, June 15, 2024?\"")));
}

TEST_F(Wording, ofTheQuestionUnderASearch) {
    const auto shown = run("", "search \"5602\"\nshow\ntap tag 2\ntap tag 1\nshow\n");
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(AllOf(HasSubstr("sheet \"Delete all found calls?\""),
                                                          HasSubstr("destructive \"Delete All Found Calls\""))));
}

}  // namespace

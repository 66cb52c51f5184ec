// From Recents, or a day, to a card and the history behind it: one call, all of a kind and the last one are deleted,
// and the lists are right on return, on the screen and in the log.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using scenarios::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::int64_t noon = 1718452800;  // 15 June 2024 in UTC, the zone of the Phone here
constexpr std::int64_t day = 86400;

NewCall call(const char* address, std::int64_t date, int duration, int flags = 0) {
    NewCall made;
    made.address = address;
    made.date = date;
    made.duration = duration;
    made.flags = flags;
    return made;
}

/// One number in two forms on three days, and one call of somebody else on the day in the middle.
std::vector<NewCall> threeDays() {
    constexpr int outgoing = quorvel::store::flag::outgoing;
    return {call("+493012345601", noon - 2 * day, 60, outgoing),
            call("+493012345601", noon - day, 20, outgoing),
            call("030 12345601", noon - day + 60, 30),
            call("+493099", noon - day + 120, 30),
            call("+493012345601", noon, 0),
            call("+493012345601", noon + 60, 40)};
}

/// How Recents groups, and what it then shows after each deletion.
struct Mode {
    const char* name;
    const char* byDate;
    const char* byContact;
    std::vector<std::string> rows;
    std::vector<std::string> footers;
};

class History : public testing::TestWithParam<Mode> {
  protected:
    void SetUp() override {
        handset_.fill(threeDays());
        const std::string settings = std::string("set region DE\nset isGroupByDate ") + GetParam().byDate +
                                     "\nset isGroupContacts_Call " + GetParam().byContact + '\n';
        ASSERT_EQ(handset_.run(settings).status, 0);
    }
    bool isByDate() const { return std::string(GetParam().byDate) == "on"; }
    /// From Recents to the history of the newest call; through its day where days are shown.
    std::string toHistory() const {
        return std::string(isByDate() ? "tap row 0\n" : "") + "tap detail 0\ntap \"Call History\"\n";
    }
    std::string toRecents() const { return std::string("tap back\ntap back\n") + (isByDate() ? "tap back\n" : ""); }
    /// What a Phone started anew shows: the log, not what was in memory.
    Outcome anew() const { return handset_.run("show\n"); }

    Handset handset_;
};

TEST_P(History, isOpenedFromRecentsAndReturnsThereAfterEachKindOfDeletion) {
    const auto shown = handset_.run(
        toHistory() + "show\nswipe 1\nshow\n" + toRecents() + "show\n" +                               // one
        toHistory() + "tap segment 1\ntap right\ntap left\nshow\ntap \"Delete All Dialed Calls\"\n" +  // all of a kind
        "tap right\nshow\n" + toRecents() + "show\n" +                                                 //
        toHistory() + "swipe 1\nswipe 0\nshow\n");                                                     // the last
    EXPECT_EQ(shown.status, 0) << shown.errors;
    std::vector<std::string> screens = shown.linesOf("screen");
    EXPECT_THAT(screens, ElementsAre("screen QVLogViewController", "screen QVLogViewController",
                                     "screen PHRecentsViewController", "screen QVLogViewController",
                                     "screen QVLogViewController", "screen PHRecentsViewController",
                                     "screen PHRecentsViewController"));
    const auto& rows = GetParam().rows;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 5", "rows 4", rows[0], "rows 2", "rows 0", rows[1], rows[2]));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("\"Delete all dialed calls for 030 12345601?\"")));
    EXPECT_EQ(shown.linesOf("row 0 ").back().find("030 12345601"), std::string::npos);

    const auto footers = shown.linesOf("footer");
    EXPECT_THAT(footers, testing::IsSupersetOf(GetParam().footers));
    EXPECT_EQ(footers.back(), GetParam().footers.back());
    EXPECT_EQ(anew().linesOf("rows"), std::vector{rows[2]});
    EXPECT_EQ(anew().linesOf("footer"), std::vector{GetParam().footers.back()});
}

INSTANTIATE_TEST_SUITE_P(
    Of, History,
    testing::Values(Mode{"calls", "off", "off", {"rows 5", "rows 3", "rows 1"}, {"footer \"1 call, 0:00:30\""}},
                    Mode{"runs", "off", "on", {"rows 4", "rows 3", "rows 1"}, {"footer \"1 entry, 0:00:30\""}},
                    Mode{"days", "on", "off", {"rows 3", "rows 2", "rows 1"}, {"footer \"1 day, 0:00:30\""}},
                    Mode{"daysOfRuns", "on", "on", {"rows 3", "rows 2", "rows 1"}, {"footer \"1 day, 0:00:30\""}}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ADay, leadsToAContactAndItsHistoryAndBackToRecents) {
    const Handset handset;
    handset.fill(threeDays());
    ASSERT_EQ(handset.run("set region DE\nset isGroupByDate on\n").status, 0);
    const auto shown = handset.run(
        "show\ntap row 1\nshow\ntap detail 1\ntap \"Call History\"\nshow\ntap back\ntap back\nshow\n"
        "tap back\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("stack"),
                ElementsAre("stack PHRecentsViewController", "stack PHRecentsViewController QVDateLogViewController",
                            "stack PHRecentsViewController QVDateLogViewController "
                            "ABUnknownPersonViewController_Modern QVLogViewController",
                            "stack PHRecentsViewController QVDateLogViewController", "stack PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 3", "rows 3", "rows 5", "rows 3", "rows 3"));
}

TEST(ADay, showsWhatAHistoryAboveItHasLeft) {
    const Handset handset;
    handset.fill(threeDays());
    ASSERT_EQ(handset.run("set region DE\nset isGroupByDate on\n").status, 0);
    const auto shown =
        handset.run("tap row 0\ntap detail 0\ntap \"Call History\"\nswipe 1\ntap back\ntap back\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 1"));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"1 call, 0:00:40\""));
}

/// Eight days with a call each, all with numbers of their own but for the newest two. The newest call is a dialled one.
std::vector<NewCall> eightDays() {
    std::vector<NewCall> calls;
    for (int i = 7; i >= 0; --i) {
        calls.push_back(call("", noon - i * day, 10, i == 0 ? quorvel::store::flag::outgoing : 0));
        calls.back().address = "+4930123456" + std::to_string(10 + std::max(i, 1));
    }
    return calls;
}

/// What Recents shows of the days, five to a page: after the deletion, on return, and paged to its end.
struct Days {
    std::vector<std::string> rows;
    std::vector<std::string> footers;
};
Days daysAfter(const std::string& deletion) {
    const Handset handset;
    handset.fill(eightDays());
    EXPECT_EQ(handset.run("set region DE\nset isGroupByDate on\nset minRec_Call 5\n").status, 0);
    const auto shown = handset.run(deletion + "show\nleave\nreturn\nshow\nscroll end\nscroll end\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"), testing::Each("screen PHRecentsViewController"));
    return {shown.linesOf("rows"), shown.linesOf("footer")};
}

TEST(ADay, thatAHistoryEmptiesCallByCallIsTakenOffTheNumberOfDaysOnce) {
    const auto shown = daysAfter("tap row 0\ntap detail 0\ntap \"Call History\"\nswipe 0\ntap back\ntap back\n");
    EXPECT_THAT(shown.rows, ElementsAre("rows 6", "rows 6", "rows 7"));
    EXPECT_THAT(shown.footers, testing::Each("footer \"7 days, 0:01:10\""));
}

TEST(ADay, thatAHistoryEmptiesOfAKindIsTakenOffTheNumberOfDaysOnce) {
    const auto shown = daysAfter(
        "tap row 0\ntap detail 0\ntap \"Call History\"\ntap segment 1\ntap right\ntap left\n"
        "tap \"Delete All Dialed Calls\"\ntap right\ntap back\ntap back\n");
    EXPECT_THAT(shown.rows, ElementsAre("rows 6", "rows 6", "rows 7"));
    EXPECT_THAT(shown.footers, testing::Each("footer \"7 days, 0:01:10\""));
}

TEST(ADay, thatASwipeOnItsScreenEmptiesIsTakenOffTheNumberOfDaysOnce) {
    const auto shown = daysAfter("tap row 0\nswipe 0\nswipe 4\n");
    EXPECT_THAT(shown.rows, ElementsAre("rows 6", "rows 6", "rows 6"));
    EXPECT_THAT(shown.footers, testing::Each("footer \"6 days, 0:01:00\""));
}

TEST(ADay, losesAllCallsOfAKindByOneSwipeAndShowsTheOthers) {
    const Handset handset;
    handset.fill(threeDays());
    ASSERT_EQ(handset.run("set region DE\nset isGroupByDate on\n").status, 0);
    const auto shown =
        handset.run("tap row 1\ntap segment 2\nshow\nswipe 0\nshow\ntap segment 0\nshow\nswipe 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen QVDateLogViewController", "screen QVDateLogViewController",
                            "screen QVDateLogViewController", "screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 2", "rows 0", "rows 1", "rows 2"));
    EXPECT_THAT(shown.linesOf("footer"),
                ElementsAre("footer \"2 calls, 0:01:00\"", "footer \"1 call, 0:00:20\"", "footer \"2 days, 0:01:40\""));
}

TEST(ACard, losesTheCallThatTheHistoryAboveItDeleted) {
    const Handset handset;
    handset.fill(threeDays());
    ASSERT_EQ(handset.run("set region DE\n").status, 0);
    const auto shown = handset.run("tap detail 0\nshow\ntap \"Call History\"\nswipe 0\ntap back\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("added"),
                ElementsAre("added \"Saturday, June 15, 2024\" \"12:01\" \"0:40\" \"12:00\" \"Call History\"",
                            "added \"Saturday, June 15, 2024\" \"12:00\" \"Call History\""));
}

TEST(ADay, isLeftForRecentsOnceItsLastCallIsDeletedInAHistory) {
    const Handset handset;
    handset.fill(threeDays());
    ASSERT_EQ(handset.run("set region DE\nset isGroupByDate on\n").status, 0);
    const auto shown = handset.run(
        "tap row 0\ntap detail 0\ntap \"Call History\"\nswipe 0\nswipe 0\ntap back\ntap back\nshow\nleave\nreturn\n"
        "show\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen PHRecentsViewController", "screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 2", "rows 2"));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"2 days, 0:02:20\"", "footer \"2 days, 0:02:20\""));
}

}  // namespace

// The story of the Recents screen, from opening it to deleting from it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Calls with Anna, one a minute, the newest last: received ones of 60 seconds, each third one missed.
std::vector<NewCall> callsWithAnna(int count) {
    std::vector<NewCall> calls;
    for (int i = 0; i < count; ++i) {
        NewCall call;
        call.address = "+493012345601";
        call.name = "Anna Berg";
        call.label = "mobile";
        call.contactId = 1;
        call.date = 1600000000 + 60 * i;
        call.duration = i % 3 == 0 ? 0 : 60;
        calls.push_back(call);
    }
    return calls;
}

TEST(Recents, showsThePluginsScreenWithTheFirstPage) {
    const Handset handset;
    handset.fill(callsWithAnna(120));
    const auto shown = handset.run("show\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("screen"), ElementsAre("screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("segments"), ElementsAre("segments 4 selected 0"));
    EXPECT_THAT(shown.linesOf("right"), ElementsAre("right trash"));
    EXPECT_THAT(shown.linesOf("offset"), ElementsAre("offset 44"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 51"));
    EXPECT_THAT(shown.linesOf("header"), ElementsAre("header \"Showing 50 calls\""));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"120 calls, 1:20:00\""));
    EXPECT_THAT(shown.linesOf("row 0"), ElementsAre(HasSubstr("\"Anna Berg\" \"mobile\"")));
    EXPECT_THAT(shown.linesOf("hud"), IsEmpty());
}

TEST(Recents, anEmptyLogShowsNoRowsAndNoTitles) {
    const auto shown = Handset().run("show\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 0"));
    EXPECT_THAT(shown.linesOf("header"), IsEmpty());
    EXPECT_THAT(shown.linesOf("footer"), IsEmpty());
}

TEST(Recents, withoutThePluginIsTheTelephonesOwn) {
    const Handset handset;
    handset.fill(callsWithAnna(5));
    const auto shown = handset.run("show\n", "--no-plugin");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("segments"), ElementsAre("segments 2 selected 0"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 5"));
    EXPECT_THAT(shown.linesOf("search"), IsEmpty());
}

TEST(Recents, withReplaceRecentsOffIsTheTelephonesOwn) {
    const Handset handset;
    handset.fill(callsWithAnna(5));
    EXPECT_EQ(handset.run("set isReplaceRecentsOn off\n").status, 0);
    const auto shown = handset.run("show\n");
    EXPECT_THAT(shown.linesOf("segments"), ElementsAre("segments 2 selected 0"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 5"));
}

TEST(Recents, loadsTheNextPageWhenTheLoadMoreRowComesIntoView) {
    const Handset handset;
    handset.fill(callsWithAnna(120));
    const auto shown = handset.run("scroll end\nshow\nscroll end\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 101", "rows 120"));
}

TEST(Recents, switchesToTheMissedCalls) {
    const Handset handset;
    handset.fill(callsWithAnna(9));
    const auto shown = handset.run("tap segment 3\nshow\n");
    EXPECT_THAT(shown.linesOf("segments"), ElementsAre("segments 4 selected 3"));
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 3"));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"3 calls\""));
}

TEST(Recents, followsASettingThatAnotherProcessAnnounces) {
    const Handset handset;
    handset.fill(callsWithAnna(9));
    const auto shown = handset.run("set isGroupByDate on\nnotify QuorvelReloadSettingsReplaceRecents\nwait\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("segments"), IsEmpty());
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 1"));
    EXPECT_THAT(shown.linesOf("search"), ElementsAre(HasSubstr("search hidden")));
    EXPECT_THAT(shown.linesOf("footer"), ElementsAre("footer \"1 day, 0:06:00\""));
}

TEST(Recents, deletesTheSwipedCall) {
    const Handset handset;
    handset.fill(callsWithAnna(9));
    const auto shown = handset.run("swipe 0\nshow\n");
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 8"));
    EXPECT_THAT(handset.run("show\n").linesOf("rows"), ElementsAre("rows 8"));
}

TEST(Recents, confirmsBeforeDeletingEverything) {
    const Handset handset;
    handset.fill(callsWithAnna(9));
    const auto kept = handset.run("tap right\ntap left\nshow\ntap \"Cancel\"\nshow\n");
    EXPECT_EQ(kept.status, 0) << kept.errors;
    EXPECT_EQ(kept.linesOf("sheet").size(), 1U);
    EXPECT_THAT(kept.linesOf("rows"), ElementsAre("rows 9", "rows 9"));
}

TEST(Scripts, aFailedCommandNamesItsLineAndEndsTheScript) {
    const auto failed = Handset().run("show\ntap row 7\nshow\n");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, "line 2: there is no row 7; the table has 0\n");
    EXPECT_EQ(failed.linesOf("screen").size(), 1U);
}

TEST(Scripts, anUnusableCommandLineIsToldFromAFailedCommand) {
    EXPECT_EQ(Handset().run("show\n", "--scale zero").status, 2);
}

TEST(Traces, showTheOrderInWhichTheFirstPageIsLoaded) {
    const Handset handset;
    handset.fill(callsWithAnna(3));
    const auto traced =
        handset.run("trace PHRecentsViewController\npost com.velmarin.QuorvelNewRecordAddedNotification\n");
    EXPECT_EQ(traced.status, 0) << traced.errors;
    const auto position = [&](const char* line) { return traced.output.find(line); };
    EXPECT_LT(position("-[PHRecentsViewController clearCallLists]"),
              position("-[PHRecentsViewController handleReloadDataAction]"));
    EXPECT_LT(position("-[PHRecentsViewController handleReloadDataAction]"),
              position("-[PHRecentsViewController showHUD:] \"Refreshing"));
    EXPECT_NE(position("-[PHRecentsViewController loadCallRecsFromDBInBackGround]"), std::string::npos);
}

}  // namespace

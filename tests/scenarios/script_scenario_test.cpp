// Every command of scripts, on the real Phone: what each does, and what is said of each that cannot be carried out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/case_names.h"
#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using scenarios::Outcome;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// 120 calls, the newest first in the list: each third one missed, those in even rows of numbers that nobody knows.
std::vector<NewCall> calls() {
    std::vector<NewCall> all;
    for (int i = 119; i >= 0; --i) {
        NewCall call;
        if (i % 2 != 0) {
            call.address = "+493012345601";
            call.name = "Anna Berg";
            call.label = "mobile";
        } else {
            call.address = "+4930555" + std::to_string(10000 + i);
        }
        call.date = 1600000000 - 3600 * i;
        call.duration = i % 3 == 0 ? 0 : 60;
        all.push_back(call);
    }
    return all;
}

class Commands : public testing::Test {
  protected:
    Commands() { handset_.fill(calls()); }
    Outcome run(const std::string& script) const {
        const auto outcome = handset_.run(script);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_THAT(outcome.errors, IsEmpty());
        return outcome;
    }

    Handset handset_;
};

TEST_F(Commands, tapRowAndTapBackOpenACardAndLeaveIt) {
    const auto shown = run("tap row 1\nshow\ntap back\nshow\n");
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre(HasSubstr("PersonViewController"), "screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("back"), ElementsAre("back shown", "back hidden"));
}

TEST_F(Commands, tapDetailOpensTheDetails) {
    const auto shown = run("tap detail 1\nshow\n");
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre(StartsWith("stack PHRecentsViewController ")));
}

TEST_F(Commands, tapSegmentChoosesAFilterAndTapRightAndLeftEdit) {
    const auto shown = run("tap segment 3\nshow\ntap right\nshow\ntap left\nshow\n");
    EXPECT_THAT(shown.linesOf("segments"), Contains("segments 4 selected 3"));
    EXPECT_THAT(shown.linesOf("header"), Contains("header \"Showing 40 missed calls\""));
    EXPECT_THAT(shown.linesOf("right"), ElementsAre("right trash", "right stop", "right stop"));
    EXPECT_THAT(shown.linesOf("left"), ElementsAre("left -", "left delete_all_icon", "left delete_all_icon"));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("destructive")));
}

TEST_F(Commands, tapTextPressesTheButtonOfThatTitle) {
    const auto shown = run("tap right\ntap left\ntap \"Cancel\"\nshow\n");
    EXPECT_THAT(shown.linesOf("sheet"), IsEmpty());
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 51"));
}

TEST_F(Commands, searchTapScopeTapTagAndCancelWorkASearch) {
    const auto shown =
        run("search \"Anna\"\nshow\ntap scope 3\nshow\ntap tag 2\nshow\ntap tag 1\nshow\ntap \"Cancel\"\n"
            "search \"\"\nshow\ncancel\nshow\n");
    EXPECT_THAT(shown.linesOf("search"),
                ElementsAre("search shown text \"Anna\" scope 0", "search shown text \"Anna\" scope 3",
                            "search shown text \"Anna\" scope 3", "search shown text \"Anna\" scope 3",
                            "search shown text \"\" scope 3", "search shown text \"\" scope 3"));
    EXPECT_THAT(shown.linesOf("tag 1"),
                ElementsAre("tag 1 hidden", "tag 1 hidden", "tag 1 shown", "tag 1 shown", testing::_, testing::_));
    EXPECT_THAT(shown.linesOf("sheet"), ElementsAre(HasSubstr("destructive")));
}

TEST_F(Commands, swipeOpenAndCloseLeaveTheCallAndSwipeDeletesIt) {
    const auto shown = run("swipe 0 open\nshow\nswipe 0 close\nshow\nswipe 0\nshow\n");
    EXPECT_THAT(shown.linesOf("right"), ElementsAre("right stop", "right trash", "right trash"));
    const auto footers = shown.linesOf("footer");
    ASSERT_EQ(footers.size(), 3U);
    EXPECT_THAT(footers[1], HasSubstr("120 calls"));
    EXPECT_EQ(shown.linesOf("row 0").front().find("Anna Berg") != std::string::npos,
              shown.linesOf("row 0").back().find("Anna Berg") == std::string::npos)
        << "the next call moved up";
}

TEST_F(Commands, aSwipeOnTheRowThatLoadsMoreDeletesTheCallThatComesThere) {
    const auto shown = run("swipe 50\nshow\nsearch \"55510050\"\nshow\nsearch \"55510048\"\nshow\n");
    EXPECT_THAT(shown.linesOf("footer").front(), HasSubstr("119 calls"));
    const auto rows = shown.linesOf("rows");
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1], "rows 0");
    EXPECT_EQ(rows[2], "rows 1");
}

TEST_F(Commands, scrollComesToRestWhereItIsToldAndAtTheEnd) {
    const auto shown = run("scroll 300\nshow\nscroll -500\nshow\nscroll end\nscroll end\nscroll end\nshow\n");
    EXPECT_THAT(shown.linesOf("offset"), ElementsAre("offset 300", "offset 0", StartsWith("offset 5")));
    EXPECT_EQ(shown.linesOf("row 119").size(), 1U);
}

TEST_F(Commands, leaveAndReturnGoToAnotherTabAndBack) {
    const auto shown = run("leave\nshow\nreturn\nshow\n");
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre(testing::Not(HasSubstr("Recents")), "screen PHRecentsViewController"));
}

TEST_F(Commands, theBackgroundGoesBackToTheList) {
    const auto shown = run("tap row 1\nbackground\nforeground\nshow\n");
    EXPECT_THAT(shown.linesOf("stack"), ElementsAre("stack PHRecentsViewController"));
}

TEST_F(Commands, setTellsNobodyUntilNotifyDoes) {
    const auto shown = run("set minRec_Call 20\nshow\nnotify QuorvelAlertSettingsChanged\nshow\n");
    EXPECT_THAT(shown.linesOf("rows"), ElementsAre("rows 51", "rows 21"));
}

TEST_F(Commands, postReachesThisProcessAndTraceSaysWhatItCauses) {
    const auto shown =
        run("trace PHRecentsViewController\npost com.velmarin.QuorvelNewRecordAddedNotification\n"
            "trace off\ntap segment 1\n");
    EXPECT_THAT(shown.output, HasSubstr("-[PHRecentsViewController viewAppearedAction]"));
    EXPECT_THAT(shown.output, testing::Not(HasSubstr("segmentAction:")));
}

TEST_F(Commands, nowDoesNotWaitAndWaitDoes) {
    const auto shown = run("now tap segment 1\nnow show\nwait\nshow\n");
    EXPECT_THAT(shown.linesOf("hud"), ElementsAre(StartsWith("hud \"")));
    EXPECT_THAT(shown.linesOf("segments"), ElementsAre("segments 4 selected 1", "segments 4 selected 1"));
}

TEST_F(Commands, pictureWritesWhatTheScreenShows) {
    const auto file = handset_.file("screen.png");
    run("picture \"" + file.string() + "\"\n");
    EXPECT_GT(std::filesystem::file_size(file), 10000U);
}

TEST_F(Commands, typeAndKeyEditTheFieldOfTheSearch) {
    const auto shown =
        run("search \"Ann\"\ntype \"x\"\nshow\nkey backspace\nkey home\ntype \"J\"\nshow\nkey escape\nshow\n");
    EXPECT_THAT(shown.linesOf("search"), ElementsAre(HasSubstr("\"Annx\""), HasSubstr("\"JAnn\""), HasSubstr("\"\"")));
}

TEST_F(Commands, eraseEmptiesTheFieldThatWasTapped) {
    const auto shown =
        run("tap row 0\ntap \"Create New Contact\"\ntap \"First Name\"\ntype \"Zoe\"\nshow\nerase\nshow\n");
    EXPECT_THAT(shown.linesOf("row 0"), ElementsAre(StartsWith("row 0 \"Zoe\""), StartsWith("row 0 \"First Name\"")));
}

TEST_F(Commands, commentsAndEmptyLinesDoNothing) {
    const auto shown = run("# a comment\n\n   \nshow # and what it does\n");
    EXPECT_EQ(shown.linesOf("screen").size(), 1U);
}

struct Mistake {
    const char* line;
    const char* said;
};

class Mistakes : public Commands, public testing::WithParamInterface<Mistake> {};

TEST_P(Mistakes, nameTheLineAndWhatIsWrongAndEndTheScript) {
    const auto failed = handset_.run("wait\n" + std::string(GetParam().line) + "\nshow\n");
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.errors, StartsWith(std::string("line 2: ") + GetParam().said));
    EXPECT_THAT(failed.output, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, Mistakes,
    testing::Values(
        Mistake{"wat", "unknown command \"wat\"; there are now, background,"},
        Mistake{"now", "now wants a command after it"}, Mistake{"now now show", "now stands once"},
        Mistake{"tap", "usage: tap row N"}, Mistake{"tap row", "tap row wants a number"},
        Mistake{"tap nonsense", "cannot tap \"nonsense\"; a title stands in quotes"},
        Mistake{"tap row x", "\"x\" is not a whole number"},
        Mistake{"tap detail 999", "there is no row 999; the table has 51"},
        Mistake{"tap segment 9", "there is no segment 9; the control has 4"}, Mistake{"tap scope 1", "no search is on"},
        Mistake{"tap tag 1", "there is no visible button with tag 1"}, Mistake{"tap left", "there is no left button"},
        Mistake{"tap back", "there is no back button"},
        Mistake{"tap \"Nothing\"", "nothing on the screen says \"Nothing\""},
        Mistake{"swipe 1 sideways", "swipe N takes open or close, not \"sideways\""},
        Mistake{"search \"open", "a quote is not closed"}, Mistake{"cancel", "no search is on"},
        Mistake{"scroll far", "\"far\" is neither a number of points nor end"}, Mistake{"leave now", "usage: leave"},
        Mistake{"set colour red", "There is no setting colour; there are isReplaceRecentsOn,"},
        Mistake{"set minRec_Call many", "minRec_Call takes a whole number"}, Mistake{"notify", "usage: notify NAME"},
        Mistake{"post", "usage: post NAME"}, Mistake{"trace Nobody", "there is no class \"Nobody\" to trace"},
        Mistake{"picture /nonexistent/x.png", "The picture /nonexistent/x.png cannot be written"},
        Mistake{"type x", "nothing has the keyboard; tap a field first"}, Mistake{"erase", "nothing has the keyboard"},
        Mistake{"key f13", "there is no key \"f13\""}),
    [](const auto& each) { return tests::caseName(each.param.line); });

}  // namespace

// The host's own Recents screen: without the plug-in, and with one that leaves the list to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using scenarios::Outcome;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<NewCall> twoCalls() {
    std::vector<NewCall> calls(2);
    calls[0].address = "+442079460000";
    calls[0].date = 1718452800;
    calls[0].duration = 30;
    calls[1].address = "+493012345601";
    calls[1].date = 1718452900;
    return calls;
}

/// "WithoutThePlugin", or "WithReplacementOff".
class Host : public testing::TestWithParam<const char*> {
  protected:
    Host() {
        handset_.fill(twoCalls());
        EXPECT_EQ(handset_.run("set isReplaceRecentsOn off\n").status, 0);
        // Contacts make the companion load its lists at the start.
        std::filesystem::create_directories(handset_.file("contacts"));
    }
    Outcome run(const std::string& script) const {
        auto shown = handset_.run(script, GetParam() == std::string("WithoutThePlugin") ? "--no-plugin" : "");
        EXPECT_EQ(shown.status, 0) << shown.errors;
        return shown;
    }
    Handset handset_;
};

TEST_P(Host, keepsItsEditButton) {
    const auto shown =
        run("show\nnotify QuorvelRestoreDatabaseNotification\nwait\nshow\nleave\nreturn\nshow\n"
            "post com.velmarin.QuorvelNewRecordAddedNotification\nwait\nshow\n");
    EXPECT_THAT(shown.linesOf("right"), ElementsAre("right edit", "right edit", "right edit", "right edit"));
}

TEST_P(Host, keepsItsEditButtonWhenContactsHaveChanged) {
    const auto made =
        run("tap detail 1\ntap \"Create New Contact\"\ntap \"Done\"\ntap back\nshow\nleave\nreturn\nshow\n");
    EXPECT_THAT(made.linesOf("right"), Each("right edit"));
    const auto again = run("show\n");
    EXPECT_THAT(again.linesOf("right"), ElementsAre("right edit"));
}

TEST_P(Host, opensACardByTheDetailButtonAndCallsByATap) {
    const auto shown = run("tap detail 0\nshow\ntap back\ntap row 1\nshow\n");
    EXPECT_THAT(shown.linesOf("screen"),
                ElementsAre("screen ABUnknownPersonViewController_Modern", "screen PHRecentsViewController"));
    EXPECT_THAT(shown.linesOf("card"), ElementsAre("card \"+49 30 12345601\" \"Berlin\""));
    EXPECT_THAT(shown.linesOf("url"), ElementsAre("url tel://+442079460000"));
}

TEST_P(Host, opensTheCardOfAContact) {
    run("tap detail 1\ntap \"Create New Contact\"\ntap \"Done\"\n");
    const auto shown = run("tap detail 1\nshow\n");
    EXPECT_THAT(shown.linesOf("screen"), ElementsAre("screen ABPersonViewController_Modern"));
    EXPECT_THAT(shown.linesOf("url"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, Host, testing::Values("WithoutThePlugin", "WithReplacementOff"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace

// The progress indicator: its look in order, what blocks and unblocks the window, the forms that drop arguments.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop/substrate/trace.h"
#include "tests/messages/stand_ins.h"

namespace {

using standins::events;
using testing::ElementsAre;
using testing::HasSubstr;

class ProgressIndicator : public testing::Test {
  protected:
    void SetUp() override {
        standins::prepare();
        screen_ = standins::makeRecentsScreen();
        // The view loads as the host's own: its set-up is another test's matter.
        standins::companion().replaceRecentsOn = false;
        screen_->view();
        standins::companion().replaceRecentsOn = true;
        ASSERT_FALSE(substrate::trace::begin(
            {"MBProgressHUD"},
            [this](const std::string& line) {
                if (line.find("[MBProgressHUD ") != std::string::npos) lines_.push_back(line);
            },
            substrate::trace::Ownership::leftOut));
    }
    void TearDown() override { substrate::trace::end(); }
    /// The traced messages that set something, in order.
    std::vector<std::string> settings() const {
        std::vector<std::string> found;
        for (const auto& line : lines_) {
            const auto start = line.find(' ') + 1;
            const auto name = line.substr(start, line.find(']') - start);
            const bool ofInterest = name.starts_with("set") || name.starts_with("show");
            if (ofInterest && !name.starts_with("setNeeds")) found.push_back(name);
        }
        return found;
    }
    std::string lineOf(const std::string& selector) const {
        for (const auto& line : lines_)
            if (line.find(' ' + selector + ']') != std::string::npos) return line;
        return {};
    }

    objc::AutoreleasePool pool_;
    objc::Strong<PHRecentsViewController> screen_;
    std::vector<std::string> lines_;
};

void showFull(PHRecentsViewController screen, SEL selector) {
    objc::send<"showHUD:detailText:delegate:mode:selector:withObject:">(screen, text<"label">(), text<"detail">(),
                                                                        screen, 0, selector, objc::Object{});
}

TEST_F(ProgressIndicator, isDressedInOrderAndThenRunsTheSelector) {
    showFull(screen_, objc::selector<"loadCallRecsFromDBInBackGround">());
    EXPECT_THAT(
        settings(),
        ElementsAre("showHUDAddedTo:animated:", "setColor:", "setLabelColor:", "setDetailsLabelColor:", "setLabelText:",
                    "setDetailsLabelText:", "setDelegate:", "setMode:", "setUserInteractionEnabled:", "setOpacity:",
                    "setActivityIndicatorTintColor:", "showWhileExecuting:onTarget:withObject:animated:"));
    EXPECT_THAT(lineOf("setLabelText:"), HasSubstr("\"label\""));
    EXPECT_THAT(lineOf("setDetailsLabelText:"), HasSubstr("\"detail\""));
    EXPECT_THAT(lineOf("setOpacity:"), HasSubstr("0.75"));
    EXPECT_THAT(events(), testing::Contains("runs loadCallRecsFromDBInBackGround"));
}

TEST_F(ProgressIndicator, blocksTheWindowUntilItIsHidden) {
    showFull(screen_, nullptr);
    EXPECT_FALSE(standins::windowTakesTouches());
    objc::send<"hideHUD">(screen_.get());
    EXPECT_TRUE(standins::windowTakesTouches());
}

TEST_F(ProgressIndicator, runsNothingWithoutASelector) {
    showFull(screen_, nullptr);
    EXPECT_EQ(lineOf("showWhileExecuting:onTarget:withObject:animated:"), "");
}

TEST_F(ProgressIndicator, showsNoDetailTextInTheShorterFormsOnPurpose) {
    objc::send<"showHUD:detailText:">(screen_.get(), text<"label">(), text<"detail">());
    EXPECT_THAT(lineOf("setLabelText:"), HasSubstr("\"label\""));
    EXPECT_THAT(lineOf("setDetailsLabelText:"), HasSubstr("nil"));
}

TEST_F(ProgressIndicator, dropsDelegateAndModeInTheFourArgumentFormOnPurpose) {
    objc::send<"showHUD:detailText:delegate:mode:">(screen_.get(), text<"label">(), text<"detail">(), screen_.get(), 3);
    EXPECT_THAT(lineOf("setDelegate:"), HasSubstr("nil"));
    EXPECT_THAT(lineOf("setMode:"), HasSubstr(" 0"));
}

TEST_F(ProgressIndicator, saysLoadingWhenItIsToldNothing) {
    objc::send<"showHUD">(screen_.get());
    EXPECT_THAT(lineOf("setLabelText:"), HasSubstr("\"LOADING\""));
}

TEST_F(ProgressIndicator, shownTwiceLeavesTheFirstAndHidesTheSecondAlone) {
    objc::send<"showHUD:">(screen_.get(), text<"first">());
    objc::send<"showHUD:">(screen_.get(), text<"second">());
    EXPECT_EQ(screen_->view().subviews().count(), 2U);
    events().clear();
    objc::send<"hideHUD">(screen_.get());
    EXPECT_THAT(events(), ElementsAre("hide second"));
}

TEST_F(ProgressIndicator, changesItsText) {
    objc::send<"showHUD:">(screen_.get(), text<"first">());
    lines_.clear();
    objc::send<"updateHUD:">(screen_.get(), text<"second">());
    EXPECT_THAT(lineOf("setLabelText:"), HasSubstr("\"second\""));
}

TEST_F(ProgressIndicator, hiddenWithADelayReportsItsEndToTheScreen) {
    objc::send<"showHUD:">(screen_.get(), text<"label">());
    objc::send<"hideHUD:afterDelay:">(screen_.get(), true, 2.0);
    EXPECT_THAT(events(), testing::Contains("hide label after 2"));
    EXPECT_THAT(lineOf("setDelegate:"), HasSubstr("nil"));
    EXPECT_THAT(lines_, testing::Contains("-[MBProgressHUD setDelegate:] <PHRecentsViewController>"));
    EXPECT_TRUE(standins::windowTakesTouches());
}

TEST_F(ProgressIndicator, hiddenWithoutADelayIsHiddenAtOnce) {
    objc::send<"showHUD:">(screen_.get(), text<"label">());
    objc::send<"hideHUD:">(screen_.get(), true);
    EXPECT_THAT(events(), testing::Contains("hide label after 0"));
}

TEST_F(ProgressIndicator, thatHasEndedWithADelegateLeavesTheScreenAndIsForgotten) {
    showFull(screen_, nullptr);
    auto shown = screen_->view().subviews().objectAtIndex<UIView>(0);
    objc::send<"hudWasHidden:">(screen_.get(), shown);
    EXPECT_EQ(screen_->view().subviews().count(), 0U);
    events().clear();
    objc::send<"hideHUD">(screen_.get());
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(ProgressIndicator, thatHasEndedWithoutADelegateIsHidden) {
    objc::send<"showHUD:">(screen_.get(), text<"label">());
    auto shown = screen_->view().subviews().objectAtIndex<UIView>(0);
    events().clear();
    objc::send<"hudWasHidden:">(screen_.get(), shown);
    EXPECT_THAT(events(), ElementsAre("hide label"));
}

TEST_F(ProgressIndicator, unblocksTheWindowEvenWhereNoneIsShown) {
    showFull(screen_, nullptr);
    auto shown = screen_->view().subviews().objectAtIndex<UIView>(0);
    objc::send<"hudWasHidden:">(screen_.get(), shown);
    UIApplication::sharedApplication().keyWindow().setUserInteractionEnabled(false);
    objc::send<"hideHUD">(screen_.get());
    EXPECT_TRUE(standins::windowTakesTouches());
}

TEST_F(ProgressIndicator, goesWithALightStatusBar) {
    EXPECT_EQ((objc::send<"preferredStatusBarStyle", long>(screen_.get())), 1);
}

}  // namespace

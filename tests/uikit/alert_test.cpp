// Alerts: their buttons, whom they tell, and how they end.
#include "desktop/uikit/alert_view.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class AlertDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestAlertDelegate"};
    static void define(objc::ClassDefinition<AlertDelegate>& definition) {
        definition.method<"alertView:clickedButtonAtIndex:", &AlertDelegate::clicked>()
            .method<"alertView:willDismissWithButtonIndex:", &AlertDelegate::willDismiss>()
            .method<"alertView:didDismissWithButtonIndex:", &AlertDelegate::didDismiss>();
    }
    void clicked(objc::Object, long index) { heard.push_back("clicked " + std::to_string(index)); }
    void willDismiss(objc::Object, long index) { heard.push_back("will dismiss " + std::to_string(index)); }
    void didDismiss(objc::Object, long index) { heard.push_back("did dismiss " + std::to_string(index)); }
    objc::Object object() const { return objc::Object{self}; }

    Names heard;
};

class AlertTest : public ToolkitTest {
  protected:
    AlertTest() {
        objc::registerClasses<AlertDelegate>();
        window().makeKeyAndVisible();
        delegate_ = objc::Ref<AlertDelegate>::make();
        alert_ = objc::Ref<AlertView>::make<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:">(
            nsString("Delete?"), nsString("It is gone then."), delegate_->object(), nsString("Cancel"),
            nsString("Delete"));
        alert_->show();
    }
    static Button* buttonIn(View* view, std::string_view title) {
        for (const auto& each : view->subviews()) {
            auto* button = objc::peerIf<Button>(each->object());
            if (button && utf8(button->currentTitle()) == title) return button;
            if (Button* found = buttonIn(each, title)) return found;
        }
        return nullptr;
    }
    void press(std::string_view title) {
        advance(1);
        window().layoutIfNeeded();
        Button* button = buttonIn(frontSheet(), title);
        ASSERT_NE(button, nullptr);
        tap(button->pointToWindow(button->bounds().centre()));
    }

    Names heard() { return std::exchange(delegate_->heard, {}); }

    objc::Ref<AlertDelegate> delegate_;
    objc::Ref<AlertView> alert_;
};

TEST_F(AlertTest, standsInFrontWithItsTitleItsMessageAndItsButtons) {
    ASSERT_NE(frontSheet(), nullptr);
    const Sheet::Content& content = frontSheet()->content();
    EXPECT_EQ(content.title, "Delete?");
    EXPECT_EQ(content.message, "It is gone then.");
    ASSERT_EQ(content.choices.size(), 2u);
    EXPECT_EQ(content.choices[0].role, Sheet::Role::Cancel);
    EXPECT_EQ(content.choices[1].title, "Delete");
}

TEST_F(AlertTest, tellsOfATouchThenThatItLeavesThenThatItHasLeft) {
    press("Delete");
    EXPECT_EQ(heard(), (Names{"clicked 1", "will dismiss 1"}));
    EXPECT_EQ(frontSheet(), nullptr);
    advance(1);
    EXPECT_EQ(heard(), Names{"did dismiss 1"});
    alert_->dismissWithClickedButtonIndexAnimated(0, false);
    EXPECT_EQ(heard(), Names{}) << "it has left already";
}

TEST_F(AlertTest, tellsOfItsCancelButtonAsOfAnyOther) {
    press("Cancel");
    EXPECT_EQ(heard(), (Names{"clicked 0", "will dismiss 0"}));
}

TEST_F(AlertTest, thatIsDismissedByMessageTellsThatItLeavesAndOfNoTouch) {
    alert_->dismissWithClickedButtonIndexAnimated(1, true);
    EXPECT_EQ(heard(), Names{"will dismiss 1"});
    advance(1);
    EXPECT_EQ(heard(), Names{"did dismiss 1"});
}

TEST_F(AlertTest, thatLeavesAtOnceTellsInTheSameOrder) {
    alert_->dismissWithClickedButtonIndexAnimated(0, false);
    EXPECT_EQ(heard(), (Names{"will dismiss 0", "did dismiss 0"}));
}

TEST_F(AlertTest, aButtonAddedLaterHasTheNextIndexWhenItIsShownAgain) {
    alert_->dismissWithClickedButtonIndexAnimated(0, false);
    EXPECT_EQ(alert_->addButtonWithTitle(nsString("Archive")), 2);
    alert_->show();
    heard();
    press("Archive");
    EXPECT_EQ(heard(), (Names{"clicked 2", "will dismiss 2"}));
}

TEST_F(AlertTest, anotherAlertStandsInFrontOfItAndIsAnsweredFirst) {
    const auto second =
        objc::Ref<AlertView>::make<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:">(
            nsString("Really?"), objc::Object{}, delegate_->object(), nsString("No"), objc::Object{});
    second->show();
    EXPECT_EQ(frontSheet()->content().title, "Really?");
    press("No");
    advance(1);
    EXPECT_EQ(heard(), (Names{"clicked 0", "will dismiss 0", "did dismiss 0"}));
    EXPECT_EQ(frontSheet()->content().title, "Delete?");
}

TEST_F(AlertTest, keepsTouchesFromWhatIsBelow) {
    objc::registerClasses<Recorder>();
    const auto recorder = objc::Ref<Recorder>::make();
    const auto below = objc::Ref<Control>::make<"initWithFrame:">(Rect{{0, 0}, {50, 50}});
    below->addTargetActionForControlEvents(recorder->object(), objc::selector<"pressed">(), touchUpInside);
    window().insertSubviewAtIndex(below, 0);
    tap({20, 20});
    EXPECT_TRUE(recorder->heard.empty());
    EXPECT_NE(frontSheet(), nullptr);
}

}  // namespace
}  // namespace uikit::test

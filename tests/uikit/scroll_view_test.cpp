// Scroll views: the finger, what follows when it leaves, both ends, and what the delegate hears.
#include "desktop/uikit/scroll_view.h"

#include <cmath>

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Heard = std::vector<std::string>;

class ScrollDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestScrollDelegate"};
    static void define(objc::ClassDefinition<ScrollDelegate>& definition) {
        definition.method<"scrollViewWillBeginDragging:", &ScrollDelegate::willDrag>()
            .method<"scrollViewDidEndDragging:willDecelerate:", &ScrollDelegate::didDrag>()
            .method<"scrollViewDidEndDecelerating:", &ScrollDelegate::didRest>();
    }
    void willDrag(objc::Object) { heard.emplace_back("will begin dragging"); }
    void didDrag(objc::Object, bool decelerates) { heard.emplace_back(decelerates ? "thrown" : "let go"); }
    void didRest(objc::Object) { heard.emplace_back("at rest"); }
    objc::Object object() const { return objc::Object{self}; }

    Heard heard;
};

class ScrollViewTest : public ToolkitTest {
  protected:
    ScrollViewTest() {
        objc::registerClasses<ScrollDelegate>();
        scroll_ = add<ScrollView>({{0, 0}, {320, 400}});
        scroll_->setContentSize({320, 1000});
        delegate_ = objc::Ref<ScrollDelegate>::make();
        scroll_->setDelegate(delegate_->object());
    }

    void drag(double from, double to, double rest) {
        touch(TouchPhase::Began, {100, from});
        for (int step = 1; step <= 4; ++step) {
            advance(0.02);
            touch(TouchPhase::Moved, {100, from + (to - from) * step / 4});
        }
        advance(rest);
        touch(TouchPhase::Ended, {100, to});
    }
    void settle() {
        for (int frame = 0; frame < 1200 && scroll_->isDecelerating(); ++frame) advance(1.0 / 60);
    }
    double offset() const { return scroll_->contentOffset().y; }

    objc::Ref<ScrollView> scroll_;
    objc::Ref<ScrollDelegate> delegate_;
};

TEST_F(ScrollViewTest, theContentFollowsTheFingerAndStaysWhereItRested) {
    drag(300, 200, 1);
    EXPECT_EQ(offset(), 100);
    EXPECT_FALSE(scroll_->isDecelerating());
    EXPECT_EQ(delegate_->heard, (Heard{"will begin dragging", "let go"}));
}

TEST_F(ScrollViewTest, aThrowGoesOnAndComesToRestInsideTheContent) {
    drag(300, 200, 0);
    EXPECT_TRUE(scroll_->isDecelerating());
    settle();
    EXPECT_FALSE(scroll_->isDecelerating());
    EXPECT_GT(offset(), 100);
    EXPECT_LE(offset(), 600);
    EXPECT_EQ(delegate_->heard, (Heard{"will begin dragging", "thrown", "at rest"}));
}

TEST_F(ScrollViewTest, beyondTheTopAFingersWayCountsHalfAndTheContentComesBack) {
    drag(100, 200, 1);
    EXPECT_EQ(offset(), -50);
    settle();
    EXPECT_EQ(offset(), 0);
}

TEST_F(ScrollViewTest, beyondTheEndTheContentComesBackToItsEnd) {
    scroll_->setContentOffset({0, 600});
    drag(300, 200, 1);
    EXPECT_EQ(offset(), 650);
    settle();
    EXPECT_EQ(offset(), 600);
}

TEST_F(ScrollViewTest, aTouchStopsAMovingList) {
    drag(300, 200, 0);
    advance(0.05);
    touch(TouchPhase::Began, {100, 100});
    EXPECT_FALSE(scroll_->isDecelerating());
    const double stopped = offset();
    advance(1);
    EXPECT_EQ(offset(), stopped);
    touch(TouchPhase::Ended, {100, 100});
}

TEST_F(ScrollViewTest, aTouchThatStopsTheContentSaysThatItIsAtRest) {
    drag(300, 200, 0);
    advance(0.05);
    tap({100, 100});
    EXPECT_EQ(delegate_->heard, (Heard{"will begin dragging", "thrown", "at rest"}));
}

TEST_F(ScrollViewTest, aTapOnContentThatComesBackDoesNotLeaveItBeyondItsEnd) {
    drag(100, 200, 1);
    advance(0.02);
    EXPECT_LT(offset(), -10);
    tap({100, 100});
    settle();
    EXPECT_EQ(offset(), 0);
}

TEST_F(ScrollViewTest, contentThatBecomesShorterEndsAMovementToWhatHasGone) {
    scroll_->setContentOffsetAnimated({0, 600}, true);
    advance(0.1);
    scroll_->setContentSize({320, 700});
    advance(1);
    EXPECT_EQ(offset(), 300);
}

TEST_F(ScrollViewTest, theWheelNeverLeavesTheContent) {
    EXPECT_TRUE(scroll_->scrollWheel({0, 5000}));
    EXPECT_EQ(offset(), 600);
    EXPECT_TRUE(scroll_->scrollWheel({0, -5000}));
    EXPECT_EQ(offset(), 0);
    EXPECT_FALSE(std::signbit(offset())) << "nobody is told of an offset of -0";
}

TEST_F(ScrollViewTest, aDisabledOneMovesByMessageAlone) {
    scroll_->setScrollEnabled(false);
    drag(300, 200, 1);
    EXPECT_EQ(offset(), 0);
    EXPECT_FALSE(scroll_->scrollWheel({0, 50}));
    scroll_->setContentOffset({0, 120});
    EXPECT_EQ(offset(), 120);
}

TEST_F(ScrollViewTest, theInsetIsRoomThatScrollingReachesAtBothEnds) {
    scroll_->setContentInset({20, 0, 30, 0});
    EXPECT_EQ(offset(), -20);
    EXPECT_EQ(scroll_->greatestOffset(), 630);
    EXPECT_TRUE(scroll_->scrollWheel({0, 5000}));
    EXPECT_EQ(offset(), 630);
    EXPECT_TRUE(scroll_->scrollWheel({0, -5000}));
    EXPECT_EQ(offset(), -20);
}

TEST_F(ScrollViewTest, theRubberBandBeginsBeyondTheInset) {
    scroll_->setContentInset({20, 0, 30, 0});
    drag(100, 200, 1);
    EXPECT_EQ(offset(), -70);
    settle();
    EXPECT_EQ(offset(), -20);
}

TEST_F(ScrollViewTest, anInsetThatGoesBringsTheContentBackIntoItsRange) {
    scroll_->setContentInset({20, 0, 30, 0});
    scroll_->setContentOffset({0, 630});
    scroll_->setContentInset({});
    EXPECT_EQ(offset(), 600);
    EXPECT_EQ(scroll_->contentInset().bottom, 0);
}

}  // namespace
}  // namespace uikit::test

// Which view a point hits, and where touches go.
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

/// Writes down its touches; takes them, or takes them over, as it is told.
class Feeler : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"TestFeeler"};
    static void define(objc::ClassDefinition<Feeler>&) {}

    bool touch(const Touch& touch) override {
        constexpr const char* names[] = {"began", "moved", "ended", "cancelled"};
        heard.push_back(names[static_cast<int>(touch.phase)]);
        return takes;
    }
    bool interceptsTouch(const Touch& touch) override { return takesOverOnMove && touch.phase == TouchPhase::Moved; }
    bool scrollWheel(Point delta) override {
        scrolled = delta;
        return takes;
    }

    Names heard;
    Point scrolled;
    bool takes = true;
    bool takesOverOnMove = false;
};

class TouchTest : public ToolkitTest {
  protected:
    objc::Ref<Feeler> outer_ = add<Feeler>({{0, 100}, {200, 200}});
    objc::Ref<Feeler> inner_ = objc::Ref<Feeler>::make<"initWithFrame:">(Rect{{50, 50}, {100, 100}});
    void SetUp() override { outer_->addSubview(inner_); }
};

TEST_F(TouchTest, theFrontMostViewUnderThePointIsHit) {
    EXPECT_EQ(window().hitTest({60, 160}), inner_.get());
    EXPECT_EQ(window().hitTest({10, 110}), outer_.get());
    EXPECT_EQ(window().hitTest({300, 10}), &window());
    EXPECT_EQ(window().hitTest({400, 10}), nullptr);
    const auto cover = add<Feeler>({{0, 100}, {200, 200}});
    EXPECT_EQ(window().hitTest({60, 160}), cover.get());
}

TEST_F(TouchTest, theRightAndLowerEdgesDoNotBelongToAView) {
    EXPECT_EQ(window().hitTest({50, 150}), inner_.get());
    EXPECT_EQ(window().hitTest({150, 160}), outer_.get());
    EXPECT_EQ(window().hitTest({60, 250}), outer_.get());
}

TEST_F(TouchTest, hiddenFadedAndSwitchedOffViewsAreNotHitWithAllBelow) {
    outer_->setHidden(true);
    EXPECT_EQ(window().hitTest({60, 160}), &window());
    outer_->setHidden(false);
    outer_->setAlpha(0.005);
    EXPECT_EQ(window().hitTest({60, 160}), &window());
    outer_->setAlpha(1);
    outer_->setUserInteractionEnabled(false);
    EXPECT_EQ(window().hitTest({60, 160}), &window());
    outer_->setUserInteractionEnabled(true);
    inner_->setUserInteractionEnabled(false);
    EXPECT_EQ(window().hitTest({60, 160}), outer_.get());
}

TEST_F(TouchTest, theViewThatTakesTheBeginningGetsTheRestWhereverTheFingerGoes) {
    touch(TouchPhase::Began, {60, 160});
    touch(TouchPhase::Moved, {310, 500});
    touch(TouchPhase::Ended, {310, 500});
    EXPECT_EQ(inner_->heard, (Names{"began", "moved", "ended"}));
    EXPECT_EQ(outer_->heard, Names{});
}

TEST_F(TouchTest, aTouchThatAViewDoesNotTakeGoesToItsSuperview) {
    inner_->takes = false;
    touch(TouchPhase::Began, {60, 160});
    touch(TouchPhase::Ended, {60, 160});
    EXPECT_EQ(inner_->heard, Names{"began"});
    EXPECT_EQ(outer_->heard, (Names{"began", "ended"}));
}

TEST_F(TouchTest, aTouchThatIsTakenOverIsCancelledBelow) {
    outer_->takesOverOnMove = true;
    touch(TouchPhase::Began, {60, 160});
    touch(TouchPhase::Moved, {60, 170});
    touch(TouchPhase::Moved, {60, 180});
    touch(TouchPhase::Ended, {60, 190});
    EXPECT_EQ(inner_->heard, (Names{"began", "cancelled"}));
    EXPECT_EQ(outer_->heard, (Names{"moved", "moved", "ended"}));
}

TEST_F(TouchTest, aWindowWithoutInteractionBlocksEveryTouch) {
    window().setUserInteractionEnabled(false);
    tap({60, 160});
    window().deliverWheel({60, 160}, {0, 10});
    EXPECT_EQ(inner_->heard, Names{});
    EXPECT_EQ(inner_->scrolled, Point{});
    window().setUserInteractionEnabled(true);
    tap({60, 160});
    EXPECT_EQ(inner_->heard, (Names{"began", "ended"}));
}

TEST_F(TouchTest, switchingInteractionOffUnderAFingerCancelsItsTouch) {
    touch(TouchPhase::Began, {60, 160});
    window().setUserInteractionEnabled(false);
    touch(TouchPhase::Ended, {60, 160});
    EXPECT_EQ(inner_->heard, (Names{"began", "cancelled"}));
}

TEST_F(TouchTest, aViewThatLeavesTheWindowUnderAFingerIsCancelled) {
    touch(TouchPhase::Began, {60, 160});
    inner_->removeFromSuperview();
    touch(TouchPhase::Moved, {60, 170});
    touch(TouchPhase::Ended, {60, 170});
    EXPECT_EQ(inner_->heard, (Names{"began", "cancelled"}));
}

TEST_F(TouchTest, aSecondFingerCancelsTheFirst) {
    touch(TouchPhase::Began, {60, 160});
    touch(TouchPhase::Began, {10, 110});
    EXPECT_EQ(inner_->heard, (Names{"began", "cancelled"}));
    EXPECT_EQ(outer_->heard, Names{"began"});
}

TEST_F(TouchTest, theWheelGoesUpUntilSomebodyUsesIt) {
    inner_->takes = false;
    window().deliverWheel({60, 160}, {0, -12});
    EXPECT_EQ(inner_->scrolled, (Point{0, -12}));
    EXPECT_EQ(outer_->scrolled, (Point{0, -12}));
}

TEST_F(TouchTest, anOverlayCoversTheWholeScreen) {
    const auto overlay = objc::Ref<Feeler>::make();
    window().addOverlay(overlay);
    tap({300, 560});
    EXPECT_EQ(overlay->heard, (Names{"began", "ended"}));
    overlay->removeFromSuperview();
    tap({60, 160});
    EXPECT_EQ(inner_->heard, (Names{"began", "ended"}));
}

}  // namespace
}  // namespace uikit::test

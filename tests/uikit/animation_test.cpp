// Movement on a clock that is turned by hand.
#include "desktop/uikit/animation.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

class AnimationTest : public ToolkitTest {
  protected:
    /// The colour of a point of the window, as drawn now.
    std::uint32_t pixelAt(int x, int y) {
        graphics::Image image({320, 568}, 1);
        {
            graphics::Canvas canvas(image);
            canvas.fill({{}, {320, 568}}, Color::white());
            window().renderScreen(canvas);
        }
        return image.pixel(x, y);
    }
};

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t white = 0xFFFFFFFF;

TEST_F(AnimationTest, progressFollowsTheClockAndEndsAtOne) {
    std::vector<double> seen;
    int finished = 0;
    animate(
        2, Curve::Linear, [&](double progress) { seen.push_back(progress); }, [&](bool ended) { finished += ended; });
    advance(0.5);
    advance(0.5);
    EXPECT_EQ(finished, 0);
    EXPECT_TRUE(animationsRunning());
    advance(5);
    EXPECT_EQ(seen, (std::vector<double>{0.25, 0.5, 1}));
    EXPECT_EQ(finished, 1);
    EXPECT_FALSE(framesWanted());
}

TEST_F(AnimationTest, aDurationOfNothingDoesBothAtOnce) {
    double last = 0;
    bool ended = false;
    animate(
        0, Curve::EaseOut, [&](double progress) { last = progress; }, [&](bool finished) { ended = finished; });
    EXPECT_EQ(last, 1);
    EXPECT_TRUE(ended);
}

TEST_F(AnimationTest, aCancelledAnimationStaysWhereItIsAndSaysSo) {
    double last = 0;
    int notFinished = 0;
    const auto token = animate(
        1, Curve::Linear, [&](double progress) { last = progress; }, [&](bool ended) { notFinished += !ended; });
    advance(0.25);
    cancelAnimation(token);
    cancelAnimation(token);
    advance(1);
    EXPECT_EQ(last, 0.25);
    EXPECT_EQ(notFinished, 1);
}

TEST_F(AnimationTest, aStepMayCancelItselfAndStartAnother) {
    int others = 0;
    AnimationToken token = 0;
    token = animate(1, Curve::Linear, [&](double) {
        cancelAnimation(token);
        animate(1, Curve::Linear, [&](double) { ++others; });
    });
    advance(0.5);
    advance(0.5);
    EXPECT_EQ(others, 1);
    advance(1);
    EXPECT_EQ(others, 2);
    EXPECT_FALSE(animationsRunning());
}

TEST_F(AnimationTest, everyCurveBeginsAtNothingAndEndsAtOne) {
    for (const Curve curve : {Curve::Linear, Curve::EaseIn, Curve::EaseOut, Curve::EaseInOut, Curve::Spring}) {
        EXPECT_NEAR(curveValue(curve, 0), 0, 1e-9);
        EXPECT_NEAR(curveValue(curve, 1), 1, 1e-9);
    }
    EXPECT_LT(curveValue(Curve::EaseIn, 0.5), 0.5);
    EXPECT_GT(curveValue(Curve::EaseOut, 0.5), 0.5);
    EXPECT_EQ(curveValue(Curve::EaseInOut, 0.5), 0.5);
}

TEST_F(AnimationTest, aMotionRunsUntilItAnswersFalse) {
    std::vector<double> passed;
    everyFrame(Motion::Ends, [&](double seconds) {
        passed.push_back(seconds);
        return passed.size() < 2;
    });
    EXPECT_TRUE(animationsRunning());
    advance(0.25);
    advance(0.5);
    advance(0.25);
    EXPECT_EQ(passed, (std::vector<double>{0.25, 0.5}));
    EXPECT_FALSE(framesWanted());
}

TEST_F(AnimationTest, blocksMoveWhatIsShownWhileTheFrameIsNewAtOnce) {
    const auto view = add({{0, 100}, {10, 10}});
    view->setBackgroundColor(uiColor(Color::fromHex(0xFF0000)));
    bool ended = false;
    const objc::Block<void()> changes([view] { view->setFrame({{200, 100}, {10, 10}}); });
    const objc::Block<void(BOOL)> completion([&ended](BOOL finished) { ended = finished != 0; });
    objc::send<"animateWithDuration:animations:completion:">(objc::classOf<View>(), 1.0, objc::Object{changes.self()},
                                                             objc::Object{completion.self()});
    EXPECT_EQ(view->frame().left(), 200);
    EXPECT_EQ(pixelAt(5, 105), red);
    advance(0.5);
    EXPECT_EQ(pixelAt(105, 105), red) << "half of the way, half of the time";
    EXPECT_EQ(pixelAt(205, 105), white);
    EXPECT_FALSE(ended);
    advance(0.5);
    EXPECT_EQ(pixelAt(205, 105), red);
    EXPECT_TRUE(ended);
}

TEST_F(AnimationTest, aSecondAnimationStartsFromWhatIsShown) {
    const auto view = add({{0, 100}, {10, 10}});
    view->setBackgroundColor(uiColor(Color::fromHex(0xFF0000)));
    animateChanges(1, 0, Curve::Linear, [&] { view->setFrame({{100, 100}, {10, 10}}); });
    advance(0.5);
    animateChanges(1, 0, Curve::Linear, [&] { view->setFrame({{0, 100}, {10, 10}}); });
    EXPECT_EQ(pixelAt(55, 105), red);
    advance(0.5);
    EXPECT_EQ(pixelAt(30, 105), red);
    advance(0.5);
    EXPECT_EQ(pixelAt(5, 105), red);
    EXPECT_FALSE(animationsRunning());
}

TEST_F(AnimationTest, aDelayComesBeforeTheMovement) {
    const auto view = add({{0, 100}, {10, 10}});
    view->setBackgroundColor(uiColor(Color::fromHex(0xFF0000)));
    animateChanges(1, 1, Curve::Linear, [&] { view->setFrame({{100, 100}, {10, 10}}); });
    advance(0.75);
    EXPECT_EQ(pixelAt(5, 105), red);
    advance(0.75);
    EXPECT_EQ(pixelAt(55, 105), red);
}

TEST_F(AnimationTest, changesOutsideOfAWindowAreNotAnimated) {
    const auto view = objc::Ref<View>::make();
    bool ended = false;
    animateChanges(
        1, 0, Curve::Linear, [&] { view->setAlpha(0.5); }, [&](bool) { ended = true; });
    EXPECT_EQ(view->alpha(), 0.5);
    advance(1);
    EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace uikit::test

// Activity indicators and their appearance proxy.
#include "desktop/uikit/activity_indicator.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

class ActivityIndicatorTest : public ToolkitTest {
  protected:
    ~ActivityIndicatorTest() override { setAppearance({}); }
    static void setAppearance(objc::Object color) {
        auto proxy = objc::send<"appearance", objc::Object>(objc::classOf<ActivityIndicator>());
        objc::send<"setColor:">(proxy, color);
    }
    objc::Ref<ActivityIndicator> indicator_ = objc::Ref<ActivityIndicator>::make<"initWithActivityIndicatorStyle:">(2L);
};

TEST_F(ActivityIndicatorTest, stylesHaveTheirSizeAndColour) {
    EXPECT_EQ(indicator_->frame(), (Rect{{}, {20, 20}}));
    EXPECT_EQ(colorOf(indicator_->color()), Color::gray(0.5));
    const auto large = objc::Ref<ActivityIndicator>::make<"initWithActivityIndicatorStyle:">(0L);
    EXPECT_EQ(large->frame(), (Rect{{}, {37, 37}}));
    EXPECT_EQ(colorOf(large->color()), Color::white());
}

TEST_F(ActivityIndicatorTest, aStoppedIndicatorHidesItselfUnlessToldOtherwise) {
    EXPECT_TRUE(indicator_->isHidden());
    indicator_->startAnimating();
    EXPECT_FALSE(indicator_->isHidden());
    EXPECT_TRUE(indicator_->isAnimating());
    indicator_->stopAnimating();
    EXPECT_TRUE(indicator_->isHidden());
    indicator_->setHidesWhenStopped(false);
    EXPECT_FALSE(indicator_->isHidden());
}

TEST_F(ActivityIndicatorTest, turningWantsFramesAndKeepsNobodyFromSettling) {
    indicator_->startAnimating();
    EXPECT_FALSE(framesWanted()) << "nobody sees it yet";
    window().addSubview(indicator_);
    EXPECT_TRUE(framesWanted());
    EXPECT_FALSE(animationsRunning());
    indicator_->removeFromSuperview();
    EXPECT_FALSE(framesWanted());
}

TEST_F(ActivityIndicatorTest, theAppearanceColoursIndicatorsThatComeToAWindowLater) {
    setAppearance(uiColor(Color::fromHex(0x03445F)));
    EXPECT_EQ(colorOf(indicator_->color()), Color::gray(0.5));
    window().addSubview(indicator_);
    EXPECT_EQ(colorOf(indicator_->color()), Color::fromHex(0x03445F));
}

TEST_F(ActivityIndicatorTest, theAppearanceIsOneForAllAndRemembersItsColour) {
    const auto proxy = [] { return objc::send<"appearance", objc::Object>(objc::classOf<ActivityIndicator>()); };
    EXPECT_EQ(proxy().self, proxy().self);
    setAppearance(uiColor(Color::fromHex(0x03445F)));
    EXPECT_EQ(colorOf(objc::send<"color", objc::Object>(proxy())), Color::fromHex(0x03445F));
}

TEST_F(ActivityIndicatorTest, anIndicatorOnTheScreenKeepsItsColourUntilItComesAgain) {
    window().addSubview(indicator_);
    setAppearance(uiColor(Color::fromHex(0x03445F)));
    EXPECT_EQ(colorOf(indicator_->color()), Color::gray(0.5));
    indicator_->removeFromSuperview();
    window().addSubview(indicator_);
    EXPECT_EQ(colorOf(indicator_->color()), Color::fromHex(0x03445F));
    setAppearance({});
    indicator_->removeFromSuperview();
    window().addSubview(indicator_);
    EXPECT_EQ(colorOf(indicator_->color()), Color::gray(0.5)) << "no colour is the style's again";
}

TEST_F(ActivityIndicatorTest, aColourOfItsOwnStandsAboveTheAppearance) {
    setAppearance(uiColor(Color::fromHex(0x03445F)));
    indicator_->setColor(uiColor(Color::fromHex(0xFF0000)));
    window().addSubview(indicator_);
    EXPECT_EQ(colorOf(indicator_->color()), Color::fromHex(0xFF0000));
}

}  // namespace
}  // namespace uikit::test

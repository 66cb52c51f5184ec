// The product's colour on activity indicators.
#include <gtest/gtest.h>

#include "desktop/uikit/activity_indicator.h"
#include "tests/messages/stand_ins.h"

namespace {

TEST(ActivityIndicators, haveTheProductsColourOnceTheApplicationHasLaunchedWithReplaceRecentsOn) {
    const objc::AutoreleasePool pool;
    standins::prepare();
    const auto appearance = objc::sendClass<"UIActivityIndicatorView", "appearance", objc::Object>();
    objc::send<"setColor:">(appearance, objc::Object{});
    standins::companion().replaceRecentsOn = false;
    objc::send<"applicationDidFinishLaunching:">(standins::makeApplication().get(), objc::Object{});
    EXPECT_FALSE((objc::send<"color", objc::Object>(appearance)));
    standins::companion().replaceRecentsOn = true;
    objc::send<"applicationDidFinishLaunching:">(standins::makeApplication().get(), objc::Object{});
    const auto color = objc::send<"color", objc::Object>(appearance);
    ASSERT_TRUE(color);
    EXPECT_EQ(uikit::colorOf(color), uikit::Color::fromHex(0x03445F));
}

}  // namespace

// Controls: what a touch sends, to whom, with what.
#include "desktop/uikit/button.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class ControlTest : public ToolkitTest {
  protected:
    objc::Ref<Control> control_ = add<Control>({{100, 100}, {50, 50}});
    objc::Ref<Recorder> target_ = objc::Ref<Recorder>::make();

    void listen(unsigned long events, SEL action = objc::selector<"pressed">()) {
        control_->addTargetActionForControlEvents(target_->object(), action, events);
    }
};

TEST_F(ControlTest, aTapSendsTouchDownAndTouchUpInside) {
    listen(touchDown, objc::selector<"pressed">());
    listen(touchUpInside, objc::selector<"pressed:">());
    touch(TouchPhase::Began, {120, 120});
    EXPECT_EQ(target_->heard, Names{"pressed"});
    EXPECT_EQ(control_->state(), 1u);
    touch(TouchPhase::Ended, {120, 120});
    EXPECT_EQ(target_->heard, (Names{"pressed", "pressed:"}));
    EXPECT_EQ(control_->state(), 0u);
}

TEST_F(ControlTest, anActionIsSentWithAsManyArgumentsAsItHasColons) {
    listen(valueChanged, objc::selector<"pressed">());
    listen(valueChanged, objc::selector<"pressed:">());
    listen(valueChanged, objc::selector<"pressed:event:">());
    control_->sendActionsForControlEvents(valueChanged);
    EXPECT_EQ(target_->heard, (Names{"pressed", "pressed:", "pressed:event:"}));
    EXPECT_EQ(target_->lastSender, control_->object());
}

struct EventCase {
    const char* name;
    unsigned long event;
    Point moved;
    TouchPhase last;
    std::size_t sent;
};

class ControlEventTest : public ControlTest, public testing::WithParamInterface<EventCase> {};

TEST_P(ControlEventTest, isSentByItsMovement) {
    listen(GetParam().event);
    touch(TouchPhase::Began, {120, 120});
    touch(TouchPhase::Moved, GetParam().moved);
    touch(GetParam().last, GetParam().moved);
    EXPECT_EQ(target_->heard.size(), GetParam().sent);
}

constexpr Point near{160, 160};  // outside of the control, inside of the margin
constexpr Point far{300, 400};

INSTANTIATE_TEST_SUITE_P(
    Events, ControlEventTest,
    testing::Values(EventCase{"downOnce", touchDown, near, TouchPhase::Ended, 1},
                    EventCase{"upInsideWithinTheMargin", touchUpInside, near, TouchPhase::Ended, 1},
                    EventCase{"noUpInsideFarAway", touchUpInside, far, TouchPhase::Ended, 0},
                    EventCase{"upOutsideFarAway", touchUpOutside, far, TouchPhase::Ended, 1},
                    EventCase{"dragInside", touchDragInside, near, TouchPhase::Ended, 1},
                    EventCase{"dragOutside", touchDragOutside, far, TouchPhase::Ended, 1},
                    EventCase{"dragExit", touchDragExit, far, TouchPhase::Ended, 1},
                    EventCase{"cancel", touchCancel, near, TouchPhase::Cancelled, 1},
                    EventCase{"noUpAfterCancel", touchUpInside | touchUpOutside, near, TouchPhase::Cancelled, 0}),
    [](const auto& each) { return each.param.name; });

TEST_F(ControlTest, aDisabledControlSwallowsTouchesAndSendsNothing) {
    listen(allEvents);
    control_->setEnabled(false);
    tap({120, 120});
    EXPECT_EQ(target_->heard, Names{});
    EXPECT_EQ(control_->state(), 2u);
}

TEST_F(ControlTest, aRemovedActionIsNoLongerSent) {
    listen(touchUpInside | touchDown);
    control_->removeTargetActionForControlEvents(target_->object(), objc::selector<"pressed">(), touchDown);
    EXPECT_EQ(control_->allControlEvents(), 64u);
    tap({120, 120});
    EXPECT_EQ(target_->heard, Names{"pressed"});
    control_->removeTargetActionForControlEvents({}, nullptr, allEvents);
    tap({120, 120});
    EXPECT_EQ(target_->heard, Names{"pressed"});
}

TEST_F(ControlTest, theSameActionIsSentOnceHoweverOftenItWasAdded) {
    listen(touchUpInside);
    listen(touchUpInside);
    tap({120, 120});
    EXPECT_EQ(target_->heard, Names{"pressed"});
}

TEST_F(ControlTest, anActionWithoutATargetGoesNowhere) {
    control_->addTargetActionForControlEvents({}, objc::selector<"pressed">(), touchUpInside);
    tap({120, 120});
    EXPECT_EQ(target_->heard, Names{});
}

TEST_F(ControlTest, targetsAreNotRetained) {
    listen(touchUpInside);
    target_ = {};
    EXPECT_EQ((objc::send<"count", unsigned long>(control_->allTargets())), 0u);
}

class ButtonTest : public ToolkitTest {
  protected:
    objc::Ref<Button> button_ = objc::Ref<Button>(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), 0)));

    static objc::Object image(double side) { return uiImage(graphics::Image({side, side}, 1)); }
};

TEST_F(ButtonTest, aStateForWhichNothingWasSetShowsTheNormalOne) {
    button_->setTitleForState(nsString("Edit"), normalState);
    button_->setTitleForState(nsString("Done"), selectedState);
    const auto title = [&] { return button_->titleLabel()->string(); };
    EXPECT_EQ(title(), "Edit");
    button_->setSelected(true);
    EXPECT_EQ(title(), "Done");
    button_->setHighlighted(true);
    EXPECT_EQ(title(), "Edit") << "nothing was set for selected and highlighted together";
    button_->setHighlighted(false);
    button_->setTitleForState({}, selectedState);
    EXPECT_EQ(title(), "Edit");
}

TEST_F(ButtonTest, imagesFollowTheState) {
    const auto normal = image(20);
    const auto selected = image(24);
    button_->setImageForState(normal, normalState);
    button_->setImageForState(selected, selectedState);
    EXPECT_EQ(button_->currentImage(), normal);
    EXPECT_EQ(button_->imageForState(disabledState), normal);
    button_->setSelected(true);
    EXPECT_EQ(button_->currentImage(), selected);
    EXPECT_EQ(button_->imageView()->image(), selected);
}

TEST_F(ButtonTest, pressingFadesTheContentsAndReleasingBringsThemBack) {
    button_->setTitleForState(nsString("Call"), normalState);
    button_->setFrame({{0, 100}, {100, 40}});
    window().addSubview(button_);
    touch(TouchPhase::Began, {50, 120});
    EXPECT_EQ(button_->titleLabel()->alpha(), 0.25);
    touch(TouchPhase::Ended, {50, 120});
    EXPECT_EQ(button_->titleLabel()->alpha(), 1);
    EXPECT_TRUE(animationsRunning());
    advance(0.3);
    EXPECT_FALSE(animationsRunning());
}

TEST_F(ButtonTest, imageAndTitleStandSideBySideInTheMiddle) {
    button_->setImageForState(image(20), normalState);
    button_->setTitleForState(nsString("Call"), normalState);
    button_->setFrame({{0, 0}, {200, 40}});
    button_->layoutIfNeeded();
    const Rect picture = button_->imageView()->frame();
    const Rect title = button_->titleLabel()->frame();
    EXPECT_EQ(picture.size, (Size{20, 20}));
    EXPECT_EQ(picture.top(), 10);
    EXPECT_EQ(picture.right(), title.left());
    EXPECT_EQ(picture.left(), 200 - title.right());
}

TEST_F(ButtonTest, buttonsOfASystemsTypeTakeTheTint) {
    const auto system = objc::Ref<Button>(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), 1)));
    EXPECT_EQ(colorOf(system->currentTitleColor()), Color::fromHex(0x03445F));
    system->setTintColor(uiColor(Color::fromHex(0xFF0000)));
    EXPECT_EQ(colorOf(system->titleLabel()->textColor()), Color::fromHex(0xFF0000));
    EXPECT_EQ(colorOf(button_->currentTitleColor()), Color::white());
}

TEST_F(ButtonTest, aTapOnItsTitleIsATapOnTheButton) {
    const auto target = objc::Ref<Recorder>::make();
    button_->setTitleForState(nsString("Call"), normalState);
    button_->setFrame({{0, 100}, {100, 40}});
    window().addSubview(button_);
    window().layoutIfNeeded();
    objc::send<"addTarget:action:forControlEvents:">(button_->object(), target->object(), objc::selector<"pressed:">(),
                                                     64UL);
    tap({50, 120});
    EXPECT_EQ(target->heard, Names{"pressed:"});
    EXPECT_EQ(target->lastSender, button_->object());
}

}  // namespace
}  // namespace uikit::test

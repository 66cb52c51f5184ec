// Segmented controls by message and by touch.
#include "desktop/uikit/segmented_control.h"

#include <cmath>

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class SegmentedControlTest : public ToolkitTest {
  protected:
    SegmentedControlTest() {
        auto items = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        for (const char* title : {"All", "Out", "In", "Missed"}) objc::send<"addObject:">(items, nsString(title));
        control_ = objc::Ref<SegmentedControl>::make<"initWithItems:">(items);
        objc::send<"addTarget:action:forControlEvents:">(control_->object(), target_->object(),
                                                         objc::selector<"pressed:">(), 4096UL);
        control_->setFrame({{50, 100}, {220, 29}});
        window().addSubview(control_);
    }
    objc::Ref<SegmentedControl> control_;
    objc::Ref<Recorder> target_ = objc::Ref<Recorder>::make();
};

TEST_F(SegmentedControlTest, itemsBecomeSegmentsOfEqualWidthAndNoneIsSelected) {
    EXPECT_EQ(control_->numberOfSegments(), 4u);
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(control_->segmentRect(2), (Rect{{110, 0}, {55, 29}}));
    EXPECT_EQ(control_->drawnTexts(), (Names{"All", "Out", "In", "Missed"}));
}

TEST_F(SegmentedControlTest, anImageThatIsNotThereLeavesTheTitle) {
    control_->setImageForSegment({}, 1);
    EXPECT_EQ(control_->drawnTexts(), (Names{"All", "Out", "In", "Missed"}));
}

TEST_F(SegmentedControlTest, aTapSelectsAndSendsValueChangedOnce) {
    tap({50 + 60, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), 1);
    EXPECT_EQ(target_->heard, Names{"pressed:"});
    tap({50 + 60, 110});
    EXPECT_EQ(target_->heard, Names{"pressed:"}) << "the selected segment was tapped";
}

TEST_F(SegmentedControlTest, everyTargetOfAValueHearsOfItInTheOrderOfItsAdding) {
    const auto second = objc::Ref<Recorder>::make();
    control_->addTargetActionForControlEvents(second->object(), objc::selector<"pressed">(), valueChanged);
    control_->addTargetActionForControlEvents(second->object(), objc::selector<"pressed:event:">(), touchDown);
    tap({50 + 60, 110});
    EXPECT_EQ(target_->heard, Names{"pressed:"});
    EXPECT_EQ(second->heard, (Names{"pressed:event:", "pressed"}));
    EXPECT_EQ(target_->lastSender.self, control_->object().self);
}

TEST_F(SegmentedControlTest, theNewValueIsThereWhenItsTargetsHear) {
    long seen = SegmentedControl::noSegment;
    target_->onPressed = [&] { seen = control_->selectedSegmentIndex(); };
    tap({50 + 180, 110});
    EXPECT_EQ(seen, 3);
}

TEST_F(SegmentedControlTest, oneThatIsSwitchedOffSelectsNothing) {
    control_->setEnabled(false);
    tap({50 + 60, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(target_->heard, Names{});
}

TEST_F(SegmentedControlTest, aTargetThatLeftHearsNothing) {
    control_->removeTargetActionForControlEvents(target_->object(), {}, allEvents);
    tap({50 + 60, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), 1);
    EXPECT_EQ(target_->heard, Names{});
}

TEST_F(SegmentedControlTest, selectingByMessageSendsNothing) {
    objc::send<"setSelectedSegmentIndex:">(control_->object(), 3L);
    EXPECT_EQ((objc::send<"selectedSegmentIndex", long>(control_->object())), 3);
    EXPECT_EQ(target_->heard, Names{});
}

TEST_F(SegmentedControlTest, aFingerThatSlidesSelectsWhereItIsLifted) {
    touch(TouchPhase::Began, {55, 110});
    touch(TouchPhase::Moved, {230, 110});
    touch(TouchPhase::Ended, {230, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), 3);
}

TEST_F(SegmentedControlTest, aFingerThatLeavesOrIsCancelledSelectsNothing) {
    touch(TouchPhase::Began, {55, 110});
    touch(TouchPhase::Moved, {55, 300});
    touch(TouchPhase::Ended, {55, 300});
    touch(TouchPhase::Began, {55, 110});
    touch(TouchPhase::Cancelled, {55, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(target_->heard, Names{});
}

TEST_F(SegmentedControlTest, aSegmentThatIsSwitchedOffCannotBeChosen) {
    control_->setEnabledForSegment(false, 1);
    tap({50 + 60, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
}

TEST_F(SegmentedControlTest, imagesReplaceTitles) {
    const auto image = uiImage(graphics::Image({20, 20}, 1), "all_icon");
    control_->setImageForSegment(image, 0);
    EXPECT_EQ(control_->imageForSegment(0), image);
    EXPECT_FALSE(control_->titleForSegment(0));
    EXPECT_EQ(control_->drawnTexts(), (Names{"Out", "In", "Missed"}));
}

TEST_F(SegmentedControlTest, theSelectionStaysOnItsSegmentWhenOthersComeAndGo) {
    control_->setSelectedSegmentIndex(1);
    control_->insertTitleAtIndexAnimated(nsString("New"), 0, false);
    EXPECT_EQ(control_->selectedSegmentIndex(), 2);
    control_->removeAtIndexAnimated(0, false);
    EXPECT_EQ(control_->selectedSegmentIndex(), 1);
    control_->removeAtIndexAnimated(1, false);
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(control_->numberOfSegments(), 3u);
}

TEST_F(SegmentedControlTest, indicesOutOfRangeChangeNothing) {
    control_->setSelectedSegmentIndex(4);
    control_->setSelectedSegmentIndex(-2);
    control_->setTitleForSegment(nsString("x"), 9);
    control_->removeAtIndexAnimated(9, false);
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(control_->numberOfSegments(), 4u);
    EXPECT_FALSE(control_->titleForSegment(9));
}

TEST_F(SegmentedControlTest, aMomentaryControlForgetsItsSelection) {
    control_->setMomentary(true);
    tap({55, 110});
    tap({55, 110});
    EXPECT_EQ(control_->selectedSegmentIndex(), -1);
    EXPECT_EQ(target_->heard, (Names{"pressed:", "pressed:"}));
}

/// The content of the selected segment can be read whatever the tint and the ground behind the control.
struct Look {
    const char* name;
    Color tint;
    Color ground;
    Color content;
};

class SelectedSegment : public SegmentedControlTest, public testing::WithParamInterface<Look> {
  protected:
    /// Whether the control's second segment shows a pixel of that colour.
    bool shows(const Color& color) {
        graphics::Image whole(window().frame().size, 1);
        {
            graphics::Canvas canvas(whole);
            window().renderScreen(canvas);
        }
        const Rect segment = control_->segmentRect(1).translated(50, 100).inset(2, 2);
        const auto part = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255)); };
        const std::uint32_t wanted = 0xFF000000U | part(color.red) << 16 | part(color.green) << 8 | part(color.blue);
        for (int y = int(segment.top()); y < int(segment.bottom()); ++y)
            for (int x = int(segment.left()); x < int(segment.right()); ++x)
                if (whole.pixel(x, y) == wanted) return true;
        return false;
    }
};

TEST_P(SelectedSegment, showsItsContent) {
    graphics::Image icon({20, 20}, 1);
    graphics::Canvas(icon).fill({{}, {20, 20}}, Color::black());
    control_->setImageForSegment(uiImage(icon, "icon"), 1);
    control_->setSelectedSegmentIndex(1);
    objc::send<"setTintColor:">(control_->object(), uiColor(GetParam().tint));
    window().setBackgroundColor(uiColor(GetParam().ground));
    EXPECT_TRUE(shows(GetParam().tint));
    EXPECT_TRUE(shows(GetParam().content));
}

INSTANTIATE_TEST_SUITE_P(
    On, SelectedSegment,
    testing::Values(Look{"aDarkTintIsWhite", palette::brand, Color::fromHex(0xC9C9CE), Color::white()},
                    Look{"aWhiteTintHasTheColourBehind", Color::white(), palette::brand, palette::brand},
                    Look{"aWhiteTintOnWhiteIsBlack", Color::white(), Color::white(), Color::black()}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace uikit::test

// Action sheets: their buttons, and how they are answered.
#include "desktop/uikit/sheet.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Chosen = std::vector<long>;

class SheetTest : public ToolkitTest {
  protected:
    SheetTest() {
        window().makeKeyAndVisible();
        sheet_ = Sheet::present(&window(),
                                {Sheet::Style::ActionSheet,
                                 "Clear?",
                                 "",
                                 {{"Clear all", Sheet::Role::Destructive}, {"Cancel", Sheet::Role::Cancel}}},
                                [this](long choice) { chosen_.push_back(choice); });
        advance(1);
        window().layoutIfNeeded();
    }

    objc::Ref<Sheet> sheet_;
    Chosen chosen_;
};

TEST_F(SheetTest, aTouchOnAButtonAnswersItsIndexAndTheSheetLeaves) {
    EXPECT_EQ(frontSheet(), sheet_.get());
    tap({160, 568 - 8 - 50 - 8 - 25});
    EXPECT_EQ(chosen_, Chosen{0});
    EXPECT_EQ(frontSheet(), nullptr);
    advance(1);
    EXPECT_EQ(sheet_->window(), nullptr);
}

TEST_F(SheetTest, aSheetStartsBelowTheWindowBeforeItsFirstFrame) {
    const auto other =
        Sheet::present(&window(), {Sheet::Style::ActionSheet, "", "", {{"Go", Sheet::Role::Normal}}}, {});
    const View* panel = other->subviews().front();
    EXPECT_EQ(panel->displacement().y, panel->frame().size.height);
    EXPECT_EQ(panel->frame().size.height, 58);
    advance(1);
    EXPECT_EQ(panel->displacement().y, 0);
}

TEST_F(SheetTest, theStatusBarIsAsDarkAsTheRest) {
    const auto cornerOfScreen = [this] {
        graphics::Image image({320, 568}, 1);
        {
            graphics::Canvas canvas(image);
            canvas.fill({{}, {320, 568}}, Color::white());
            window().renderScreen(canvas);
        }
        return image.pixel(319, 0);
    };
    const auto dark = cornerOfScreen();
    sheet_->dismiss(-1, false);
    EXPECT_NE(dark, cornerOfScreen());
}

TEST_F(SheetTest, theCancelButtonStandsApartAtTheFoot) {
    tap({160, 568 - 8 - 25});
    EXPECT_EQ(chosen_, Chosen{1});
}

TEST_F(SheetTest, aTouchBesideTheButtonsAnswersNothing) {
    tap({160, 100});
    EXPECT_TRUE(chosen_.empty());
    EXPECT_EQ(frontSheet(), sheet_.get());
}

TEST_F(SheetTest, whoeverWaitsForItsEndIsToldWhenItHasLeft) {
    Chosen gone;
    const auto other = Sheet::present(
        &window(), {Sheet::Style::ActionSheet, "", "", {{"Go", Sheet::Role::Normal}}},
        [this](long choice) { chosen_.push_back(choice); }, [&gone](long choice) { gone.push_back(choice); });
    other->dismiss(0, true);
    EXPECT_EQ(chosen_, Chosen{0});
    EXPECT_EQ(gone, Chosen{});
    EXPECT_EQ(frontSheet(), sheet_.get()) << "one that leaves takes no more touches";
    advance(1);
    EXPECT_EQ(gone, Chosen{0});
    EXPECT_EQ(chosen_, Chosen{0});
}

TEST_F(SheetTest, aSheetWhoseWindowGoesAwayTellsNobody) {
    sheet_->removeFromSuperview();
    sheet_->dismiss(0, false);
    EXPECT_EQ(chosen_, Chosen{});
}

TEST_F(SheetTest, aSheetIsAnsweredOnce) {
    sheet_->dismiss(-1, false);
    EXPECT_EQ(sheet_->window(), nullptr);
    sheet_->dismiss(0, false);
    EXPECT_EQ(chosen_, Chosen{-1});
}

}  // namespace
}  // namespace uikit::test

// The desktop's keyboard: what takes typed text, and what keys do where nothing is edited.
#include "desktop/phone/keyboard.h"

#include "desktop/phone/keypad_screen.h"
#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/sheet.h"
#include "desktop/uikit/table_view.h"
#include "desktop/uikit/text_field.h"
#include "tests/uikit/fixture.h"

namespace phone {
namespace {

using graphics::KeyCode;
using uikit::Sheet;

class KeyboardTest : public uikit::test::ToolkitTest {
  protected:
    KeyboardTest() { window().makeKeyAndVisible(); }
    ~KeyboardTest() override { bar_->setListener({}); }
    void addSearch() { window().addSubview(bar_); }
    objc::Ref<Sheet> ask(Sheet::Style style, std::vector<Sheet::Choice> choices) {
        return Sheet::present(&window(), {style, "?", "", std::move(choices)},
                              [this](long choice) { answers_.push_back(choice); });
    }

    objc::Ref<uikit::SearchBar> bar_ =
        objc::Ref<uikit::SearchBar>::make<"initWithFrame:">(uikit::Rect{{0, 64}, {320, 44}});
    std::vector<long> answers_;
};

TEST_F(KeyboardTest, whatIsTypedWithoutAFieldBeginsASearch) {
    addSearch();
    window().layoutIfNeeded();
    EXPECT_EQ(typingArea(), (uikit::Rect{{8, 72}, {304, 28}}));
    typeText("a");
    typeText("n");
    EXPECT_EQ(bar_->field()->text(), "an");
    EXPECT_TRUE(bar_->field()->isFirstResponder());
}

TEST_F(KeyboardTest, whatIsEditedTakesTheTextBeforeASearch) {
    addSearch();
    const auto field = add<uikit::TextField>({{0, 200}, {320, 44}});
    field->becomeFirstResponder();
    typeText("Zoe");
    pressKey(KeyCode::Backspace);
    EXPECT_EQ(field->string(), "Zo");
    EXPECT_EQ(bar_->field()->text(), "");
}

TEST_F(KeyboardTest, withNothingToTypeIntoTextIsDropped) {
    EXPECT_EQ(typingArea(), std::nullopt);
    typeText("an");
    addSearch();
    EXPECT_EQ(bar_->field()->text(), "");
}

TEST_F(KeyboardTest, behindASheetOrABlockedWindowNothingIsTyped) {
    addSearch();
    const auto sheet = ask(Sheet::Style::ActionSheet, {{"Go", Sheet::Role::Normal}});
    EXPECT_EQ(typingArea(), std::nullopt);
    typeText("a");
    sheet->dismiss(-1, false);
    window().setUserInteractionEnabled(false);
    typeText("b");
    EXPECT_EQ(typingArea(), std::nullopt);
    EXPECT_EQ(bar_->field()->text(), "");
    window().setUserInteractionEnabled(true);
    EXPECT_TRUE(typingArea());
}

TEST_F(KeyboardTest, escapeEndsASearchWhetherOrNotItsFieldIsEdited) {
    addSearch();
    int cancelled = 0;
    bar_->setListener({{}, {}, {}, [&] { ++cancelled; }});
    pressKey(KeyCode::Escape);
    EXPECT_EQ(cancelled, 0) << "there is no search to end";
    bar_->setShowsCancelButton(true);
    pressKey(KeyCode::Escape);
    EXPECT_EQ(cancelled, 1);
    typeText("an");
    pressKey(KeyCode::Escape);
    EXPECT_EQ(cancelled, 2);
}

TEST_F(KeyboardTest, escapeTakesASheetsCancel) {
    ask(Sheet::Style::ActionSheet, {{"Delete", Sheet::Role::Destructive}, {"Cancel", Sheet::Role::Cancel}});
    pressKey(KeyCode::Return);
    EXPECT_TRUE(answers_.empty()) << "return chooses nothing where there is a choice";
    pressKey(KeyCode::Escape);
    EXPECT_EQ(answers_, std::vector<long>{1});
}

TEST_F(KeyboardTest, returnAnswersAnAlertWithOneButton) {
    ask(Sheet::Style::Alert, {{"OK", Sheet::Role::Normal}});
    pressKey(KeyCode::Return);
    EXPECT_EQ(answers_, std::vector<long>{0});
}

TEST_F(KeyboardTest, theKeypadTakesDigitsAndItsKeys) {
    objc::registerClasses<KeypadScreen>();
    const auto keypad = objc::Ref<KeypadScreen>::make();
    window().setRootViewController(keypad);
    EXPECT_EQ(typingArea(), (uikit::Rect{{0, 0}, {320, 568}}));
    typeText("+49 (30) x1#");
    EXPECT_EQ(keypad->digits(), "+49301#");
    EXPECT_EQ(uikit::firstResponder(), nullptr);
    pressKey(KeyCode::Backspace);
    EXPECT_EQ(keypad->digits(), "+49301");
    std::string called;
    uikit::Application::shared()->setUrlOpener([&](const std::string& address) {
        called = address;
        return true;
    });
    pressKey(KeyCode::Return);
    EXPECT_EQ(called, "tel://+49301");
    pressKey(KeyCode::Escape);
    EXPECT_EQ(keypad->digits(), "");
}

TEST_F(KeyboardTest, theArrowsAndPagesScrollTheListInFront) {
    const auto behind = add<uikit::TableView>({{0, 64}, {320, 400}});
    behind->setContentSize({320, 2000});
    const auto list = objc::Ref<uikit::TableView>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 300}});
    behind->layoutIfNeeded();
    list->layoutIfNeeded();
    behind->setContentSize({320, 2000});
    list->setContentSize({320, 2000});
    pressKey(KeyCode::Down);
    EXPECT_EQ(behind->contentOffset().y, 50);
    behind->addSubview(list);
    pressKey(KeyCode::PageDown);
    EXPECT_EQ(list->contentOffset().y, 250);
    pressKey(KeyCode::Up);
    EXPECT_EQ(list->contentOffset().y, 200);
    pressKey(KeyCode::PageUp);
    EXPECT_EQ(list->contentOffset().y, 0);
    EXPECT_EQ(behind->contentOffset().y, 50);
}

}  // namespace
}  // namespace phone

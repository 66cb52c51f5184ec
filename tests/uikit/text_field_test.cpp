// Text fields: focus, typing, the keys, and what the delegate may forbid.
#include "desktop/uikit/text_field.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

/// A delegate that writes down what it hears and answers as it is told.
class FieldDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestFieldDelegate"};
    static void define(objc::ClassDefinition<FieldDelegate>& definition) {
        definition.method<"textFieldShouldBeginEditing:", &FieldDelegate::shouldBegin>()
            .method<"textFieldDidBeginEditing:", &FieldDelegate::didBegin>()
            .method<"textFieldShouldReturn:", &FieldDelegate::shouldReturn>()
            .method<"textFieldShouldClear:", &FieldDelegate::shouldClear>()
            .method<"textFieldDidEndEditing:", &FieldDelegate::didEnd>();
    }
    bool shouldBegin(objc::Object) { return hear("should begin"); }
    void didBegin(objc::Object) { hear("did begin"); }
    bool shouldReturn(objc::Object) { return hear("should return"); }
    bool shouldClear(objc::Object) { return hear("should clear"); }
    void didEnd(objc::Object) { hear("did end"); }
    bool hear(const char* what) {
        heard.emplace_back(what);
        return allows;
    }
    objc::Object object() const { return objc::Object{self}; }

    std::vector<std::string> heard;
    bool allows = true;
};

using Heard = std::vector<std::string>;

class TextFieldTest : public ToolkitTest {
  protected:
    TextFieldTest() {
        objc::registerClasses<FieldDelegate>();
        field_ = add<TextField>({{20, 100}, {200, 30}});
        delegate_ = objc::Ref<FieldDelegate>::make();
        field_->setDelegate(delegate_->object());
    }
    // The field outlives its delegate, which it does not retain.
    ~TextFieldTest() override { field_->setDelegate({}); }
    void type(std::string_view text) { firstResponder()->insertText(text); }

    objc::Ref<TextField> field_;
    objc::Ref<FieldDelegate> delegate_;
};

TEST_F(TextFieldTest, aTapGivesItTheKeyboardAndTypingGoesThere) {
    tap({60, 115});
    ASSERT_EQ(firstResponder(), field_.get());
    type("Anna");
    EXPECT_EQ(utf8(field_->text()), "Anna");
    EXPECT_EQ(delegate_->heard, (Heard{"should begin", "did begin"}));
}

TEST_F(TextFieldTest, aDelegateThatForbidsEditingKeepsTheKeyboardAway) {
    delegate_->allows = false;
    EXPECT_FALSE(field_->becomeFirstResponder());
    EXPECT_EQ(firstResponder(), nullptr);
    EXPECT_EQ(delegate_->heard, (Heard{"should begin"}));
}

TEST_F(TextFieldTest, aDisabledFieldTakesNoKeyboard) {
    field_->setEnabled(false);
    tap({60, 115});
    EXPECT_EQ(firstResponder(), nullptr);
}

TEST_F(TextFieldTest, anotherFieldTakesTheKeyboardOver) {
    const auto other = add<TextField>({{20, 200}, {200, 30}});
    field_->becomeFirstResponder();
    other->becomeFirstResponder();
    EXPECT_FALSE(field_->isEditing());
    EXPECT_EQ(delegate_->heard, (Heard{"should begin", "did begin", "did end"}));
}

TEST_F(TextFieldTest, theKeysEditWholeCharacters) {
    using Key = Responder::EditingKey;
    field_->setText(nsString("aü€"));
    field_->pressKey(Key::Backspace);
    EXPECT_EQ(field_->string(), "aü");
    field_->pressKey(Key::Left);
    field_->insertText("x");
    EXPECT_EQ(field_->string(), "axü");
    field_->pressKey(Key::Home);
    field_->pressKey(Key::Delete);
    EXPECT_EQ(field_->string(), "xü");
    field_->pressKey(Key::Backspace);
    EXPECT_EQ(field_->string(), "xü");
    field_->pressKey(Key::End);
    field_->pressKey(Key::Delete);
    EXPECT_EQ(field_->string(), "xü");
}

TEST_F(TextFieldTest, typingTellsTheTargetAndSettingTheTextDoesNot) {
    objc::registerClasses<Recorder>();
    const auto recorder = objc::Ref<Recorder>::make();
    field_->addTargetActionForControlEvents(recorder->object(), objc::selector<"pressed:">(), editingChanged);
    field_->setText(nsString("set"));
    EXPECT_TRUE(recorder->heard.empty());
    field_->insertText("x");
    EXPECT_EQ(recorder->heard, (Heard{"pressed:"}));
    field_->pressKey(Responder::EditingKey::Left);
    EXPECT_EQ(recorder->heard.size(), 1u);
}

TEST_F(TextFieldTest, returnEndsEditingUnlessTheDelegateForbidsIt) {
    field_->becomeFirstResponder();
    delegate_->allows = false;
    field_->pressKey(Responder::EditingKey::Return);
    EXPECT_TRUE(field_->isEditing());
    delegate_->allows = true;
    field_->pressKey(Responder::EditingKey::Return);
    EXPECT_FALSE(field_->isEditing());
    EXPECT_EQ(delegate_->heard, (Heard{"should begin", "did begin", "should return", "should return", "did end"}));
}

TEST_F(TextFieldTest, theClearButtonEmptiesTheField) {
    field_->setText(nsString("Anna"));
    field_->setClearButtonMode(TextField::always);
    tap({206, 115});
    EXPECT_EQ(field_->string(), "");
    EXPECT_EQ(delegate_->heard, (Heard{"should clear"}));
}

TEST_F(TextFieldTest, aFieldThatLeavesTheWindowGivesTheKeyboardBack) {
    field_->becomeFirstResponder();
    field_->removeFromSuperview();
    EXPECT_EQ(firstResponder(), nullptr);
    EXPECT_EQ(delegate_->heard.back(), "did end");
}

TEST_F(TextFieldTest, anEmptyFieldShowsItsPlaceholder) {
    EXPECT_TRUE(field_->drawnTexts().empty());
    field_->setPlaceholder(nsString("First"));
    EXPECT_EQ(field_->drawnTexts(), (Heard{"First"}));
    field_->setText(nsString("Anna"));
    EXPECT_EQ(field_->drawnTexts(), (Heard{"Anna"}));
}

}  // namespace
}  // namespace uikit::test

// UITextField: a line of text that a person can edit once the field has the keyboard.
#pragma once

#include "desktop/uikit/color.h"
#include "desktop/uikit/control.h"
#include "desktop/uikit/line_editor.h"
#include "desktop/weak/weak.h"

namespace uikit {

/// The control events that only a field sends.
enum EditingEvent : unsigned long {
    editingDidBegin = 1 << 16,
    editingChanged = 1 << 17,
    editingDidEnd = 1 << 18,
    editingDidEndOnExit = 1 << 19
};

class TextField : public Control {
  public:
    using Super = Control;
    static constexpr objc::Name className{"UITextField"};
    static void define(objc::ClassDefinition<TextField>& definition);

    enum BorderStyle : long { noBorder = 0, line = 1, bezel = 2, rounded = 3 };
    enum ClearButtonMode : long { never = 0, whileEditing = 1, unlessEditing = 2, always = 3 };

    // Messages of the same names. The delegate is not retained; it is asked `textFieldShouldBeginEditing:`,
    // `textField:shouldChangeCharactersInRange:replacementString:` (for typed text alone), `textFieldShouldClear:`,
    // `textFieldShouldReturn:`, and told `textFieldDidBeginEditing:` and `textFieldDidEndEditing:` where it answers
    // them. Text set by message tells nobody. A field that leaves the window ends editing.
    objc::Object text() const;
    void setText(objc::Object text);
    objc::Object placeholder() const;  // nil for none
    void setPlaceholder(objc::Object text);
    objc::Object font() const;
    void setFont(objc::Object font);
    objc::Object textColor() const;
    void setTextColor(objc::Object color);
    objc::Strong<> delegate() const { return delegate_.load(); }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    bool isEditing() const { return isFirstResponder(); }
    long borderStyle() const { return border_; }
    void setBorderStyle(long style);
    long clearButtonMode() const { return clearMode_; }
    void setClearButtonMode(long mode);

    bool touch(const Touch& touch) override;
    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    void insertText(std::string_view text) override;
    void pressKey(EditingKey key) override;
    void draw(graphics::Canvas& canvas) override;
    Size sizeThatFits(Size size) override;
    std::vector<std::string> drawnTexts() const override;
    void windowChanged(Window* window) override;

    // For the toolkit's own C++.
    const std::string& string() const { return editor_.text(); }

  private:
    Rect textRect() const;
    Rect clearRect() const;  // empty while the button is away
    void changed();
    void clear();
    bool delegateAllows(SEL question);
    void tellDelegate(SEL message);

    LineEditor editor_;
    std::string placeholder_;
    graphics::Font font_ = graphics::Font::system(17);
    objc::Strong<> textColor_;
    weak::Object delegate_;
    long border_ = noBorder;
    long clearMode_ = never;
};

}  // namespace uikit

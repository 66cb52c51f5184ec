// One line of text that is being edited: its caret, the keys that move and change it, and how both are drawn.
#pragma once

#include <string>

#include "desktop/graphics/text.h"
#include "desktop/uikit/responder.h"

namespace uikit {

/// The caret stands on a character's boundary, always.
class LineEditor {
  public:
    const std::string& text() const { return text_; }
    /// In bytes from the beginning.
    std::size_t caret() const { return caret_; }
    /// Puts the caret at the end.
    void setText(std::string_view text);
    void insert(std::string_view text);
    /// Answers whether the text changed. Return and Escape do nothing here.
    bool press(Responder::EditingKey key);
    /// Puts the caret at the boundary nearest to `x`, in points from the rectangle's left edge as it was last drawn.
    void moveCaretTo(double x, double width, const graphics::Font& font);

    struct Look {
        graphics::Font font;
        Color textColor;
        Color placeholderColor;
        Color caretColor;
        std::string_view placeholder;
        bool focused = false;
    };
    /// The caret stays in view, so a long text moves to the left while it is edited.
    void draw(graphics::Canvas& canvas, const Rect& rect, const Look& look) const;

  private:
    bool remove(std::size_t from, std::size_t to);
    std::size_t before() const;
    std::size_t after() const;
    double shift(double width, const graphics::Font& font) const;

    std::string text_;
    std::size_t caret_ = 0;
};

}  // namespace uikit

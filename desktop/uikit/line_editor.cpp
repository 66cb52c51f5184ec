// The line that a field edits.
#include "desktop/uikit/line_editor.h"

#include <algorithm>

namespace uikit {
namespace {

constexpr double caretInset = 2;
constexpr double caretWidth = 1.5;

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

void LineEditor::setText(std::string_view text) {
    text_ = text;
    caret_ = text_.size();
}

void LineEditor::insert(std::string_view text) {
    text_.insert(caret_, text);
    caret_ += text.size();
}

bool LineEditor::remove(std::size_t from, std::size_t to) {
    if (from == to) return false;
    text_.erase(from, to - from);
    caret_ = from;
    return true;
}

std::size_t LineEditor::before() const {
    std::size_t place = caret_;
    if (place == 0) return 0;
    do --place;
    while (place > 0 && isContinuation(text_[place]));
    return place;
}

std::size_t LineEditor::after() const {
    std::size_t place = caret_;
    if (place >= text_.size()) return text_.size();
    do ++place;
    while (place < text_.size() && isContinuation(text_[place]));
    return place;
}

bool LineEditor::press(Responder::EditingKey key) {
    using Key = Responder::EditingKey;
    switch (key) {
        case Key::Backspace:
            return remove(before(), caret_);
        case Key::Delete:
            return remove(caret_, after());
        case Key::Left:
            caret_ = before();
            return false;
        case Key::Right:
            caret_ = after();
            return false;
        case Key::Home:
            caret_ = 0;
            return false;
        case Key::End:
            caret_ = text_.size();
            return false;
        case Key::Return:
        case Key::Escape:
            return false;
    }
    return false;
}

double LineEditor::shift(double width, const graphics::Font& font) const {
    return std::max(0.0, graphics::caretPosition(text_, font, caret_) - width + 2);
}

void LineEditor::moveCaretTo(double x, double width, const graphics::Font& font) {
    caret_ = graphics::offsetAt(text_, font, x + shift(width, font));
}

void LineEditor::draw(graphics::Canvas& canvas, const Rect& rect, const Look& look) const {
    const graphics::TextStyle style{look.font, graphics::Alignment::Left};
    if (text_.empty()) graphics::drawText(canvas, look.placeholder, rect, style, look.placeholderColor);
    if (!look.focused) {
        graphics::drawText(canvas, text_, rect, style, look.textColor);
        return;
    }
    const double moved = shift(rect.width(), look.font);
    graphics::SavedState state(canvas);
    canvas.clip(rect);
    graphics::drawText(canvas, text_, {{rect.left() - moved, rect.top()}, {graphics::unboundedWidth, rect.height()}},
                       style, look.textColor);
    const double height = std::min(rect.height(), look.font.lineHeight() + 2 * caretInset);
    const double x = rect.left() - moved + graphics::caretPosition(text_, look.font, caret_);
    canvas.fill({{x, rect.centre().y - height / 2}, {caretWidth, height}}, look.caretColor);
}

}  // namespace uikit

// The search bar's field.
#include <algorithm>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/text.h"

namespace uikit {
namespace {

constexpr double cornerRounding = 5;
constexpr double iconSide = 14;
constexpr double iconMargin = 8;
constexpr double clearSide = 15;
const graphics::Font fieldFont = graphics::Font::system(14);
const graphics::TextStyle fieldStyle{fieldFont, graphics::Alignment::Left};

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

std::size_t before(const std::string& text, std::size_t caret) {
    if (caret == 0) return 0;
    do --caret;
    while (caret > 0 && isContinuation(text[caret]));
    return caret;
}

std::size_t after(const std::string& text, std::size_t caret) {
    if (caret >= text.size()) return text.size();
    do ++caret;
    while (caret < text.size() && isContinuation(text[caret]));
    return caret;
}

}  // namespace

void SearchField::define(objc::ClassDefinition<SearchField>&) {}

void SearchField::setText(std::string_view text) {
    text_ = text;
    caret_ = text_.size();
    publish();
    setNeedsDisplay();
}

void SearchField::setPlaceholder(std::string_view text) {
    placeholder_ = text;
    setNeedsDisplay();
}

Rect SearchField::textRect() const {
    const double left = 2 * iconMargin + iconSide;
    return {{left, 0}, {std::max(0.0, bounds().size.width - left - clearSide - 2 * iconMargin), bounds().size.height}};
}

Rect SearchField::clearRect() const {
    return {{bounds().size.width - clearSide - iconMargin, (bounds().size.height - clearSide) / 2},
            {clearSide, clearSide}};
}

void SearchField::draw(graphics::Canvas& canvas) {
    canvas.fillRounded(bounds(), cornerRounding, Color::white());
    const Rect icon{{iconMargin, (bounds().size.height - iconSide) / 2}, {iconSide, iconSide}};
    graphics::drawSymbol(canvas, graphics::Symbol::Magnifier, icon, palette::secondaryText);
    const Rect rect = textRect();
    if (text_.empty() && !isFirstResponder()) {
        graphics::drawText(canvas, placeholder_, rect, fieldStyle, palette::secondaryText);
        return;
    }
    drawEditedText(canvas);
    if (!text_.empty()) graphics::drawSymbol(canvas, graphics::Symbol::Clear, clearRect(), palette::secondaryText);
}

void SearchField::drawEditedText(graphics::Canvas& canvas) const {
    // The caret stays in view, so a long text moves to the left.
    const Rect rect = textRect();
    const double caretX = graphics::caretPosition(text_, fieldFont, caret_);
    const double shift = std::max(0.0, caretX - rect.width() + 2);
    graphics::SavedState state(canvas);
    canvas.clip(rect);
    constexpr double unbounded = 1e5;
    if (text_.empty())
        graphics::drawText(canvas, placeholder_, rect, fieldStyle, palette::secondaryText);
    else
        graphics::drawText(canvas, text_, {{rect.left() - shift, 0}, {unbounded, rect.height()}}, fieldStyle,
                           Color::black());
    if (!isFirstResponder()) return;
    constexpr double caretInset = 6;
    constexpr double caretWidth = 1.5;
    canvas.fill({{rect.left() - shift + caretX, caretInset}, {caretWidth, rect.height() - 2 * caretInset}}, tint());
}

bool SearchField::touch(const Touch& touch) {
    if (touch.phase != TouchPhase::Ended) return true;
    const Point point = pointFromWindow(touch.point);
    becomeFirstResponder();
    if (!text_.empty() && clearRect().inset(-iconMargin, -iconMargin).contains(point)) {
        remove(0, text_.size());
        return true;
    }
    caret_ = graphics::offsetAt(text_, fieldFont, point.x - textRect().left());
    setNeedsDisplay();
    return true;
}

bool SearchField::becomeFirstResponder() {
    const bool had = isFirstResponder();
    const bool has = View::becomeFirstResponder();
    if (has && !had && focused_) focused_();
    setNeedsDisplay();
    return has;
}

bool SearchField::resignFirstResponder() {
    setNeedsDisplay();
    return View::resignFirstResponder();
}

void SearchField::insertText(std::string_view text) {
    text_.insert(caret_, text);
    caret_ += text.size();
    edited();
}

void SearchField::remove(std::size_t from, std::size_t to) {
    if (from == to) return;
    text_.erase(from, to - from);
    caret_ = from;
    edited();
}

void SearchField::publish() { string_.store(objc::Strong<>(nsString(text_))); }

void SearchField::edited() {
    publish();
    setNeedsDisplay();
    if (edited_) edited_();
}

void SearchField::pressKey(EditingKey key) {
    switch (key) {
        case EditingKey::Backspace:
            remove(before(text_, caret_), caret_);
            break;
        case EditingKey::Delete:
            remove(caret_, after(text_, caret_));
            break;
        case EditingKey::Left:
            caret_ = before(text_, caret_);
            break;
        case EditingKey::Right:
            caret_ = after(text_, caret_);
            break;
        case EditingKey::Home:
            caret_ = 0;
            break;
        case EditingKey::End:
            caret_ = text_.size();
            break;
        case EditingKey::Return:
            resignFirstResponder();
            break;
        case EditingKey::Escape:
            break;
    }
    setNeedsDisplay();
}

std::vector<std::string> SearchField::drawnTexts() const { return {text_.empty() ? placeholder_ : text_}; }

}  // namespace uikit

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

}  // namespace

void SearchField::define(objc::ClassDefinition<SearchField>&) {}

void SearchField::setText(std::string_view text) {
    editor_.setText(text);
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
    editor_.draw(canvas, textRect(),
                 {fieldFont, Color::black(), palette::secondaryText, tint(), placeholder_, isFirstResponder()});
    if (!text().empty()) graphics::drawSymbol(canvas, graphics::Symbol::Clear, clearRect(), palette::secondaryText);
}

bool SearchField::touch(const Touch& touch) {
    if (touch.phase != TouchPhase::Ended) return true;
    const Point point = pointFromWindow(touch.point);
    becomeFirstResponder();
    if (!text().empty() && clearRect().inset(-iconMargin, -iconMargin).contains(point)) {
        editor_.setText({});
        edited();
        return true;
    }
    editor_.moveCaretTo(point.x - textRect().left(), textRect().width(), fieldFont);
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
    editor_.insert(text);
    edited();
}

void SearchField::publish() { string_.store(objc::Strong<>(nsString(text()))); }

void SearchField::edited() {
    publish();
    setNeedsDisplay();
    if (edited_) edited_();
}

void SearchField::pressKey(EditingKey key) {
    if (key == EditingKey::Escape && escaped_) return escaped_();
    if (key == EditingKey::Return) objc::send<"resignFirstResponder", bool>(object());
    if (editor_.press(key)) edited();
    setNeedsDisplay();
}

std::vector<std::string> SearchField::drawnTexts() const { return {text().empty() ? placeholder_ : text()}; }

}  // namespace uikit

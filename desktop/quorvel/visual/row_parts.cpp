// The parts of rows.
#include "desktop/quorvel/visual/row_parts.h"

#include <algorithm>
#include <cmath>

#include "desktop/graphics/icons.h"

namespace quorvel {
namespace {

using graphics::Font;
using graphics::Symbol;
using graphics::Weight;

constexpr double gap = 8;

const graphics::Color symbolGrey = graphics::Color::fromHex(0x9AA5AD);

Symbol symbolOf(Direction direction) {
    switch (direction) {
        case Direction::Outgoing:
            return Symbol::Outgoing;
        case Direction::Missed:
            return Symbol::Missed;
        default:
            return Symbol::Incoming;
    }
}

graphics::TextStyle lineStyle(const Font& font) {
    graphics::TextStyle style;
    style.font = font;
    return style;
}

}  // namespace

graphics::Color titleColor(Direction direction) {
    return direction == Direction::Missed ? uikit::palette::destructive : graphics::Color::black();
}

void drawDirection(graphics::Canvas& canvas, Direction direction, const graphics::Rect& rect) {
    const auto color = direction == Direction::Missed ? uikit::palette::destructive : symbolGrey;
    graphics::drawSymbol(canvas, symbolOf(direction), rect, color);
}

double textWidth(const std::string& text, const Font& font) {
    return text.empty() ? 0 : graphics::measureText(text, lineStyle(font)).width;
}

graphics::Font fittedFont(const std::string& text, graphics::Font font, double smallest, double width) {
    const double needed = textWidth(text, font);
    if (needed <= width) return font;
    constexpr double step = 0.5;
    font.size = std::max(smallest, std::floor(font.size * width / needed / step) * step);
    return font;
}

double drawLine(graphics::Canvas& canvas, const std::string& text, graphics::Point start, double right,
                const Font& font, const graphics::Color& color) {
    const double room = right - start.x;
    if (text.empty() || room <= 0) return start.x;
    const double height = font.lineHeight();
    graphics::drawText(canvas, text, {{start.x, start.y - height / 2}, {room, height}}, lineStyle(font), color);
    return start.x + std::min(room, graphics::measureText(text, lineStyle(font), room).width);
}

double drawSide(graphics::Canvas& canvas, const std::string& text, double right, double middle, const Font& font) {
    if (text.empty()) return gap;
    const double width = textWidth(text, font);
    drawLine(canvas, text, {right - width, middle}, right, font, uikit::palette::secondaryText);
    return width + gap;
}

double drawFaceTime(graphics::Canvas& canvas, bool video, graphics::Point start) {
    constexpr double side = 13;
    graphics::drawSymbol(canvas, video ? Symbol::Video : Symbol::PhoneFilled,
                         {{start.x, start.y - side / 2}, {side, side}}, uikit::palette::secondaryText);
    constexpr double after = 4;
    return start.x + side + after;
}

void drawDayColumn(graphics::Canvas& canvas, const DayColumn& column, graphics::Point start, double width) {
    constexpr double side = 18;
    constexpr double lineDistance = 20;
    const bool isEmpty = column.count == "0";
    const auto grey = uikit::palette::secondaryText;
    const graphics::Rect symbol{{start.x, start.y - side / 2}, {side, side}};
    if (isEmpty)
        graphics::drawSymbol(canvas, symbolOf(column.direction), symbol, uikit::palette::separator);
    else
        drawDirection(canvas, column.direction, symbol);
    const double left = start.x + side + gap;
    const double right = start.x + width;
    drawLine(canvas, column.count, {left, start.y}, right, Font::system(17, Weight::Medium),
             isEmpty ? grey : titleColor(column.direction));
    drawLine(canvas, column.duration, {left, start.y + lineDistance}, right, Font::system(12.5), grey);
}

}  // namespace quorvel

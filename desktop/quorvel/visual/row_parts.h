// The parts that rows are drawn with: lines of text, symbols of direction, a day's columns.
#pragma once

#include <string>

#include "desktop/graphics/text.h"
#include "desktop/quorvel/visual/call_facts.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/uikit/color.h"

namespace quorvel {

/// Red for missed calls, else black.
graphics::Color titleColor(Direction direction);
void drawDirection(graphics::Canvas& canvas, Direction direction, const graphics::Rect& rect);

double textWidth(const std::string& text, const graphics::Font& font);
/// The font, made smaller in half points down to `smallest` where the text would be cut at that width.
graphics::Font fittedFont(const std::string& text, graphics::Font font, double smallest, double width);
/// One line from `start`, at half of its height, cut with an ellipsis at `right`. Answers where it ends.
double drawLine(graphics::Canvas& canvas, const std::string& text, graphics::Point start, double right,
                const graphics::Font& font, const graphics::Color& color);
/// The grey text at the right edge. Answers the width that it takes with the gap before it; a gap alone for none.
double drawSide(graphics::Canvas& canvas, const std::string& text, double right, double middle,
                const graphics::Font& font);
/// A small camera, or a receiver for audio. Answers where text goes on.
double drawFaceTime(graphics::Canvas& canvas, bool video, graphics::Point start);

struct DayColumn {
    Direction direction;
    std::string count;
    std::string duration;
};
void drawDayColumn(graphics::Canvas& canvas, const DayColumn& column, graphics::Point start, double width);

}  // namespace quorvel

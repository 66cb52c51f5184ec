// Text: fonts, measuring and drawing, in every script. Layouts are remembered, so that drawing the same again is cheap.
#pragma once

#include <string_view>

#include "desktop/graphics/canvas.h"

namespace graphics {

enum class Weight { Light, Regular, Medium, Semibold, Bold };

/// Distances in points from the baseline; all positive.
struct FontMetrics {
    double ascender = 0;
    double descender = 0;
    double capHeight = 0;
    double xHeight = 0;

    double lineHeight() const { return ascender + descender; }
};

/// The system's family in a weight and a size in points.
struct Font {
    double size = 17;
    Weight weight = Weight::Regular;
    bool italic = false;

    static Font system(double size, Weight weight = Weight::Regular) { return {size, weight, false}; }
    static Font boldSystem(double size) { return {size, Weight::Semibold, false}; }

    /// The same for every text, whichever fonts its characters come from.
    FontMetrics metrics() const;
    /// Of one line, rounded up to half points.
    double lineHeight() const;

    friend bool operator==(const Font&, const Font&) = default;
};

/// Natural begins at the side where the text's script begins.
enum class Alignment { Natural, Left, Centre, Right };
enum class LineBreak { Words, Characters, Clip, TruncateHead, TruncateTail, TruncateMiddle };
enum class VerticalAlignment { Top, Centre, Bottom };

struct TextStyle {
    Font font;
    Alignment alignment = Alignment::Left;
    /// The truncating ones break at words before the last line, and end with an ellipsis what does not fit.
    LineBreak lineBreak = LineBreak::TruncateTail;
    /// Lines at most; 0 for as many as the text needs.
    int lines = 1;
    VerticalAlignment vertical = VerticalAlignment::Centre;

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// More than any text: nothing wraps or is cut.
inline constexpr double unboundedWidth = 1e6;

/// The size of the text within `width` points, in whole half points, rounded up; the height is the number of lines
/// times the font's line height. An empty text is one line high and has no width. Bytes that are not UTF-8 count as
/// U+FFFD. Of more than 4,096 bytes in one line, or 16,384 in several, a part with an ellipsis is measured and drawn.
Size measureText(std::string_view text, const TextStyle& style, double width = unboundedWidth);

/// Whether something of the text is left out at this width.
bool isTruncated(std::string_view text, const TextStyle& style, double width);

/// Draws into the rectangle: lines are laid out in its width, cut where `style` says so, and set as a block at the top,
/// the centre or the bottom. The baseline stands on a whole device pixel, and does not move with the text's characters.
/// Nothing is clipped: what is higher than the rectangle reaches out of it.
void drawText(Canvas& canvas, std::string_view text, const Rect& rect, const TextStyle& style, const Color& color);

/// The baseline of the first line, in points from the rectangle's top edge, before it is moved to the pixel.
double firstBaseline(std::string_view text, const TextStyle& style, Size size);

/// Where a caret stands before the byte `offset` of a single line, in points from the line's left edge. An offset
/// inside a character stands for its beginning, one behind the first 4,096 bytes for the end of those.
double caretPosition(std::string_view text, const Font& font, std::size_t offset);
/// The offset in bytes of the character boundary that is nearest to `x` in a single line.
std::size_t offsetAt(std::string_view text, const Font& font, double x);

/// How many layouts are remembered on this thread, and the most that ever are.
std::size_t cachedLayouts();
inline constexpr std::size_t cachedLayoutsLimit = 1024;

}  // namespace graphics

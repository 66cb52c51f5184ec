// Measuring and drawing text.
#include "desktop/graphics/text.h"

#include "desktop/graphics/text_layout.h"

namespace graphics {

namespace {

constexpr double unit = PANGO_SCALE;

/// Cairo puts a glyph's picture on whole pixels. With fewer pixels a point than this, the eye sees the uneven gaps, and
/// the glyphs' outlines are filled where they belong instead.
constexpr double outlinesBelow = 1.75;

double roundedUp(double points) { return std::ceil(points * 2 - 1e-6) / 2; }

double blockTop(double blockHeight, double height, VerticalAlignment vertical) {
    switch (vertical) {
        case VerticalAlignment::Top:
            return 0;
        case VerticalAlignment::Centre:
            return (height - blockHeight) / 2;
        case VerticalAlignment::Bottom:
            return height - blockHeight;
    }
    return 0;
}

double lineStart(const TextLayout::Line& line, double width, Alignment alignment) {
    const double room = width - line.width;
    switch (alignment) {
        case Alignment::Natural:
            return line.rightToLeft ? room : 0;
        case Alignment::Left:
            return 0;
        case Alignment::Centre:
            return room / 2;
        case Alignment::Right:
            return room;
    }
    return 0;
}

double baselineOf(const TextLayout& layout, const TextStyle& style, double height) {
    const double lineHeight = roundedUp(layout.metrics.lineHeight());
    const double block = lineHeight * static_cast<double>(layout.lines.size());
    // What rounding added to the line is shared between the room above and below.
    const double above = (lineHeight - layout.metrics.lineHeight()) / 2;
    return blockTop(block, height, style.vertical) + above + layout.metrics.ascender;
}

}  // namespace

FontMetrics Font::metrics() const { return TextEngine::current().metrics(*this); }
double Font::lineHeight() const { return roundedUp(metrics().lineHeight()); }

Size measureText(std::string_view text, const TextStyle& style, double width) {
    const TextLayout& layout = TextEngine::current().layout(text, style, width);
    const double lineHeight = roundedUp(layout.metrics.lineHeight());
    return {roundedUp(layout.width()), lineHeight * static_cast<double>(layout.lines.size())};
}

bool isTruncated(std::string_view text, const TextStyle& style, double width) {
    return TextEngine::current().layout(text, style, width).truncated;
}

double firstBaseline(std::string_view text, const TextStyle& style, Size size) {
    return baselineOf(TextEngine::current().layout(text, style, size.width), style, size.height);
}

void drawText(Canvas& canvas, std::string_view text, const Rect& rect, const TextStyle& style, const Color& color) {
    if (text.empty()) return;
    const TextLayout& layout = TextEngine::current().layout(text, style, rect.width());
    const double lineHeight = roundedUp(layout.metrics.lineHeight());
    cairo_t* context = canvas.context();
    const bool clips = style.lineBreak == LineBreak::Clip && layout.truncated;
    if (clips) {
        canvas.save();
        canvas.clip(rect);
    }
    const bool outlines = canvas.pixelsPerPoint() < outlinesBelow;
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
    double baseline = rect.top() + baselineOf(layout, style, rect.height());
    for (const TextLayout::Line& line : layout.lines) {
        const Point start =
            canvas.snapped(Point{rect.left() + lineStart(line, rect.width(), style.alignment), baseline});
        cairo_move_to(context, start.x, start.y);
        if (outlines && line.hasOutlines) {
            pango_cairo_layout_line_path(context, line.line);
            cairo_fill(context);
        } else {
            pango_cairo_show_layout_line(context, line.line);
        }
        baseline += lineHeight;
    }
    cairo_new_path(context);
    if (clips) canvas.restore();
}

double caretPosition(std::string_view text, const Font& font, std::size_t offset) {
    const LayoutHandle line = TextEngine::current().editedLine(text, font);
    const std::size_t shown = std::string_view(pango_layout_get_text(line.get())).size();
    const std::size_t at = std::min(characterStart(text, std::min(offset, text.size())), shown);
    PangoRectangle strong;
    pango_layout_get_cursor_pos(line.get(), static_cast<int>(at), &strong, nullptr);
    return strong.x / unit;
}

std::size_t offsetAt(std::string_view text, const Font& font, double x) {
    const LayoutHandle line = TextEngine::current().editedLine(text, font);
    int index = 0;
    int trailing = 0;
    pango_layout_xy_to_index(line.get(), static_cast<int>(std::clamp(x, 0.0, unboundedWidth) * unit), 0, &index,
                             &trailing);
    const char* start = pango_layout_get_text(line.get());
    const char* boundary = g_utf8_offset_to_pointer(start + index, trailing);
    return std::min(text.size(), static_cast<std::size_t>(boundary - start));
}

std::size_t cachedLayouts() { return TextEngine::current().count(); }

}  // namespace graphics

// Drawing in points onto a Cairo context.
#include "desktop/graphics/canvas.h"

#include <numbers>

namespace graphics {

namespace {

constexpr double pi = std::numbers::pi;

cairo_line_cap_t cap(LineEnd end) {
    switch (end) {
        case LineEnd::Round:
            return CAIRO_LINE_CAP_ROUND;
        case LineEnd::Square:
            return CAIRO_LINE_CAP_SQUARE;
        case LineEnd::Butt:
            return CAIRO_LINE_CAP_BUTT;
    }
    return CAIRO_LINE_CAP_ROUND;
}

/// A rectangle in whole device pixels.
struct PixelRect {
    double left;
    double top;
    double right;
    double bottom;
};

PixelRect devicePixels(cairo_t* context, const Rect& rect) {
    double left = rect.left(), top = rect.top(), right = rect.right(), bottom = rect.bottom();
    cairo_user_to_device(context, &left, &top);
    cairo_user_to_device(context, &right, &bottom);
    PixelRect pixels{std::round(left), std::round(top), std::round(right), std::round(bottom)};
    if (rect.width() > 0 && pixels.right == pixels.left) pixels.right += 1;
    if (rect.height() > 0 && pixels.bottom == pixels.top) pixels.bottom += 1;
    return pixels;
}

void fillPixels(cairo_t* context, double left, double top, double right, double bottom) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    cairo_identity_matrix(context);
    cairo_new_path(context);
    cairo_rectangle(context, left, top, right - left, bottom - top);
    cairo_set_matrix(context, &matrix);
    cairo_fill(context);
}

}  // namespace

Path& Path::moveTo(Point point) { return steps_.push_back({Kind::Move, {point, {}, {}}}), *this; }
Path& Path::lineTo(Point point) { return steps_.push_back({Kind::Line, {point, {}, {}}}), *this; }
Path& Path::close() { return steps_.push_back({Kind::Close, {}}), *this; }

Path& Path::curveTo(Point control1, Point control2, Point end) {
    steps_.push_back({Kind::Curve, {control1, control2, end}});
    return *this;
}

Path& Path::arc(Point centre, double radius, double start, double end) {
    steps_.push_back({Kind::Arc, {centre, {radius, 0}, {start, end}}});
    return *this;
}

Path& Path::arcBack(Point centre, double radius, double start, double end) {
    steps_.push_back({Kind::ArcBack, {centre, {radius, 0}, {start, end}}});
    return *this;
}

Path& Path::addRect(const Rect& rect) {
    moveTo(rect.origin).lineTo({rect.right(), rect.top()}).lineTo({rect.right(), rect.bottom()});
    return lineTo({rect.left(), rect.bottom()}).close();
}

Path& Path::addRoundedRect(const Rect& rect, double radius) {
    const double r = std::clamp(radius, 0.0, std::min(rect.width(), rect.height()) / 2);
    if (r == 0) return addRect(rect);
    moveTo({rect.left(), rect.top() + r});
    arc({rect.left() + r, rect.top() + r}, r, pi, 1.5 * pi);
    arc({rect.right() - r, rect.top() + r}, r, 1.5 * pi, 2 * pi);
    arc({rect.right() - r, rect.bottom() - r}, r, 0, pi / 2);
    arc({rect.left() + r, rect.bottom() - r}, r, pi / 2, pi);
    return close();
}

Path& Path::addCircle(Point centre, double radius) {
    return moveTo({centre.x + radius, centre.y}).arc(centre, radius, 0, 2 * pi).close();
}

Canvas::Canvas(const Image& image) : context_(cairo_create(image.surface())) {
    cairo_save(context_);
    scale(image.scale());
}

Canvas::Canvas(cairo_t* context, double scaleFactor) : context_(cairo_reference(context)) {
    cairo_save(context_);
    scale(scaleFactor);
}

Canvas::~Canvas() {
    cairo_restore(context_);
    cairo_destroy(context_);
}

void Canvas::save() { cairo_save(context_); }
void Canvas::restore() { cairo_restore(context_); }
void Canvas::translate(double x, double y) { cairo_translate(context_, x, y); }
void Canvas::scale(double x, double y) { cairo_scale(context_, x, y); }
void Canvas::rotate(double angle) { cairo_rotate(context_, angle); }

void Canvas::clip(const Rect& rect) {
    cairo_new_path(context_);
    cairo_rectangle(context_, rect.left(), rect.top(), rect.width(), rect.height());
    cairo_clip(context_);
}

void Canvas::clipRounded(const Rect& rect, double radius) {
    traceRounded(rect, radius);
    cairo_clip(context_);
}

void Canvas::clip(const Path& path) {
    trace(path);
    cairo_clip(context_);
}

Rect Canvas::clipBounds() const {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(context_, &left, &top, &right, &bottom);
    return {{left, top}, {right - left, bottom - top}};
}

void Canvas::beginGroup() { cairo_push_group(context_); }

void Canvas::endGroup(double alpha) {
    cairo_pop_group_to_source(context_);
    cairo_paint_with_alpha(context_, alpha);
    source(Color::black());  // lets go of the group's pixels
}

void Canvas::fill(const Rect& rect, const Color& color) {
    source(color);
    cairo_new_path(context_);
    cairo_rectangle(context_, rect.left(), rect.top(), rect.width(), rect.height());
    cairo_fill(context_);
}

void Canvas::fillRounded(const Rect& rect, double radius, const Color& color) {
    source(color);
    traceRounded(rect, radius);
    cairo_fill(context_);
}

void Canvas::fillCircle(Point centre, double radius, const Color& color) {
    source(color);
    cairo_new_path(context_);
    cairo_arc(context_, centre.x, centre.y, radius, 0, 2 * pi);
    cairo_fill(context_);
}

void Canvas::fill(const Path& path, const Color& color, FillRule rule) {
    source(color);
    trace(path);
    cairo_set_fill_rule(context_, rule == FillRule::EvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(context_);
    cairo_set_fill_rule(context_, CAIRO_FILL_RULE_WINDING);
}

void Canvas::fillGradient(const Rect& rect, const Color& top, const Color& bottom) {
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0, rect.top(), 0, rect.bottom());
    cairo_pattern_add_color_stop_rgba(pattern, 0, top.red, top.green, top.blue, top.alpha);
    cairo_pattern_add_color_stop_rgba(pattern, 1, bottom.red, bottom.green, bottom.blue, bottom.alpha);
    cairo_set_source(context_, pattern);
    cairo_pattern_destroy(pattern);
    cairo_new_path(context_);
    cairo_rectangle(context_, rect.left(), rect.top(), rect.width(), rect.height());
    cairo_fill(context_);
}

void Canvas::stroke(const Rect& rect, double lineWidth, const Color& color) {
    strokeRounded(rect, 0, lineWidth, color);
}

void Canvas::strokeRounded(const Rect& rect, double radius, double lineWidth, const Color& color) {
    source(color);
    traceRounded(rect.inset(lineWidth / 2, lineWidth / 2), radius - lineWidth / 2);
    cairo_set_line_width(context_, lineWidth);
    cairo_set_line_join(context_, CAIRO_LINE_JOIN_MITER);
    cairo_stroke(context_);
}

void Canvas::strokeCircle(Point centre, double radius, double lineWidth, const Color& color) {
    source(color);
    cairo_new_path(context_);
    cairo_arc(context_, centre.x, centre.y, radius, 0, 2 * pi);
    cairo_close_path(context_);
    cairo_set_line_width(context_, lineWidth);
    cairo_stroke(context_);
}

void Canvas::stroke(const Path& path, double lineWidth, const Color& color, LineEnd end) {
    source(color);
    trace(path);
    cairo_set_line_width(context_, lineWidth);
    cairo_set_line_cap(context_, cap(end));
    cairo_set_line_join(context_, end == LineEnd::Round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_stroke(context_);
}

void Canvas::line(Point from, Point to, double lineWidth, const Color& color, LineEnd end) {
    source(color);
    cairo_new_path(context_);
    cairo_move_to(context_, from.x, from.y);
    cairo_line_to(context_, to.x, to.y);
    cairo_set_line_width(context_, lineWidth);
    cairo_set_line_cap(context_, cap(end));
    cairo_stroke(context_);
}

void Canvas::horizontalHairline(double left, double right, double y, const Color& color) {
    const PixelRect pixels = devicePixels(context_, {{left, y}, {right - left, 0}});
    source(color);
    fillPixels(context_, pixels.left, pixels.top, pixels.right, pixels.top + 1);
}

void Canvas::verticalHairline(double x, double top, double bottom, const Color& color) {
    const PixelRect pixels = devicePixels(context_, {{x, top}, {0, bottom - top}});
    source(color);
    fillPixels(context_, pixels.left, pixels.top, pixels.left + 1, pixels.bottom);
}

void Canvas::hairlineFrame(const Rect& rect, const Color& color) { hairlineFrameRounded(rect, 0, color); }

void Canvas::hairlineFrameRounded(const Rect& rect, double radius, const Color& color) {
    strokeRounded(snapped(rect), radius, pixel(), color);
}

void Canvas::draw(const Image& image, const Rect& rect, double alpha) {
    if (!image || rect.isEmpty()) return;
    cairo_save(context_);
    cairo_translate(context_, rect.left(), rect.top());
    cairo_scale(context_, rect.width() / image.pixelWidth(), rect.height() / image.pixelHeight());
    cairo_set_source_surface(context_, image.surface(), 0, 0);
    cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_GOOD);
    cairo_new_path(context_);
    cairo_rectangle(context_, 0, 0, image.pixelWidth(), image.pixelHeight());
    cairo_clip(context_);
    cairo_paint_with_alpha(context_, alpha);
    cairo_restore(context_);
}

void Canvas::drawTinted(const Image& image, const Rect& rect, const Color& color) {
    if (!image || rect.isEmpty()) return;
    cairo_save(context_);
    cairo_translate(context_, rect.left(), rect.top());
    cairo_scale(context_, rect.width() / image.pixelWidth(), rect.height() / image.pixelHeight());
    source(color);
    cairo_mask_surface(context_, image.surface(), 0, 0);
    cairo_restore(context_);
}

double Canvas::pixelsPerPoint() const {
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    return std::hypot(matrix.xx, matrix.yx);
}

Rect Canvas::snapped(const Rect& rect) const {
    PixelRect pixels = devicePixels(context_, rect);
    cairo_device_to_user(context_, &pixels.left, &pixels.top);
    cairo_device_to_user(context_, &pixels.right, &pixels.bottom);
    return {{pixels.left, pixels.top}, {pixels.right - pixels.left, pixels.bottom - pixels.top}};
}

Point Canvas::snapped(Point point) const {
    cairo_user_to_device(context_, &point.x, &point.y);
    point = {std::round(point.x), std::round(point.y)};
    cairo_device_to_user(context_, &point.x, &point.y);
    return point;
}

void Canvas::source(const Color& color) {
    cairo_set_source_rgba(context_, color.red, color.green, color.blue, color.alpha);
}

void Canvas::trace(const Path& path) {
    cairo_new_path(context_);
    for (const Path::Step& step : path.steps_) {
        const auto& [a, b, c] = step.points;
        switch (step.kind) {
            case Path::Kind::Move:
                cairo_move_to(context_, a.x, a.y);
                break;
            case Path::Kind::Line:
                cairo_line_to(context_, a.x, a.y);
                break;
            case Path::Kind::Curve:
                cairo_curve_to(context_, a.x, a.y, b.x, b.y, c.x, c.y);
                break;
            case Path::Kind::Arc:
                cairo_arc(context_, a.x, a.y, b.x, c.x, c.y);
                break;
            case Path::Kind::ArcBack:
                cairo_arc_negative(context_, a.x, a.y, b.x, c.x, c.y);
                break;
            case Path::Kind::Close:
                cairo_close_path(context_);
                break;
        }
    }
}

void Canvas::traceRounded(const Rect& rect, double radius) {
    Path path;
    trace(path.addRoundedRect(rect, radius));
}

}  // namespace graphics

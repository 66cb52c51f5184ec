// Points, sizes, rectangles and insets in points. Each has the layout of the handset's structure of that kind, so that
// a value passes through a message send unchanged.
#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace graphics {

struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
};

inline double distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
    bool isEmpty() const { return width <= 0 || height <= 0; }
};

struct EdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

struct Rect {
    Point origin;
    Size size;

    friend bool operator==(const Rect&, const Rect&) = default;

    double left() const { return origin.x; }
    double top() const { return origin.y; }
    double right() const { return origin.x + size.width; }
    double bottom() const { return origin.y + size.height; }
    double width() const { return size.width; }
    double height() const { return size.height; }
    Point centre() const { return {origin.x + size.width / 2, origin.y + size.height / 2}; }
    bool isEmpty() const { return size.isEmpty(); }

    /// The left and top edges belong to the rectangle, the right and bottom ones do not.
    bool contains(Point point) const {
        return point.x >= left() && point.x < right() && point.y >= top() && point.y < bottom();
    }
    bool intersects(const Rect& other) const {
        return left() < other.right() && other.left() < right() && top() < other.bottom() && other.top() < bottom();
    }

    Rect translated(double x, double y) const { return {{origin.x + x, origin.y + y}, size}; }
    /// Moves every edge inwards; a negative distance outwards. The size never falls below zero.
    Rect inset(double x, double y) const { return inset(EdgeInsets{y, x, y, x}); }
    Rect inset(const EdgeInsets& insets) const {
        return {{origin.x + insets.left, origin.y + insets.top},
                {std::max(0.0, size.width - insets.left - insets.right),
                 std::max(0.0, size.height - insets.top - insets.bottom)}};
    }
    /// What both rectangles cover; an empty rectangle at the origin where they do not meet.
    Rect intersection(const Rect& other) const {
        if (!intersects(other)) return {};
        const Point corner{std::max(left(), other.left()), std::max(top(), other.top())};
        return {corner, {std::min(right(), other.right()) - corner.x, std::min(bottom(), other.bottom()) - corner.y}};
    }
    /// The smallest rectangle that covers both; an empty one adds nothing.
    Rect united(const Rect& other) const {
        if (isEmpty()) return other;
        if (other.isEmpty()) return *this;
        const Point corner{std::min(left(), other.left()), std::min(top(), other.top())};
        return {corner, {std::max(right(), other.right()) - corner.x, std::max(bottom(), other.bottom()) - corner.y}};
    }
};

/// A rectangle of this size in the middle of `around`.
inline Rect centred(Size size, const Rect& around) {
    return {{around.centre().x - size.width / 2, around.centre().y - size.height / 2}, size};
}

static_assert(std::is_standard_layout_v<Rect> && std::is_trivially_copyable_v<Rect>);
static_assert(sizeof(Point) == 16 && sizeof(Size) == 16 && sizeof(Rect) == 32 && sizeof(EdgeInsets) == 32);

}  // namespace graphics

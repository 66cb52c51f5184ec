// Symbols of bars, rows, fields and tabs.
#include <numbers>

#include "desktop/graphics/icon_pen.h"

namespace graphics {

namespace {

Path crossPath(Point centre, double reach) {
    Path path;
    path.moveTo({centre.x - reach, centre.y - reach}).lineTo({centre.x + reach, centre.y + reach});
    return path.moveTo({centre.x + reach, centre.y - reach}).lineTo({centre.x - reach, centre.y + reach});
}

/// A bin with its lid, `width` wide at the lid, between 3 and 21.
void bin(const Pen& pen, double centre, double width) {
    const double lid = width / 2, rim = lid - 1.75, foot = rim - 1, grip = width * 0.19;
    pen.line({centre - lid, 6.25}, {centre + lid, 6.25});
    Path handle;
    handle.moveTo({centre - grip, 6.25}).lineTo({centre - grip, 4.5});
    handle.curveTo({centre - grip, 3.6}, {centre - grip + 0.7, 3.25}, {centre - grip + 1.3, 3.25});
    handle.lineTo({centre + grip - 1.3, 3.25});
    handle.curveTo({centre + grip - 0.7, 3.25}, {centre + grip, 3.6}, {centre + grip, 4.5});
    pen.stroke(handle.lineTo({centre + grip, 6.25}));
    Path can;
    can.moveTo({centre - rim, 6.25}).lineTo({centre - foot - 0.1, 18.9});
    can.curveTo({centre - foot, 20.1}, {centre - foot + 0.9, 20.75}, {centre - foot + 1.9, 20.75});
    can.lineTo({centre + foot - 1.9, 20.75});
    can.curveTo({centre + foot - 0.9, 20.75}, {centre + foot, 20.1}, {centre + foot + 0.1, 18.9});
    pen.stroke(can.lineTo({centre + rim, 6.25}));
}

}  // namespace

void Pen::cross(Point centre, double reach, double width) const { stroke(crossPath(centre, reach), width); }

void Pen::cutCross(Point centre, double reach, double width) const {
    cairo_set_operator(canvas_.context(), CAIRO_OPERATOR_DEST_OUT);
    canvas_.stroke(crossPath(centre, reach), width, Color::black());
    cairo_set_operator(canvas_.context(), CAIRO_OPERATOR_OVER);
}

namespace icons {

void deleteAll(const Pen& pen) {
    bin(pen, 8.25, 13);
    pen.line({17.5, 9.75}, {22.25, 9.75});
    pen.line({17.25, 13.75}, {21.25, 13.75});
    pen.line({16.75, 17.75}, {20.25, 17.75});
}

void trash(const Pen& pen) {
    bin(pen, 12, 16.5);
    pen.line({9.75, 10.25}, {10, 16.75});
    pen.line({14.25, 10.25}, {14, 16.75});
}

void cancel(const Pen& pen) {
    pen.circle({12, 12}, 9.25);
    pen.cross({12, 12}, 3.25);
}

void stop(const Pen& pen) { pen.cross({12, 12}, 6.75); }

void back(const Pen& pen) {
    Path path;
    pen.stroke(path.moveTo({10.5, 1.5}).lineTo({1.5, 10.5}).lineTo({10.5, 19.5}), 2.25);
}

void disclosure(const Pen& pen) {
    Path path;
    pen.stroke(path.moveTo({1.25, 1.25}).lineTo({6.5, 6.5}).lineTo({1.25, 11.75}), 1.75);
}

void detail(const Pen& pen) {
    pen.circle({11, 11}, 9.75, 1.25);
    pen.dot({11, 6.4}, 1.15);
    Path stem;
    pen.stroke(stem.moveTo({9.6, 9.75}).lineTo({11.1, 9.75}).lineTo({11.1, 15.5}), 1.25);
    pen.line({9.4, 15.5}, {12.8, 15.5}, 1.25);
}

void magnifier(const Pen& pen) {
    pen.circle({6.5, 6.5}, 5);
    pen.line({10.25, 10.25}, {14.5, 14.5});
}

void clear(const Pen& pen) {
    pen.canvas().beginGroup();
    pen.dot({8, 8}, 7.5);
    pen.cutCross({8, 8}, 2.5, 1.4);
    pen.canvas().endGroup(1);
}

void add(const Pen& pen) {
    pen.line({12, 4.25}, {12, 19.75});
    pen.line({4.25, 12}, {19.75, 12});
}

void checkmark(const Pen& pen) {
    Path path;
    pen.stroke(path.moveTo({2, 9}).lineTo({6.25, 13.25}).lineTo({14, 3.25}), 2);
}

void favorites(const Pen& pen) {
    constexpr Point centre{14, 14.9};
    constexpr double outer = 11.9, inner = 5.3;
    Path star;
    for (int i = 0; i < 10; ++i) {
        const double angle = (i / 5.0 - 0.5) * std::numbers::pi, radius = i % 2 == 0 ? outer : inner;
        const Point corner{centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
        i == 0 ? star.moveTo(corner) : star.lineTo(corner);
    }
    pen.stroke(star.close());
}

void recents(const Pen& pen) {
    pen.circle({14, 14}, 11);
    Path hands;
    pen.stroke(hands.moveTo({14, 7.25}).lineTo({14, 14.25}).lineTo({18.75, 17}));
}

void contacts(const Pen& pen) {
    pen.circle({14, 14}, 11);
    pen.circle({14, 11.25}, 3.75);
    Path shoulders;
    shoulders.moveTo({6.9, 22.3}).curveTo({8, 19.3}, {10.6, 18}, {14, 18});
    pen.stroke(shoulders.curveTo({17.4, 18}, {20, 19.3}, {21.1, 22.3}));
}

void keypad(const Pen& pen) {
    constexpr double columns[] = {6.75, 14, 21.25};
    for (const double row : {4.25, 10.75, 17.25}) {
        for (const double column : columns) pen.dot({column, row}, 2.25);
    }
    pen.dot({14, 23.75}, 2.25);
}

void voicemail(const Pen& pen) {
    pen.circle({7.25, 14}, 5);
    pen.circle({20.75, 14}, 5);
    pen.line({7.25, 19}, {20.75, 19});
}

}  // namespace icons

}  // namespace graphics

// Symbols of calls and people.
#include <numbers>

#include "desktop/graphics/icon_pen.h"

namespace graphics {

namespace {

/// The handset as it is held: its back to the lower left.
void heldHandset(const Pen& pen, Point centre, double scale, bool filled) {
    Canvas& canvas = pen.canvas();
    const SavedState saved(canvas);
    canvas.translate(centre.x, centre.y);
    canvas.rotate(-0.75 * std::numbers::pi);
    canvas.scale(scale);
    if (filled) pen.fill(handset());
    pen.stroke(handset(), Pen::common / scale);
}

void arrow(const Pen& pen, Point from, Point to, double head, double width = Pen::common) {
    const double x = to.x > from.x ? -head : head;
    const double y = to.y > from.y ? -head : head;
    pen.line(from, to, width);
    Path path;
    pen.stroke(path.moveTo({to.x + x, to.y}).lineTo(to).lineTo({to.x, to.y + y}), width);
}

/// An arrow that comes down from the right, strikes and flies off to the left.
void bouncingArrow(const Pen& pen, Point right, Point bottom, Point left, double head, double width = Pen::common) {
    Path path;
    pen.stroke(path.moveTo(right).lineTo(bottom).lineTo(left), width);
    Path tip;
    pen.stroke(tip.moveTo({left.x + head, left.y}).lineTo(left).lineTo({left.x, left.y + head}), width);
}

constexpr Point heldAt{9.6, 14.4};
constexpr double heldScale = 0.92;

}  // namespace

Path handset() {
    Path path;
    path.moveTo({-10, 1.4}).curveTo({-10, -3.2}, {-5.2, -5}, {0, -5}).curveTo({5.2, -5}, {10, -3.2}, {10, 1.4});
    path.lineTo({10, 2.9}).curveTo({10, 3.7}, {9.5, 4.1}, {8.8, 3.9});
    path.lineTo({5.8, 3.2}).curveTo({5.2, 3.05}, {4.9, 2.6}, {4.9, 2}).lineTo({4.9, 0});
    path.curveTo({3.3, -0.55}, {1.6, -0.8}, {0, -0.8}).curveTo({-1.6, -0.8}, {-3.3, -0.55}, {-4.9, 0});
    path.lineTo({-4.9, 2}).curveTo({-4.9, 2.6}, {-5.2, 3.05}, {-5.8, 3.2}).lineTo({-8.8, 3.9});
    path.curveTo({-9.5, 4.1}, {-10, 3.7}, {-10, 2.9});
    return path.close();
}

namespace icons {

void allCalls(const Pen& pen) {
    heldHandset(pen, heldAt, heldScale, false);
    pen.line({14.25, 3.75}, {21.75, 3.75});
    pen.line({14.25, 7.25}, {21.75, 7.25});
    pen.line({16.75, 10.75}, {21.75, 10.75});
}

void dialledCalls(const Pen& pen) {
    heldHandset(pen, heldAt, heldScale, false);
    arrow(pen, {14.5, 9.5}, {21.25, 2.75}, 5);
}

void receivedCalls(const Pen& pen) {
    heldHandset(pen, heldAt, heldScale, false);
    arrow(pen, {21.25, 2.75}, {14.5, 9.5}, 5);
}

void missedCalls(const Pen& pen) {
    heldHandset(pen, heldAt, heldScale, false);
    bouncingArrow(pen, {22, 4.25}, {17.75, 8.5}, {13, 3.75}, 4);
}

void phone(const Pen& pen) { heldHandset(pen, {11, 13}, 1.1, false); }
void phoneFilled(const Pen& pen) { heldHandset(pen, {11, 13}, 1.1, true); }

void hangUp(const Pen& pen) {
    const SavedState saved(pen.canvas());
    pen.canvas().translate(12, 12.5);
    pen.fill(handset());
    pen.stroke(handset());
}

void video(const Pen& pen) {
    Path body;
    pen.stroke(body.addRoundedRect({{2.25, 6.25}, {13, 11.5}}, 2.75));
    Path lens;
    lens.moveTo({18, 10.5}).lineTo({21.75, 7.75}).lineTo({21.75, 16.25}).lineTo({18, 13.5}).close();
    pen.stroke(lens);
}

void message(const Pen& pen) {
    Path bubble;
    bubble.moveTo({6.5, 17.9}).curveTo({4, 16.5}, {2.25, 14.2}, {2.25, 11.5});
    bubble.curveTo({2.25, 7.2}, {6.6, 3.75}, {12, 3.75}).curveTo({17.4, 3.75}, {21.75, 7.2}, {21.75, 11.5});
    bubble.curveTo({21.75, 15.8}, {17.4, 19.25}, {12, 19.25}).curveTo({11.2, 19.25}, {10.4, 19.2}, {9.7, 19});
    bubble.curveTo({8.5, 20}, {6.9, 20.8}, {5, 21}).curveTo({5.9, 20.1}, {6.5, 19}, {6.5, 17.9});
    pen.stroke(bubble.close());
}

void person(const Pen& pen) {
    pen.circle({12, 8}, 4.25);
    Path shoulders;
    shoulders.moveTo({3.75, 20.25}).curveTo({3.75, 16.8}, {7.2, 15}, {12, 15});
    shoulders.curveTo({16.8, 15}, {20.25, 16.8}, {20.25, 20.25});
    pen.stroke(shoulders.close());
}

void outgoing(const Pen& pen) { arrow(pen, {2.5, 11.5}, {11.25, 2.75}, 6); }
void incoming(const Pen& pen) { arrow(pen, {11.5, 2.5}, {2.75, 11.25}, 6); }
void missed(const Pen& pen) { bouncingArrow(pen, {12.75, 4.75}, {7.75, 9.75}, {1.75, 3.75}, 5); }

}  // namespace icons

}  // namespace graphics

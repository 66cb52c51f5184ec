// UIView: how the tree is drawn, and which view a point hits.
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"

namespace uikit {
namespace {

bool displayWanted = true;
constexpr double invisibleAlpha = 0.01;

}  // namespace

bool displayNeeded() { return displayWanted; }

void View::setNeedsDisplay() { displayWanted = true; }

void Window::renderScreen(graphics::Canvas& canvas) {
    layoutIfNeeded();
    displayWanted = false;
    render(canvas);
}

void View::setDisplacement(Point points) {
    if (points == displacement_) return;
    displacement_ = points;
    setNeedsDisplay();
}

Color View::colorOfBackground() const { return colorOf(backgroundColor_); }

void View::render(graphics::Canvas& canvas) {
    const double alpha = shownAlpha();
    if (hidden_ || alpha < invisibleAlpha) return;
    const graphics::SavedState saved(canvas);
    const Point origin = shownFrame().origin + displacement_;
    canvas.translate(origin.x, origin.y);
    if (alpha < 1) canvas.beginGroup();
    renderContents(canvas);
    if (alpha < 1) canvas.endGroup(alpha);
}

void View::renderContents(graphics::Canvas& canvas) {
    const graphics::SavedState saved(canvas);
    const Size size = shownFrame().size;
    const Rect place = canvas.snapped({{}, size});
    const bool visible = canvas.clipBounds().intersects(place);
    if (clipsToBounds_) {
        if (!visible) return;
        if (cornerRadius_ > 0)
            canvas.clipRounded(place, cornerRadius_);
        else
            canvas.clip(place);
    }
    if (visible) {
        const Color background = shownBackground();
        if (background.alpha > 0 && cornerRadius_ > 0) canvas.fillRounded(place, cornerRadius_, background);
        if (background.alpha > 0 && cornerRadius_ <= 0) canvas.fill(place, background);
        renderOwn(canvas, size, &View::draw);
    }
    canvas.translate(-boundsOrigin_.x, -boundsOrigin_.y);
    for (const auto& each : subviews_) each->render(canvas);
    canvas.translate(boundsOrigin_.x, boundsOrigin_.y);
    if (visible) renderOwn(canvas, size, &View::drawAbove);
}

/// What the view draws itself is stretched while an animation shows it at another size.
void View::renderOwn(graphics::Canvas& canvas, Size shown, void (View::*part)(graphics::Canvas&)) {
    const graphics::SavedState saved(canvas);
    const Size size = frame_.size;
    if (shown != size && !size.isEmpty()) canvas.scale(shown.width / size.width, shown.height / size.height);
    canvas.translate(-boundsOrigin_.x, -boundsOrigin_.y);
    (this->*part)(canvas);
}

View* View::hitTest(Point point) {
    if (hidden_ || alpha_ < invisibleAlpha || !userInteractionEnabled_) return nullptr;
    if (!objc::send<"pointInside:withEvent:", bool>(object(), point, objc::Object{})) return nullptr;
    for (auto each = subviews_.rbegin(); each != subviews_.rend(); ++each) {
        const Point inside = point - (*each)->frame_.origin + (*each)->boundsOrigin_;
        auto* hit = objc::send<"hitTest:withEvent:", View*>((*each)->object(), inside, objc::Object{});
        if (hit) return hit;
    }
    return this;
}

View* View::hitTestMessage(Point point, objc::Object) { return hitTest(point); }

bool View::pointInsideMessage(Point point, objc::Object) { return pointInside(point); }

}  // namespace uikit

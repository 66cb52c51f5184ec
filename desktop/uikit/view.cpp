// UIView: the tree, places and sizes, layout, and the points between views.
#include "desktop/uikit/view.h"

#include <algorithm>

#include "desktop/uikit/animation_context.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"

namespace uikit {
namespace {

/// One axis of a superview that grew by `growth`: the flexible parts share it by their lengths.
void resize(double& start, double& length, double before, double growth, unsigned long mask, unsigned long startBit,
            unsigned long lengthBit, unsigned long endBit) {
    const double end = before - start - length;
    const bool flexes[] = {(mask & startBit) != 0, (mask & lengthBit) != 0, (mask & endBit) != 0};
    const double parts[] = {start, length, end};
    double total = 0;
    int count = 0;
    for (int i = 0; i < 3; ++i) {
        if (!flexes[i]) continue;
        total += parts[i];
        ++count;
    }
    if (count == 0) return;
    auto share = [&](int i) { return total > 0 ? growth * parts[i] / total : growth / count; };
    if (flexes[0]) start += share(0);
    if (flexes[1]) length = std::max(0.0, length + share(1));
}

}  // namespace

View::View() = default;

View::~View() {
    for (const auto& each : subviews_) {
        each->superview_ = nullptr;
        each->tellWindow(nullptr);
    }
}

objc::Object View::init() { return objc::send<"initWithFrame:", objc::Object>(object(), Rect{}); }

objc::Object View::initWithFrame(Rect frame) {
    const auto made = objc::sendSuper<"init", objc::Object>(object(), objc::classOf<Responder>());
    frame_ = frame;
    return made;
}

void View::setFrame(Rect frame) {
    if (frame == frame_) return;
    AnimationContext::note(*this);
    const Size before = frame_.size;
    frame_ = frame;
    if (superview_) superview_->setNeedsDisplay();
    setNeedsDisplay();
    if (before != frame.size) sizeChanged(before);
}

void View::setBounds(Rect bounds) {
    setBoundsOrigin(bounds.origin);
    setFrame(centred(bounds.size, frame_));
}

void View::setBoundsOrigin(Point origin) {
    if (origin == boundsOrigin_) return;
    boundsOrigin_ = origin;
    setNeedsDisplay();
}

void View::setCenter(Point centre) {
    setFrame({{centre.x - frame_.width() / 2, centre.y - frame_.height() / 2}, frame_.size});
}

void View::sizeChanged(Size before) {
    const double widthGrowth = frame_.width() - before.width;
    const double heightGrowth = frame_.height() - before.height;
    const auto views = subviews_;
    for (const auto& each : views) {
        if (!each->autoresizingMask_) continue;
        Rect frame = each->frame_;
        resize(frame.origin.x, frame.size.width, before.width, widthGrowth, each->autoresizingMask_, flexibleLeft,
               flexibleWidth, flexibleRight);
        resize(frame.origin.y, frame.size.height, before.height, heightGrowth, each->autoresizingMask_, flexibleTop,
               flexibleHeight, flexibleBottom);
        objc::send<"setFrame:">(each->object(), frame);
    }
    setNeedsLayout();
}

objc::Object View::subviewsArray() const {
    auto array = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (const auto& each : subviews_) objc::send<"addObject:">(array, each->object());
    return array;
}

std::size_t View::indexOf(const View* view) const {
    const auto found = std::find_if(subviews_.begin(), subviews_.end(), [&](const auto& each) { return each == view; });
    return static_cast<std::size_t>(found - subviews_.begin());
}

void View::insert(View* view, std::size_t index) {
    if (!view || view == this || isDescendantOf(view)) return;
    const objc::Ref<View> kept(view);
    const bool moved = view->superview_ != this;
    view->detach();
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(std::min(index, subviews_.size())), kept);
    view->superview_ = this;
    if (view->window_ != window_) view->tellWindow(window_);
    if (moved) objc::send<"didMoveToSuperview">(view->object());
    view->tellTint();
    setNeedsLayout();
    setNeedsDisplay();
}

/// Takes the view out of its superview's list alone; nobody is told.
void View::detach() {
    if (!superview_) return;
    superview_->setNeedsDisplay();
    auto& list = superview_->subviews_;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(superview_->indexOf(this)));
    superview_ = nullptr;
}

void View::addSubview(View* view) { insert(view, subviews_.size()); }

void View::insertSubviewAtIndex(View* view, long index) { insert(view, static_cast<std::size_t>(std::max(0L, index))); }

void View::insertSubviewAbove(View* view, View* sibling) {
    if (!view || view == sibling) return;
    const objc::Ref<View> kept(view);
    if (view->superview_ == this) view->detach();
    insert(view, indexOf(sibling) + 1);
}

void View::insertSubviewBelow(View* view, View* sibling) {
    if (!view || view == sibling) return;
    const objc::Ref<View> kept(view);
    if (view->superview_ == this) view->detach();
    insert(view, indexOf(sibling));
}

void View::bringSubviewToFront(View* view) {
    if (view && view->superview_ == this) insert(view, subviews_.size());
}

void View::sendSubviewToBack(View* view) {
    if (view && view->superview_ == this) insert(view, 0);
}

void View::removeFromSuperview() {
    if (!superview_) return;
    const objc::Ref<View> kept(this);
    superview_->setNeedsLayout();
    detach();
    if (window_) tellWindow(nullptr);
    objc::send<"didMoveToSuperview">(object());
}

void View::tellWindow(Window* window) {
    const objc::Ref<View> kept(this);
    window_ = window;
    windowChanged(window);
    objc::send<"didMoveToWindow">(object());
    const auto views = subviews_;
    for (const auto& each : views) {
        if (each->superview_ == this && each->window_ != window_) each->tellWindow(window_);
    }
    if (!window_ && isFirstResponder()) resignFirstResponder();
}

View* View::viewWithTag(long tag) {
    if (tag_ == tag) return this;
    for (const auto& each : subviews_) {
        if (View* found = each->viewWithTag(tag)) return found;
    }
    return nullptr;
}

bool View::isDescendantOf(const View* view) const {
    for (const View* each = this; each; each = each->superview_) {
        if (each == view) return true;
    }
    return false;
}

void View::setHidden(bool hidden) {
    if (hidden == hidden_) return;
    hidden_ = hidden;
    setNeedsDisplay();
}

void View::setAlpha(double alpha) {
    AnimationContext::note(*this);
    alpha_ = std::clamp(alpha, 0.0, 1.0);
    setNeedsDisplay();
}

void View::setBackgroundColor(objc::Object color) {
    AnimationContext::note(*this);
    backgroundColor_ = objc::Strong<>(color);
    setNeedsDisplay();
}

void View::setContentMode(ContentMode mode) {
    contentMode_ = mode;
    setNeedsDisplay();
}

void View::setCornerRadius(double radius) {
    cornerRadius_ = radius;
    setNeedsDisplay();
}

objc::Object View::tintColor() const {
    for (const View* each = this; each; each = each->superview_) {
        if (each->tintColor_) return each->tintColor_;
    }
    return uiColor(palette::brand);
}

Color View::tint() const {
    for (const View* each = this; each; each = each->superview_) {
        if (each->tintColor_) return colorOf(each->tintColor_);
    }
    return palette::brand;
}

void View::setTintColor(objc::Object color) {
    tintColor_ = objc::Strong<>(color);
    tellTint();
}

void View::tellTint() {
    tintColorDidChange();
    const auto views = subviews_;
    for (const auto& each : views) {
        if (!each->tintColor_) each->tellTint();
    }
}

void View::setNeedsLayout() {
    needsLayout_ = true;
    setNeedsDisplay();
}

void View::layoutIfNeeded() {
    const objc::Ref<View> kept(this);
    if (std::exchange(needsLayout_, false)) {
        objc::send<"layoutSubviews">(object());
        if (controller_) objc::send<"viewDidLayoutSubviews">(controller_->object());
    }
    const auto views = subviews_;
    for (const auto& each : views) {
        if (each->superview_ == this) each->layoutIfNeeded();
    }
}

Size View::sizeThatFits(Size) { return frame_.size; }

void View::sizeToFit() {
    const Size size = objc::send<"sizeThatFits:", Size>(object(), frame_.size);
    objc::send<"setFrame:">(object(), Rect{frame_.origin, size});
}

Point View::pointFromWindow(Point point) const {
    for (const View* each = this; each->superview_; each = each->superview_) point = point - each->frame_.origin;
    for (const View* each = this; each; each = each->superview_) point = point + each->boundsOrigin_;
    return point;
}

Point View::pointToWindow(Point point) const {
    for (const View* each = this; each->superview_; each = each->superview_) point = point + each->frame_.origin;
    for (const View* each = this; each; each = each->superview_) point = point - each->boundsOrigin_;
    return point;
}

Point View::convertPointToView(Point point, View* view) {
    const Point inWindow = pointToWindow(point);
    return view ? view->pointFromWindow(inWindow) : inWindow;
}

Point View::convertPointFromView(Point point, View* view) {
    return pointFromWindow(view ? view->pointToWindow(point) : point);
}

Rect View::convertRectToView(Rect rect, View* view) { return {convertPointToView(rect.origin, view), rect.size}; }

Rect View::convertRectFromView(Rect rect, View* view) { return {convertPointFromView(rect.origin, view), rect.size}; }

}  // namespace uikit

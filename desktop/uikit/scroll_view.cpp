// UIScrollView: dragging, momentum, the rubber band at both ends.
#include "desktop/uikit/scroll_view.h"

#include <algorithm>
#include <cmath>

namespace uikit {
namespace {

constexpr double dragThreshold = 8;
constexpr double band = 0.5;           // how much of a finger's way counts beyond an end
constexpr double friction = 2.2;       // the part of the speed that is lost in a second, as an exponent
constexpr double restingSpeed = 12;    // points a second
constexpr double returnRate = 12;      // how fast the band returns, as an exponent
constexpr double closeEnough = 0.5;    // points
constexpr double slowestSample = 0.1;  // seconds; a finger that rested longer throws nothing
constexpr double animatedSeconds = 0.3;
constexpr double indicatorSeconds = 0.6;
constexpr double indicatorWidth = 2.5;
constexpr double indicatorMargin = 2.5;
constexpr double shortestIndicator = 30;

}  // namespace

void ScrollView::define(objc::ClassDefinition<ScrollView>& definition) {
    definition.method<"contentSize", &ScrollView::contentSize>()
        .method<"setContentSize:", &ScrollView::setContentSize>()
        .method<"contentOffset", &ScrollView::contentOffset>()
        .method<"setContentOffset:", &ScrollView::setContentOffset>()
        .method<"setContentOffset:animated:", &ScrollView::setContentOffsetAnimated>()
        .method<"contentInset", &ScrollView::contentInset>()
        .method<"setContentInset:", &ScrollView::setContentInset>()
        .method<"delegate", &ScrollView::delegate>()
        .method<"setDelegate:", &ScrollView::setDelegate>()
        .method<"isScrollEnabled", &ScrollView::isScrollEnabled>()
        .method<"setScrollEnabled:", &ScrollView::setScrollEnabled>()
        .method<"isDragging", &ScrollView::isDragging>()
        .method<"isDecelerating", &ScrollView::isDecelerating>();
}

ScrollView::~ScrollView() {
    cancelAnimation(motion_);
    cancelAnimation(animation_);
    cancelAnimation(indicatorFade_);
}

objc::Object ScrollView::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setClipsToBounds(true);
    return made;
}

double ScrollView::greatestOffset() const {
    return std::max(leastOffset(), contentSize_.height + inset_.bottom - bounds().size.height);
}

double ScrollView::withinContent(double y) const { return std::clamp(y, leastOffset(), greatestOffset()); }

void ScrollView::setContentInset(EdgeInsets inset) {
    const bool atTop = boundsOrigin_.y == leastOffset();
    inset_ = inset;
    // What the finger holds is left to the finger.
    if (!isDragging() && !isDecelerating()) moveTo(atTop ? leastOffset() : withinContent(boundsOrigin_.y));
    setNeedsDisplay();
}

void ScrollView::setContentSize(Size size) {
    const bool shorter = size.height < contentSize_.height;
    contentSize_ = size;
    // What is on its way to content that has gone stops at the end.
    if (shorter) target_ = std::min(target_, greatestOffset());
    setNeedsDisplay();
}

void ScrollView::tell(SEL message) {
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, message)) objc::sendSelector(receiver, message, object());
}

void ScrollView::tellDragEnded(bool decelerates) {
    constexpr auto name = objc::Name{"scrollViewDidEndDragging:willDecelerate:"};
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, objc::selector<name>()))
        objc::send<name>(receiver, object(), decelerates);
}

void ScrollView::moveTo(double y) {
    if (y == boundsOrigin_.y) return;
    boundsOrigin_.y = y;
    setNeedsDisplay();
    setNeedsLayout();
    didScroll();
    tell(objc::selector<"scrollViewDidScroll:">());
}

void ScrollView::stop() {
    cancelAnimation(std::exchange(motion_, 0));
    cancelAnimation(std::exchange(animation_, 0));
}

void ScrollView::setContentOffsetAnimated(Point offset, bool animated) {
    stop();
    if (!animated) {
        moveTo(offset.y);
        return;
    }
    const double from = boundsOrigin_.y;
    target_ = offset.y;
    animation_ = animate(animatedSeconds, Curve::EaseInOut,
                         [this, from](double progress) { moveTo(from + (target_ - from) * progress); });
}

void ScrollView::setScrollEnabled(bool enabled) {
    scrollEnabled_ = enabled;
    if (!enabled) stop();
}

bool ScrollView::interceptsTouch(const Touch& touch) {
    if (!scrollEnabled_) return false;
    if (touch.phase == TouchPhase::Began) {
        const bool moves = isDecelerating();
        beginDrag(touch);
        // A touch on a moving list stops it, and is nothing else.
        return moves;
    }
    if (touch.phase != TouchPhase::Moved) {
        tracking_ = false;
        return false;
    }
    if (!tracking_) return false;
    const Point moved = touch.point - began_.point;
    return std::abs(moved.y) > dragThreshold && std::abs(moved.y) > std::abs(moved.x);
}

bool ScrollView::touch(const Touch& touch) {
    if (!scrollEnabled_) return true;
    switch (touch.phase) {
        case TouchPhase::Began:
            beginDrag(touch);
            break;
        case TouchPhase::Moved:
            drag(touch);
            break;
        case TouchPhase::Ended:
        case TouchPhase::Cancelled:
            endDrag(touch);
            break;
    }
    return true;
}

void ScrollView::beginDrag(const Touch& touch) {
    const bool moved = isDecelerating();
    if (!tracking_) stopped_ = moved;
    stop();
    tracking_ = true;
    dragging_ = false;
    began_ = touch;
    last_ = touch;
    velocity_ = 0;
    offsetAtBegin_ = boundsOrigin_.y;
    if (moved) tell(objc::selector<"scrollViewDidEndDecelerating:">());
}

double ScrollView::rubberBanded(double y) const {
    const double top = leastOffset();
    if (y < top) return top + (y - top) * band;
    const double end = greatestOffset();
    return y > end ? end + (y - end) * band : y;
}

void ScrollView::drag(const Touch& touch) {
    if (!tracking_) return;
    if (!dragging_) {
        if (std::abs(touch.point.y - began_.point.y) <= dragThreshold) return;
        dragging_ = true;
        cancelAnimation(indicatorFade_);
        indicatorAlpha_ = 1;
        tell(objc::selector<"scrollViewWillBeginDragging:">());
    }
    const double seconds = touch.time - last_.time;
    if (seconds > 0) velocity_ = (last_.point.y - touch.point.y) / seconds;
    last_ = touch;
    moveTo(rubberBanded(offsetAtBegin_ + began_.point.y - touch.point.y));
}

void ScrollView::endDrag(const Touch& touch) {
    if (!std::exchange(tracking_, false)) return;
    const bool outside = boundsOrigin_.y != withinContent(boundsOrigin_.y);
    if (!std::exchange(dragging_, false)) {
        // A finger that stopped the content beyond an end lets it go on coming back.
        if (stopped_ && outside) coastOn();
        return;
    }
    if (touch.time - last_.time > slowestSample) velocity_ = 0;
    const bool decelerates = outside || std::abs(velocity_) > restingSpeed;
    tellDragEnded(decelerates);
    if (decelerates)
        coastOn();
    else
        comeToRest();
}

void ScrollView::coastOn() {
    motion_ = everyFrame(Motion::Ends, [this](double seconds) { return coast(seconds); });
}

bool ScrollView::coast(double seconds) {
    const double target = withinContent(boundsOrigin_.y);
    if (target != boundsOrigin_.y) {
        velocity_ *= std::exp(-returnRate * seconds);
        const double back = (boundsOrigin_.y - target) * std::exp(-returnRate * seconds);
        moveTo(std::abs(back) < closeEnough ? target : target + back + velocity_ * seconds * band);
    } else {
        velocity_ *= std::exp(-friction * seconds);
        moveTo(boundsOrigin_.y + velocity_ * seconds);
    }
    const bool inside = boundsOrigin_.y == withinContent(boundsOrigin_.y);
    if (!inside || std::abs(velocity_) > restingSpeed) return true;
    motion_ = 0;
    comeToRest();
    tell(objc::selector<"scrollViewDidEndDecelerating:">());
    return false;
}

void ScrollView::comeToRest() {
    indicatorFade_ = animate(indicatorSeconds, Curve::EaseIn, [this](double progress) {
        indicatorAlpha_ = 1 - progress;
        setNeedsDisplay();
    });
}

bool ScrollView::scrollWheel(Point delta) {
    if (!scrollEnabled_ || greatestOffset() == leastOffset()) return false;
    stop();
    moveTo(withinContent(boundsOrigin_.y + delta.y));
    indicatorAlpha_ = 1;
    cancelAnimation(indicatorFade_);
    comeToRest();
    tell(objc::selector<"scrollViewDidEndDecelerating:">());
    return true;
}

void ScrollView::drawAbove(graphics::Canvas& canvas) {
    const double height = bounds().size.height;
    if (indicatorAlpha_ <= 0 || contentSize_.height <= height) return;
    const double length = std::max(shortestIndicator, height * height / contentSize_.height);
    const double way = std::max(1.0, greatestOffset() - leastOffset());
    const double part = std::clamp((boundsOrigin_.y - leastOffset()) / way, 0.0, 1.0);
    const double y = boundsOrigin_.y + indicatorMargin + part * (height - length - 2 * indicatorMargin);
    canvas.fillRounded({{bounds().size.width - indicatorWidth - indicatorMargin, y}, {indicatorWidth, length}},
                       indicatorWidth / 2, Color::gray(0, 0.35 * indicatorAlpha_));
}

}  // namespace uikit

// UIWindow: the root of what is on the screen, and where touches come in.
#include <algorithm>

#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/sheet.h"
#include "desktop/uikit/status_bar.h"

namespace uikit {

Window::Window() { setOwnWindow(this); }

Window::~Window() = default;

void Window::define(objc::ClassDefinition<Window>& definition) {
    definition.method<"rootViewController", &Window::rootViewController>()
        .method<"setRootViewController:", &Window::setRootViewController>()
        .method<"makeKeyAndVisible", &Window::makeKeyAndVisible>();
}

void Window::setRootViewController(ViewController* controller) {
    if (controller == root_.get()) return;
    const bool visible = Application::shared()->keyWindow() == this;
    if (const auto before = root_) {
        before->beginDisappearing(false);
        before->view()->removeFromSuperview();
        before->endDisappearing(false);
    }
    root_ = controller;
    if (!controller) return;
    View* view = controller->view();
    objc::send<"setFrame:">(view->object(), bounds());
    if (visible) controller->beginAppearing(false);
    insertSubviewAtIndex(view, 0);
    if (visible) controller->endAppearing(false);
}

void Window::makeKeyAndVisible() {
    setHidden(false);
    Application::shared()->setKeyWindow(this);
    if (!root_) return;
    root_->beginAppearing(false);
    layoutIfNeeded();
    root_->endAppearing(false);
}

void Window::layoutSubviews() {
    for (const auto& each : subviews()) {
        if (each->controller() && each->frame().size != frame().size) objc::send<"setFrame:">(each->object(), bounds());
    }
}

void Window::addOverlay(View* view) {
    objc::send<"setFrame:">(view->object(), bounds());
    addSubview(view);
}

void Window::addScreen(View* view) {
    long index = 0;
    for (std::size_t i = 0; i < subviews().size(); ++i) {
        if (subviews()[i]->controller()) index = static_cast<long>(i) + 1;
    }
    objc::send<"setFrame:">(view->object(), bounds());
    insertSubviewAtIndex(view, index);
}

void Window::deliver(const Touch& touch) {
    if (touch.phase == TouchPhase::Began) return begin(touch);
    if (!touched_) return;
    if (!isUserInteractionEnabled() || touched_->window() != this) return cancelTouch();
    last_ = touch;
    const bool over = touch.phase == TouchPhase::Ended || touch.phase == TouchPhase::Cancelled;
    const auto receiver = touched_;
    if (!takenOver_ && takeOver(touch)) {
        if (over) touched_ = nullptr;
        return;
    }
    if (over) touched_ = nullptr;
    receiver->touch(touch);
}

void Window::begin(const Touch& touch) {
    cancelTouch();
    last_ = touch;
    takenOver_ = false;
    auto* hit = objc::send<"hitTest:withEvent:", View*>(object(), touch.point, objc::Object{});
    for (objc::Ref<View> each = hit; each; each = objc::Ref<View>(each->superview())) {
        if (!each->touch(touch)) continue;
        touched_ = each;
        takeOver(touch);
        return;
    }
}

/// Asks the views around the one that has the touch; the innermost that wants it gets it.
bool Window::takeOver(const Touch& touch) {
    const auto holder = touched_;
    for (objc::Ref<View> each = holder->superview(); each; each = objc::Ref<View>(each->superview())) {
        if (!each->interceptsTouch(touch)) continue;
        Touch cancelled = touch;
        cancelled.phase = TouchPhase::Cancelled;
        touched_ = each;
        takenOver_ = true;
        holder->touch(cancelled);
        each->touch(touch);
        return true;
    }
    return false;
}

void Window::cancelTouch() {
    if (!touched_) return;
    Touch cancelled = last_;
    cancelled.phase = TouchPhase::Cancelled;
    const auto receiver = std::exchange(touched_, {});
    if (!takenOver_) {
        for (objc::Ref<View> each = receiver->superview(); each; each = objc::Ref<View>(each->superview()))
            each->interceptsTouch(cancelled);
    }
    receiver->touch(cancelled);
}

void Window::deliverWheel(Point point, Point delta) {
    auto* hit = objc::send<"hitTest:withEvent:", View*>(object(), point, objc::Object{});
    for (objc::Ref<View> each = hit; each; each = objc::Ref<View>(each->superview())) {
        if (each->scrollWheel(delta)) return;
    }
}

bool Window::hasLightStatusBar() {
    ViewController* front = root_;
    while (front) {
        if (ViewController* presented = front->presentedViewController()) {
            front = presented;
            continue;
        }
        auto* child = objc::send<"childViewControllerForStatusBarStyle", ViewController*>(front->object());
        if (!child) break;
        front = child;
    }
    return front && objc::send<"preferredStatusBarStyle", long>(front->object()) == 1;
}

void Window::drawAbove(graphics::Canvas& canvas) {
    const bool light = hasLightStatusBar();
    const Color color = light ? Color::white() : Color::black();
    // The bars here are light, so light text brings a ground of its own.
    if (light) canvas.fill({{0, 0}, {bounds().size.width, statusBarHeight}}, palette::brand);
    auto* application = Application::shared();
    drawStatusBar(canvas, {{}, {frame().width(), statusBarHeight}}, color,
                  {application->isNetworkActivityIndicatorVisible(), application->networkActivityTurn()});
    for (const auto& each : subviews())
        if (const auto* sheet = objc::peerIf<Sheet>(each->object()))
            sheet->dim(canvas, {{}, {bounds().size.width, statusBarHeight}});
}

}  // namespace uikit

// UIViewController: screens that slide up over others, and down again.
#include "desktop/uikit/application.h"

namespace uikit {
namespace {

constexpr double slideSeconds = 0.4;

void finish(const objc::Block<void()>& completion) {
    if (completion) completion();
}

/// Slides the view between its place and below the window's lower edge, then calls `end`.
void slide(View* view, bool up, bool animated, std::function<void()> end) {
    const objc::Ref<View> kept(view);
    const double height = view->frame().height();
    auto step = [kept, height, up](double progress) {
        kept->setDisplacement({0, height * (up ? 1 - progress : progress)});
    };
    if (animated) step(0);
    animate(animated ? slideSeconds : 0, Curve::EaseOut, step, [kept, end = std::move(end)](bool) {
        end();
        kept->setDisplacement({});
    });
}

}  // namespace

/// The outermost container: what it shows makes room for what is presented.
ViewController* ViewController::presenter() {
    ViewController* outermost = this;
    while (outermost->parent_) outermost = outermost->parent_;
    while (outermost->presented_) outermost = outermost->presented_;
    return outermost;
}

void ViewController::presentViewControllerAnimatedCompletion(ViewController* controller, bool animated,
                                                             objc::Object block) {
    if (!controller || controller->presenting_ || controller->parent_) return;
    const objc::Ref<ViewController> from(presenter());
    const objc::Ref<ViewController> shown(controller);
    const auto completion = objc::Block<void()>::copyOf(block.self);
    Window* window = from->view()->window();
    if (!window || from == controller) return;
    from->presented_ = shown;
    controller->presenting_ = from;
    View* view = controller->view();
    window->cancelTouch();
    from->beginDisappearing(animated);
    controller->beginAppearing(animated);
    window->addScreen(view);
    view->layoutIfNeeded();
    slide(view, true, animated, [from, shown, animated, completion] {
        // Dismissed on the way: the way down ends it all.
        if (shown->presenting_ != from) return;
        from->view()->removeFromSuperview();
        shown->endAppearing(animated);
        from->endDisappearing(animated);
        finish(completion);
    });
}

void ViewController::dismissViewControllerAnimatedCompletion(bool animated, objc::Object block) {
    ViewController* source = this;
    while (source && !source->presented_) source = source->parent_ ? source->parent_ : source->presenting_;
    if (!source) return;
    const objc::Ref<ViewController> back(source);
    const objc::Ref<ViewController> gone(source->presented_);
    const auto completion = objc::Block<void()>::copyOf(block.self);
    // What was presented on top of it goes with it, unseen.
    if (gone->presented_)
        objc::send<"dismissViewControllerAnimated:completion:">(gone->object(), false, objc::Object{});
    View* view = gone->view();
    Window* window = view->window();
    back->presented_ = {};
    gone->presenting_ = nullptr;
    gone->beginDisappearing(animated);
    back->beginAppearing(animated);
    if (window) {
        window->cancelTouch();
        if (!back->view()->window()) window->insertSubviewBelow(back->view(), view);
        window->layoutIfNeeded();
    }
    slide(view, false, animated, [back, gone, animated, completion] {
        gone->view()->removeFromSuperview();
        gone->endDisappearing(animated);
        back->endAppearing(animated);
        finish(completion);
    });
}

}  // namespace uikit

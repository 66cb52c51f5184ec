// UINavigationController: the stack, the slides between its screens, and the bar.
#include "desktop/uikit/navigation_controller.h"

#include <algorithm>

#include "desktop/uikit/application.h"
#include "desktop/uikit/main_thread.h"
#include "desktop/weak/weak.h"

namespace uikit {
namespace {

constexpr double slideSeconds = 0.35;
constexpr double barSeconds = 0.25;
// How far the screen below moves while the one above covers it, as a part of the width.
constexpr double parallax = 0.3;

objc::Object arrayOf(const std::vector<objc::Ref<ViewController>>& controllers) {
    auto array = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (const auto& controller : controllers) objc::send<"addObject:">(array, controller->object());
    return array;
}

}  // namespace

void NavigationController::define(objc::ClassDefinition<NavigationController>& definition) {
    definition.method<"initWithRootViewController:", &NavigationController::initWithRootViewController>()
        .method<"pushViewController:animated:", &NavigationController::pushViewControllerAnimated>()
        .method<"popViewControllerAnimated:", &NavigationController::popViewControllerAnimated>()
        .method<"popToRootViewControllerAnimated:", &NavigationController::popToRootViewControllerAnimated>()
        .method<"popToViewController:animated:", &NavigationController::popToViewControllerAnimated>()
        .method<"viewControllers", &NavigationController::viewControllers>()
        .method<"setViewControllers:", &NavigationController::setViewControllers>()
        .method<"setViewControllers:animated:", &NavigationController::setViewControllersAnimated>()
        .method<"topViewController", &NavigationController::topViewController>()
        .method<"visibleViewController", &NavigationController::topViewController>()
        .method<"navigationBar", &NavigationController::navigationBar>()
        .method<"isNavigationBarHidden", &NavigationController::isNavigationBarHidden>()
        .method<"setNavigationBarHidden:", &NavigationController::setNavigationBarHidden>()
        .method<"setNavigationBarHidden:animated:", &NavigationController::setNavigationBarHiddenAnimated>();
}

NavigationController::~NavigationController() {
    cancelAnimation(transition_);
    cancelAnimation(barAnimation_);
}

objc::Object NavigationController::initWithRootViewController(ViewController* root) {
    const auto made = objc::send<"init", objc::Object>(object());
    pushViewControllerAnimated(root, false);
    return made;
}

NavigationBar* NavigationController::navigationBar() {
    if (!bar_) {
        bar_ = objc::Ref<NavigationBar>::make<"initWithFrame:">(
            Rect{{0, statusBarHeight}, {screenSize().width, NavigationBar::height}});
        bar_->setBackAction(
            weak::whileAlive(this, [this] { objc::send<"popViewControllerAnimated:", objc::Object>(object(), true); }));
    }
    return bar_;
}

void NavigationController::loadView() {
    auto container = objc::Ref<View>::make<"initWithFrame:">(Rect{{0, 0}, screenSize()});
    container->setAutoresizingMask(flexibleWidth | flexibleHeight);
    container->setBackgroundColor(uiColor(Color::fromHex(0xF8F8F8)));
    container->setClipsToBounds(true);
    setView(container);
    container->addSubview(navigationBar());
    if (topViewController()) showTop(nullptr, Direction::Forward, false);
}

Rect NavigationController::contentRect() {
    const double top = statusBarHeight + NavigationBar::height * barShown_;
    const Size size = view()->bounds().size;
    return {{0, top}, {size.width, std::max(0.0, size.height - top)}};
}

void NavigationController::layOut() {
    if (!isViewLoaded()) return;
    const double width = view()->bounds().size.width;
    navigationBar()->setFrame(
        {{0, statusBarHeight - NavigationBar::height * (1 - barShown_)}, {width, NavigationBar::height}});
    navigationBar()->setAlpha(barShown_);
    if (auto* top = topViewController(); top && top->isViewLoaded()) top->view()->setFrame(contentRect());
}

void NavigationController::viewDidLayoutSubviews() { layOut(); }

std::vector<ViewController*> NavigationController::childrenOnScreen() {
    if (auto* top = topViewController()) return {top};
    return {};
}

objc::Object NavigationController::viewControllers() const { return arrayOf(stack_); }

void NavigationController::pushViewControllerAnimated(ViewController* controller, bool animated) {
    Stack stack = stack_;
    stack.emplace_back(controller);
    change(std::move(stack), Direction::Forward, animated);
}

objc::Object NavigationController::popViewControllerAnimated(bool animated) {
    if (stack_.size() < 2) return {};
    Stack stack = stack_;
    const objc::Ref<ViewController> popped = stack.back();
    stack.pop_back();
    change(std::move(stack), Direction::Back, animated);
    return objc::autorelease(objc::Strong<>(popped->object()));
}

/// Off the main thread it answers nothing: the screens leave later.
objc::Object NavigationController::popToRootViewControllerAnimated(bool animated) {
    if (!objc::sendClass<"NSThread", "isMainThread", bool>()) {
        onMainThread([kept = objc::Ref<NavigationController>(this), animated] {
            kept->popToRootViewControllerAnimated(animated);
        });
        return {};
    }
    if (stack_.empty()) return arrayOf({});
    return popToViewControllerAnimated(stack_.front(), animated);
}

objc::Object NavigationController::popToViewControllerAnimated(ViewController* controller, bool animated) {
    const auto found =
        std::find_if(stack_.begin(), stack_.end(), [&](const auto& each) { return each.get() == controller; });
    if (found == stack_.end() || found + 1 == stack_.end()) return arrayOf({});
    const Stack popped(found + 1, stack_.end());
    const auto answer = arrayOf(popped);
    change(Stack(stack_.begin(), found + 1), Direction::Back, animated);
    return answer;
}

void NavigationController::setViewControllersAnimated(objc::Object controllers, bool animated) {
    Stack stack;
    const auto count = objc::send<"count", unsigned long>(controllers);
    for (unsigned long i = 0; i < count; ++i)
        stack.emplace_back(objc::send<"objectAtIndex:", ViewController*>(controllers, i));
    const bool known = !stack.empty() && std::any_of(stack_.begin(), stack_.end(), [&](const auto& each) {
        return each.get() == stack.back().get();
    });
    change(std::move(stack), known ? Direction::Back : Direction::Forward, animated);
}

void NavigationController::change(Stack stack, Direction direction, bool animated) {
    finishTransition();
    const objc::Ref<ViewController> former(topViewController());
    auto holds = [](const Stack& in, const ViewController* controller) {
        return std::any_of(in.begin(), in.end(), [&](const auto& each) { return each.get() == controller; });
    };
    for (const auto& each : stack_)
        if (!holds(stack, each.get())) removed_.push_back(each);
    for (const auto& each : stack)
        if (!holds(stack_, each.get())) addChildViewController(each);
    stack_ = std::move(stack);
    if (isViewLoaded() && topViewController() != former.get()) showTop(former, direction, animated);
    if (isViewLoaded() && topViewController() == former.get()) showBarItem(animated);
    if (!transition_) finishTransition();
}

void NavigationController::showTop(ViewController* former, Direction direction, bool animated) {
    auto* top = topViewController();
    updateBar(animated);
    const bool onScreen = appearance() == Appearance::Appeared || appearance() == Appearance::Appearing;
    if (former && onScreen) former->beginDisappearing(animated);
    if (top) {
        top->view()->setFrame(contentRect());
        if (onScreen) top->beginAppearing(animated);
        view()->insertSubviewAtIndex(top->view(),
                                     direction == Direction::Back ? 0 : static_cast<long>(view()->subviews().size()));
        view()->bringSubviewToFront(navigationBar());
    }
    showBarItem(animated);
    transitionAnimated_ = animated;
    leaving_ = objc::Ref<ViewController>(former);
    arriving_ = objc::Ref<ViewController>(top);
    if (animated && onScreen && former && top) slide(top->view(), former->view(), direction);
}

void NavigationController::slide(View* arriving, View* leaving, Direction direction) {
    const double width = view()->bounds().size.width;
    const objc::Ref<View> in(arriving);
    const objc::Ref<View> out(leaving);
    const auto step = [=](double progress) {
        const bool forward = direction == Direction::Forward;
        in->setDisplacement({(forward ? width : -width * parallax) * (1 - progress), 0});
        out->setDisplacement({(forward ? -width * parallax : width) * progress, 0});
    };
    // A frame that is drawn before the first step must not show the arriving screen in its place.
    step(0);
    transition_ = animate(slideSeconds, Curve::EaseOut, step, [this, in, out](bool) {
        in->setDisplacement({});
        out->setDisplacement({});
        transition_ = 0;
        finishTransition();
    });
}

void NavigationController::finishTransition() {
    if (const auto running = std::exchange(transition_, 0)) {
        cancelAnimation(running);
        return;  // its completion came here
    }
    const auto leaving = std::exchange(leaving_, {});
    const auto arriving = std::exchange(arriving_, {});
    if (leaving && leaving->isViewLoaded()) leaving->view()->removeFromSuperview();
    if (leaving && leaving->appearance() == Appearance::Disappearing) leaving->endDisappearing(transitionAnimated_);
    if (arriving && arriving->appearance() == Appearance::Appearing &&
        (appearance() == Appearance::Appeared || appearance() == Appearance::Appearing))
        arriving->endAppearing(transitionAnimated_);
    for (const auto& each : std::exchange(removed_, {})) each->removeFromParentViewController();
}

void NavigationController::showBarItem(bool animated) {
    auto* top = topViewController();
    if (!top) return;
    std::string backTitle;
    if (stack_.size() > 1) {
        auto* below = objc::peerOf<NavigationItem>(stack_[stack_.size() - 2]->navigationItem());
        backTitle = below->backBarButtonItem() ? utf8(below->backBarButtonItem()->title()) : utf8(below->title());
        if (backTitle.empty()) backTitle = localized("Back");
    }
    navigationBar()->showItem(objc::peerOf<NavigationItem>(top->navigationItem()), backTitle, animated);
}

bool NavigationController::isNavigationBarHidden() const {
    return barHidden_ || (!stack_.empty() && stack_.back()->coversNavigationBar());
}

void NavigationController::setNavigationBarHiddenAnimated(bool hidden, bool animated) {
    barHidden_ = hidden;
    updateBar(animated);
}

void NavigationController::updateBar(bool animated) {
    const double to = isNavigationBarHidden() ? 0 : 1;
    if (to == std::exchange(barTarget_, to)) return;
    cancelAnimation(barAnimation_);
    barAnimation_ = animate(animated ? barSeconds : 0, Curve::EaseInOut, [this, from = barShown_, to](double progress) {
        barShown_ = from + (to - from) * progress;
        layOut();
    });
}

}  // namespace uikit

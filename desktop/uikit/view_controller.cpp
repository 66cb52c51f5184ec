// UIViewController: its view, its place among other controllers, and the messages of its life.
#include "desktop/uikit/view_controller.h"

#include <algorithm>

#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/navigation_controller.h"

namespace uikit {

void ViewController::define(objc::ClassDefinition<ViewController>& definition) {
    definition.method<"view", &ViewController::view>()
        .method<"setView:", &ViewController::setView>()
        .method<"isViewLoaded", &ViewController::isViewLoaded>()
        .method<"loadView", &ViewController::loadView>()
        .method<"viewDidLoad", &ViewController::viewDidLoad>()
        .method<"viewWillAppear:", &ViewController::viewWillAppear>()
        .method<"viewDidAppear:", &ViewController::viewDidAppear>()
        .method<"viewWillDisappear:", &ViewController::viewWillDisappear>()
        .method<"viewDidDisappear:", &ViewController::viewDidDisappear>()
        .method<"viewDidLayoutSubviews", &ViewController::viewDidLayoutSubviews>()
        .method<"didReceiveMemoryWarning", &ViewController::didReceiveMemoryWarning>()
        .method<"isEditing", &ViewController::isEditing>()
        .method<"setEditing:", &ViewController::setEditing>()
        .method<"setEditing:animated:", &ViewController::setEditingAnimated>();
    definition.method<"title", &ViewController::title>()
        .method<"setTitle:", &ViewController::setTitle>()
        .method<"navigationItem", &ViewController::navigationItem>()
        .method<"navigationController", &ViewController::navigationControllerObject>()
        .method<"tabBarController", &ViewController::tabBarControllerObject>()
        .method<"tabBarItem", &ViewController::tabBarItem>()
        .method<"setTabBarItem:", &ViewController::setTabBarItem>()
        .method<"parentViewController", &ViewController::parentViewController>()
        .method<"childViewControllers", &ViewController::childViewControllers>()
        .method<"addChildViewController:", &ViewController::addChildViewController>()
        .method<"removeFromParentViewController", &ViewController::removeFromParentViewController>()
        .method<"searchDisplayController", &ViewController::searchDisplayController>()
        .method<"setSearchDisplayController:", &ViewController::setSearchDisplayController>();
    definition.method<"preferredStatusBarStyle", &ViewController::preferredStatusBarStyle>()
        .method<"childViewControllerForStatusBarStyle", &ViewController::childViewControllerForStatusBarStyle>()
        .method<"setNeedsStatusBarAppearanceUpdate", &ViewController::setNeedsStatusBarAppearanceUpdate>()
        .method<"presentViewController:animated:completion:",
                &ViewController::presentViewControllerAnimatedCompletion>()
        .method<"dismissViewControllerAnimated:completion:", &ViewController::dismissViewControllerAnimatedCompletion>()
        .method<"presentedViewController", &ViewController::presentedViewController>()
        .method<"presentingViewController", &ViewController::presentingViewController>();
}

ViewController::~ViewController() {
    if (view_ && view_->controller() == this) view_->setController(nullptr);
    for (const auto& each : children_) each->parent_ = nullptr;
    if (presented_) presented_->presenting_ = nullptr;
}

View* ViewController::view() {
    if (!view_) {
        objc::send<"loadView">(object());
        if (view_) objc::send<"viewDidLoad">(object());
    }
    return view_;
}

void ViewController::setView(View* view) {
    if (view_ && view_->controller() == this) view_->setController(nullptr);
    view_ = view;
    if (view) view->setController(this);
}

void ViewController::loadView() {
    const auto view = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, screenSize()});
    view->setBackgroundColor(uiColor(Color::white()));
    view->setAutoresizingMask(flexibleWidth | flexibleHeight);
    objc::send<"setView:">(object(), objc::Object{view.self()});
}

void ViewController::setTitle(objc::Object title) {
    title_ = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(title));
    if (navigationItem_) objc::send<"setTitle:">(navigationItem_, title_.get());
    if (tabBarItem_) objc::send<"setTitle:">(tabBarItem_, title_.get());
}

objc::Object ViewController::navigationItem() {
    if (!navigationItem_) {
        if (Class cls = objc::classNamed<"UINavigationItem">())
            navigationItem_ = objc::make<objc::Object, "initWithTitle:">(cls, title_.get());
    }
    return navigationItem_;
}

NavigationController* ViewController::navigationController() const {
    auto* found = nearest([](ViewController* each) { return each->asNavigationController() != nullptr; });
    return found ? found->asNavigationController() : nullptr;
}

TabBarController* ViewController::tabBarController() const {
    auto* found = nearest([](ViewController* each) { return each->asTabBarController() != nullptr; });
    return found ? found->asTabBarController() : nullptr;
}

ViewController* ViewController::nearest(bool (*isWanted)(ViewController*)) const {
    for (ViewController* each = parent_; each; each = each->parent_) {
        if (isWanted(each)) return each;
    }
    return nullptr;
}

objc::Object ViewController::navigationControllerObject() const {
    auto* found = nearest([](ViewController* each) { return each->asNavigationController() != nullptr; });
    return found ? found->object() : objc::Object{};
}

objc::Object ViewController::tabBarControllerObject() const {
    auto* found = nearest([](ViewController* each) { return each->asTabBarController() != nullptr; });
    return found ? found->object() : objc::Object{};
}

objc::Object ViewController::childViewControllers() const {
    auto array = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (const auto& each : children_) objc::send<"addObject:">(array, each->object());
    return array;
}

void ViewController::addChildViewController(ViewController* child) {
    if (!child || child == this || child->parent_ == this) return;
    const objc::Ref<ViewController> kept(child);
    child->removeFromParentViewController();
    children_.push_back(kept);
    child->parent_ = this;
}

void ViewController::removeFromParentViewController() {
    if (!parent_) return;
    const objc::Ref<ViewController> kept(this);
    auto& list = std::exchange(parent_, nullptr)->children_;
    std::erase_if(list, [&](const auto& each) { return each == this; });
}

void ViewController::setEditingAnimated(bool editing, bool) { editing_ = editing; }

void ViewController::setCoversNavigationBar(bool covers, bool animated) {
    coversNavigationBar_ = covers;
    if (auto* navigation = navigationController()) navigation->updateBar(animated);
}

void ViewController::setNeedsStatusBarAppearanceUpdate() {
    if (view_) view_->setNeedsDisplay();
}

std::vector<ViewController*> ViewController::childrenOnScreen() {
    std::vector<ViewController*> result;
    if (!view_) return result;
    for (const auto& each : children_) {
        if (each->view_ && each->view_->isDescendantOf(view_)) result.push_back(each);
    }
    return result;
}

void ViewController::beginAppearing(bool animated) {
    if (appearance_ == Appearance::Appearing || appearance_ == Appearance::Appeared) return;
    view();
    appearance_ = Appearance::Appearing;
    objc::send<"viewWillAppear:">(object(), animated);
    for (auto* each : childrenOnScreen()) each->beginAppearing(animated);
}

void ViewController::endAppearing(bool animated) {
    if (appearance_ != Appearance::Appearing) return;
    appearance_ = Appearance::Appeared;
    objc::send<"viewDidAppear:">(object(), animated);
    for (auto* each : childrenOnScreen()) each->endAppearing(animated);
}

void ViewController::beginDisappearing(bool animated) {
    if (appearance_ == Appearance::Disappeared || appearance_ == Appearance::Disappearing) return;
    appearance_ = Appearance::Disappearing;
    objc::send<"viewWillDisappear:">(object(), animated);
    for (auto* each : childrenOnScreen()) each->beginDisappearing(animated);
}

void ViewController::endDisappearing(bool animated) {
    if (appearance_ != Appearance::Disappearing) return;
    appearance_ = Appearance::Disappeared;
    objc::send<"viewDidDisappear:">(object(), animated);
    for (auto* each : childrenOnScreen()) each->endDisappearing(animated);
}

}  // namespace uikit

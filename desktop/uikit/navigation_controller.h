// UINavigationController: a stack of screens under one bar.
#pragma once

#include "desktop/uikit/navigation_bar.h"
#include "desktop/uikit/view_controller.h"

namespace uikit {

class NavigationController : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"UINavigationController"};
    static void define(objc::ClassDefinition<NavigationController>& definition);
    ~NavigationController() override;

    // Messages of the same names. A pop answers what left; the root never leaves by a pop.
    objc::Object initWithRootViewController(ViewController* root);
    void pushViewControllerAnimated(ViewController* controller, bool animated);
    objc::Object popViewControllerAnimated(bool animated);
    objc::Object popToRootViewControllerAnimated(bool animated);
    objc::Object popToViewControllerAnimated(ViewController* controller, bool animated);
    objc::Object viewControllers() const;
    void setViewControllers(objc::Object controllers) { setViewControllersAnimated(controllers, false); }
    void setViewControllersAnimated(objc::Object controllers, bool animated);
    ViewController* topViewController() const { return stack_.empty() ? nullptr : stack_.back().get(); }
    NavigationBar* navigationBar();
    /// By message, or by the screen on top.
    bool isNavigationBarHidden() const;
    void setNavigationBarHidden(bool hidden) { setNavigationBarHiddenAnimated(hidden, false); }
    void setNavigationBarHiddenAnimated(bool hidden, bool animated);

    void loadView() override;
    void viewDidLayoutSubviews() override;
    NavigationController* asNavigationController() override { return this; }
    ViewController* childViewControllerForStatusBarStyle() override { return topViewController(); }
    std::vector<ViewController*> childrenOnScreen() override;

    const std::vector<objc::Ref<ViewController>>& stack() const { return stack_; }
    /// Shows or hides the bar as the screen on top wants it now.
    void updateBar(bool animated);

  private:
    using Stack = std::vector<objc::Ref<ViewController>>;
    enum class Direction { Forward, Back };
    void change(Stack stack, Direction direction, bool animated);
    void showTop(ViewController* former, Direction direction, bool animated);
    void finishTransition();
    void slide(View* arriving, View* leaving, Direction direction);
    void showBarItem(bool animated);
    void layOut();
    Rect contentRect();

    Stack stack_;
    objc::Ref<NavigationBar> bar_;
    bool barHidden_ = false;  // by message
    double barTarget_ = 1;
    double barShown_ = 1;  // how much of the bar is in view, 0 to 1
    AnimationToken barAnimation_ = 0;
    AnimationToken transition_ = 0;
    bool transitionAnimated_ = false;  // what the screens were told when they began to come and go
    objc::Ref<ViewController> leaving_;
    objc::Ref<ViewController> arriving_;
    Stack removed_;
};

}  // namespace uikit

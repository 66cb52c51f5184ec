// UIViewController: one screen, its view, its place in the bars, and the messages of its life.
#pragma once

#include <atomic>

#include "desktop/uikit/view.h"

namespace uikit {

class NavigationController;
class TabBarController;

class ViewController : public Responder {
  public:
    using Super = Responder;
    static constexpr objc::Name className{"UIViewController"};
    static void define(objc::ClassDefinition<ViewController>& definition);
    ~ViewController() override;

    // Messages of the same names. `view` loads on first use: `loadView`, then `viewDidLoad`.
    View* view();
    void setView(View* view);
    bool isViewLoaded() const { return static_cast<bool>(view_); }
    virtual void loadView();
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool) {}
    virtual void viewDidAppear(bool) {}
    virtual void viewWillDisappear(bool) {}
    virtual void viewDidDisappear(bool) {}
    virtual void viewDidLayoutSubviews() {}
    virtual void didReceiveMemoryWarning() {}
    objc::Object title() const { return title_; }
    void setTitle(objc::Object title);
    /// A UINavigationItem with the controller's title, made at first use.
    objc::Object navigationItem();
    /// The nearest one up the parents, or null. The messages answer its object.
    NavigationController* navigationController() const;
    TabBarController* tabBarController() const;
    /// A container answers itself; see navigationController().
    virtual NavigationController* asNavigationController() { return nullptr; }
    virtual TabBarController* asTabBarController() { return nullptr; }
    /// A UITabBarItem, or nil while none was set.
    objc::Object tabBarItem() const { return tabBarItem_; }
    void setTabBarItem(objc::Object item) { tabBarItem_ = objc::Strong<>(item); }
    ViewController* parentViewController() const { return parent_; }
    objc::Object childViewControllers() const;
    void addChildViewController(ViewController* child);
    void removeFromParentViewController();
    bool isEditing() const { return editing_; }
    /// Sends the form with `animated:`, which is the one to override.
    void setEditing(bool editing) { objc::send<"setEditing:animated:">(object(), editing, false); }
    virtual void setEditingAnimated(bool editing, bool animated);  // `setEditing:animated:`
    objc::Object searchDisplayController() const { return searchController_; }
    void setSearchDisplayController(objc::Object controller) { searchController_ = objc::Strong<>(controller); }
    virtual long preferredStatusBarStyle() { return 0; }  // 0 dark text, 1 light text
    virtual ViewController* childViewControllerForStatusBarStyle() { return nullptr; }
    void setNeedsStatusBarAppearanceUpdate();
    void presentViewControllerAnimatedCompletion(ViewController* controller, bool animated, objc::Object block);
    void dismissViewControllerAnimatedCompletion(bool animated, objc::Object block);
    ViewController* presentedViewController() const { return presented_; }
    ViewController* presentingViewController() const { return presenting_; }

    /// Children whose views are on the screen with this one's: they appear and disappear with it. The standard answer
    /// is those whose views stand below this one's.
    virtual std::vector<ViewController*> childrenOnScreen();

    // For containers: these send the life's messages in order, once each, first to the controller, then to its
    // children on the screen.
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };
    void beginAppearing(bool animated);     // viewWillAppear:
    void endAppearing(bool animated);       // viewDidAppear:
    void beginDisappearing(bool animated);  // viewWillDisappear:
    void endDisappearing(bool animated);    // viewDidDisappear:
    Appearance appearance() const { return appearance_; }
    const std::vector<objc::Ref<ViewController>>& children() const { return children_; }

    /// Whether the bar is away while this screen is on top of its stack, as during a search.
    bool coversNavigationBar() const { return coversNavigationBar_; }
    void setCoversNavigationBar(bool covers, bool animated);

  private:
    ViewController* nearest(bool (*isWanted)(ViewController*)) const;
    objc::Object navigationControllerObject() const;
    objc::Object tabBarControllerObject() const;
    ViewController* presenter();

    objc::Ref<View> view_;
    objc::Strong<> title_;
    objc::Strong<> navigationItem_;
    objc::Strong<> tabBarItem_;
    ViewController* parent_ = nullptr;  // cleared when it goes
    std::vector<objc::Ref<ViewController>> children_;
    objc::Ref<ViewController> presented_;
    ViewController* presenting_ = nullptr;  // cleared when it goes
    objc::Strong<> searchController_;
    std::atomic<bool> editing_{false};
    Appearance appearance_ = Appearance::Disappeared;
    bool coversNavigationBar_ = false;
};

}  // namespace uikit

// UIViewController: one screen, its view, its place in the bars, and the messages of its life.
#pragma once

#include "desktop/uikit/view.h"

namespace uikit {

class NavigationController;
class NavigationItem;
class SearchDisplayController;
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
    objc::Object title() const { return title_; }
    void setTitle(objc::Object title);
    NavigationItem* navigationItem();
    NavigationController* navigationController() const;  // the nearest one up the parents, or null
    TabBarController* tabBarController() const;
    ViewController* parentViewController() const { return parent_; }
    objc::Object childViewControllers() const;
    void addChildViewController(ViewController* child);
    void removeFromParentViewController();
    bool isEditing() const { return editing_; }
    void setEditing(bool editing) { objc::send<"setEditing:animated:">(object(), editing, false); }
    virtual void setEditingAnimated(bool editing, bool animated);  // `setEditing:animated:`
    objc::Object searchDisplayController() const;
    void setSearchDisplayController(SearchDisplayController* controller);  // retained
    long preferredStatusBarStyle() const { return 0; }
    void presentViewControllerAnimatedCompletion(ViewController* controller, bool animated, objc::Object block);
    void dismissViewControllerAnimatedCompletion(bool animated, objc::Object block);
    ViewController* presentedViewController() const { return presented_; }

    // For containers: these send the life's messages in order, once each.
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };
    void beginAppearing(bool animated);     // viewWillAppear:
    void endAppearing(bool animated);       // viewDidAppear:
    void beginDisappearing(bool animated);  // viewWillDisappear:
    void endDisappearing(bool animated);    // viewDidDisappear:
    Appearance appearance() const { return appearance_; }
    SearchDisplayController* searchController() const { return searchController_; }

  private:
    objc::Ref<View> view_;
    objc::Strong<> title_;
    objc::Ref<NavigationItem> navigationItem_;
    ViewController* parent_ = nullptr;
    std::vector<objc::Ref<ViewController>> children_;
    objc::Ref<ViewController> presented_;
    objc::Strong<> searchControllerOwner_;
    SearchDisplayController* searchController_ = nullptr;
    bool editing_ = false;
    Appearance appearance_ = Appearance::Disappeared;
};

}  // namespace uikit

// UIKit, the screens: view controllers, the navigation bar's items, the search display controller, the application.
#pragma once

#include "platform/uikit_views.h"

struct UIBarButtonItem : NSObject {
    static constexpr objc::Name className{"UIBarButtonItem"};
    static constexpr NSInteger stop = 14;
    static constexpr NSInteger trash = 16;
    static constexpr NSInteger done = 2;

    /// The appearance of items inside search bars; it takes setTintColor().
    static UIBarButtonItem appearanceInSearchBars() {
        return objc::sendVariadic<"appearanceWhenContainedIn:", UIBarButtonItem>(
            cls<UIBarButtonItem>(), cls<UISearchBar>(), static_cast<void*>(nullptr));
    }
    static objc::Strong<UIBarButtonItem> makeSystemItem(NSInteger item, Object target, SEL action) {
        return objc::make<UIBarButtonItem, "initWithBarButtonSystemItem:target:action:">(
            objc::classNamed<"UIBarButtonItem">(), item, target, action);
    }
    static objc::Strong<UIBarButtonItem> makeWithImage(UIImage image, NSInteger style, Object target, SEL action) {
        return objc::make<UIBarButtonItem, "initWithImage:style:target:action:">(objc::classNamed<"UIBarButtonItem">(),
                                                                                 image, style, target, action);
    }
    Object target() const { return objc::send<"target", Object>(*this); }
    SEL action() const { return objc::send<"action", SEL>(*this); }
    void setTintColor(UIColor color) const { objc::send<"setTintColor:">(*this, color); }
};

struct UINavigationItem : NSObject {
    static constexpr objc::Name className{"UINavigationItem"};

    void setTitleView(UIView view) const { objc::send<"setTitleView:">(*this, view); }
    void setLeftBarButtonItem(UIBarButtonItem item, bool animated) const {
        objc::send<"setLeftBarButtonItem:animated:">(*this, item, animated);
    }
    void setRightBarButtonItem(UIBarButtonItem item) const { objc::send<"setRightBarButtonItem:">(*this, item); }
    void setRightBarButtonItem(UIBarButtonItem item, bool animated) const {
        objc::send<"setRightBarButtonItem:animated:">(*this, item, animated);
    }
    void setHidesBackButton(bool hides, bool animated) const {
        objc::send<"setHidesBackButton:animated:">(*this, hides, animated);
    }
};

struct UISearchDisplayController;
struct UINavigationController;

struct UIViewController : NSObject {
    static constexpr objc::Name className{"UIViewController"};

    UIView view() const { return objc::send<"view", UIView>(*this); }
    void setTitle(NSString title) const { objc::send<"setTitle:">(*this, title); }
    UINavigationItem navigationItem() const { return objc::send<"navigationItem", UINavigationItem>(*this); }
    UINavigationController navigationController() const;
    UIViewController parentViewController() const {
        return objc::send<"parentViewController", UIViewController>(*this);
    }
    UISearchDisplayController searchDisplayController() const;
    void setSearchDisplayController(UISearchDisplayController controller) const;
    bool isEditing() const { return objc::send<"isEditing", bool>(*this); }
    void setEditing(bool editing, bool animated) const { objc::send<"setEditing:animated:">(*this, editing, animated); }
};

struct UINavigationController : UIViewController {
    static constexpr objc::Name className{"UINavigationController"};

    NSArray viewControllers() const { return objc::send<"viewControllers", NSArray>(*this); }
    /// Without animation.
    void setViewControllers(NSArray controllers) const { objc::send<"setViewControllers:">(*this, controllers); }
    void pushViewController(UIViewController controller, bool animated) const {
        objc::send<"pushViewController:animated:">(*this, controller, animated);
    }
    void popViewController(bool animated) const { objc::send<"popViewControllerAnimated:", Object>(*this, animated); }
    void popToViewController(UIViewController controller, bool animated) const {
        objc::send<"popToViewController:animated:", Object>(*this, controller, animated);
    }
    void popToRootViewController(bool animated) const {
        objc::send<"popToRootViewControllerAnimated:", Object>(*this, animated);
    }
};

struct UISearchDisplayController : NSObject {
    static constexpr objc::Name className{"UISearchDisplayController"};

    static objc::Strong<UISearchDisplayController> makeWithSearchBar(UISearchBar bar, UIViewController contents) {
        return objc::make<UISearchDisplayController, "initWithSearchBar:contentsController:">(
            objc::classNamed<"UISearchDisplayController">(), bar, contents);
    }
    UISearchBar searchBar() const { return objc::send<"searchBar", UISearchBar>(*this); }
    UITableView searchResultsTableView() const { return objc::send<"searchResultsTableView", UITableView>(*this); }
    void setDelegate(Object delegate) const { objc::send<"setDelegate:">(*this, delegate); }
    void setSearchResultsDelegate(Object delegate) const { objc::send<"setSearchResultsDelegate:">(*this, delegate); }
    void setSearchResultsDataSource(Object source) const { objc::send<"setSearchResultsDataSource:">(*this, source); }
};

inline UINavigationController UIViewController::navigationController() const {
    return objc::send<"navigationController", UINavigationController>(*this);
}
inline UISearchDisplayController UIViewController::searchDisplayController() const {
    return objc::send<"searchDisplayController", UISearchDisplayController>(*this);
}
inline void UIViewController::setSearchDisplayController(UISearchDisplayController controller) const {
    objc::send<"setSearchDisplayController:">(*this, controller);
}

struct UIApplication : NSObject {
    static constexpr objc::Name className{"UIApplication"};

    static UIApplication sharedApplication() {
        return objc::send<"sharedApplication", UIApplication>(cls<UIApplication>());
    }
    /// Whether something took the address.
    bool openURL(NSURL address) const { return objc::send<"openURL:", bool>(*this, address); }
    UIWindow keyWindow() const { return objc::send<"keyWindow", UIWindow>(*this); }
    void setNetworkActivityIndicatorVisible(bool visible) const {
        objc::send<"setNetworkActivityIndicatorVisible:">(*this, visible);
    }
};

struct UIScreen : NSObject {
    static constexpr objc::Name className{"UIScreen"};

    static UIScreen mainScreen() { return objc::send<"mainScreen", UIScreen>(cls<UIScreen>()); }
    CGRect bounds() const { return objc::send<"bounds", CGRect>(*this); }
};

/// The telephone application's two classes that the plug-in extends.
struct PhoneApplication : NSObject {
    static constexpr objc::Name className{"PhoneApplication"};
};
struct PHRecentsViewController : UIViewController {
    static constexpr objc::Name className{"PHRecentsViewController"};

    UITableView table() const { return objc::send<"table", UITableView>(*this); }
};

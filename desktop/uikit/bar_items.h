// UIBarButtonItem and UINavigationItem: what a screen puts into the navigation bar.
#pragma once

#include <functional>
#include <string>

#include "desktop/uikit/button.h"
#include "desktop/weak/weak.h"

namespace uikit {

/// UIBarButtonItem. The target is not retained.
class BarButtonItem : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIBarButtonItem"};
    static void define(objc::ClassDefinition<BarButtonItem>& definition);

    /// The system items that have a look here; any other shows as "Item".
    enum SystemItem : long { done = 0, cancel = 1, edit = 2, add = 4, stop = 14, trash = 16 };

    // Messages of the same names.
    objc::Object initWithSystemItem(long systemItem, objc::Object target, SEL action);
    objc::Object initWithImage(objc::Object image, long style, objc::Object target, SEL action);
    objc::Object initWithTitle(objc::Object title, long style, objc::Object target, SEL action);
    objc::Object initWithCustomView(View* view);
    objc::Object title() const { return title_; }
    void setTitle(objc::Object title) { title_ = objc::Strong<>(title); }
    objc::Object image() const { return image_; }
    View* customView() const { return customView_; }
    long style() const { return style_; }
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    long tag() const { return tag_; }
    void setTag(long tag) { tag_ = tag; }
    objc::Strong<> target() const { return target_.load(); }
    SEL action() const { return action_; }
    /// `appearanceWhenContainedIn:`, whatever the containers: what stands for the items of search bars, the only ones
    /// that follow an appearance here. Its tint is for bars that have a colour of their own.
    static objc::Object appearance(Class cls, objc::Object container);
    objc::Object tintColor() const { return tintColor_; }
    void setTintColor(objc::Object color) { tintColor_ = objc::Strong<>(color); }

    /// Sends the action to the target, as a tap does.
    void fire();
    /// The view that stands for the item in a bar, new each time, sized to fit.
    objc::Ref<View> makeView();
    /// As `show` names it: a system item by its word, an image by its file's name, else the title in quotes.
    std::string description() const;

  private:
    objc::Object remember(objc::Object target, SEL action);

    long systemItem_ = -1;
    long style_ = 0;
    long tag_ = 0;
    bool enabled_ = true;
    weak::Object target_;
    SEL action_ = nullptr;
    objc::Strong<> title_;
    objc::Strong<> image_;
    objc::Strong<> tintColor_;
    objc::Ref<View> customView_;
};

/// UINavigationItem. Tells the bar that shows it of each change.
class NavigationItem : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UINavigationItem"};
    static void define(objc::ClassDefinition<NavigationItem>& definition);

    // Messages of the same names.
    objc::Object initWithTitle(objc::Object title);
    objc::Object title() const { return title_; }
    void setTitle(objc::Object title);
    View* titleView() const { return titleView_; }
    void setTitleView(View* view);
    BarButtonItem* leftBarButtonItem() const { return left_; }
    void setLeftBarButtonItem(BarButtonItem* item) { setLeftBarButtonItemAnimated(item, false); }
    void setLeftBarButtonItemAnimated(BarButtonItem* item, bool animated);
    BarButtonItem* rightBarButtonItem() const { return right_; }
    void setRightBarButtonItem(BarButtonItem* item) { setRightBarButtonItemAnimated(item, false); }
    void setRightBarButtonItemAnimated(BarButtonItem* item, bool animated);
    BarButtonItem* backBarButtonItem() const { return back_; }
    void setBackBarButtonItem(BarButtonItem* item);
    bool hidesBackButton() const { return hidesBack_; }
    void setHidesBackButton(bool hides) { setHidesBackButtonAnimated(hides, false); }
    void setHidesBackButtonAnimated(bool hides, bool animated);

    /// Is told whenever the right button was taken away and nothing put in its place; by the screen that has the item.
    void setRightButtonTaken(std::function<void()> told) { rightTaken_ = std::move(told); }
    /// Who is told, with whether the change is to be animated; one at a time.
    void setObserver(std::function<void(bool animated)> observer) { observer_ = std::move(observer); }

  private:
    void changed(bool animated) {
        if (observer_) observer_(animated);
    }

    objc::Strong<> title_;
    objc::Ref<View> titleView_;
    objc::Ref<BarButtonItem> left_;
    objc::Ref<BarButtonItem> right_;
    objc::Ref<BarButtonItem> back_;
    bool hidesBack_ = false;
    std::function<void(bool)> observer_;
    std::function<void()> rightTaken_;
};

/// Sends an action by the number of arguments that its selector takes: none, or the sender. To null: nothing.
void sendAction(objc::Object target, SEL action, objc::Object sender);

}  // namespace uikit

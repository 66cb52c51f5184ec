// The navigation bar's items.
#include "desktop/uikit/bar_items.h"

#include <cstring>

#include "desktop/graphics/icons.h"
#include "desktop/uikit/application.h"

namespace uikit {
namespace {

constexpr double itemHeight = 44;
constexpr double iconSide = 24;
constexpr double itemPadding = 10;

struct SystemLook {
    long item;
    const char* word;
    const char* title;
    graphics::Symbol symbol;
};
// A null title: the item shows its symbol.
constexpr SystemLook systemLooks[] = {
    {BarButtonItem::done, "done", "Done", {}},
    {BarButtonItem::cancel, "cancel", "Cancel", {}},
    {BarButtonItem::edit, "edit", "Edit", {}},
    {BarButtonItem::add, "add", nullptr, graphics::Symbol::Add},
    {BarButtonItem::stop, "stop", nullptr, graphics::Symbol::Stop},
    {BarButtonItem::trash, "trash", nullptr, graphics::Symbol::Trash},
};

const SystemLook* lookOf(long item) {
    for (const auto& look : systemLooks)
        if (look.item == item) return &look;
    return nullptr;
}

}  // namespace

void sendAction(objc::Object target, SEL action, objc::Object sender) {
    if (!target || !action) return;
    if (std::strchr(sel_getName(action), ':'))
        objc::sendSelector(target, action, sender);
    else
        objc::sendSelector(target, action);
}

void BarButtonItem::define(objc::ClassDefinition<BarButtonItem>& definition) {
    definition.method<"initWithBarButtonSystemItem:target:action:", &BarButtonItem::initWithSystemItem>()
        .method<"initWithImage:style:target:action:", &BarButtonItem::initWithImage>()
        .method<"initWithTitle:style:target:action:", &BarButtonItem::initWithTitle>()
        .method<"initWithCustomView:", &BarButtonItem::initWithCustomView>()
        .method<"title", &BarButtonItem::title>()
        .method<"setTitle:", &BarButtonItem::setTitle>()
        .method<"image", &BarButtonItem::image>()
        .method<"customView", &BarButtonItem::customView>()
        .method<"style", &BarButtonItem::style>()
        .method<"isEnabled", &BarButtonItem::isEnabled>()
        .method<"setEnabled:", &BarButtonItem::setEnabled>()
        .method<"tag", &BarButtonItem::tag>()
        .method<"setTag:", &BarButtonItem::setTag>()
        .method<"target", &BarButtonItem::target>()
        .method<"action", &BarButtonItem::action>()
        .method<"tintColor", &BarButtonItem::tintColor>()
        .method<"setTintColor:", &BarButtonItem::setTintColor>()
        .method<"fire", &BarButtonItem::fire>();
    definition.classMethod<"appearanceWhenContainedIn:", &BarButtonItem::appearance>();
}

objc::Object BarButtonItem::appearance(Class, objc::Object) {
    static auto* const shared = new objc::Ref<BarButtonItem>(objc::Ref<BarButtonItem>::make());
    return objc::Object{shared->self()};
}

objc::Object BarButtonItem::remember(objc::Object target, SEL action) {
    target_ = target;
    action_ = action;
    return objc::Object{self};
}

objc::Object BarButtonItem::initWithSystemItem(long systemItem, objc::Object target, SEL action) {
    systemItem_ = systemItem;
    return remember(target, action);
}

objc::Object BarButtonItem::initWithImage(objc::Object image, long style, objc::Object target, SEL action) {
    image_ = objc::Strong<>(image);
    style_ = style;
    return remember(target, action);
}

objc::Object BarButtonItem::initWithTitle(objc::Object title, long style, objc::Object target, SEL action) {
    title_ = objc::Strong<>(title);
    style_ = style;
    return remember(target, action);
}

objc::Object BarButtonItem::initWithCustomView(View* view) {
    customView_ = objc::Ref<View>(view);
    return objc::Object{self};
}

void BarButtonItem::fire() {
    if (enabled_) sendAction(target(), action_, objc::Object{self});
}

objc::Ref<View> BarButtonItem::makeView() {
    if (customView_) return customView_;
    constexpr long systemType = 1;
    objc::Ref<Button> button(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), systemType)));
    button->addTargetActionForControlEvents(objc::Object{self}, objc::selector<"fire">(), touchUpInside);
    button->setEnabled(enabled_);
    const SystemLook* look = lookOf(systemItem_);
    if (image_ || (look && !look->title)) {
        button->setImageForState(image_ ? image_.get() : uiImage(graphics::symbolImage(look->symbol, screenScale())),
                                 normalState);
        button->setFrame({{0, 0}, {iconSide + 2 * itemPadding, itemHeight}});
        if (image_) button->setImageTint(palette::brand);
    } else {
        button->setTitleForState(look     ? nsString(localized(look->title))
                                 : title_ ? title_.get()
                                          : nsString("Item"),
                                 normalState);
        const Size fitting = button->sizeThatFits({});
        button->setFrame({{0, 0}, {fitting.width + 2 * itemPadding, itemHeight}});
    }
    return objc::Ref<View>(button.get());
}

std::string BarButtonItem::description() const {
    if (const SystemLook* look = lookOf(systemItem_)) return look->word;
    if (image_) return imageName(image_);
    return '"' + utf8(title_) + '"';
}

void NavigationItem::define(objc::ClassDefinition<NavigationItem>& definition) {
    definition.method<"initWithTitle:", &NavigationItem::initWithTitle>()
        .method<"title", &NavigationItem::title>()
        .method<"setTitle:", &NavigationItem::setTitle>()
        .method<"titleView", &NavigationItem::titleView>()
        .method<"setTitleView:", &NavigationItem::setTitleView>()
        .method<"leftBarButtonItem", &NavigationItem::leftBarButtonItem>()
        .method<"setLeftBarButtonItem:", &NavigationItem::setLeftBarButtonItem>()
        .method<"setLeftBarButtonItem:animated:", &NavigationItem::setLeftBarButtonItemAnimated>()
        .method<"rightBarButtonItem", &NavigationItem::rightBarButtonItem>()
        .method<"setRightBarButtonItem:", &NavigationItem::setRightBarButtonItem>()
        .method<"setRightBarButtonItem:animated:", &NavigationItem::setRightBarButtonItemAnimated>()
        .method<"backBarButtonItem", &NavigationItem::backBarButtonItem>()
        .method<"setBackBarButtonItem:", &NavigationItem::setBackBarButtonItem>()
        .method<"hidesBackButton", &NavigationItem::hidesBackButton>()
        .method<"setHidesBackButton:", &NavigationItem::setHidesBackButton>()
        .method<"setHidesBackButton:animated:", &NavigationItem::setHidesBackButtonAnimated>();
}

objc::Object NavigationItem::initWithTitle(objc::Object title) {
    title_ = objc::Strong<>(title);
    return objc::Object{self};
}

void NavigationItem::setTitle(objc::Object title) {
    title_ = objc::Strong<>(title);
    changed(false);
}

void NavigationItem::setTitleView(View* view) {
    titleView_ = objc::Ref<View>(view);
    changed(false);
}

void NavigationItem::setLeftBarButtonItemAnimated(BarButtonItem* item, bool animated) {
    left_ = objc::Ref<BarButtonItem>(item);
    changed(animated);
}

void NavigationItem::setRightBarButtonItemAnimated(BarButtonItem* item, bool animated) {
    right_ = objc::Ref<BarButtonItem>(item);
    changed(animated);
    if (!item && rightTaken_) rightTaken_();
}

void NavigationItem::setBackBarButtonItem(BarButtonItem* item) {
    back_ = objc::Ref<BarButtonItem>(item);
    changed(false);
}

void NavigationItem::setHidesBackButtonAnimated(bool hides, bool animated) {
    hidesBack_ = hides;
    changed(animated);
}

}  // namespace uikit

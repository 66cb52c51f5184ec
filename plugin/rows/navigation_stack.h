// The navigation stack: pushing a screen, and finding one.
#pragma once

#include "platform/uikit_screens.h"

namespace rows {

/// Pushes the screen with the usual animation; nothing for null, which is a screen whose class is not there.
inline void push(UIViewController from, UIViewController screen) {
    if (screen) from.navigationController().pushViewController(screen, true);
}

/// The lowest controller on the stack that is wanted; null when there is none.
template <class IsWanted>
inline UIViewController firstControllerThat(UINavigationController navigation, IsWanted isWanted) {
    auto controllers = navigation.viewControllers();
    const NSUInteger count = controllers.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto controller = controllers.objectAtIndex<UIViewController>(i);
        if (isWanted(controller)) return controller;
    }
    return {};
}

/// The lowest controller on the stack that is of the class; null when there is none, and for a null class.
inline UIViewController firstControllerOf(UINavigationController navigation, Class cls) {
    if (!cls) return {};
    return firstControllerThat(navigation, [cls](UIViewController each) { return objc::isKindOf(each, cls); });
}

inline constexpr NSUInteger nowhere = ~NSUInteger{0};

/// The place of the topmost of the controllers that is of the class, or nowhere.
inline NSUInteger topmostOf(NSArray controllers, Class cls) {
    for (NSUInteger i = controllers.count(); i-- > 0;)
        if (objc::isKindOf(controllers.objectAtIndex(i), cls)) return i;
    return nowhere;
}

}  // namespace rows

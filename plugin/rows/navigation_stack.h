// Finding a screen on the navigation stack.
#pragma once

#include "platform/uikit_screens.h"

namespace rows {

/// The lowest controller on the stack that is of the class; null when there is none, and for a null class.
inline UIViewController firstControllerOf(UINavigationController navigation, Class cls) {
    if (!cls) return {};
    auto controllers = navigation.viewControllers();
    const NSUInteger count = controllers.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto controller = controllers.objectAtIndex<UIViewController>(i);
        if (objc::isKindOf(controller, cls)) return controller;
    }
    return {};
}

}  // namespace rows

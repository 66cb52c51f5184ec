// The modal progress indicator of the Recents screen: how it looks, how it blocks the window, how work runs under it.
#pragma once

#include "platform/uikit_screens.h"
#include "plugin/companion/visual.h"

namespace host {

/// Whether an indicator takes touches itself; set once the Recents view has loaded.
void setIndicatorUserInteraction(bool enabled);

// Methods of the screen. Main thread.

/// Shows an indicator over the screen and blocks the key window. With a selector, that is sent to `delegate` on a
/// thread of the indicator's own, and the indicator hides when it returns.
void showIndicator(UIViewController self, NSString label, NSString detail, objc::Object delegate, int mode,
                   SEL selector, objc::Object object);
void showIndicatorRunning(UIViewController self, NSString label, NSString detail, objc::Object delegate, int mode,
                          SEL selector);

// From here on down only the label is passed on; the other arguments are dropped, on purpose.
void showIndicatorInMode(UIViewController self, NSString label, NSString detail, objc::Object delegate, int mode);
void showIndicatorForDelegate(UIViewController self, NSString label, NSString detail, objc::Object delegate);
void showIndicatorWithDetail(UIViewController self, NSString label, NSString detail);
void showIndicatorWithLabel(UIViewController self, NSString label);
void showLoadingIndicator(UIViewController self);

void updateIndicator(UIViewController self, NSString label);
/// Hides after some seconds; the screen becomes the indicator's delegate, so that its end is reported.
void hideIndicatorLater(UIViewController self, bool animated, double delay);
void hideIndicatorAnimated(UIViewController self, bool animated);
/// Unblocks the window, and hides the indicator that was shown last. The reference to it stays.
void hideIndicator(UIViewController self);
void indicatorWasHidden(UIViewController self, MBProgressHUD indicator);

NSInteger preferredStatusBarStyle(UIViewController self);

}  // namespace host

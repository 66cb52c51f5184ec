// One reference to the indicator shown last, for the whole process; an earlier one that still shows is left alone.
#include "plugin/host/progress_indicator.h"

#include "objc/strong_slot.h"
#include "plugin/companion/utilities.h"
#include "plugin/host/brand.h"
#include "plugin/host/kept.h"

namespace host {
namespace {

Kept<objc::StrongSlot<MBProgressHUD>> kept;
constinit std::atomic<bool> userInteraction{false};

constexpr float indicatorOpacity = 0.75F;
constexpr NSInteger lightContent = 1;

UIColor indicatorBackground() {
    constexpr CGFloat lightGrey = 247.0 / 255.0;
    return UIColor::colorWithRed(lightGrey, lightGrey, lightGrey, 1.0);
}

void setNetworkActivity(bool visible) {
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(visible);
}

void setWindowInteraction(bool enabled) {
    UIApplication::sharedApplication().keyWindow().setUserInteractionEnabled(enabled);
}

void unblock() {
    setNetworkActivity(false);
    setWindowInteraction(true);
}

}  // namespace

void setIndicatorUserInteraction(bool enabled) { userInteraction.store(enabled, std::memory_order_relaxed); }

void showIndicator(UIViewController self, NSString label, NSString detail, objc::Object delegate, int mode,
                   SEL selector, objc::Object object) {
    setWindowInteraction(false);
    setNetworkActivity(false);
    UIViewController navigation = self.navigationController();
    auto indicator = MBProgressHUD::showHUDAddedTo(navigation ? navigation.view() : self.view(), true);
    kept->store(indicator);
    indicator.setColor(indicatorBackground());
    indicator.setLabelColor(brandColor());
    indicator.setDetailsLabelColor(brandColor());
    indicator.setLabelText(label);
    indicator.setDetailsLabelText(detail);
    indicator.setDelegate(delegate);
    indicator.setMode(mode);
    indicator.setUserInteractionEnabled(userInteraction.load(std::memory_order_relaxed));
    indicator.setOpacity(indicatorOpacity);
    indicator.setActivityIndicatorTintColor(brandColor());
    if (selector) indicator.showWhileExecuting(selector, delegate, object, true);
}

void showIndicatorRunning(UIViewController self, NSString label, NSString detail, objc::Object delegate, int mode,
                          SEL selector) {
    objc::send<"showHUD:detailText:delegate:mode:selector:withObject:">(self, label, detail, delegate, mode, selector,
                                                                        objc::Object{});
}

void showIndicatorInMode(UIViewController self, NSString label, NSString, objc::Object, int) {
    objc::send<"showHUD:detailText:delegate:mode:selector:">(self, label, NSString{}, objc::Object{}, 0, SEL{});
}

void showIndicatorForDelegate(UIViewController self, NSString label, NSString, objc::Object) {
    objc::send<"showHUD:detailText:delegate:mode:">(self, label, NSString{}, objc::Object{}, 0);
}

void showIndicatorWithDetail(UIViewController self, NSString label, NSString) {
    objc::send<"showHUD:detailText:delegate:">(self, label, NSString{}, objc::Object{});
}

void showIndicatorWithLabel(UIViewController self, NSString label) {
    objc::send<"showHUD:detailText:">(self, label, NSString{});
}

void showLoadingIndicator(UIViewController self) { objc::send<"showHUD:">(self, localized<"LOADING">()); }

void updateIndicator(UIViewController, NSString label) { kept->load()->setLabelText(label); }

void hideIndicatorLater(UIViewController self, bool animated, double delay) {
    auto indicator = kept->load();
    indicator->setDelegate(self);
    indicator->hide(animated, delay);
    unblock();
}

void hideIndicatorAnimated(UIViewController self, bool animated) {
    objc::send<"hideHUD:afterDelay:">(self, animated, 0.0);
}

void hideIndicator(UIViewController) {
    unblock();
    kept->load()->hide(true);
}

void indicatorWasHidden(UIViewController self, MBProgressHUD indicator) {
    unblock();
    if (indicator.delegate()) {
        kept->exchange(MBProgressHUD{})->removeFromSuperview();
    } else {
        objc::send<"hideHUD">(self);
    }
}

NSInteger preferredStatusBarStyle(UIViewController) { return lightContent; }

}  // namespace host

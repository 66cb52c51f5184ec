// The application delegate's part: deletions are announced, activity indicators get the product's colour.
#include "plugin/host/application.h"

#include "platform/corefoundation.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/host/brand.h"

namespace host {

void handleChanges(PhoneApplication) {
    if (!isReplaceRecentsOn()) return;
    auto calls = QVDataController::sharedInstance();
    if (!calls.isAnyRecDeleted()) return;
    if (calls.allCallsCount() < 1) darwin::post(text<"QuorvelAllCallsCleared">());
    // The setting is read again on purpose: it may have changed while the first name was posted.
    if (isReplaceRecentsOn())
        darwin::post(text<"QuorvelCallRecordDeletedNotification">());
    else
        darwin::post(text<"QuorvelRefreshCallTable">());
}

void applicationDidEnterBackground(PhoneApplication self, objc::Object) { objc::send<"handleChanges">(self); }

void applicationDidFinishLaunching(PhoneApplication, objc::Object) {
    UIActivityIndicatorView::appearance().setColor(brandColor());
}

}  // namespace host

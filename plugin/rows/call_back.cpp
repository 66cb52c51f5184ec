// Placing a call again, by the address that the system's applications answer to.
#include "plugin/rows/call_back.h"

#include "platform/uikit_screens.h"
#include "plugin/companion/settings.h"
#include "plugin/rows/call_back_rule.h"

namespace rows {

void callBack(QVCallEntry entry) {
    auto number = entry.phoneNumber();
    if (!number) return;
    const Scheme scheme = schemeOf(entry.isFaceTime(), entry.isFaceTimeVideo(),
                                   QVSettingsDataController::sharedInstance().isFaceTimeEnabled());
    // The number follows as it is stored, on purpose.
    auto address = NSString::stringWithFormat(text<"%s%@">(), prefixOf(scheme), number);
    UIApplication::sharedApplication().openURL(NSURL::URLWithString(address));
}

}  // namespace rows

// The process gate: the plug-in acts in the telephone application alone.
#pragma once

#include "platform/foundation.h"

namespace host {

/// Whether this process is the telephone application, by the main bundle's identifier.
inline bool isTelephoneApplication() {
    return NSBundle::mainBundle().bundleIdentifier().isEqualToString(text<"com.apple.mobilephone">());
}

}  // namespace host

// What the plug-in gives the host's application delegate.
#pragma once

#include "platform/uikit_screens.h"

namespace host {

/// Tells the other processes of deletions, once for each going to the background. The deletion flag stays set: the next
/// appearance of the Recents screen clears it.
void handleChanges(PhoneApplication self);
void applicationDidEnterBackground(PhoneApplication self, objc::Object application);
void applicationDidFinishLaunching(PhoneApplication self, objc::Object application);

}  // namespace host

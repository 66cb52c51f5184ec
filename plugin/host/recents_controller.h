// The Recents screen that notifications reach.
#pragma once

#include "platform/uikit_screens.h"

namespace host {

/// The Recents screen whose view loaded last while Replace-Recents was on; null before the first. Kept for the life of
/// the process.
objc::Strong<PHRecentsViewController> recentsController();
void setRecentsController(PHRecentsViewController controller);

}  // namespace host

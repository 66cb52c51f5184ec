// Stand-ins of the host's and the companion's classes, as far as start-up, installation and the indicator ask for them.
// Every message of interest is recorded as one word.
#pragma once

#include <string>
#include <vector>

#include "platform/uikit_screens.h"

namespace standins {

/// What happened, in order.
std::vector<std::string>& events();

/// What the companion answers.
struct Companion {
    bool replaceRecentsOn = true;
    bool needToLoadData = false;
    bool settingsChanged = false;
    bool anyRecordDeleted = false;
    std::int64_t allCallsCount = 3;
};
Companion& companion();

/// Registers the stand-ins and loads the plug-in's image, once per process; forgets events and answers before each
/// test.
void prepare();

/// New host objects.
objc::Strong<PhoneApplication> makeApplication();
objc::Strong<PHRecentsViewController> makeRecentsScreen();

/// Whether the key window takes touches.
bool windowTakesTouches();

}  // namespace standins

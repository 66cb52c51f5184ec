// Edit mode: the trash button, and the buttons of the two bars in each state.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Toggles edit mode; while a row is swiped it always ends it. The sender is not used.
void editButtonClicked(CallList list, objc::Object sender);
/// Rebuilds the buttons for the state, later, on the main queue, from the state as it is then. Any thread.
void updateNavigationBarButtonItems(CallList list, bool editing, bool groupEdit);
/// The title of the button that deletes all: of what was found while searching, else of the filter.
NSString getDeleteAllButtonText(CallList list);

}  // namespace recents

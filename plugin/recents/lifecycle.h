// The Recents screen's life: what its view brings up, when its lists are loaded again, what the background closes.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// After the host's own, with Replace-Recents on: controls, first page, cells, observers.
void viewDidLoad(CallList list);
void viewDidAppear(CallList list, bool animated);
/// In place of the host's: the trash button, made once.
void updateNavBarButtons(CallList list);
/// Loads the lists again where a flag says that calls or settings changed. Run at each appearance, on or off.
void viewAppearedAction(CallList list);
/// Empties the companion's lists and starts over with the filter of the selected segment.
void handleReloadDataAction(CallList list);
void newCallRecordAdded(CallList list, objc::Object notification);
/// Closes the delete menu and goes back to the list.
void handleApplicationDidEnterBackground(CallList list, objc::Object notification);

}  // namespace recents

// Loading: how a list is taken from the companion, how many of its rows are shown, and on which thread.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Starts over with all calls and loads the first page under the "LOADING" indicator. Main thread.
void initDatabase(CallList list);
/// Shows the indicator with the text; it runs loadCallRecsFromDBInBackGround on its own thread. Main thread.
void loadCallRecordsFromDB(CallList list, NSString label);
/// Loads and refreshes; the editing upkeep goes to the main queue. Any thread.
void loadCallRecsFromDBInBackGround(CallList list);
/// The same, but the editing upkeep stays on the calling thread: the asymmetry is required.
void loadCallRecsFromDB(CallList list);
/// Takes the filter's list and applies the row count rule. Any thread.
void initializeCallList(CallList list);
/// Works out again what is shown, where a result may have come too late: the search while one is on, else the row
/// count. Any thread.
void countRowsAgain(const CallList& list);
/// Reloads the table in front, later, on the main queue. Any thread.
void refreshTableData(CallList list);
/// The sum of the entries' durations in seconds; remembers how many entries there were.
int getCallsDuration(CallList list, NSArray entries);

}  // namespace recents

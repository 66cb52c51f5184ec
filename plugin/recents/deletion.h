// Deletion: all calls of the filter, what a search found, one row; and what brings the lists back into agreement.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Shows the confirmation menu; nothing when there is nothing to delete. Main thread. The sender is not used.
void deleteAllAction(CallList list, objc::Object sender);
/// The menu's destructive button: starts delete all, or delete searched. Main thread.
void handleDeleteAllAction(CallList list);
/// Show the indicator, whose own thread runs the deletion. Main thread.
void removeAllRecordsInBackGround(CallList list);
void removeSearchedRecordsInBackGround(CallList list);
/// The deletions themselves. The indicator's thread.
void removeAllRecords(CallList list);
void removeSearchedRecords(CallList list);
/// The lists after delete searched.
void removeCallsFromCallList(CallList list, NSMutableArray deleted);
/// Deletes the call of a row that has left the table already; puts it back where the database refuses. Main thread.
void removeRowData(CallList list, QVCallEntry entry, NSIndexPath path);
/// The search's copies after a row was deleted.
void updateSearchRecords(CallList list, QVCallEntry deleted);
/// Removes the first entry that stands for the deleted one; with grouping by contact off only the same record.
void removeSearchRecordFromList(CallList list, QVCallEntry deleted, NSMutableArray copies);

}  // namespace recents

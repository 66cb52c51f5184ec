// Deletion: all calls of the filter, what a search found, one row; and what brings the lists back into agreement.
#pragma once

#include "plugin/companion/visual.h"
#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// The confirmation menu, not shown yet; null when there is nothing to delete. Where days are shown its question names
/// `day`, and the null marker stands in the place of null.
objc::Strong<BlockActionSheet> makeDeletionSheet(const CallList& list, NSString day);
/// Shows the menu over the screen.
void showDeletionSheet(const CallList& list, BlockActionSheet sheet);
/// Shows the indicator, whose own thread sends the selector to the screen.
void showDeletingIndicator(const CallList& list, SEL deletion);
/// The list of all calls loses what the deletion of a filter's calls took.
void removeFromAllCalls(const CallList& list, Filter filter);
/// How a screen deletes a row. All run on the default queue.
struct RowDeletion {
    /// Answers whether the database deleted it.
    bool (*fromDatabase)(QVCallEntry entry, Filter filter);
    /// After that, before the lists are loaded again. May be null.
    void (*dropFromLists)(const CallList& list, Filter filter);
    /// Once the lists are loaded again. May be null.
    void (*showRemaining)(const CallList& list);
};
/// Deletes the call of a row that has left the table already; puts it back where the database refuses. Main thread.
void removeRow(const CallList& list, QVCallEntry entry, NSIndexPath path, const RowDeletion& deletion);
/// Deletes every call of the entry's day of that filter, and counts the day out.
bool removeDayOf(QVCallEntry entry, Filter filter);

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

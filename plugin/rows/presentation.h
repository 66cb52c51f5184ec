// What the table shows: rows, cells, heights, the texts at head and foot, and the swipe that deletes. Main thread.
#pragma once

#include "plugin/companion/visual.h"
#include "plugin/rows/call_list.h"

namespace rows {

/// The entry of a row: item `row` of what was found while searching, else of the list. Null past the end.
objc::Strong<QVCallEntry> entryOfRow(const CallList& list, NSInteger row);

/// Takes a swiped row out of its list, the table and the counts. Null where the list has no such row, and for another
/// style than deletion, which takes nothing.
objc::Strong<QVCallEntry> takeSwipedRow(const CallList& list, UITableView table, NSInteger style, NSIndexPath path);
/// Loads the section of the path again, to bring its header and footer up to date.
void reloadSectionOf(UITableView table, NSIndexPath path);

// The Recents screen's data source and delegate.
NSInteger numberOfRowsInSection(CallList list, UITableView table, NSInteger section);
UITableViewCell cellForRow(CallList list, UITableView table, NSIndexPath path);
/// Nothing, on purpose: the host's decoration of its own rows must not run over ours.
void willDisplayCell(CallList list, UITableView table, UITableViewCell cell, NSIndexPath path);
bool canEditRowAtPath(CallList list, UITableView table, NSIndexPath path);
void willBeginEditingRow(CallList list, UITableView table, NSIndexPath path);
void didEndEditingRow(CallList list, UITableView table, NSIndexPath path);
void commitEditingStyle(CallList list, UITableView table, NSInteger style, NSIndexPath path);
CGFloat heightForRow(CallList list, UITableView table, NSIndexPath path);
/// Null while Replace-Recents is off, the header setting is off, or the list is empty.
NSString titleForHeader(CallList list, UITableView table, NSInteger section);
/// Null while Replace-Recents is off or the list is empty. The footer setting is not asked here, on purpose.
NSString titleForFooter(CallList list, UITableView table, NSInteger section);

/// Registers what the table shows its rows and headers with; the state remembers that it did.
void registerCells(CallListState& state, UITableView table);
/// The same for a table that the state does not remember.
void registerMissingCells(CallListState& state, UITableView table);
/// The cell of the load-more row; showing it is what starts the load.
UITableViewCell loadMoreCell(const CallList& list, UITableView table);
/// Where pictures are wanted and the entry has a contact: sees to it that the picture comes into the companion's cache,
/// and has the cell drawn again when it arrives.
void bringContactImage(QVCallEntry entry, QVUITableViewCell cell);

}  // namespace rows

// Search: the calls of the filter whose name or number holds the text, and what begins, changes and ends a search.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Adds the matches in the loaded list, and in the filter's copies, to what was found. Any thread.
void searchTableView(CallList list);
/// Adds the database's matches that were not found yet; a search that ended meanwhile is given nothing. Not for the
/// main thread.
void loadMoreSearchedRecords(CallList list);

/// What the search has found, made where it is not there yet.
objc::Strong<NSMutableArray> foundList(rows::CallListState& state);
/// Begins a new edition, and empties what was found. The caller works the list out again.
void forgetFound(rows::CallListState& state);
/// The same among the calls of one day, or with null of all days.
void loadMoreMatches(const CallList& list, NSString day);
/// Turns a search to the scope's filter, with nothing found yet. Main thread.
void beginScope(const CallList& list, NSInteger scope);
/// Searches from the start and shows what is found. Main thread.
void searchAfresh(const CallList& list);

// The search display controller's delegate. Main thread.
bool shouldReloadForSearchString(CallList list, UISearchDisplayController controller, NSString text);
bool shouldReloadForSearchScope(CallList list, UISearchDisplayController controller, NSInteger scope);
void willBeginSearch(CallList list, UISearchDisplayController controller);
void willEndSearch(CallList list, UISearchDisplayController controller);
void didEndSearch(CallList list, UISearchDisplayController controller);

/// Whether two entries stand for the same in a list of matches: with grouping by contact the same name or else the same
/// number.
bool sameNameOrNumber(QVCallEntry left, QVCallEntry right);
/// Empties and drops the four lists of copies.
void dropSearchCopies(rows::CallListState& state);
/// The same, and the database may be asked for matches again.
void forgetLoadedMatches(rows::CallListState& state);
/// On the main queue: shows the search bar's edit button where something was found, else hides it.
void showEditButtonLater(const CallList& list);

}  // namespace recents

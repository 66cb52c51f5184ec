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
/// Begins a new edition and works it out: the search while one is on, else the row count. Any thread.
void countRowsAgain(const CallList& list);
/// Where a result was overtaken while it went in: the same, and the table is shown it.
void replaceOvertakenResult(const CallList& list);

/// The one way of a result into the list's state. `put` writes it, and answers whether it found what it rests on
/// unchanged. It is carried out only while the edition lasts in which the result was asked for: an older result is
/// dropped, because the code that began the later edition works the list out. Where the edition ended, or another
/// result came in, while this one was written, `undo` is called and the list is worked out again. Answers whether the
/// result is in; `asked` is the moment after it then. Any thread.
template <class Put, class Undo>
bool putIn(const CallList& list, rows::Edition::Moment& asked, Put put, Undo undo) {
    auto& edition = list.state.edition;
    if (!edition.isCurrent(asked)) return false;
    const bool isWhole = put();
    if (edition.finish(asked) && isWhole) return true;
    undo();
    replaceOvertakenResult(list);
    return false;
}
template <class Put>
bool putIn(const CallList& list, rows::Edition::Moment& asked, Put put) {
    return putIn(list, asked, put, [] {});
}
/// Reloads the table in front, later, on the main queue. Any thread.
void refreshTableData(CallList list);
/// The sum of the entries' durations in seconds; remembers how many entries there were.
int getCallsDuration(CallList list, NSArray entries);

}  // namespace recents

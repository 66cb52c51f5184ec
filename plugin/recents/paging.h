// Load more: one page further when the load-more row comes into view.
#pragma once

#include "plugin/companion/visual.h"
#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Loads on the default queue, refreshes the table, then stops the row's indicator. Main thread.
void handleLoadMoreRecordsAction(CallList list, QVLoadMoreRecordsCell cell);
/// The same of one list of the filter, which becomes the shown one.
void loadMoreOf(const CallList& list, Filter filter, NSMutableArray shown);
/// Shows one page more of the list, from memory or from the database. Not for the main thread.
void loadMoreRecordsAction(CallList list);

}  // namespace recents

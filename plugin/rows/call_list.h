// The call list: the state of one list screen, and the screen that shows it. The main thread, queues and the progress
// indicator's thread read and write it without a lock.
#pragma once

#include "objc/strong_slot.h"
#include "platform/addressbook.h"
#include "platform/uikit_screens.h"
#include "plugin/companion/entry.h"
#include "plugin/companion/filter.h"
#include "plugin/rows/edition.h"
#include "plugin/rows/relaxed.h"

/// A screen that shows a call list. What a screen does its own way it answers to the same selector.
struct CallListScreen : UIViewController {
    UITableView table() const { return objc::send<"table", UITableView>(*this); }
};

namespace rows {

/// The state of a call list. Everything starts zero, empty or false.
struct CallListState {
    Edition edition;  ///< of what is shown; results go in by recents::putIn alone

    std::atomic<std::int64_t> recountsAsked;  ///< and not answered yet; see recents/loading.h

    Relaxed<std::int64_t> filterType;  ///< a Filter's code, or 0 before the first load
    Relaxed<bool> searching;
    Relaxed<bool> isEditing;  ///< one row is being swiped
    Relaxed<bool> isAllRecsLoaded;
    Relaxed<bool> isLoadMoreAllCalls;
    Relaxed<std::int64_t> rowCount;        ///< call rows shown, the load-more row not counted
    Relaxed<std::int64_t> totalCount;      ///< rows that the list has in the database
    Relaxed<std::int64_t> totalCallCount;  ///< entries of the list last given to getCallsDuration:

    // Paging memory: the row count that the user reached in each filter; 0 for none.
    Relaxed<std::int64_t> allCallCnt;
    Relaxed<std::int64_t> dldCallCnt;
    Relaxed<std::int64_t> rcdCallCnt;
    Relaxed<std::int64_t> msdCallCnt;

    Relaxed<std::int64_t> lastMinRecCall;  ///< the page size when the list was last initialised

    objc::StrongSlot<NSMutableArray> srcList;          ///< the companion's list of the filter
    objc::StrongSlot<NSMutableArray> copyListOfItems;  ///< what the search found
    objc::StrongSlot<NSMutableArray> allCallsCopyList;
    objc::StrongSlot<NSMutableArray> dldCallsCopyList;
    objc::StrongSlot<NSMutableArray> rcdCallsCopyList;
    objc::StrongSlot<NSMutableArray> msdCallsCopyList;

    objc::StrongSlot<QVCallEntry> selEntry;  ///< opened last
    /// The person of the entry that was opened last and had one: a later entry without a contact leaves it there.
    objc::StrongSlot<ABPerson> selContact;

    objc::StrongSlot<NSString> totalDuration;
    objc::StrongSlot<UISegmentedControl> segmentedControl;
    objc::StrongSlot<UIBarButtonItem> trashIcon;
    objc::StrongSlot<objc::Object> deleteActionSheet;

    // The tables that cells are registered with: a screen has one, and one for what its search finds.
    objc::StrongSlot<UITableView> lastPreparedTable;
    objc::StrongSlot<UITableView> otherPreparedTable;

    Filter filter() const { return static_cast<Filter>(filterType.get()); }
    Relaxed<std::int64_t>& pagingMemory(Filter of) {
        return ofFilter(of, allCallCnt, dldCallCnt, rcdCallCnt, msdCallCnt);
    }
    /// The filter's copies of what was found; see recents/search.h.
    objc::StrongSlot<NSMutableArray>& searchCopies(Filter of) {
        return ofFilter(of, allCallsCopyList, dldCallsCopyList, rcdCallsCopyList, msdCallsCopyList);
    }
    void forgetPaging() {
        allCallCnt = 0;
        dldCallCnt = 0;
        rcdCallCnt = 0;
        msdCallCnt = 0;
    }
};

/// One list screen at work.
struct CallList {
    CallListScreen screen;
    CallListState& state;
};

}  // namespace rows

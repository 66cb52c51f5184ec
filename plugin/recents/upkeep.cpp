// One row's deletion, and the lists after deletions.
#include "platform/corefoundation.h"
#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/deletion.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/search.h"

namespace recents {
namespace {

/// A row that has left the table, and where it was.
struct TakenRow {
    objc::Strong<QVCallEntry> entry;
    NSInteger row;
    Filter filter;
    objc::Strong<NSMutableArray> from;
};

objc::Strong<NSMutableArray> shownList(const rows::CallListState& state) {
    return (state.searching ? state.copyListOfItems : state.srcList).load();
}

bool holdsRecord(NSArray entries, int rowId) {
    const NSUInteger count = entries.count();
    for (NSUInteger i = 0; i < count; ++i)
        if (entries.objectAtIndex<QVCallEntry>(i).ROWID() == rowId) return true;
    return false;
}

bool removeCallOrDay(QVCallEntry entry, Filter filter) {
    if (QVSettingsDataController::sharedInstance().isGroupByDate()) return removeDayOf(entry, filter);
    return QVDataController::sharedInstance().removeData(entry, filter, {});
}

/// The database refused: the row comes back where it was, in the list that it was taken from. One that was read again
/// meanwhile has it already.
void putBack(const CallList& list, const TakenRow& taken) {
    auto& state = list.state;
    auto begun = state.edition.now();
    if (!holdsRecord(taken.from->copy(), taken.entry->ROWID())) {
        if (shownList(state).get() == taken.from.get()) {
            state.rowCount.add(1);
            if (state.rowCount == state.totalCount) state.totalCount = state.rowCount + 1;
        }
        taken.from->insertObject(taken.entry.get(), static_cast<NSUInteger>(taken.row));
    }
    objc::send<"refreshTableData">(list.screen);
    if (!state.edition.finish(begun)) replaceOvertakenResult(list);
}

void endEditingOfEmptyList(const CallList& list) {
    if (!list.screen.isEditing() || list.state.rowCount >= 1) return;
    list.screen.setEditing(false, false);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), false);
}

/// Adds what the search finds now to what it has found; one that began, changed or ended meanwhile is run again.
void searchOn(const CallList& list, const TakenRow& taken) {
    if (taken.from.get() != list.state.copyListOfItems.load().get()) return countRowsAgain(list);
    const auto asked = list.state.edition.now();
    objc::send<"searchTableView">(list.screen);
    // The search's own result is all that may have come in.
    if (!list.state.searching || list.state.edition.now() != asked + 1) countRowsAgain(list);
}

void deleteRow(const CallList& list, const TakenRow& taken, const RowDeletion& deletion) {
    auto& state = list.state;
    if (!deletion.fromDatabase(taken.entry, taken.filter)) {
        putBack(list, taken);
        return;
    }
    state.edition.invalidate();
    if (deletion.dropFromLists) deletion.dropFromLists(list, taken.filter);
    if (state.searching) objc::send<"updateSearchRecords:">(list.screen, taken.entry.get());
    objc::send<"initializeCallList">(list.screen);
    if (state.searching) searchOn(list, taken);
    if (deletion.showRemaining) deletion.showRemaining(list);
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state] { endEditingOfEmptyList({screen, state}); });
    darwin::post(text<"QuorvelCallRecordDeletedNotification">());
}

/// The all-calls copies after a call of another filter went: the grouped entry loses its calls.
void updateAllCallsCopies(NSMutableArray copies, QVCallEntry deleted) {
    const NSUInteger count = copies.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto entry = copies.objectAtIndex<QVCallEntry>(i);
        if (!sameNameOrNumber(entry, deleted)) continue;
        entry.setCount(entry.count() - deleted.count());
        if (entry.count() < 1) copies.removeObject(entry);
        return;
    }
}

void clearOtherFilters(QVDataController calls) {
    calls.setAllCallsCount(0);
    if (auto dialled = calls.dldCallList()) {
        dialled.removeAllObjects();
        calls.setDldCallsCount(0);
    }
    if (auto received = calls.rcdCallList()) {
        received.removeAllObjects();
        calls.setRcdCallsCount(0);
    }
    if (auto missed = calls.msdCallList()) {
        missed.removeAllObjects();
        calls.setMsdCallsCount(0);
    }
}

}  // namespace

bool removeDayOf(QVCallEntry entry, Filter filter) {
    auto calls = QVDataController::sharedInstance();
    if (!calls.removeCallsFromDB(filter, entry.grpByDate())) return false;
    calls.setAllCallsCount(calls.allCallsCount() - 1);
    calls.setAllCallsDuration(0);
    return true;
}

void removeRowData(CallList list, QVCallEntry entry, NSIndexPath path) {
    removeRow(list, entry, path, {&removeCallOrDay, nullptr, nullptr});
}

void removeRow(const CallList& list, QVCallEntry entry, NSIndexPath path, const RowDeletion& deletion) {
    if (!entry) return;
    TakenRow taken{objc::Strong(entry), path.row(), list.state.filter(), shownList(list.state)};
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default),
                    [screen = objc::Strong(list.screen), taken = std::move(taken), &state = list.state, deletion] {
                        deleteRow({screen, state}, taken, deletion);
                    });
}

void removeCallsFromCallList(CallList list, NSMutableArray deleted) {
    auto& state = list.state;
    auto calls = QVDataController::sharedInstance();
    auto found = deleted.copy();
    if (state.filter() != Filter::All) {
        const NSUInteger count = found->count();
        for (NSUInteger i = 0; i < count; ++i)
            calls.removeEntriesFromCallList(found->objectAtIndex<QVCallEntry>(i), state.filter());
        if (state.isLoadMoreAllCalls) {
            calls.setCallList({});
            calls.setAllCallsCount(0);
        }
    }
    if (state.searching) {
        auto shown = state.copyListOfItems.load();
        state.srcList.load()->removeObjectsInArray(shown->copy().get());
        shown->removeAllObjects();
        dropSearchCopies(state);
        objc::send<"setEditing:">(list.screen, false);
        objc::send<"editButtonClicked:">(list.screen, objc::Object{});
        return;
    }
    state.srcList.store(NSMutableArray{});
    deleted.removeAllObjects();
    if (state.filter() == Filter::All) clearOtherFilters(calls);
}

void updateSearchRecords(CallList list, QVCallEntry deleted) {
    auto& state = list.state;
    if (!state.searchCopies(state.filter()).load()) return;
    auto removeFrom = [&](NSMutableArray copies) {
        objc::send<"removeSearchRecordFromList:sourceList:">(list.screen, deleted, copies);
    };
    const std::int64_t code = state.filterType;
    if (code == 1) {
        for (auto* copies :
             {&state.allCallsCopyList, &state.dldCallsCopyList, &state.rcdCallsCopyList, &state.msdCallsCopyList})
            removeFrom(copies->load());
        return;
    }
    if (code >= 2 && code <= 4) removeFrom(state.searchCopies(state.filter()).load());
    if (auto all = state.allCallsCopyList.load()) updateAllCallsCopies(all, deleted);
}

void removeSearchRecordFromList(CallList, QVCallEntry deleted, NSMutableArray copies) {
    const NSUInteger count = copies.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto entry = copies.objectAtIndex<QVCallEntry>(i);
        if (!sameNameOrNumber(entry, deleted)) continue;
        const bool grouped = QVSettingsDataController::sharedInstance().isGroupContacts_Call();
        if (!grouped && entry.iLogOID() != deleted.iLogOID()) continue;
        copies.removeObject(entry);
        return;
    }
}

}  // namespace recents

// One row's deletion, and the lists after deletions.
#include "platform/corefoundation.h"
#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/deletion.h"
#include "plugin/recents/search.h"

namespace recents {
namespace {

bool deleteFromDatabase(QVCallEntry entry, Filter filter) {
    auto calls = QVDataController::sharedInstance();
    if (!QVSettingsDataController::sharedInstance().isGroupByDate()) return calls.removeData(entry, filter, {});
    if (!calls.removeCallsFromDB(filter, entry.grpByDate())) return false;
    calls.setAllCallsCount(calls.allCallsCount() - 1);
    calls.setAllCallsDuration(0);
    return true;
}

/// The database refused: the row comes back where it was.
void putBack(const CallList& list, QVCallEntry entry, NSInteger row) {
    auto& state = list.state;
    state.rowCount.add(1);
    if (state.rowCount == state.totalCount) state.totalCount = state.rowCount + 1;
    (state.searching ? state.copyListOfItems : state.srcList).load()->insertObject(entry, static_cast<NSUInteger>(row));
    objc::send<"refreshTableData">(list.screen);
}

void endEditingOfEmptyList(const CallList& list) {
    if (!list.screen.isEditing() || list.state.rowCount >= 1) return;
    list.screen.setEditing(false, false);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), false);
}

void deleteRow(const CallList& list, QVCallEntry entry, NSInteger row) {
    auto& state = list.state;
    if (!deleteFromDatabase(entry, state.filter())) {
        putBack(list, entry, row);
        return;
    }
    if (state.searching) objc::send<"updateSearchRecords:">(list.screen, entry);
    objc::send<"initializeCallList">(list.screen);
    if (state.searching) objc::send<"searchTableView">(list.screen);
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

void removeRowData(CallList list, QVCallEntry entry, NSIndexPath path) {
    if (!entry) return;
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default),
                    [screen = objc::Strong(list.screen), entry = objc::Strong(entry), path = objc::Strong(path),
                     &state = list.state] {
                        deleteRow({screen, state}, entry, path->row());
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
        state.srcList.load()->removeObjectsInArray(found.get());
        state.copyListOfItems.load()->removeAllObjects();
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
    if (!state.searchCopies().load()) return;
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
    if (code >= 2 && code <= 4) removeFrom(state.searchCopies().load());
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

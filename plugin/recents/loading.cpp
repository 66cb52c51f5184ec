// The loading sequence and the gathering of what the row count rule needs.
#include "plugin/recents/loading.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/row_count_rule.h"

namespace recents {
namespace {

NSMutableArray currentList(const CallList& list, QVDataController service) {
    return listOfFilter(service, list.state.filter(), QVSettingsDataController::sharedInstance().isGroupByDate());
}

void loadAndRefresh(const CallList& list) {
    objc::send<"initializeCallList">(list.screen);
    if (list.state.searching) {
        list.state.copyListOfItems.load()->removeAllObjects();
        objc::send<"searchTableView">(list.screen);
    }
    objc::send<"refreshTableData">(list.screen);
}

/// Edit mode follows the rows: none left ends it, a swiped row keeps it.
void keepEditingInStep(const CallList& list) {
    const std::int64_t rowCount = list.state.rowCount;
    const bool editing = list.screen.table().isEditing() ? rowCount >= 1 : list.state.isEditing && rowCount > 0;
    list.screen.setEditing(editing, editing);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), false);
}

/// Fixes the number of rows, reading what is missing first.
void applyRowCountRule(const CallList& list, QVDataController service, std::int64_t pageSize) {
    auto& state = list.state;
    const std::int64_t saved = state.pagingMemory();
    const auto loaded = static_cast<std::int64_t>(state.srcList.load()->count());
    const RowCountPlan plan = planRowCount(
        {pageSize, saved, loaded, state.totalCount, state.lastMinRecCall, static_cast<bool>(state.searching)});
    state.rowCount = plan.rowCount;
    if (plan.load) service.readCallsFromDB(plan.read, loaded, state.filter());

    // The service may have made the list only now.
    state.srcList.store(currentList(list, service));
    if (plan.load) {
        state.rowCount = static_cast<std::int64_t>(state.srcList.load()->count());
        objc::send<"refreshTableData">(list.screen);
        if (service.isAnyRecDeleted()) service.sortArray(state.srcList.load());
    }
    state.rowCount = clampRowCount(state.rowCount, pageSize, saved, state.totalCount);
}

}  // namespace

void initDatabase(CallList list) {
    auto& state = list.state;
    state.filterType = static_cast<std::int64_t>(Filter::All);
    state.isAllRecsLoaded = false;
    state.searching = false;
    state.totalCount = 0;
    state.rowCount = 0;
    state.forgetPaging();
    state.lastMinRecCall = QVSettingsDataController::sharedInstance().minRec_Call();
    state.totalCount = QVDataController::sharedInstance().allCallsCount();
    objc::send<"loadCallRecordsFromDB:">(list.screen, localized<"LOADING">());
}

void loadCallRecordsFromDB(CallList list, NSString label) {
    objc::send<"showHUD:detailText:delegate:mode:selector:">(list.screen, label, NSString{}, list.screen, 0,
                                                             objc::selector<"loadCallRecsFromDBInBackGround">());
}

void loadCallRecsFromDBInBackGround(CallList list) {
    loadAndRefresh(list);
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state = list.state] {
        keepEditingInStep({screen, state});
    });
}

void loadCallRecsFromDB(CallList list) {
    loadAndRefresh(list);
    keepEditingInStep(list);
}

void initializeCallList(CallList list) {
    auto& state = list.state;
    auto service = QVDataController::sharedInstance();
    const std::int64_t pageSize = QVSettingsDataController::sharedInstance().minRec_Call();
    state.srcList.store(currentList(list, service));
    state.totalCount = countOfFilter(service, state.filter());
    if (state.totalCount < 1) {
        state.totalCount = service.getTotalCallCount(state.filter());
        if (state.totalCount < 1) state.srcList.load()->removeAllObjects();
    }
    applyRowCountRule(list, service, pageSize);

    std::int64_t duration = durationOfFilter(service, state.filter());
    if (duration == 0) duration = service.getTotalCallDuration(state.filter());
    auto durationText = service.getAllCallsDuration(duration);
    state.totalDuration.store(durationText ? NSString::stringWithString(durationText) : NSString{});
    state.isAllRecsLoaded = state.totalCallCount == state.rowCount;
}

void refreshTableData(CallList list) {
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state = list.state] {
        if (state.searching)
            screen->searchDisplayController().searchResultsTableView().reloadData();
        else
            screen->table().reloadData();
    });
}

int getCallsDuration(CallList list, NSArray entries) {
    const NSUInteger count = entries.count();
    std::uint32_t seconds = 0;  // the declared result has 32 bits: a longer sum wraps
    for (NSUInteger i = 0; i < count; ++i)
        seconds += static_cast<std::uint32_t>(entries.objectAtIndex<QVCallEntry>(i).duration());
    list.state.totalCallCount = static_cast<std::int64_t>(count);
    return static_cast<int>(seconds);
}

}  // namespace recents

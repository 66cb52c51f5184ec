// The loading sequence and the gathering of what the row count rule needs.
#include "plugin/recents/loading.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/row_count_rule.h"

namespace recents {
namespace {

void loadAndRefresh(const CallList& list) {
    objc::send<"initializeCallList">(list.screen);
    if (list.state.searching) countRowsAgain(list);
    objc::send<"refreshTableData">(list.screen);
}

/// Edit mode follows the rows: none left ends it, a swiped row keeps it.
void keepEditingInStep(const CallList& list) {
    const std::int64_t rowCount = list.state.rowCount;
    const bool editing = list.screen.isEditing() ? rowCount >= 1 : list.state.isEditing && rowCount > 0;
    list.screen.setEditing(editing, editing);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), false);
}

/// One application of the row count rule, for one filter from beginning to end.
class RowCount {
  public:
    explicit RowCount(const CallList& list) : list_(list), filter_(list.state.filter()) {}

    /// Takes the list and its total; a list whose filter has no call is emptied.
    void takeList() const {
        auto& state = list_.state;
        state.srcList.store(currentList());
        state.totalCount = countOfFilter(service_, filter_);
        if (state.totalCount >= 1) return;
        state.totalCount = service_.getTotalCallCount(filter_);
        if (state.totalCount < 1) state.srcList.load()->removeAllObjects();
    }

    /// Fixes the number of rows, reading what is missing first.
    void applyRule() const {
        auto& state = list_.state;
        const std::int64_t saved = state.pagingMemory(filter_);
        const auto loaded = static_cast<std::int64_t>(state.srcList.load()->count());
        const RowCountPlan plan = planRowCount(
            {pageSize_, saved, loaded, state.totalCount, state.lastMinRecCall, static_cast<bool>(state.searching)});
        state.rowCount = plan.rowCount;
        if (plan.load) service_.readCallsFromDB(plan.read, loaded, filter_);

        // The service may have made the list only now.
        state.srcList.store(currentList());
        const std::int64_t duration = durationOfFilter(service_, filter_);
        if (plan.load) {
            state.rowCount = static_cast<std::int64_t>(state.srcList.load()->count());
            objc::send<"refreshTableData">(list_.screen);
            if (service_.isAnyRecDeleted()) service_.sortArray(state.srcList.load());
        }
        state.rowCount = clampRowCount(state.rowCount, pageSize_, saved, state.totalCount);
        showDuration(duration);
    }

  private:
    NSMutableArray currentList() const {
        return listOfFilter(service_, filter_, QVSettingsDataController::sharedInstance().isGroupByDate());
    }
    void showDuration(std::int64_t seconds) const {
        auto shown = service_.getAllCallsDuration(seconds == 0 ? service_.getTotalCallDuration(filter_) : seconds);
        list_.state.totalDuration.store(shown ? NSString::stringWithString(shown) : NSString{});
    }

    const CallList& list_;
    Filter filter_;
    QVDataController service_ = QVDataController::sharedInstance();
    std::int64_t pageSize_ = QVSettingsDataController::sharedInstance().minRec_Call();
};

/// Works out what is shown from what there is now.
void countOnce(const CallList& list) {
    if (!list.state.searching) objc::send<"initializeCallList">(list.screen);
    if (!list.state.searching) return;
    list.state.copyListOfItems.load()->removeAllObjects();
    objc::send<"searchTableView">(list.screen);
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
    const auto begun = state.edition.begin();
    const RowCount rows(list);
    rows.takeList();
    rows.applyRule();
    state.isAllRecsLoaded = state.totalCallCount == state.rowCount;
    if (!state.edition.finish(begun)) countRowsAgain(list);
}

void countRowsAgain(const CallList& list) {
    auto& asked = list.state.recountsAsked;
    // Whoever is at it already does it once more: two that worked at it could overtake each other without end.
    if (asked.fetch_add(1) != 0) return;
    bool forOthersToo = false;
    for (;;) {
        auto answered = asked.load();
        countOnce(list);
        forOthersToo = forOthersToo || answered > 1;
        if (asked.compare_exchange_strong(answered, 0)) break;
        forOthersToo = true;
    }
    if (forOthersToo) objc::send<"refreshTableData">(list.screen);
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

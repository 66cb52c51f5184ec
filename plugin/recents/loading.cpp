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
    explicit RowCount(const CallList& list)
        : list_(list), asked_(list.state.edition.now()), filter_(list.state.filter()) {}

    void workOut() {
        takeList();
        const auto loaded = total_ < 1 ? 0 : static_cast<std::int64_t>(shown_->count());
        const RowCountPlan plan = planRowCount(
            {pageSize_, saved_, loaded, total_, list_.state.lastMinRecCall, static_cast<bool>(list_.state.searching)});
        rowCount_ = plan.rowCount;
        if (plan.load) service_.readCallsFromDB(plan.read, loaded, filter_);
        // The service may have made the list only now.
        shown_ = objc::Strong(currentList());
        const std::int64_t duration = durationOfFilter(service_, filter_);
        if (plan.load && !showWhatWasRead()) return;
        rowCount_ = clampRowCount(rowCount_, pageSize_, saved_, total_);
        const auto text = durationText(duration);
        putIn(list_, asked_, [&] {
            putRows();
            list_.state.totalDuration.store(text);
            list_.state.isAllRecsLoaded = list_.state.totalCallCount == rowCount_;
            return true;
        });
    }

  private:
    NSMutableArray currentList() const {
        return listOfFilter(service_, filter_, QVSettingsDataController::sharedInstance().isGroupByDate());
    }
    void takeList() {
        shown_ = objc::Strong(currentList());
        total_ = countOfFilter(service_, filter_);
        if (total_ < 1) total_ = service_.getTotalCallCount(filter_);
    }
    bool showWhatWasRead() {
        rowCount_ = static_cast<std::int64_t>(shown_->count());
        const bool isIn = putIn(list_, asked_, [this] {
            putRows();
            return true;
        });
        if (!isIn) return false;
        objc::send<"refreshTableData">(list_.screen);
        if (service_.isAnyRecDeleted()) service_.sortArray(shown_);
        return true;
    }
    /// A list whose filter has no call is emptied.
    void putRows() const {
        auto& state = list_.state;
        if (total_ < 1) shown_->removeAllObjects();
        state.srcList.store(shown_);
        state.totalCount = total_;
        state.rowCount = rowCount_;
    }
    objc::Strong<NSString> durationText(std::int64_t seconds) const {
        auto shown = service_.getAllCallsDuration(seconds == 0 ? service_.getTotalCallDuration(filter_) : seconds);
        return objc::Strong(shown ? NSString::stringWithString(shown) : NSString{});
    }

    const CallList& list_;
    rows::Edition::Moment asked_;
    Filter filter_;
    QVDataController service_ = QVDataController::sharedInstance();
    std::int64_t pageSize_ = QVSettingsDataController::sharedInstance().minRec_Call();
    std::int64_t saved_ = list_.state.pagingMemory(filter_);
    objc::Strong<NSMutableArray> shown_;
    std::int64_t total_ = 0;
    std::int64_t rowCount_ = 0;
};

/// Works out what is shown from what there is now.
void countOnce(const CallList& list) {
    list.state.edition.invalidate();
    if (!list.state.searching) objc::send<"initializeCallList">(list.screen);
    if (!list.state.searching) return;
    list.state.copyListOfItems.load()->removeAllObjects();
    objc::send<"searchTableView">(list.screen);
}

/// Each round answers a change that came during the one before. So many in a row are left to the next change.
constexpr int mostRounds = 100;

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
    state.edition.invalidate();
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

void initializeCallList(CallList list) { RowCount(list).workOut(); }

void countRowsAgain(const CallList& list) {
    auto& asked = list.state.recountsAsked;
    // A thread that is at it already does it once more: two that worked at it could overtake each other without end.
    if (asked.fetch_add(1) != 0) return;
    bool forOthersToo = false;
    for (int round = 1;; ++round) {
        auto answered = asked.load();
        countOnce(list);
        forOthersToo = forOthersToo || answered > 1;
        if (asked.compare_exchange_strong(answered, 0)) break;
        forOthersToo = true;
        if (round < mostRounds) continue;
        asked.store(0);
        break;
    }
    if (forOthersToo) objc::send<"refreshTableData">(list.screen);
}

void replaceOvertakenResult(const CallList& list) {
    countRowsAgain(list);
    objc::send<"refreshTableData">(list.screen);
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

// The next page, from memory or from the database.
#include "plugin/recents/paging.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/paging_rule.h"

namespace recents {
namespace {

void stopIndicator(QVLoadMoreRecordsCell cell) {
    auto indicator = objc::as<UIActivityIndicatorView>(cell.accessoryView());
    if (!indicator) return;
    indicator.stopAnimating();
    cell.setAccessoryView({});
}

/// The list after a page was read; a page that came short has the total counted again.
PagingSituation readPage(const CallList& list, Filter filter, NSMutableArray shown, PagingSituation now) {
    auto calls = QVDataController::sharedInstance();
    const std::int64_t before = now.rowCount;
    calls.readCallsFromDB(now.pageSize, before, filter);
    if (filter == Filter::All && QVSettingsDataController::sharedInstance().isGroupContacts_Call())
        list.state.isLoadMoreAllCalls = true;
    now.rowCount = static_cast<std::int64_t>(shown.count());
    if (isShortPage(before, now.rowCount, now.pageSize, now.total)) now.total = calls.getTotalCallCount(filter);
    return now;
}

void rememberPaging(rows::CallListState& state, Filter filter, bool byDate) {
    const std::int64_t rowCount = state.rowCount;
    if (byDate || filter == Filter::All)
        state.allCallCnt = rowCount;
    else if (filter == Filter::Dialled)
        state.dldCallCnt = rowCount;
    else if (filter == Filter::Received)
        state.rcdCallCnt = rowCount;
    else if (filter == Filter::Missed)
        state.msdCallCnt = rowCount;
}

/// The list or the search, whichever is in front; one that began or ended meanwhile has the last word.
void loadMore(const CallList& list) {
    const bool searching = list.state.searching;
    if (searching)
        objc::send<"loadMoreSearchedRecords">(list.screen);
    else
        objc::send<"loadMoreRecordsAction">(list.screen);
    if (searching != list.state.searching) countRowsAgain(list);
}

}  // namespace

void handleLoadMoreRecordsAction(CallList list, QVLoadMoreRecordsCell cell) {
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default),
                    [screen = objc::Strong(list.screen), cell = objc::Strong(cell), &state = list.state] {
                        loadMore({screen, state});
                        objc::send<"refreshTableData">(screen.get());
                        dispatch::asyncOnMain([cell] { stopIndicator(cell); });
                    });
}

void loadMoreRecordsAction(CallList list) {
    const Filter filter = list.state.filter();
    loadMoreOf(list, filter,
               listOfFilter(QVDataController::sharedInstance(), filter,
                            QVSettingsDataController::sharedInstance().isGroupByDate()));
}

void loadMoreOf(const CallList& list, Filter filter, NSMutableArray of) {
    auto& state = list.state;
    auto asked = state.edition.now();
    auto settings = QVSettingsDataController::sharedInstance();
    const auto shown = objc::Strong(of);
    PagingSituation now{state.rowCount, settings.minRec_Call(), static_cast<std::int64_t>(shown->count()),
                        state.totalCount};
    const PagingPlan plan = planNextPage(now);
    if (plan.read)
        now = readPage(list, filter, shown, now);
    else
        now.rowCount = plan.rowCount;
    putIn(list, asked, [&] {
        state.srcList.store(shown);
        state.rowCount = now.rowCount;
        state.totalCount = now.total;
        rememberPaging(state, filter, settings.isGroupByDate());
        return true;
    });
}

}  // namespace recents

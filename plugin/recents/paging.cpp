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

void readPage(const CallList& list, Filter filter, std::int64_t pageSize, NSMutableArray shown) {
    auto& state = list.state;
    auto calls = QVDataController::sharedInstance();
    const std::int64_t before = state.rowCount;
    calls.readCallsFromDB(pageSize, before, filter);
    if (filter == Filter::All && QVSettingsDataController::sharedInstance().isGroupContacts_Call())
        state.isLoadMoreAllCalls = true;
    state.rowCount = static_cast<std::int64_t>(shown.count());
    if (isShortPage(before, state.rowCount, pageSize, state.totalCount))
        state.totalCount = calls.getTotalCallCount(filter);
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
    const auto begun = state.edition.begin();
    auto settings = QVSettingsDataController::sharedInstance();
    const auto shown = objc::Strong(of);
    state.srcList.store(shown);
    const std::int64_t pageSize = settings.minRec_Call();
    const PagingPlan plan =
        planNextPage({state.rowCount, pageSize, static_cast<std::int64_t>(shown->count()), state.totalCount});
    if (plan.read)
        readPage(list, filter, pageSize, shown);
    else
        state.rowCount = plan.rowCount;
    rememberPaging(state, filter, settings.isGroupByDate());
    if (!state.edition.finish(begun)) countRowsAgain(list);
}

}  // namespace recents

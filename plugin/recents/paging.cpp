// The next page, from memory or from the database.
#include "plugin/recents/paging.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/paging_rule.h"

namespace recents {
namespace {

void stopIndicator(QVLoadMoreRecordsCell cell) {
    auto indicator = objc::as<UIActivityIndicatorView>(cell.accessoryView());
    if (!indicator) return;
    indicator.stopAnimating();
    cell.setAccessoryView({});
}

void readPage(const CallList& list, std::int64_t pageSize, NSMutableArray shown) {
    auto& state = list.state;
    auto calls = QVDataController::sharedInstance();
    const std::int64_t before = state.rowCount;
    calls.readCallsFromDB(pageSize, before, state.filter());
    if (state.filter() == Filter::All && QVSettingsDataController::sharedInstance().isGroupContacts_Call())
        state.isLoadMoreAllCalls = true;
    state.rowCount = static_cast<std::int64_t>(shown.count());
    if (isShortPage(before, state.rowCount, pageSize, state.totalCount))
        state.totalCount = calls.getTotalCallCount(state.filter());
}

void rememberPaging(rows::CallListState& state, bool byDate) {
    const std::int64_t rowCount = state.rowCount;
    if (byDate || state.filter() == Filter::All)
        state.allCallCnt = rowCount;
    else if (state.filter() == Filter::Dialled)
        state.dldCallCnt = rowCount;
    else if (state.filter() == Filter::Received)
        state.rcdCallCnt = rowCount;
    else if (state.filter() == Filter::Missed)
        state.msdCallCnt = rowCount;
}

}  // namespace

void handleLoadMoreRecordsAction(CallList list, QVLoadMoreRecordsCell cell) {
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default),
                    [screen = objc::Strong(list.screen), cell = objc::Strong(cell), &state = list.state] {
                        if (state.searching)
                            objc::send<"loadMoreSearchedRecords">(screen.get());
                        else
                            objc::send<"loadMoreRecordsAction">(screen.get());
                        objc::send<"refreshTableData">(screen.get());
                        dispatch::asyncOnMain([cell] { stopIndicator(cell); });
                    });
}

void loadMoreRecordsAction(CallList list) {
    auto& state = list.state;
    auto settings = QVSettingsDataController::sharedInstance();
    const bool byDate = settings.isGroupByDate();
    state.srcList.store(listOfFilter(QVDataController::sharedInstance(), state.filter(), byDate));
    auto shown = state.srcList.load();
    const std::int64_t pageSize = settings.minRec_Call();
    const PagingPlan plan =
        planNextPage({state.rowCount, pageSize, static_cast<std::int64_t>(shown->count()), state.totalCount});
    if (plan.read)
        readPage(list, pageSize, shown);
    else
        state.rowCount = plan.rowCount;
    rememberPaging(state, byDate);
}

}  // namespace recents

// Deletion on the day's screen, and the counts of the day that follow it.
#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/datelog/date_log_screen.h"
#include "plugin/recents/deletion.h"
#include "plugin/recents/search.h"

namespace datelog {
namespace {

/// The day has no calls of the filter any more.
void clearCounts(QVCallEntry day, Filter filter) {
    const bool all = filter != Filter::Dialled && filter != Filter::Received && filter != Filter::Missed;
    if (all || filter == Filter::Dialled) {
        day.setDldCallsCnt(0);
        day.setDldCallsDuration(0);
    }
    if (all || filter == Filter::Received) {
        day.setRcdCallsCnt(0);
        day.setRcdCallsDuration(0);
    }
    // A missed call has no duration to clear.
    if (all || filter == Filter::Missed) day.setMsdCallsCnt(0);
}

}  // namespace

void DateLogScreen::deleteAllAction(objc::Object) {
    auto sheet = recents::makeDeletionSheet(list(), day());
    if (!sheet) return;
    screen().setActionSheet(sheet);
    recents::showDeletionSheet(list(), sheet);
}

void DateLogScreen::removeAllRecordsInBackGround() {
    recents::showDeletingIndicator(list(), objc::selector<"removeAllRecords">());
}

void DateLogScreen::removeSearchedRecordsInBackGround() {
    recents::showDeletingIndicator(list(), objc::selector<"loadCallRecsFromDBInBackGround">());
}

void DateLogScreen::removeAllRecords() {
    const Filter filter = state_.filter();
    if (QVDataController::sharedInstance().removeCallsFromDB(filter, day())) {
        state_.edition.invalidate();
        clearCounts(dateEntry_.load(), filter);
        if (filter != Filter::All) recents::removeFromAllCalls(list(), filter);
        dropLists();
    }
    objc::send<"initializeCallList">(screen());
    objc::send<"refreshTableData">(screen());
    leaveEmptyDay();
}

void DateLogScreen::dropLists() {
    state_.srcList.exchange(NSMutableArray{})->removeAllObjects();
    objc::send<"clearCallLists">(screen());
}

void DateLogScreen::leaveEmptyDay() {
    if (isDayEmpty()) screen().navigationController().popToRootViewController(true);
}

void DateLogScreen::dropDeleted(Filter filter) {
    clearCounts(dateEntry_.load(), filter);
    dropLists();
    if (!state_.searching) return;
    recents::forgetFound(state_);
    recents::forgetLoadedMatches(state_);
}

/// One row stands for all calls of the filter on its day: the others are gone with it.
void DateLogScreen::removeRowData(QVCallEntry entry, NSIndexPath path) {
    auto dropFromLists = [](const rows::CallList& list, Filter filter) {
        objc::peerOf<DateLogScreen>(list.screen.self)->dropDeleted(filter);
    };
    auto showRemaining = [](const rows::CallList& list) {
        objc::send<"refreshTableData">(list.screen);
        dispatch::asyncOnMain(
            [screen = objc::Strong(list.screen)] { objc::peerOf<DateLogScreen>(screen.self())->leaveEmptyDay(); });
    };
    recents::removeRow(list(), entry, path, {&recents::removeDayOf, dropFromLists, showRemaining});
}

}  // namespace datelog

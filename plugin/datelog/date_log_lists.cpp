// The day's lists: loading, switching, paging, and the entry of the day that they keep in step.
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/datelog/date_log_screen.h"
#include "plugin/datelog/day_row_count_rule.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/paging.h"
#include "plugin/recents/scroll_offsets.h"
#include "plugin/recents/search.h"
#include "plugin/recents/switching.h"

namespace datelog {
namespace {

/// Days have no place among a day's calls.
NSMutableArray callsOfFilter(QVDataController service, Filter filter) { return listOfFilter(service, filter, false); }

bool sameText(NSString left, NSString right) {
    if (!left || !right) return !left && !right;
    return left.isEqualToString(right);
}

bool isSameCall(QVCallEntry left, QVCallEntry right) {
    return left.iLogOID() == right.iLogOID() && sameText(left.name(), right.name()) &&
           sameText(left.phoneNumber(), right.phoneNumber());
}

}  // namespace

objc::Strong<NSString> DateLogScreen::day() const { return objc::Strong(dateEntry_.load()->grpByDate()); }

void DateLogScreen::initDatabase() {
    if (!QuorvelUtils::canAccessAddressBook()) return;
    state_.filterType = static_cast<std::int64_t>(Filter::All);
    state_.isAllRecsLoaded = false;
    state_.searching = false;
    state_.totalCallCount = 0;
    state_.totalCount = 0;
    state_.rowCount = 0;
    state_.forgetPaging();
    state_.edition.invalidate();
    objc::send<"loadCallRecordsFromDB:">(screen(), localized<"LOADING">());
}

void DateLogScreen::initializeCallList() {
    if (!QuorvelUtils::canAccessAddressBook()) return;
    auto asked = state_.edition.now();
    const Filter filter = state_.filter();
    auto service = QVDataController::sharedInstance();
    if (callsOfFilter(service, filter).count() == 0) service.readCallsForDate(state_.rowCount, filter, day());
    const std::int64_t saved = state_.pagingMemory(filter);
    // The service may have made the list only now.
    const auto listed = objc::Strong(callsOfFilter(service, filter));
    const auto calls = listed->copy();
    const auto total = static_cast<std::int64_t>(calls->count());
    const std::int64_t rowCount = dayRowCount(total, QVSettingsDataController::sharedInstance().minRec_Call(), saved);
    const int seconds = objc::send<"getCallsDuration:", int>(screen(), calls.get());
    auto shown = service.getAllCallsDuration(seconds);
    const auto duration = objc::Strong(shown ? NSString::stringWithString(shown) : NSString{});
    recents::putIn(list(), asked, [&] {
        state_.srcList.store(listed);
        state_.totalCount = total;
        state_.rowCount = state_.searching ? 0 : rowCount;
        if (!QVSettingsDataController::sharedInstance().isGroupContacts_Call()) state_.totalCallCount = total;
        state_.totalDuration.store(duration);
        return true;
    });
}

void DateLogScreen::updateDateEntry() {
    auto calls = QVDataController::sharedInstance().callList().copy();
    if (calls->count() == 0) return;
    auto newest = calls->objectAtIndex<QVCallEntry>(0);
    auto entry = dateEntry_.load();
    if (!entry || isSameCall(newest, entry)) return;
    entry->setILogOID(newest.iLogOID());
    entry->setROWID(newest.ROWID());
    entry->setPhoneNumber(newest.phoneNumber());
    entry->setDate(newest.date());
    entry->setDuration(newest.duration());
    entry->setFlag(newest.flag());
    entry->setAbRecID(newest.abRecID());
    entry->setPhoneLabel(newest.phoneLabel());
    entry->setIsDeleted(newest.isDeleted());
    entry->setName(newest.name());
}

void DateLogScreen::clearCallLists() {
    auto calls = QVDataController::sharedInstance();
    calls.setCallList({});
    calls.setDldCallList({});
    calls.setRcdCallList({});
    calls.setMsdCallList({});
}

void DateLogScreen::segMentBackGroundAction(UISegmentedControl control) {
    recents::takeFilterOf(list(), control);
    objc::send<"showHUD:">(screen(), localized<"LOADING">());
    recents::loadFilterLater(list());
}

void DateLogScreen::scrollViewDidEndDecelerating(UIScrollView) {
    const auto offsets = recents::remembered({allCallsOffSetY_, dldCallsOffSetY_, rcdCallsOffSetY_, msdCallsOffSetY_},
                                             state_.filter(), screen().tableView().contentOffset().y);
    allCallsOffSetY_ = offsets.all;
    dldCallsOffSetY_ = offsets.dialled;
    rcdCallsOffSetY_ = offsets.received;
    msdCallsOffSetY_ = offsets.missed;
}

bool DateLogScreen::shouldReloadForSearchScope(UISearchDisplayController, NSInteger scope) {
    // Edit mode goes on, on purpose.
    recents::beginScope(list(), scope);
    recents::searchAfresh(list());
    return true;
}

void DateLogScreen::handleLoadMoreRecordsAction(QVLoadMoreRecordsCell cell) {
    if (QuorvelUtils::canAccessAddressBook()) recents::handleLoadMoreRecordsAction(list(), cell);
}

void DateLogScreen::loadMoreRecordsAction() {
    if (!QuorvelUtils::canAccessAddressBook()) return;
    const Filter filter = state_.filter();
    recents::loadMoreOf(list(), filter, callsOfFilter(QVDataController::sharedInstance(), filter));
}

void DateLogScreen::loadMoreSearchedRecords() {
    if (QuorvelUtils::canAccessAddressBook()) recents::loadMoreMatches(list(), day());
}

}  // namespace datelog

// The day's rows, and what the head and foot of the list say.
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/datelog/date_log_screen.h"
#include "plugin/rows/contact_screens.h"
#include "plugin/rows/filter_texts.h"
#include "plugin/rows/number_of_rows.h"
#include "plugin/rows/presentation.h"

namespace datelog {
namespace {

constexpr CGFloat rowHeight = 50.0;
constexpr CGFloat edgeHeight = 22.0;

}  // namespace

UITableViewCell DateLogScreen::cellForRow(UITableView table, NSIndexPath path) {
    rows::registerMissingCells(state_, table);
    const std::int64_t rowCount = state_.rowCount;
    if (rows::isLoadMoreRow(path.row(), rowCount)) return rows::loadMoreCell(list(), table);
    auto cell = table.dequeueReusableCell<QVUITableViewCell>(text<"CellIdentifier">(), path);
    cell.setShowGroupByDateCell(false);
    if (path.row() > rowCount) return cell;

    auto entry = rows::entryOfRow(list(), path.row());
    cell.setAccessoryType(UITableViewCell::detailButton);
    cell.setCallEntry(entry);
    if (entry) rows::bringContactImage(entry, cell);
    cell.setShowGroupCount(QVSettingsDataController::sharedInstance().isGroupContacts_Call());
    cell.setBackgroundColor(UIColor::clearColor());
    return cell;
}

void DateLogScreen::commitEditingStyle(UITableView table, NSInteger style, NSIndexPath path) {
    auto entry = rows::takeSwipedRow(list(), table, style, path);
    rows::reloadSectionOf(table, path);
    if (entry) objc::send<"removeRowData:indexPath:">(screen(), entry.get(), path);
    if (state_.rowCount < 1) objc::send<"refreshTableData">(screen());
}

CGFloat DateLogScreen::heightForRow(UITableView, NSIndexPath) { return rowHeight; }

/// Also while the list is empty but more may come: it then counts to zero.
bool DateLogScreen::hasEdges() const {
    return state_.totalCount >= 1 && (state_.rowCount > 0 || !state_.isAllRecsLoaded);
}
bool DateLogScreen::hasHeader() const {
    return hasEdges() && QVSettingsDataController::sharedInstance().isShowHeader_Call();
}
bool DateLogScreen::hasFooter() const {
    return hasEdges() && QVSettingsDataController::sharedInstance().isShowFooter_Call();
}

NSString DateLogScreen::titleForHeader(UITableView, NSInteger) {
    if (!hasHeader()) return {};
    return NSString::stringWithFormat(QuorvelUtils::getLocalizedString(rows::showingKey(state_.filter())),
                                      state_.rowCount.get());
}

NSString DateLogScreen::titleForFooter(UITableView, NSInteger) {
    if (!hasFooter()) return {};
    if (state_.filter() == Filter::Missed)
        return NSString::stringWithFormat(localized<"CALLS_D">(), state_.totalCount.get());
    return NSString::stringWithFormat(localized<"CALLS_D_D">(), state_.totalCount.get(),
                                      state_.totalDuration.load().get());
}

CGFloat DateLogScreen::heightForHeader(UITableView, NSInteger) { return hasHeader() ? edgeHeight : 0.0; }
CGFloat DateLogScreen::heightForFooter(UITableView, NSInteger) { return hasFooter() ? edgeHeight : 0.0; }

void DateLogScreen::presentSavedContact() { rows::presentSavedContactIn(list(), QuorvelUtils::getAddressBook()); }

}  // namespace datelog

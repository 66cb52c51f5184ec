// The Recents screen's data source and delegate over the call list.
#include "plugin/rows/presentation.h"

#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/rows/filter_texts.h"
#include "plugin/rows/number_of_rows.h"

namespace rows {
namespace {

constexpr CGFloat callRowHeight = 50.0;
constexpr CGFloat dayRowHeight = 95.0;
constexpr NSInteger loadMoreLabelTag = 1;
constexpr NSInteger greyIndicator = 2;
constexpr NSInteger centredText = 1;
constexpr CGFloat loadMoreFontSize = 18.0;

bool isListEmpty(const CallListState& state) { return state.totalCount < 1 || state.rowCount < 1; }

objc::Strong<UILabel> makeLoadMoreLabel(CGRect frame) {
    auto label = UILabel::makeWithFrame(frame);
    label->setFont(UIFont::boldSystemFontOfSize(loadMoreFontSize));
    label->setTextColor(UIColor::darkGrayColor());
    label->setTextAlignment(centredText);
    label->setTag(loadMoreLabelTag);
    return label;
}

/// Takes the entry of the row out of the list that shows it; null when there is none.
objc::Strong<QVCallEntry> takeEntry(const CallList& list, NSInteger row) {
    auto shown = (list.state.searching ? list.state.copyListOfItems : list.state.srcList).load();
    auto entry = entryOfRow(list, row);
    if (entry) shown->removeObject(entry.get());
    return entry;
}

}  // namespace

objc::Strong<QVCallEntry> entryOfRow(const CallList& list, NSInteger row) {
    auto shown = (list.state.searching ? list.state.copyListOfItems : list.state.srcList).load();
    // Another thread may have made the list shorter since the table was told its count.
    if (row < 0 || static_cast<NSUInteger>(row) >= shown->count()) return {};
    return shown->objectAtIndex<QVCallEntry>(static_cast<NSUInteger>(row));
}

void registerCells(CallListState& state, UITableView table) {
    table.registerClass(cls<QVUITableViewCell>(), text<"CellIdentifier">());
    table.registerClass(cls<QVLoadMoreRecordsCell>(), text<"MoreCellIdentifier">());
    table.registerHeaderFooterClass(objc::Object{objc::raw(objc::classNamed<"UITableViewHeaderFooterView">())},
                                    text<"Header">());
    if (!table || state.lastPreparedTable.load().self() == table.self) return;
    state.otherPreparedTable.store(state.lastPreparedTable.exchange(objc::Strong(table)));
}

void registerMissingCells(CallListState& state, UITableView table) {
    const bool isPrepared =
        state.lastPreparedTable.load().self() == table.self || state.otherPreparedTable.load().self() == table.self;
    if (!isPrepared) registerCells(state, table);
}

NSInteger numberOfRowsInSection(CallList list, UITableView, NSInteger) {
    const CallListState& state = list.state;
    return numberOfRows({state.rowCount, state.totalCount,
                         static_cast<std::int64_t>(list.state.copyListOfItems.load()->count()), state.searching,
                         state.isAllRecsLoaded});
}

UITableViewCell loadMoreCell(const CallList& list, UITableView table) {
    auto cell = table.dequeueReusableCell<QVLoadMoreRecordsCell>(text<"MoreCellIdentifier">());
    auto indicator = UIActivityIndicatorView::makeWithStyle(greyIndicator);
    cell.setAccessoryView(indicator);
    auto label = objc::as<UILabel>(cell.contentView().viewWithTag(loadMoreLabelTag));
    if (!label) {
        auto made = makeLoadMoreLabel(cell.bounds());
        cell.contentView().addSubview(made);
        label = made;
    }
    label.setText(list.state.searching ? localized<"LOAD_MORE_SRCH_REC">() : localized<"LOAD_MORE_REC">());
    indicator->startAnimating();
    objc::send<"handleLoadMoreRecordsAction:">(list.screen, cell);
    return cell;
}

UITableViewCell cellForRow(CallList list, UITableView table, NSIndexPath path) {
    // The screen's view may have loaded while Replace-Recents was off.
    registerMissingCells(list.state, table);
    const std::int64_t rowCount = list.state.rowCount;
    if (isLoadMoreRow(path.row(), rowCount)) return loadMoreCell(list, table);

    auto settings = QVSettingsDataController::sharedInstance();
    auto cell = table.dequeueReusableCell<QVUITableViewCell>(text<"CellIdentifier">(), path);
    const bool byDate = settings.isGroupByDate();
    cell.setAccessoryType(byDate ? UITableViewCell::disclosureIndicator : UITableViewCell::detailButton);
    cell.setShowGroupByDateCell(byDate);
    if (path.row() > rowCount) return cell;

    auto entry = entryOfRow(list, path.row());
    // Every call row ends with the detail button, grouped by date or not.
    cell.setAccessoryType(UITableViewCell::detailButton);
    cell.setCallEntry(entry);
    cell.setShowGroupCount(settings.isGroupContacts_Call());
    if (entry) bringContactImage(entry, cell);
    return cell;
}

void willDisplayCell(CallList, UITableView, UITableViewCell, NSIndexPath) {}

bool canEditRowAtPath(CallList list, UITableView, NSIndexPath path) {
    return canEditRow(path.row(), list.state.rowCount);
}

void willBeginEditingRow(CallList list, UITableView, NSIndexPath) {
    list.state.isEditing = true;
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, true, false);
}

void didEndEditingRow(CallList list, UITableView, NSIndexPath) {
    list.state.isEditing = false;
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, false, false);
}

objc::Strong<QVCallEntry> takeSwipedRow(const CallList& list, UITableView table, NSInteger style, NSIndexPath path) {
    CallListState& state = list.state;
    objc::Strong<QVCallEntry> entry;
    table.beginUpdates();
    if (style == UITableViewCell::deleteStyle) {
        entry = takeEntry(list, path.row());
        table.deleteRows(NSArray::arrayWithObject(path), UITableView::rowAnimationNone);
        const Counts before{state.rowCount, state.totalCount};
        const Counts left = afterDeletingRow(before);
        // As differences: another thread may put a result in meanwhile.
        state.totalCount.add(left.totalCount - before.totalCount);
        state.rowCount.add(left.rowCount - before.rowCount);
        state.edition.change();
    }
    table.endUpdates();
    return entry;
}

void reloadSectionOf(UITableView table, NSIndexPath path) {
    table.reloadSections(NSIndexSet::indexSetWithIndex(static_cast<NSUInteger>(path.section())),
                         UITableView::rowAnimationNone);
}

void commitEditingStyle(CallList list, UITableView table, NSInteger style, NSIndexPath path) {
    auto entry = takeSwipedRow(list, table, style, path);
    if (entry) objc::send<"removeRowData:indexPath:">(list.screen, entry.get(), path);
    reloadSectionOf(table, path);
    if (list.state.rowCount < 1) objc::send<"refreshTableData">(list.screen);
}

CGFloat heightForRow(CallList list, UITableView, NSIndexPath path) {
    if (path.row() >= list.state.rowCount) return callRowHeight;
    return QVSettingsDataController::sharedInstance().isGroupByDate() ? dayRowHeight : callRowHeight;
}

NSString titleForHeader(CallList list, UITableView, NSInteger) {
    auto settings = QVSettingsDataController::sharedInstance();
    if (!settings.isReplaceRecentsOn() || !settings.isShowHeader_Call() || isListEmpty(list.state)) return {};
    return NSString::stringWithFormat(QuorvelUtils::getLocalizedString(showingKey(list.state.filter())),
                                      list.state.rowCount.get());
}

NSString titleForFooter(CallList list, UITableView, NSInteger) {
    auto settings = QVSettingsDataController::sharedInstance();
    if (!settings.isReplaceRecentsOn() || isListEmpty(list.state)) return {};
    const std::int64_t total = list.state.totalCount;
    const bool byDate = settings.isGroupByDate();
    if (list.state.filter() == Filter::Missed)
        return NSString::stringWithFormat(byDate ? localized<"DAYS_D">() : localized<"CALLS_D">(), total);
    return NSString::stringWithFormat(byDate ? localized<"DAYS_D_D">() : localized<"CALLS_D_D">(), total,
                                      list.state.totalDuration.load().get());
}

}  // namespace rows

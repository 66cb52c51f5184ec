// The history screen's rows and what its header and footer say.
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/detail/history_screen.h"
#include "plugin/rows/call_back.h"
#include "plugin/rows/filter_texts.h"

namespace history {
namespace {

constexpr CGFloat rowHeight = 50.0;
constexpr CGFloat edgeHeight = 22.0;

}  // namespace

bool isOfFilter(QVCallEntry call, Filter filter) {
    switch (filter) {
        case Filter::Dialled:
            return call.isOutGoing();
        case Filter::Received:
            return call.isReceived();
        case Filter::Missed:
            return call.isMissed();
        default:
            return true;
    }
}

void HistoryScreen::initializeData() {
    auto shown = logInfoList_.load();
    auto all = history_.load()->copy();
    shown->removeAllObjects();
    if (filter() == Filter::All) {
        if (all) shown->addObjectsFromArray(all);
    } else {
        const NSUInteger count = all->count();
        for (NSUInteger i = 0; i < count; ++i) {
            auto call = all->objectAtIndex<QVCallEntry>(i);
            if (isOfFilter(call, filter())) shown->addObject(call);
        }
    }
    objc::send<"initDetails">(screen());
}

void HistoryScreen::initDetails() {
    auto shown = logInfoList_.load()->copy();
    const NSUInteger count = shown->count();
    std::int64_t seconds = 0;
    for (NSUInteger i = 0; i < count; ++i) seconds += shown->objectAtIndex<QVCallEntry>(i).duration();
    logCallsDuration_ = seconds;
    logRowCount_ = static_cast<std::int64_t>(count);

    NSString footer;
    if (filter() == Filter::Missed) {
        footer = NSString::stringWithFormat(localized<"CALLS_D">(), logRowCount_.get());
    } else {
        footer = NSString::stringWithFormat(localized<"CALLS_D_D">(), logRowCount_.get(),
                                            QVDataController::sharedInstance().getAllCallsDuration(seconds));
    }
    footerInfo_.store(objc::Strong(footer));
}

void HistoryScreen::reloadLogTableData() { screen().tableView().performOnMainThread(objc::selector<"reloadData">()); }

objc::Strong<QVCallEntry> HistoryScreen::callOfRow(NSIndexPath path) const {
    auto shown = logInfoList_.load();
    const NSInteger row = path.row();
    if (row < 0 || static_cast<NSUInteger>(row) >= shown->count()) return {};
    return objc::Strong(shown->objectAtIndex<QVCallEntry>(static_cast<NSUInteger>(row)));
}

CGFloat HistoryScreen::heightForRow(UITableView, NSIndexPath) { return rowHeight; }

CGFloat HistoryScreen::heightOfSectionEdge(UITableView, NSInteger) { return logRowCount_ >= 1 ? edgeHeight : 0.0; }

NSString HistoryScreen::titleForHeader(UITableView, NSInteger) {
    if (logRowCount_ < 1 || !QVSettingsDataController::sharedInstance().isShowHeader_Call()) return {};
    return NSString::stringWithFormat(QuorvelUtils::getLocalizedString(rows::showingKey(filter())), logRowCount_.get());
}

objc::Strong<NSString> HistoryScreen::titleForFooter(UITableView, NSInteger) {
    if (logRowCount_ < 1 || !QVSettingsDataController::sharedInstance().isShowFooter_Call()) return {};
    return footerInfo_.load();
}

UITableViewCell HistoryScreen::cellForRow(UITableView table, NSIndexPath path) {
    auto cell = table.dequeueReusableCell<QVUITableViewCell>(text<"CellIdentifier">(), path);
    cell.setCallEntry(callOfRow(path));
    cell.setShowLogCell(true);
    return cell;
}

NSInteger HistoryScreen::editingStyleForRow(UITableView, NSIndexPath) { return UITableViewCell::deleteStyle; }

NSIndexPath HistoryScreen::willSelectRow(UITableView, NSIndexPath path) {
    return QVSettingsDataController::sharedInstance().isCallOnTap_Call() ? path : NSIndexPath{};
}

void HistoryScreen::didSelectRow(UITableView, NSIndexPath path) {
    if (!QVSettingsDataController::sharedInstance().isCallOnTap_Call()) return;
    if (auto call = callOfRow(path)) rows::callBack(call);
}

}  // namespace history

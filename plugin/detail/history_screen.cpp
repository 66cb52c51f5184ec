// The history screen's class: its methods, and its life from the push to the pop.
#include "plugin/detail/history_screen.h"

#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/detail/representatives.h"
#include "plugin/rows/filter_texts.h"
#include "plugin/rows/snapshot_list.h"

namespace history {
namespace {

constexpr CGFloat segmentedControlWidth = 200.0;

Kinds kindsOf(QVCallEntry call) { return {call.isOutGoing(), call.isReceived(), call.isMissed()}; }

/// What is reported of the remaining history; with days shown, only what is of the entry's own.
Representatives representatives(NSArray history, QVCallEntry entry) {
    const auto chosen = representativesOf(
        history.count(), [&](std::size_t i) { return kindsOf(history.objectAtIndex<QVCallEntry>(i)); });
    if (!QVSettingsDataController::sharedInstance().isGroupByDate()) return chosen;
    auto day = entry.grpByDate();
    return withinDay(chosen, [&](std::size_t i) {
        return day && history.objectAtIndex<QVCallEntry>(i).grpByDate().isEqualToString(day);
    });
}

QVCallEntry callAt(NSArray history, std::size_t position) {
    return position == nobody ? QVCallEntry{} : history.objectAtIndex<QVCallEntry>(position);
}

}  // namespace

void HistoryScreen::define(objc::ClassDefinition<HistoryScreen>& definition) {
    definition.method<"entry", &HistoryScreen::entry>()
        .method<"setEntry:", &HistoryScreen::setEntry>()
        .method<"delegate", &HistoryScreen::delegate>()
        .method<"setDelegate:", &HistoryScreen::setDelegate>()
        .method<"logInfoList", &HistoryScreen::logInfoList>()
        .method<"setLogInfoList:", &HistoryScreen::setLogInfoList>()
        .method<"history", &HistoryScreen::historyList>()
        .method<"setHistory:", &HistoryScreen::setHistoryList>()
        .method<"footerInfo", &HistoryScreen::footerInfo>()
        .method<"setFooterInfo:", &HistoryScreen::setFooterInfo>()
        .method<"filterType", &HistoryScreen::filterType>()
        .method<"setFilterType:", &HistoryScreen::setFilterType>()
        .method<"isLogEditing", &HistoryScreen::isLogEditing>()
        .method<"setIsLogEditing:", &HistoryScreen::setIsLogEditing>()
        .method<"viewDidLoad", &HistoryScreen::viewDidLoad>()
        .method<"viewWillAppear:", &HistoryScreen::viewWillAppear>()
        .method<"viewWillDisappear:", &HistoryScreen::viewWillDisappear>()
        .method<"viewDidDisappear:", &HistoryScreen::viewDidDisappear>()
        .method<"didReceiveMemoryWarning", &HistoryScreen::didReceiveMemoryWarning>()
        .method<"initializeData", &HistoryScreen::initializeData>()
        .method<"initDetails", &HistoryScreen::initDetails>()
        .method<"reloadLogTableData", &HistoryScreen::reloadLogTableData>()
        .method<"showLogSegmentAction:", &HistoryScreen::showLogSegmentAction>();
    definition.method<"numberOfSectionsInTableView:", &HistoryScreen::numberOfSections>()
        .method<"tableView:numberOfRowsInSection:", &HistoryScreen::numberOfRows>()
        .method<"tableView:heightForRowAtIndexPath:", &HistoryScreen::heightForRow>()
        .method<"tableView:heightForHeaderInSection:", &HistoryScreen::heightOfSectionEdge>()
        .method<"tableView:heightForFooterInSection:", &HistoryScreen::heightOfSectionEdge>()
        .method<"tableView:titleForHeaderInSection:", &HistoryScreen::titleForHeader>()
        .method<"tableView:titleForFooterInSection:", &HistoryScreen::titleForFooter>()
        .method<"tableView:cellForRowAtIndexPath:", &HistoryScreen::cellForRow>()
        .method<"tableView:canEditRowAtIndexPath:", &HistoryScreen::canEditRow>()
        .method<"tableView:editingStyleForRowAtIndexPath:", &HistoryScreen::editingStyleForRow>()
        .method<"tableView:willSelectRowAtIndexPath:", &HistoryScreen::willSelectRow>()
        .method<"tableView:didSelectRowAtIndexPath:", &HistoryScreen::didSelectRow>()
        .method<"tableView:willBeginEditingRowAtIndexPath:", &HistoryScreen::willBeginEditingRow>()
        .method<"tableView:didEndEditingRowAtIndexPath:", &HistoryScreen::didEndEditingRow>()
        .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &HistoryScreen::commitEditingStyle>();
    definition.method<"showLogDeleteAction:", &HistoryScreen::showLogDeleteAction>()
        .method<"updateNavigationBarButtonItems:groupEdit:", &HistoryScreen::updateNavigationBarButtonItems>()
        .method<"removeLogRowData:", &HistoryScreen::removeLogRowData>()
        .method<"checkAndShowLogCloseTheView", &HistoryScreen::checkAndShowLogCloseTheView>()
        .method<"showLogDeleteAllAction:", &HistoryScreen::showLogDeleteAllAction>()
        .method<"getShowLogDeleteAllButtonText", &HistoryScreen::deleteAllButtonText>()
        .method<"showLogDeleteAllRecordsFromDB:", &HistoryScreen::showLogDeleteAllRecordsFromDB>()
        .method<"showLogDeleteAllRecordsAction", &HistoryScreen::showLogDeleteAllRecordsAction>()
        .method<"hudWasHidden:", &HistoryScreen::hudWasHidden>();
}

void HistoryScreen::viewDidLoad() {
    objc::sendSuper<"viewDidLoad">(screen(), objc::classOf<HistoryScreen>());
    filterType_ = static_cast<std::int64_t>(Filter::All);

    auto control = UISegmentedControl::makeWithItems(rows::filterIcons());
    segmentControl_.store(control);
    screen().navigationItem().setTitleView(control);
    control->addTarget(screen(), objc::selector<"showLogSegmentAction:">(), UIControl::valueChanged);
    control->setSelectedSegmentIndex(0);
    CGRect frame = control->frame();
    frame.size.width = segmentedControlWidth;
    control->setFrame(frame);
    screen().setTitle({});

    auto trash =
        UIBarButtonItem::makeSystemItem(UIBarButtonItem::trash, screen(), objc::selector<"showLogDeleteAction:">());
    trashButton_.store(trash);
    screen().navigationItem().setRightBarButtonItem(trash);

    auto table = screen().tableView();
    table.registerClass(cls<QVUITableViewCell>(), text<"CellIdentifier">());
    table.registerClass(cls<QVLoadMoreRecordsCell>(), text<"MoreCellIdentifier">());
    table.registerHeaderFooterClass(objc::Object{objc::raw(objc::classNamed<"UITableViewHeaderFooterView">())},
                                    text<"Header">());
}

void HistoryScreen::viewWillAppear(bool) {
    logInfoList_.store(rows::makeSnapshotList());
    if (!history_.load()) history_.store(rows::makeSnapshotList());
    // Appended: leaving is what empties the history, so a second appearance without one doubles it.
    history_.load()->addObjectsFromArray(QVDataController::sharedInstance().getHistoryForContact(entry_.load()));
    objc::send<"initializeData">(screen());
}

void HistoryScreen::viewWillDisappear(bool animated) {
    auto calls = QVDataController::sharedInstance();
    auto entry = entry_.load();
    auto remaining = history_.load()->copy();
    const bool isDeletionToReport = takeDeletionToReport();
    if (isDeletionToReport && remaining->count() == 0) {
        calls.allHistoryDeletedForEntry(entry);
    } else if (isDeletionToReport) {
        const auto chosen = representatives(remaining, entry);
        objc::send<"entryDeleted:">(delegate(), entry.get());
        calls.updateCallEntriesTimeStamp(callAt(remaining, chosen.newest), callAt(remaining, chosen.dialled),
                                         callAt(remaining, chosen.received), callAt(remaining, chosen.missed));
    }
    objc::sendSuper<"viewWillDisappear:">(screen(), objc::classOf<HistoryScreen>(), animated);
}

bool HistoryScreen::takeDeletionToReport() {
    // The Recents screen answers the notification of a deletion at once, and clears the companion's flag with it.
    const bool hasDeleted = hasDeleted_;
    hasDeleted_ = false;
    return QVDataController::sharedInstance().isAnyRecDeleted() || hasDeleted;
}

void HistoryScreen::viewDidDisappear(bool) {
    logInfoList_.store({});
    history_.store({});
    footerInfo_.store({});
}

void HistoryScreen::didReceiveMemoryWarning() {
    objc::sendSuper<"didReceiveMemoryWarning">(screen(), objc::classOf<HistoryScreen>());
}

void HistoryScreen::showLogSegmentAction(UISegmentedControl control) {
    filterType_ = static_cast<std::int64_t>(filterOfSegment(control.selectedSegmentIndex()));
    if (screen().tableView().isEditing()) objc::send<"showLogDeleteAction:">(screen(), objc::Object{});
    objc::send<"initializeData">(screen());
    objc::send<"reloadLogTableData">(screen());
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen(), screen().isEditing(), false);
}

}  // namespace history

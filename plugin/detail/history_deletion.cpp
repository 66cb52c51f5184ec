// The history screen's edit mode, its deletions, and the ways it closes.
#include "platform/corefoundation.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/detail/history_screen.h"
#include "plugin/rows/filter_texts.h"
#include "plugin/rows/navigation_stack.h"

namespace history {
namespace {

/// Steers the companion's deletion of a contact's calls to the filter's kind, by flag and duration of the entry, and
/// gives the entry its own back in the end.
class SteeredEntry {
  public:
    SteeredEntry(QVCallEntry entry, Filter filter) : entry_(entry), flag_(entry.flag()), duration_(entry.duration()) {
        if (filter == Filter::Missed) {
            entry.setFlag(incoming);
            entry.setDuration(0);
        } else if (filter == Filter::Received) {
            entry.setFlag(incoming);
        } else if (filter == Filter::Dialled) {
            entry.setFlag(outgoing);
        }
    }
    ~SteeredEntry() {
        entry_.setFlag(flag_);
        entry_.setDuration(duration_);
    }
    SteeredEntry(const SteeredEntry&) = delete;
    SteeredEntry& operator=(const SteeredEntry&) = delete;

  private:
    static constexpr int incoming = 0;
    static constexpr int outgoing = 9;

    QVCallEntry entry_;
    int flag_;
    int duration_;
};

/// The calls of each day: day text to array.
objc::Strong<NSMutableDictionary> byDay(NSArray calls) {
    auto days = NSMutableDictionary::make();
    const NSUInteger count = calls.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto call = calls.objectAtIndex<QVCallEntry>(i);
        auto day = call.grpByDate();
        if (!day) continue;
        auto ofDay = days->objectForKey<NSMutableArray>(day);
        if (!ofDay) {
            auto made = NSMutableArray::make();
            days->setObject(made, day);
            ofDay = made;
        }
        ofDay.addObject(call);
    }
    return days;
}

/// Whom the question names: by the number where there is no name.
NSString nameFor(QVCallEntry entry) {
    if (auto name = entry.name()) return name;
    return entry.phoneNumber() ? QuorvelUtils::getFormattedPhoneNumber(entry.phoneNumber()) : text<"">();
}

/// Here a call without a duration that nobody dialled is a missed one, whatever the filter says of it: on purpose.
void takeFromDay(QVCallEntry day, QVCallEntry call) {
    if (call.isOutGoing()) {
        day.setDldCallsCnt(day.dldCallsCnt() - 1);
        day.setDldCallsDuration(day.dldCallsDuration() - call.duration());
    } else if (call.duration() < 1) {
        day.setMsdCallsCnt(day.msdCallsCnt() - 1);
    } else {
        day.setRcdCallsCnt(day.rcdCallsCnt() - 1);
        day.setRcdCallsDuration(day.rcdCallsDuration() - call.duration());
    }
}

}  // namespace

void HistoryScreen::willBeginEditingRow(UITableView, NSIndexPath) {
    isLogEditing_ = true;
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen(), true, false);
}

void HistoryScreen::didEndEditingRow(UITableView, NSIndexPath) {
    isLogEditing_ = false;
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen(), false, false);
}

void HistoryScreen::showLogDeleteAction(objc::Object) {
    const bool editing = !isLogEditing_ && !screen().isEditing();
    screen().setEditing(editing, true);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen(), editing, true);
}

void HistoryScreen::updateNavigationBarButtonItems(bool editing, bool groupEdit) {
    auto item = screen().navigationItem();
    const bool hasRows = logInfoList_.load()->count() > 0;
    if (!editing) {
        item.setLeftBarButtonItem({}, false);
        item.setRightBarButtonItem(hasRows ? trashButton_.load().get() : UIBarButtonItem{}, true);
        item.setHidesBackButton(false, true);
    } else if (!hasRows) {
        item.setRightBarButtonItem({}, true);
    } else {
        item.setHidesBackButton(true, false);
        if (groupEdit) {
            auto icon = UIImage::imageNamed(text<"delete_all_icon">());
            auto deleteAll = UIBarButtonItem::makeWithImage(icon, UIBarButtonItem::done, screen(),
                                                            objc::selector<"showLogDeleteAllAction:">());
            item.setLeftBarButtonItem(deleteAll, true);
        } else {
            item.setHidesBackButton(true, true);
        }
        auto stop =
            UIBarButtonItem::makeSystemItem(UIBarButtonItem::stop, screen(), objc::selector<"showLogDeleteAction:">());
        item.setRightBarButtonItem(stop, true);
    }
    isLogEditing_ = editing;
}

void HistoryScreen::commitEditingStyle(UITableView table, NSInteger style, NSIndexPath path) {
    table.beginUpdates();
    if (style == UITableViewCell::deleteStyle) {
        objc::send<"removeLogRowData:">(screen(), callOfRow(path).get());
        // The row goes from the screen also where the companion refused: the reload that follows brings it back.
        table.deleteRows(NSArray::arrayWithObject(path), UITableView::rowAnimationRight);
        table.reloadSections(NSIndexSet::indexSetWithIndex(static_cast<NSUInteger>(path.section())),
                             UITableView::rowAnimationNone);
    }
    table.endUpdates();
}

void HistoryScreen::removeLogRowData(QVCallEntry call) {
    if (QVDataController::sharedInstance().removeLogEntry(call, filter())) {
        hasDeleted_ = true;
        logInfoList_.load()->removeObject(call);
        history_.load()->removeObject(call);
        objc::send<"initDetails">(screen());
        darwin::post(text<"QuorvelCallRecordDeletedNotification">());
    } else {
        objc::send<"reloadLogTableData">(screen());
    }
    if (logRowCount_ < 1) objc::send<"checkAndShowLogCloseTheView">(screen());
}

void HistoryScreen::checkAndShowLogCloseTheView() {
    if (history_.load()->count() > 0) return;
    auto navigation = screen().navigationController();
    if (!QVSettingsDataController::sharedInstance().isGroupByDate()) {
        navigation.popToRootViewController(true);
        return;
    }
    if (auto recents = rows::firstControllerOf(navigation, objc::classNamed<"PHRecentsViewController">()))
        navigation.popToViewController(recents, true);
    else
        navigation.popViewController(true);
}

void HistoryScreen::showLogDeleteAllAction(objc::Object) {
    if (logInfoList_.load()->count() == 0) return;
    auto format = QuorvelUtils::getLocalizedString(rows::confirmationKey(filter(), true));
    auto sheet = BlockActionSheet::makeWithTitle(NSString::stringWithFormat(format, nameFor(entry_.load())));
    screen().setActionSheet(sheet);
    sheet->setDestructiveButton(objc::send<"getShowLogDeleteAllButtonText", NSString>(screen()),
                                [strong = objc::Strong(screen())] {
                                    objc::send<"showLogDeleteAllRecordsFromDB:">(strong.get(), localized<"Deleting">());
                                });
    sheet->setCancelButton(localized<"Cancel">());
    sheet->showInView(screen().parentViewController().view());
}

NSString HistoryScreen::deleteAllButtonText() { return rows::deleteAllTitle(filter()); }

void HistoryScreen::showLogDeleteAllRecordsFromDB(NSString label) {
    objc::send<"showHUD:detailText:delegate:mode:selector:">(screen(), label, NSString{}, screen(), 0,
                                                             objc::selector<"showLogDeleteAllRecordsAction">());
}

bool HistoryScreen::deleteCalls(NSArray shown) {
    auto calls = QVDataController::sharedInstance();
    if (!QVSettingsDataController::sharedInstance().isGroupContacts_Call())
        return calls.removeLogEntriesFromDB(shown, filter());
    auto entry = entry_.load();
    const SteeredEntry steered(entry, filter());
    return calls.removeLogEntryFromDB(entry, filter(), {}, logRowCount_);
}

void HistoryScreen::bringDaysInStep(NSArray deleted) {
    auto calls = QVDataController::sharedInstance();
    auto days = calls.dateCallsList().copy();
    auto deletedByDay = byDay(deleted);
    auto emptied = NSMutableArray::make();
    const NSUInteger count = days->count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto day = days->objectAtIndex<QVCallEntry>(i);
        auto ofDay = deletedByDay->objectForKey<NSMutableArray>(day.grpByDate());
        const NSUInteger callsOfDay = ofDay.count();
        for (NSUInteger j = 0; j < callsOfDay; ++j) takeFromDay(day, ofDay.objectAtIndex<QVCallEntry>(j));
        if (day.callsOfDay() < 1) emptied->addObject(day);
    }
    // The calls leave the history only where there are days to walk: without any they come back until the screen is
    // shown again. Kept so.
    if (count > 0) history_.load()->removeObjectsInArray(deleted);
    if (emptied->count() == 0) return;
    calls.dateCallsList().removeObjectsInArray(emptied);
    calls.setAllCallsCount(calls.allCallsCount() - static_cast<std::int64_t>(emptied->count()));
}

void HistoryScreen::showLogDeleteAllRecordsAction() {
    // One state of the list for the database and for the screen: a segment may change the list meanwhile.
    auto deleted = logInfoList_.load()->copy();
    if (!deleteCalls(deleted)) return;
    hasDeleted_ = true;
    if (QVSettingsDataController::sharedInstance().isGroupByDate())
        bringDaysInStep(deleted);
    else
        history_.load()->removeObjectsInArray(deleted);
    logInfoList_.load()->removeAllObjects();
}

void HistoryScreen::hudWasHidden(objc::Object indicator) {
    objc::sendSuper<"hudWasHidden:">(screen(), objc::classOf<HistoryScreen>(), indicator);
    if (history_.load()->count() > 0) {
        objc::send<"initializeData">(screen());
        objc::send<"reloadLogTableData">(screen());
    } else {
        objc::send<"checkAndShowLogCloseTheView">(screen());
    }
}

}  // namespace history

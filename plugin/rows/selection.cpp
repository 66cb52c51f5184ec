// Taps on rows, after the rules of selection_rule.h.
#include "plugin/rows/selection.h"

#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/rows/call_back.h"
#include "plugin/rows/contact_screens.h"
#include "plugin/rows/navigation_stack.h"
#include "plugin/rows/own_screens.h"
#include "plugin/rows/presentation.h"
#include "plugin/rows/selection_rule.h"

namespace rows {
namespace {

void tap(const CallList& list, NSIndexPath path, bool callsBack) {
    switch (tapOn(path.row(), list.state.rowCount, callsBack)) {
        case Tap::CallBack:
            callBack(entryOfRow(list, path.row()));
            break;
        case Tap::Open:
            objc::send<"handleDidSelectRowAtIndexAction:">(list.screen, path);
            break;
        case Tap::Nothing:
            break;
    }
}

/// The row's entry, now the one that was opened last.
objc::Strong<QVCallEntry> select(const CallList& list, NSIndexPath path) {
    auto entry = entryOfRow(list, path.row());
    list.state.selEntry.store(entry);
    return entry;
}

void openDay(const CallList& list, QVCallEntry day) {
    auto screen = QVDateLogViewController::make();
    if (!screen) return;
    screen->setDateEntry(day);
    push(list.screen, screen);
}

void openContact(const CallList& list, QVCallEntry entry) {
    const int record = entry.abRecID();
    if (hasContact(record)) list.state.selContact.store(QuorvelUtils::getPersonRecordFromDB(record));
    const bool isPersonKnown = static_cast<bool>(list.state.selContact.load());
    if (cardOf(record, isPersonKnown) == Card::Person)
        openPerson(list);
    else
        openUnknownPerson(list);
}

}  // namespace

void didSelectRow(CallList list, UITableView table, NSIndexPath path) {
    objc::send<"handleTableRowSelection:">(list.screen, path);
    table.deselectRow(path, false);
}

void accessoryButtonTapped(CallList list, UITableView, NSIndexPath path) {
    objc::send<"handleDidSelectRowAtIndexAction:">(list.screen, path);
}

objc::Object callAtTableViewIndex(CallList, objc::Object) { return {}; }

void tapCallRow(CallList list, NSIndexPath path) {
    tap(list, path, QVSettingsDataController::sharedInstance().isCallOnTap_Call());
}

void openCallRow(CallList list, NSIndexPath path) {
    if (auto entry = select(list, path)) openContact(list, entry);
}

void tapRow(CallList list, NSIndexPath path) {
    auto settings = QVSettingsDataController::sharedInstance();
    tap(list, path, callsBackAmongDays(settings.isCallOnTap_Call(), settings.isGroupByDate()));
}

void openRow(CallList list, NSIndexPath path) {
    auto entry = select(list, path);
    if (!entry) return;
    if (QVSettingsDataController::sharedInstance().isGroupByDate())
        openDay(list, entry);
    else
        openContact(list, entry);
}

}  // namespace rows

// Delete all and delete searched: the confirmation, the indicator, the work.
#include "plugin/recents/deletion.h"

#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/companion/visual.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/search.h"
#include "plugin/rows/filter_texts.h"

namespace recents {
namespace {

NSString confirmation(Filter filter, NSString day) {
    const bool byDate = QVSettingsDataController::sharedInstance().isGroupByDate();
    auto message = QuorvelUtils::getLocalizedString(rows::confirmationKey(filter, byDate));
    return byDate ? NSString::stringWithFormat(message, day) : message;
}

bool hasNothingToDelete(const rows::CallListState& state) {
    if (state.rowCount >= 1) return false;
    return !state.searching || state.copyListOfItems.load()->count() == 0;
}

bool isOfFilter(QVCallEntry entry, Filter filter) {
    switch (filter) {
        case Filter::Missed:
            return entry.isMissed();
        case Filter::Received:
            return entry.isReceived();
        case Filter::Dialled:
            return entry.isDialed() || entry.isCanceled();
        default:
            return false;
    }
}

/// While a search is on: the entries of `calls` that stand for something in the list, by name or number. A grouped one
/// loses its calls and goes when none is left; an ungrouped one is taken, and counted, once for each match.
objc::Strong<NSMutableArray> affectedWhileSearching(rows::CallListState& state, NSArray calls, NSArray listed) {
    auto affected = NSMutableArray::make();
    const NSUInteger count = calls.count();
    const NSUInteger listedCount = listed.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto call = calls.objectAtIndex<QVCallEntry>(i);
        for (NSUInteger j = 0; j < listedCount; ++j) {
            auto other = listed.objectAtIndex<QVCallEntry>(j);
            if (!sameNameOrNumber(call, other)) continue;
            const bool grouped = QVSettingsDataController::sharedInstance().isGroupContacts_Call();
            if (grouped) call.setCount(call.count() - other.count());
            if (!grouped || call.count() < 1) {
                affected->addObject(call);
                state.totalCount.add(-1);
            }
            if (grouped) break;
        }
    }
    return affected;
}

objc::Strong<NSMutableArray> affectedByFilter(NSArray calls, Filter filter) {
    auto affected = NSMutableArray::make();
    const NSUInteger count = calls.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto call = calls.objectAtIndex<QVCallEntry>(i);
        if (isOfFilter(call, filter)) affected->addObject(call);
    }
    return affected;
}

}  // namespace

void showDeletingIndicator(const CallList& list, SEL deletion) {
    objc::send<"showHUD:detailText:delegate:mode:selector:">(list.screen, localized<"Deleting">(), NSString{},
                                                             list.screen, 0, deletion);
}

void removeFromAllCalls(const CallList& list, Filter filter) {
    auto& state = list.state;
    auto all = QVDataController::sharedInstance().callList();
    auto calls = all.copy();
    auto affected = state.searching ? affectedWhileSearching(state, calls, state.srcList.load()->copy())
                                    : affectedByFilter(calls, filter);
    const auto count = static_cast<std::int64_t>(affected->count());
    all.removeObjectsInArray(affected.get());
    state.rowCount.add(-count);
    state.totalCount.add(-count);
    objc::send<"updateDateEntry">(list.screen);
}

objc::Strong<BlockActionSheet> makeDeletionSheet(const CallList& list, NSString day) {
    if (hasNothingToDelete(list.state)) return {};
    auto sheet = BlockActionSheet::makeWithTitle(confirmation(list.state.filter(), day));
    sheet->setDestructiveButton(
        objc::send<"getDeleteAllButtonText", NSString>(list.screen),
        [screen = objc::Strong(list.screen)] { objc::send<"handleDeleteAllAction">(screen.get()); });
    sheet->setCancelButton(localized<"Cancel">());
    return sheet;
}

void showDeletionSheet(const CallList& list, BlockActionSheet sheet) {
    sheet.showInView(list.screen.parentViewController().view());
}

void deleteAllAction(CallList list, objc::Object) {
    // The screen has no day of its own to name.
    auto sheet = makeDeletionSheet(list, {});
    if (!sheet) return;
    list.state.deleteActionSheet.store(objc::Strong<objc::Object>(sheet.get()));
    showDeletionSheet(list, sheet);
}

void handleDeleteAllAction(CallList list) {
    auto& state = list.state;
    if (state.searching) {
        // Below zero, on purpose, where everything that matches was shown.
        state.rowCount = state.isAllRecsLoaded ? -1 : 0;
        objc::send<"removeSearchedRecordsInBackGround">(list.screen);
    } else {
        state.edition.invalidate();
        state.rowCount = 0;
        objc::send<"refreshTableData">(list.screen);
        objc::send<"removeAllRecordsInBackGround">(list.screen);
    }
    list.screen.setEditing(false, true);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), true);
    state.isEditing = false;
}

void removeAllRecordsInBackGround(CallList list) { showDeletingIndicator(list, objc::selector<"removeAllRecords">()); }

void removeSearchedRecordsInBackGround(CallList list) {
    showDeletingIndicator(list, objc::selector<"removeSearchedRecords">());
}

void removeAllRecords(CallList list) {
    auto& state = list.state;
    const Filter filter = state.filter();
    if (QVDataController::sharedInstance().removeCallsFromDB(filter, {})) {
        state.edition.invalidate();
        if (filter != Filter::All) removeFromAllCalls(list, filter);
        state.srcList.exchange(NSMutableArray{})->removeAllObjects();
        objc::send<"clearCallLists">(list.screen);
    }
    objc::send<"initializeCallList">(list.screen);
    objc::send<"refreshTableData">(list.screen);
    list.screen.navigationController().popToRootViewController(true);
}

void removeSearchedRecords(CallList list) {
    auto calls = QVDataController::sharedInstance();
    auto& state = list.state;
    auto found = state.copyListOfItems.load();
    // One state of the results for the database and for the lists: a load-more may add to them meanwhile.
    const auto deleted = found->copy();
    if (calls.removeDataFromDB(deleted, state.filter(), true)) {
        state.edition.invalidate();
        if (found->count() > deleted->count()) {
            found->removeAllObjects();
            found->addObjectsFromArray(deleted);
            state.isAllRecsLoaded = false;
        }
        objc::send<"removeCallsFromCallList:">(list.screen, found.get());
        objc::send<"initializeCallList">(list.screen);
        // Where the deletion emptied the list, a page was read for it: its rows are no results, its matches are.
        if (state.searching && state.rowCount > 0) countRowsAgain(list);
        objc::send<"refreshTableData">(list.screen);
        return;
    }
    // This one text comes from the host's own table.
    calls.showErrorMessage(NSBundle::mainBundle().localizedString(text<"UNABLE_DELETE">(), text<"">(), {}));
}

}  // namespace recents

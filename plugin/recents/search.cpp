// Matching, the seen-set, and the delegate of the search display controller.
#include "plugin/recents/search.h"

#include <algorithm>

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/record_set.h"
#include "plugin/recents/search_rule.h"
#include "plugin/rows/snapshot_list.h"

namespace recents {
namespace {

/// A missing text counts as an empty one, so that calls without a name are known again too.
NSString orEmpty(NSString value) { return value ? value : text<"">(); }

bool contains(NSString value, NSString part) {
    constexpr NSUInteger withoutRegardToCase = 1;
    return value && value.rangeOfString(part, withoutRegardToCase).length > 0;
}

bool matches(QVCallEntry entry, NSString part) {
    return contains(entry.name(), part) || contains(entry.phoneNumber(), part);
}

/// What was found already: names and numbers while calls are grouped by contact, else record identities.
class Seen {
  public:
    explicit Seen(bool grouped) : grouped_(grouped) {}

    /// Answers whether it was not there before.
    bool add(QVCallEntry entry) {
        if (!grouped_) return records_.add(entry.iLogOID());
        // Name and number were seen though each came from another entry: adding them adds nothing.
        const NSUInteger before = countOf(texts_.get());
        texts_->addObject(orEmpty(entry.name()));
        texts_->addObject(orEmpty(entry.phoneNumber()));
        return countOf(texts_.get()) > before;
    }

  private:
    static NSUInteger countOf(NSMutableSet texts) { return objc::send<"count", NSUInteger>(texts); }

    bool grouped_;
    RecordSet records_;
    objc::Strong<NSMutableSet> texts_ = NSMutableSet::make();
};

/// Adds what matches and was not seen among the first `most` entries.
void scan(NSArray entries, NSUInteger most, NSString part, Seen& seen, NSMutableArray found) {
    const NSUInteger count = std::min(entries.count(), most);
    for (NSUInteger i = 0; i < count; ++i) {
        auto entry = entries.objectAtIndex<QVCallEntry>(i);
        if (entry && matches(entry, part) && seen.add(entry)) found.addObject(entry);
    }
}

/// How many entries of the list the search looks at.
NSUInteger reach(const rows::CallListState& state, std::int64_t filterCode) {
    const std::int64_t pageSize = QVSettingsDataController::sharedInstance().minRec_Call();
    const std::int64_t limit =
        scanLimit(pageSize, {state.allCallCnt, state.dldCallCnt, state.rcdCallCnt, state.msdCallCnt}, filterCode);
    return static_cast<NSUInteger>(entriesToScan(pageSize, limit));
}

/// What was not found yet among the loaded calls and then among the filter's copies.
objc::Strong<NSMutableArray> findInLoadedCalls(rows::CallListState& state, std::int64_t filterCode, NSString part) {
    Seen seen(QVSettingsDataController::sharedInstance().isGroupContacts_Call());
    const auto already = state.copyListOfItems.load()->copy();
    const NSUInteger count = already->count();
    for (NSUInteger i = 0; i < count; ++i) seen.add(already->objectAtIndex<QVCallEntry>(i));
    auto found = NSMutableArray::make();
    scan(state.srcList.load()->copy(), reach(state, filterCode), part, seen, found);
    const auto copies = state.searchCopies(static_cast<Filter>(filterCode)).load()->copy();
    scan(copies, copies->count(), part, seen, found);
    return found;
}

void endEditing(const CallList& list) {
    if (!list.screen.isEditing()) return;
    list.screen.setEditing(false, true);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), true);
}

}  // namespace

void forgetLoadedMatches(rows::CallListState& state) {
    state.isAllRecsLoaded = false;
    dropSearchCopies(state);
}

void showEditButtonLater(const CallList& list) {
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state = list.state] {
        scopeControl({screen, state}).superview().viewWithTag(editButtonTag).setHidden(state.rowCount < 1);
    });
}

void dropSearchCopies(rows::CallListState& state) {
    for (auto* copies :
         {&state.allCallsCopyList, &state.dldCallsCopyList, &state.rcdCallsCopyList, &state.msdCallsCopyList})
        copies->exchange(NSMutableArray{})->removeAllObjects();
}

void searchTableView(CallList list) {
    auto& state = list.state;
    const auto begun = state.edition.begin();
    auto part = list.screen.searchDisplayController().searchBar().text();
    if (!state.copyListOfItems.load()) state.copyListOfItems.compareExchange({}, rows::makeSnapshotList());
    auto found = state.copyListOfItems.load();
    const std::int64_t code = state.filterType;
    // Always the plain list, also where days are shown.
    if (code >= 1 && code <= 4)
        state.srcList.store(listOfFilter(QVDataController::sharedInstance(), static_cast<Filter>(code), false));
    if (part.length() == 0) {
        if (auto entries = state.srcList.load()) found->addObjectsFromArray(entries.get());
    } else {
        found->addObjectsFromArray(findInLoadedCalls(state, code, part).get());
    }
    state.rowCount = static_cast<std::int64_t>(found->count());
    showEditButtonLater(list);
    if (!state.edition.finish(begun)) countRowsAgain(list);
}

void beginScope(const CallList& list, NSInteger scope) {
    auto& state = list.state;
    state.filterType = static_cast<std::int64_t>(filterOfSegment(scope));
    state.segmentedControl.load()->setSelectedSegmentIndex(scope);
    state.searching = true;
    state.copyListOfItems.load()->removeAllObjects();
}

void searchAfresh(const CallList& list) {
    forgetLoadedMatches(list.state);
    objc::send<"searchTableView">(list.screen);
    objc::send<"refreshTableData">(list.screen);
}

bool shouldReloadForSearchString(CallList list, UISearchDisplayController, NSString) {
    list.state.searching = true;
    list.state.copyListOfItems.load()->removeAllObjects();
    searchAfresh(list);
    return list.state.searching;
}

bool shouldReloadForSearchScope(CallList list, UISearchDisplayController controller, NSInteger scope) {
    beginScope(list, scope);
    auto results = controller.searchResultsTableView();
    if (results.isEditing()) {
        results.setEditing(false);
        objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, false, false);
    }
    searchAfresh(list);
    return list.state.searching;
}

void willBeginSearch(CallList list, UISearchDisplayController controller) {
    endEditing(list);
    controller.searchBar().setSelectedScopeButtonIndex(list.state.segmentedControl.load()->selectedSegmentIndex());
}

void willEndSearch(CallList list, UISearchDisplayController) {
    endEditing(list);
    list.state.searching = false;
}

void didEndSearch(CallList list, UISearchDisplayController controller) {
    list.state.searching = false;
    controller.searchResultsTableView().setEditing(false, true);
    list.state.copyListOfItems.load()->removeAllObjects();
    objc::send<"initializeCallList">(list.screen);
    objc::send<"refreshTableData">(list.screen);
    auto area = scopeControl(list).superview();
    area.viewWithTag(deleteAllButtonTag).setHidden(true);
    auto edit = objc::as<UIButton>(area.viewWithTag(editButtonTag));
    edit.setSelected(false);
    edit.setHidden(true);
}

}  // namespace recents

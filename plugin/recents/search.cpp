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
class Known {
  public:
    explicit Known(bool grouped) : grouped_(grouped) {}

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

/// Adds what matches and is not known yet among the first `most` entries.
void scan(NSArray entries, NSUInteger most, NSString part, Known& known, NSMutableArray found) {
    const NSUInteger count = std::min(entries.count(), most);
    for (NSUInteger i = 0; i < count; ++i) {
        auto entry = entries.objectAtIndex<QVCallEntry>(i);
        if (entry && matches(entry, part) && known.add(entry)) found.addObject(entry);
    }
}

/// How many entries of the list the search looks at.
NSUInteger reach(const rows::CallListState& state, std::int64_t filterCode) {
    const std::int64_t pageSize = QVSettingsDataController::sharedInstance().minRec_Call();
    const std::int64_t limit =
        scanLimit(pageSize, {state.allCallCnt, state.dldCallCnt, state.rcdCallCnt, state.msdCallCnt}, filterCode);
    return static_cast<NSUInteger>(entriesToScan(pageSize, limit));
}

/// What was not found yet among the loaded calls and then among the filter's copies; with an empty text, the loaded
/// calls, found or not.
objc::Strong<NSMutableArray> matchesIn(NSMutableArray loaded, rows::CallListState& state, std::int64_t filterCode,
                                       NSString part, const rows::SeenList& found) {
    auto fresh = rows::makeSnapshotList();
    if (part.length() == 0) {
        if (loaded) fresh->addObjectsFromArray(loaded);
        return fresh;
    }
    Known known(QVSettingsDataController::sharedInstance().isGroupContacts_Call());
    const NSUInteger count = found.count();
    for (NSUInteger i = 0; i < count; ++i) known.add(found.at<QVCallEntry>(i));
    scan(loaded.copy(), reach(state, filterCode), part, known, fresh);
    const auto copies = state.searchCopies(static_cast<Filter>(filterCode)).load()->copy();
    scan(copies, copies->count(), part, known, fresh);
    return fresh;
}

/// Always the plain list, also where days are shown.
objc::Strong<NSMutableArray> searchedList(const rows::CallListState& state, std::int64_t filterCode) {
    if (filterCode < 1 || filterCode > 4) return state.srcList.load();
    return objc::Strong(listOfFilter(QVDataController::sharedInstance(), static_cast<Filter>(filterCode), false));
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
    auto asked = state.edition.now();
    auto part = list.screen.searchDisplayController().searchBar().text();
    rows::SeenList found(foundList(state));
    const std::int64_t code = state.filterType;
    const auto loaded = searchedList(state, code);
    const auto fresh = matchesIn(loaded, state, code, part, found);
    putIn(list, asked, [&] {
        state.srcList.store(loaded);
        if (!found.append(fresh)) return false;
        state.rowCount = static_cast<std::int64_t>(found.count());
        return true;
    });
    showEditButtonLater(list);
}

objc::Strong<NSMutableArray> foundList(rows::CallListState& state) {
    if (!state.copyListOfItems.load()) state.copyListOfItems.compareExchange({}, rows::makeSnapshotList());
    return state.copyListOfItems.load();
}

void forgetFound(rows::CallListState& state) {
    state.edition.invalidate();
    state.copyListOfItems.load()->removeAllObjects();
}

void beginScope(const CallList& list, NSInteger scope) {
    auto& state = list.state;
    state.filterType = static_cast<std::int64_t>(filterOfSegment(scope));
    state.segmentedControl.load()->setSelectedSegmentIndex(scope);
    state.searching = true;
    forgetFound(state);
}

void searchAfresh(const CallList& list) {
    forgetLoadedMatches(list.state);
    objc::send<"searchTableView">(list.screen);
    objc::send<"refreshTableData">(list.screen);
}

bool shouldReloadForSearchString(CallList list, UISearchDisplayController, NSString) {
    list.state.searching = true;
    forgetFound(list.state);
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
    // The list is worked out once the search has ended, which follows.
    list.state.edition.invalidate();
}

void didEndSearch(CallList list, UISearchDisplayController controller) {
    list.state.searching = false;
    controller.searchResultsTableView().setEditing(false, true);
    forgetFound(list.state);
    objc::send<"initializeCallList">(list.screen);
    objc::send<"refreshTableData">(list.screen);
    auto area = scopeControl(list).superview();
    area.viewWithTag(deleteAllButtonTag).setHidden(true);
    auto edit = objc::as<UIButton>(area.viewWithTag(editButtonTag));
    edit.setSelected(false);
    edit.setHidden(true);
}

}  // namespace recents

// The switch on the main thread, the load on the background queue, the closing steps on the main queue.
#include "plugin/recents/switching.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/scroll_offsets.h"

namespace recents {
namespace {

void closeSwitch(const CallList& list) {
    auto table = list.screen.table();
    if (list.state.searching && !table.tableHeaderView())
        table.setTableHeaderView(list.screen.searchDisplayController().searchBar());
    objc::send<"hideHUD">(list.screen);
    objc::send<"refreshTableData">(list.screen);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, list.screen.isEditing(), false);
}

void loadFilter(const CallList& list) {
    auto& state = list.state;
    objc::send<"initializeCallList">(list.screen);
    if (state.searching) {
        state.isAllRecsLoaded = static_cast<bool>(state.searchCopies(state.filter()).load());
        countRowsAgain(list);
    }
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state] { closeSwitch({screen, state}); });
}

/// Whether what the list holds may be out of date, so that the user is shown that it loads.
bool mayBeStale(const CallList& list) {
    auto settings = QVSettingsDataController::sharedInstance();
    return settings.isCallSettingsChanged() || QVDataController::sharedInstance().isAnyRecDeleted() ||
           settings.isNeedToLoadData() || list.state.srcList.load()->count() == 0;
}

}  // namespace

void segmentAction(CallList list, UISegmentedControl control) {
    if (list.screen.table().isEditing()) objc::send<"editButtonClicked:">(list.screen, objc::Object{});
    objc::send<"segMentBackGroundAction:">(list.screen, control);
}

void takeFilterOf(const CallList& list, UISegmentedControl control) {
    auto& state = list.state;
    // While the filter still names the list that is left.
    objc::send<"scrollViewDidEndDecelerating:">(list.screen, objc::Object{});
    state.filterType = static_cast<std::int64_t>(filterOfSegment(control.selectedSegmentIndex()));
    state.edition.invalidate();
    state.rowCount = 0;
}

void loadFilterLater(const CallList& list) {
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Background),
                    [screen = objc::Strong(list.screen), &state = list.state] {
                        loadFilter({screen, state});
                    });
}

void segMentBackGroundAction(CallList list, UISegmentedControl control) {
    auto& state = list.state;
    takeFilterOf(list, control);
    state.srcList.store(listOfFilter(QVDataController::sharedInstance(), state.filter(),
                                     QVSettingsDataController::sharedInstance().isGroupByDate()));
    if (mayBeStale(list)) objc::send<"showHUD:">(list.screen, localized<"LOADING">());
    loadFilterLater(list);
}

void scrollViewDidEndDecelerating(CallList list, UIScrollView) {
    rememberScrollOffset(list.state.filter(), list.screen.table().contentOffset().y);
}

void clearCallLists(CallList) {
    auto calls = QVDataController::sharedInstance();
    if (QVSettingsDataController::sharedInstance().isGroupByDate()) {
        calls.setCallList({});
        calls.setDldCallList({});
        calls.setRcdCallList({});
        calls.setMsdCallList({});
    } else {
        calls.setDateCallsList({});
    }
}

void updateDateEntry(CallList) {}

}  // namespace recents

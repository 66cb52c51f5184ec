// What is installed, in order: the class's rows say added or replaced, the selector, the function, and for added
// methods the type string of the product's own form. Reading this is reading the product.
#include "plugin/installation_table.h"

#include "plugin/datelog/date_log_screen.h"
#include "plugin/detail/history_screen.h"
#include "plugin/host/application.h"
#include "plugin/host/install.h"
#include "plugin/host/progress_indicator.h"
#include "plugin/recents/deletion.h"
#include "plugin/recents/editing.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/recents/lifecycle.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/paging.h"
#include "plugin/recents/recents_list.h"
#include "plugin/recents/search.h"
#include "plugin/recents/switching.h"
#include "plugin/rows/call_records.h"
#include "plugin/rows/contact_screens.h"
#include "plugin/rows/presentation.h"
#include "plugin/rows/selection.h"
#include "plugin/rows/snapshot_list.h"

namespace {

using host::add;
using host::follow;
using host::followAlways;
using host::replace;
using recents::onRecents;

void installOnApplication(Class application) {
    add<"handleChanges", &host::handleChanges>(application, "v@");
    follow<"applicationDidEnterBackground:", &host::applicationDidEnterBackground>(application);
    follow<"applicationDidFinishLaunching:", &host::applicationDidFinishLaunching>(application);
}

void installProgressIndicator(Class screen) {
    add<"showHUD:detailText:delegate:mode:selector:withObject:", &host::showIndicator>(screen, "v@:@@:@@:@@:@i:@@:@@");
    add<"showHUD:detailText:delegate:mode:selector:", &host::showIndicatorRunning>(screen, "v@:@@:@@:@@:@i:@@");
    add<"showHUD:detailText:delegate:mode:", &host::showIndicatorInMode>(screen, "v@:@@:@@:@@:@i");
    add<"showHUD:detailText:delegate:", &host::showIndicatorForDelegate>(screen, "v@:@@:@@:@@");
    add<"showHUD:detailText:", &host::showIndicatorWithDetail>(screen, "v@:@@:@@");
    add<"showHUD:", &host::showIndicatorWithLabel>(screen, "v@:@@");
    add<"showHUD", &host::showLoadingIndicator>(screen, "v@");
    add<"updateHUD:", &host::updateIndicator>(screen, "v@:@@");
    add<"hideHUD:afterDelay:", &host::hideIndicatorLater>(screen, "v@:@i");
    add<"hideHUD:", &host::hideIndicatorAnimated>(screen, "v@:@i");
    add<"hideHUD", &host::hideIndicator>(screen, "v@");
    add<"hudWasHidden:", &host::indicatorWasHidden>(screen, "v@:@@");
    add<"preferredStatusBarStyle", &host::preferredStatusBarStyle>(screen, "i@");
}

void installLifecycle(Class screen) {
    add<"segmentControl:", onRecents<&recents::segmentControl>>(screen, "@@:@@");
    add<"prepareSearchBarScopeTitlesAndTintColor", onRecents<&recents::prepareSearchBarScopeTitlesAndTintColor>>(screen,
                                                                                                                 "v@");
    add<"loadCallRecordsFromDB:", onRecents<&recents::loadCallRecordsFromDB>>(screen, "v@:@@");
    add<"initDatabase", onRecents<&recents::initDatabase>>(screen, "v@");
    add<"searchTableView", onRecents<&recents::searchTableView>>(screen, "v@");
    add<"initializeCallList", onRecents<&recents::initializeCallList>>(screen, "v@");
    add<"loadCallRecsFromDBInBackGround", onRecents<&recents::loadCallRecsFromDBInBackGround>>(screen, "v@");
    add<"loadCallRecsFromDB", onRecents<&recents::loadCallRecsFromDB>>(screen, "v@");
    add<"refreshTableData", onRecents<&recents::refreshTableData>>(screen, "v@");
    add<"handleSegmentControler", onRecents<&recents::handleSegmentControler>>(screen, "v@");
    add<"handleEnableDisableSearchAction:", onRecents<&recents::handleEnableDisableSearchAction>>(screen, "v@:@i");
    followAlways<"viewDidAppear:", onRecents<&recents::viewDidAppear>>(screen);
    follow<"viewDidLoad", onRecents<&recents::viewDidLoad>>(screen);
    replace<"_updateNavBarButtons", onRecents<&recents::updateNavBarButtons>>(screen);
    add<"handleApplicationDidEnterBackground:", onRecents<&recents::handleApplicationDidEnterBackground>>(screen,
                                                                                                          "v@:@@");
    add<"newCallRecordAdded:", onRecents<&recents::newCallRecordAdded>>(screen, "v@:@@");
    add<"viewAppearedAction", onRecents<&recents::viewAppearedAction>>(screen, "v@");
    add<"handleReloadDataAction", onRecents<&recents::handleReloadDataAction>>(screen, "v@");
}

void installList(Class screen) {
    add<"updateNavigationBarButtonItems:groupEdit:", onRecents<&recents::updateNavigationBarButtonItems>>(screen,
                                                                                                          "v@:@i:@i");
    add<"editButtonClicked:", onRecents<&recents::editButtonClicked>>(screen, "v@:@@");
    add<"handleDeleteAllAction", onRecents<&recents::handleDeleteAllAction>>(screen, "v@");
    add<"deleteAllAction:", onRecents<&recents::deleteAllAction>>(screen, "v@:@@");
    add<"getDeleteAllButtonText", onRecents<&recents::getDeleteAllButtonText>>(screen, "@@");
    add<"removeCallsFromCallList:", onRecents<&recents::removeCallsFromCallList>>(screen, "v@:@@");
    add<"removeSearchedRecords", onRecents<&recents::removeSearchedRecords>>(screen, "v@");
    add<"removeSearchedRecordsInBackGround", onRecents<&recents::removeSearchedRecordsInBackGround>>(screen, "v@");
    add<"removeAllRecordsInBackGround", onRecents<&recents::removeAllRecordsInBackGround>>(screen, "v@");
    add<"removeAllRecords", onRecents<&recents::removeAllRecords>>(screen, "v@");
    add<"removeRowData:indexPath:", onRecents<&recents::removeRowData>>(screen, "v@:@@:@@");
    add<"removeSearchRecordFromList:sourceList:", onRecents<&recents::removeSearchRecordFromList>>(screen, "v@:@@:@@");
    add<"updateSearchRecords:", onRecents<&recents::updateSearchRecords>>(screen, "v@:@@");
    add<"clearCallLists", onRecents<&recents::clearCallLists>>(screen, "v@");
    add<"updateDateEntry", onRecents<&recents::updateDateEntry>>(screen, "v@");
    add<"segMentBackGroundAction:", onRecents<&recents::segMentBackGroundAction>>(screen, "v@:@@");
    add<"segmentAction:", onRecents<&recents::segmentAction>>(screen, "v@:@@");
    add<"loadMoreSearchedRecords", onRecents<&recents::loadMoreSearchedRecords>>(screen, "v@");
    add<"loadMoreRecordsAction", onRecents<&recents::loadMoreRecordsAction>>(screen, "v@");
    add<"getCallsDuration:", onRecents<&recents::getCallsDuration>>(screen, "i@:@@");
    add<"handleLoadMoreRecordsAction:", onRecents<&recents::handleLoadMoreRecordsAction>>(screen, "v@:@@");
    add<"searchDisplayController:shouldReloadTableForSearchString:", onRecents<&recents::shouldReloadForSearchString>>(
        screen, "i@:@@:@@");
    add<"searchDisplayController:shouldReloadTableForSearchScope:", onRecents<&recents::shouldReloadForSearchScope>>(
        screen, "i@:@@:@@");
    add<"searchDisplayControllerWillBeginSearch:", onRecents<&recents::willBeginSearch>>(screen, "v@:@@");
    add<"searchDisplayControllerWillEndSearch:", onRecents<&recents::willEndSearch>>(screen, "v@:@@");
    add<"searchDisplayControllerDidEndSearch:", onRecents<&recents::didEndSearch>>(screen, "v@:@@");
}

void installTable(Class screen) {
    replace<"tableView:numberOfRowsInSection:", onRecents<&rows::numberOfRowsInSection>>(screen);
    replace<"tableView:cellForRowAtIndexPath:", onRecents<&rows::cellForRow>>(screen);
    replace<"tableView:willDisplayCell:forRowAtIndexPath:", onRecents<&rows::willDisplayCell>>(screen);
    replace<"tableView:canEditRowAtIndexPath:", onRecents<&rows::canEditRowAtPath>>(screen);
    replace<"tableView:willBeginEditingRowAtIndexPath:", onRecents<&rows::willBeginEditingRow>>(screen);
    replace<"tableView:didEndEditingRowAtIndexPath:", onRecents<&rows::didEndEditingRow>>(screen);
    replace<"tableView:commitEditingStyle:forRowAtIndexPath:", onRecents<&rows::commitEditingStyle>>(screen);
    replace<"tableView:didSelectRowAtIndexPath:", onRecents<&rows::didSelectRow>>(screen);
    replace<"tableView:accessoryButtonTappedForRowWithIndexPath:", onRecents<&rows::accessoryButtonTapped>>(screen);
    replace<"tableView:heightForRowAtIndexPath:", onRecents<&rows::heightForRow>>(screen);
    // Both answer a text although their type strings begin with "v": registered so on purpose.
    add<"tableView:titleForHeaderInSection:", onRecents<&rows::titleForHeader>>(screen, "v@:i@");
    add<"tableView:titleForFooterInSection:", onRecents<&rows::titleForFooter>>(screen, "v@:i@");
    replace<"callAtTableViewIndex:", onRecents<&rows::callAtTableViewIndex>>(screen);
    add<"scrollViewDidEndDecelerating:", onRecents<&recents::scrollViewDidEndDecelerating>>(screen, "v@:@@");
}

void installSelection(Class screen) {
    add<"handleTableRowSelection:", onRecents<&rows::tapRow>>(screen, "v@:@@");
    // It answers a list although its type string begins with "v": registered so on purpose.
    add<"callListForSelectedCall:", onRecents<&rows::callListForSelectedCall>>(screen, "v@:@@");
    add<"handleDidSelectRowAtIndexAction:", onRecents<&rows::openRow>>(screen, "v@:@@");
    add<"showLogAction:", onRecents<&rows::showLogAction>>(screen, "v@:@@");
    add<"detailsButotnClicked", onRecents<&rows::detailsButtonClicked>>(screen, "v@");
    add<"personViewController:shouldPerformDefaultActionForPerson:property:identifier:",
        onRecents<&rows::shouldPerformDefaultAction>>(screen, "i@:@@:@@:i@:i@");
    add<"unknownPersonViewController:didResolveToPerson:", onRecents<&rows::unknownPersonResolved>>(screen, "v@:@@:@@");
    add<"updateCallEntry:", onRecents<&rows::updateCallEntry>>(screen, "v@:@@");
    add<"saveNewContactAndPresentABPersonViewController", onRecents<&rows::presentSavedContact>>(screen, "v@");
    add<"entryDeleted:", onRecents<&rows::entryDeleted>>(screen, "v@:@@");
}

}  // namespace

void installMethods() {
    if (Class application = objc::classNamed<"PhoneApplication">()) installOnApplication(application);
    if (Class screen = objc::classNamed<"PHRecentsViewController">()) {
        rows::registerSnapshotList();
        objc::registerClasses<history::HistoryScreen, datelog::DateLogScreen>();
        installProgressIndicator(screen);
        installLifecycle(screen);
        installList(screen);
        installTable(screen);
        installSelection(screen);
    }
}

// The methods of the day's screen: its own, and those that it shares with the Recents screen.
#include "plugin/datelog/date_log_screen.h"
#include "plugin/recents/deletion.h"
#include "plugin/recents/editing.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/recents/loading.h"
#include "plugin/recents/search.h"
#include "plugin/recents/switching.h"
#include "plugin/rows/call_records.h"
#include "plugin/rows/contact_screens.h"
#include "plugin/rows/presentation.h"
#include "plugin/rows/selection.h"

namespace datelog {
namespace {

void defineLife(objc::ClassDefinition<DateLogScreen>& definition) {
    definition.method<"dateEntry", &DateLogScreen::dateEntry>()
        .method<"setDateEntry:", &DateLogScreen::setDateEntry>()
        .method<"filterType", &DateLogScreen::filterType>()
        .method<"setFilterType:", &DateLogScreen::setFilterType>()
        .method<"totalDuration", &DateLogScreen::totalDuration>()
        .method<"setTotalDuration:", &DateLogScreen::setTotalDuration>()
        .method<"srcList", &DateLogScreen::srcList>()
        .method<"setSrcList:", &DateLogScreen::setSrcList>()
        .method<"table", &DateLogScreen::table>()
        .method<"initWithStyle:", &DateLogScreen::initWithStyle>()
        .method<"viewDidLoad", &DateLogScreen::viewDidLoad>()
        .method<"viewWillAppear:", &DateLogScreen::viewWillAppear>()
        .method<"viewDidAppear:", &DateLogScreen::viewDidAppear>()
        .method<"viewWillDisappear:", &DateLogScreen::viewWillDisappear>()
        .method<"viewDidDisappear:", &DateLogScreen::viewDidDisappear>()
        .method<"didReceiveMemoryWarning", &DateLogScreen::didReceiveMemoryWarning>()
        .method<"handleEnableDisableSearchAction:", &DateLogScreen::handleEnableDisableSearchAction>()
        .method<"prepareSearchBarScopeTitlesAndTintColor", &DateLogScreen::prepareSearchBarScopeTitlesAndTintColor>();
    definition.function<"segmentControl:", onDateLog<&recents::segmentControl>>()
        .function<"updateNavigationBarButtonItems:groupEdit:", onDateLog<&recents::updateNavigationBarButtonItems>>()
        .function<"editButtonClicked:", onDateLog<&recents::editButtonClicked>>();
}

void defineLists(objc::ClassDefinition<DateLogScreen>& definition) {
    definition.method<"initDatabase", &DateLogScreen::initDatabase>()
        .method<"initializeCallList", &DateLogScreen::initializeCallList>()
        .method<"updateDateEntry", &DateLogScreen::updateDateEntry>()
        .method<"clearCallLists", &DateLogScreen::clearCallLists>()
        .method<"segMentBackGroundAction:", &DateLogScreen::segMentBackGroundAction>()
        .method<"scrollViewDidEndDecelerating:", &DateLogScreen::scrollViewDidEndDecelerating>()
        .method<"handleLoadMoreRecordsAction:", &DateLogScreen::handleLoadMoreRecordsAction>()
        .method<"loadMoreRecordsAction", &DateLogScreen::loadMoreRecordsAction>()
        .method<"loadMoreSearchedRecords", &DateLogScreen::loadMoreSearchedRecords>()
        .method<"searchDisplayController:shouldReloadTableForSearchScope:",
                &DateLogScreen::shouldReloadForSearchScope>();
    definition.function<"loadCallRecordsFromDB:", onDateLog<&recents::loadCallRecordsFromDB>>()
        .function<"loadCallRecsFromDBInBackGround", onDateLog<&recents::loadCallRecsFromDBInBackGround>>()
        .function<"getCallsDuration:", onDateLog<&recents::getCallsDuration>>()
        .function<"refreshTableData", onDateLog<&recents::refreshTableData>>()
        .function<"segmentAction:", onDateLog<&recents::segmentAction>>()
        .function<"searchTableView", onDateLog<&recents::searchTableView>>()
        .function<"searchDisplayController:shouldReloadTableForSearchString:",
                  onDateLog<&recents::shouldReloadForSearchString>>()
        .function<"searchDisplayControllerWillBeginSearch:", onDateLog<&recents::willBeginSearch>>()
        .function<"searchDisplayControllerWillEndSearch:", onDateLog<&recents::willEndSearch>>()
        .function<"searchDisplayControllerDidEndSearch:", onDateLog<&recents::didEndSearch>>();
}

void defineDeletion(objc::ClassDefinition<DateLogScreen>& definition) {
    definition.method<"deleteAllAction:", &DateLogScreen::deleteAllAction>()
        .method<"removeAllRecordsInBackGround", &DateLogScreen::removeAllRecordsInBackGround>()
        .method<"removeAllRecords", &DateLogScreen::removeAllRecords>()
        .method<"removeSearchedRecordsInBackGround", &DateLogScreen::removeSearchedRecordsInBackGround>()
        .method<"removeRowData:indexPath:", &DateLogScreen::removeRowData>();
    definition.function<"getDeleteAllButtonText", onDateLog<&recents::getDeleteAllButtonText>>()
        .function<"handleDeleteAllAction", onDateLog<&recents::handleDeleteAllAction>>()
        .function<"removeSearchedRecords", onDateLog<&recents::removeSearchedRecords>>()
        .function<"removeCallsFromCallList:", onDateLog<&recents::removeCallsFromCallList>>()
        .function<"removeSearchRecordFromList:sourceList:", onDateLog<&recents::removeSearchRecordFromList>>()
        .function<"updateSearchRecords:", onDateLog<&recents::updateSearchRecords>>();
}

void defineTable(objc::ClassDefinition<DateLogScreen>& definition) {
    definition.method<"numberOfSectionsInTableView:", &DateLogScreen::numberOfSections>()
        .method<"tableView:cellForRowAtIndexPath:", &DateLogScreen::cellForRow>()
        .method<"tableView:canEditRowAtIndexPath:", &DateLogScreen::canEditRow>()
        .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &DateLogScreen::commitEditingStyle>()
        .method<"tableView:heightForRowAtIndexPath:", &DateLogScreen::heightForRow>()
        .method<"tableView:titleForHeaderInSection:", &DateLogScreen::titleForHeader>()
        .method<"tableView:titleForFooterInSection:", &DateLogScreen::titleForFooter>()
        .method<"tableView:heightForHeaderInSection:", &DateLogScreen::heightForHeader>()
        .method<"tableView:heightForFooterInSection:", &DateLogScreen::heightForFooter>();
    definition.function<"tableView:numberOfRowsInSection:", onDateLog<&rows::numberOfRowsInSection>>()
        .function<"tableView:willBeginEditingRowAtIndexPath:", onDateLog<&rows::willBeginEditingRow>>()
        .function<"tableView:didEndEditingRowAtIndexPath:", onDateLog<&rows::didEndEditingRow>>();
}

void defineSelection(objc::ClassDefinition<DateLogScreen>& definition) {
    definition.method<"saveNewContactAndPresentABPersonViewController", &DateLogScreen::presentSavedContact>();
    definition.function<"tableView:didSelectRowAtIndexPath:", onDateLog<&rows::didSelectRow>>()
        .function<"tableView:accessoryButtonTappedForRowWithIndexPath:", onDateLog<&rows::accessoryButtonTapped>>()
        .function<"handleTableRowSelection:", onDateLog<&rows::tapCallRow>>()
        .function<"handleDidSelectRowAtIndexAction:", onDateLog<&rows::openCallRow>>()
        .function<"callListForTheDay:", onDateLog<&rows::callListForTheDay>>()
        .function<"callListForSelectedCall:", onDateLog<&rows::callListForSelectedCall>>()
        .function<"showLogAction:", onDateLog<&rows::showLogAction>>()
        .function<"detailsButotnClicked", onDateLog<&rows::detailsButtonClicked>>()
        .function<"personViewController:shouldPerformDefaultActionForPerson:property:identifier:",
                  onDateLog<&rows::shouldPerformDefaultAction>>()
        .function<"unknownPersonViewController:didResolveToPerson:", onDateLog<&rows::unknownPersonResolved>>()
        .function<"updateCallEntry:", onDateLog<&rows::updateCallEntry>>()
        .function<"entryDeleted:", onDateLog<&rows::entryDeleted>>();
}

}  // namespace

void DateLogScreen::define(objc::ClassDefinition<DateLogScreen>& definition) {
    defineLife(definition);
    defineLists(definition);
    defineDeletion(definition);
    defineTable(definition);
    defineSelection(definition);
}

}  // namespace datelog

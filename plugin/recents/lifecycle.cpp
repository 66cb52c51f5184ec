// The Recents screen's set-up and its reloads.
#include "plugin/recents/lifecycle.h"

#include "platform/dispatch.h"
#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/companion/visual.h"
#include "plugin/host/progress_indicator.h"
#include "plugin/host/recents_controller.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/recents/scroll_offsets.h"
#include "plugin/rows/presentation.h"

namespace recents {
namespace {

void observeNotifications(CallListScreen screen) {
    auto center = NSNotificationCenter::defaultCenter();
    center.addObserver(screen, objc::selector<"newCallRecordAdded:">(),
                       text<"com.velmarin.QuorvelNewRecordAddedNotification">(), {});
    center.addObserver(screen, objc::selector<"handleApplicationDidEnterBackground:">(),
                       text<"UIApplicationDidEnterBackgroundNotification">(), {});
}

/// Loads again on the default queue, then hides the indicator on the main queue.
template <objc::Name loader>
void reloadOnQueue(CallListScreen screen) {
    dispatch::async(dispatch::globalQueue(dispatch::Priority::Default), [screen = objc::Strong(screen)] {
        objc::send<loader>(screen.get());
        dispatch::asyncOnMain([screen] { objc::send<"hideHUD">(screen.get()); });
    });
}

}  // namespace

void viewDidLoad(CallList list) {
    host::setRecentsController(objc::as<PHRecentsViewController>(list.screen));
    host::setIndicatorUserInteraction(true);
    if (QVSettingsDataController::sharedInstance().isEnableCallSearch()) makeSearchBar(list);
    objc::send<"handleSegmentControler">(list.screen);
    objc::send<"initDatabase">(list.screen);
    objc::send<"handleEnableDisableSearchAction:">(list.screen, true);
    rows::registerCells(list.state, list.screen.table());
    rows::registerCells(list.state, list.screen.searchDisplayController().searchResultsTableView());
    observeNotifications(list.screen);
}

void viewDidAppear(CallList list, bool) { objc::send<"viewAppearedAction">(list.screen); }

void updateNavBarButtons(CallList list) {
    if (list.state.trashIcon.load()) return;
    auto trash =
        UIBarButtonItem::makeSystemItem(UIBarButtonItem::trash, list.screen, objc::selector<"editButtonClicked:">());
    list.state.trashIcon.store(trash);
    list.screen.navigationItem().setRightBarButtonItem(trash);
}

void viewAppearedAction(CallList list) {
    auto settings = QVSettingsDataController::sharedInstance();
    auto calls = QVDataController::sharedInstance();
    objc::send<"clearCallLists">(list.screen);
    const bool settingsChanged = settings.isCallSettingsChanged();
    if (!settingsChanged && !calls.isAnyRecDeleted() && !settings.isNeedToLoadData()) return;

    objc::send<"hideHUD">(list.screen);
    resetScrollOffsets();
    const bool pageSizeChanged = settings.minRec_Call() != list.state.lastMinRecCall;
    if (pageSizeChanged) list.state.forgetPaging();
    if (settingsChanged) {
        objc::send<"handleEnableDisableSearchAction:">(list.screen, false);
        objc::send<"handleSegmentControler">(list.screen);
    }
    const bool needToLoad = settings.isNeedToLoadData();
    if (needToLoad) {
        objc::send<"handleReloadDataAction">(list.screen);
        list.state.isAllRecsLoaded = false;
        list.state.isLoadMoreAllCalls = false;
    }
    list.state.edition.invalidate();
    settings.setIsNeedToLoadData(false);
    settings.setIsCallSettingsChanged(false);
    calls.setIsAnyRecDeleted(false);
    objc::send<"showHUD:">(list.screen, localized<"Refreshing">());
    if (needToLoad || pageSizeChanged)
        reloadOnQueue<"loadCallRecsFromDBInBackGround">(list.screen);
    else
        reloadOnQueue<"loadCallRecsFromDB">(list.screen);
}

void handleReloadDataAction(CallList list) {
    auto& state = list.state;
    auto calls = QVDataController::sharedInstance();
    state.edition.invalidate();
    calls.callList().removeAllObjects();
    calls.setAllCallsCount(0);
    calls.dldCallList().removeAllObjects();
    calls.setDldCallsCount(0);
    calls.rcdCallList().removeAllObjects();
    calls.setRcdCallsCount(0);
    calls.msdCallList().removeAllObjects();
    calls.setMsdCallsCount(0);
    calls.dateCallsList().removeAllObjects();

    // The filter stays until the new one is known: a deletion that runs beside this must not take it for all calls.
    state.srcList.store({});
    state.forgetPaging();
    resetScrollOffsets();
    state.totalCount = 0;
    state.rowCount = 0;
    if (state.searching) {
        state.copyListOfItems.load()->removeAllObjects();
        for (auto* copies :
             {&state.allCallsCopyList, &state.dldCallsCopyList, &state.rcdCallsCopyList, &state.msdCallsCopyList})
            copies->load()->removeAllObjects();
    }
    QVSettingsDataController::sharedInstance().setIsNeedToLoadData(false);
    state.filterType =
        static_cast<std::int64_t>(filterOfSegment(state.segmentedControl.load()->selectedSegmentIndex()));
    // Once more, for what was asked for since with the former filter.
    state.edition.invalidate();
}

void newCallRecordAdded(CallList list, objc::Object) {
    QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true);
    objc::send<"viewAppearedAction">(list.screen);
}

void handleApplicationDidEnterBackground(CallList list, objc::Object) {
    if (auto sheet = list.state.deleteActionSheet.load())
        objc::as<BlockActionSheet>(sheet.get()).dismissWithClickedButtonIndex(-1, true);
    list.screen.navigationController().popToRootViewController(false);
}

}  // namespace recents

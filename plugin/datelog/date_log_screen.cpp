// The day's screen: its life, its controls, and the methods of its class.
#include "plugin/datelog/date_log_screen.h"

#include "plugin/companion/data_controller.h"
#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/recents/scroll_offsets.h"
#include "plugin/recents/search.h"
#include "plugin/rows/filter_texts.h"
#include "plugin/rows/navigation_stack.h"
#include "plugin/rows/presentation.h"

namespace datelog {
namespace {

constexpr CGFloat segmentedControlWidth = 200.0;

}  // namespace

objc::Object DateLogScreen::initWithStyle(NSInteger style) {
    return objc::sendSuper<"initWithStyle:", objc::Object>(screen(), objc::classOf<DateLogScreen>(), style);
}

void DateLogScreen::viewDidLoad() {
    objc::sendSuper<"viewDidLoad">(screen(), objc::classOf<DateLogScreen>());
    // There is no control yet, so this changes nothing; kept in this order.
    state_.segmentedControl.load()->setTintColor(UIColor::whiteColor());
    state_.searching = false;
    state_.filterType = static_cast<std::int64_t>(Filter::All);
    auto item = screen().navigationItem();
    item.setRightBarButtonItem({});
    state_.trashIcon.store(
        UIBarButtonItem::makeSystemItem(UIBarButtonItem::trash, screen(), objc::selector<"editButtonClicked:">()));
    showSegments();
    objc::send<"initDatabase">(screen());
    objc::send<"handleEnableDisableSearchAction:">(screen(), true);
    objc::send<"prepareSearchBarScopeTitlesAndTintColor">(screen());

    rows::registerCells(state_, screen().tableView());
    rows::registerCells(state_, screen().searchDisplayController().searchResultsTableView());
}

void DateLogScreen::showSegments() {
    auto control = UISegmentedControl::makeWithItems(rows::filterIcons());
    state_.segmentedControl.store(control);
    screen().navigationItem().setTitleView(control);
    control->addTarget(screen(), objc::selector<"segmentAction:">(), UIControl::valueChanged);
    CGRect frame = control->frame();
    frame.size.width = segmentedControlWidth;
    control->setFrame(frame);
    control->setSelectedSegmentIndex(0);
}

void DateLogScreen::handleEnableDisableSearchAction(bool settle) {
    auto table = screen().tableView();
    if (!QVSettingsDataController::sharedInstance().isEnableCallSearch()) {
        table.setTableHeaderView({});
        return;
    }
    recents::showSearchBar(list(), settle);
}

void DateLogScreen::prepareSearchBarScopeTitlesAndTintColor() {
    auto scope = recents::scopeControl(list());
    scope.setTintColor(UIColor::whiteColor());
    UIBarButtonItem::appearanceInSearchBars().setTintColor(UIColor::whiteColor());
    auto trash = state_.trashIcon.load();
    recents::decorateScope(list(),
                           {{UIImage::imageNamed(text<"all_icon">()), UIImage::imageNamed(text<"dialled_icon">()),
                             UIImage::imageNamed(text<"received_icon">()), UIImage::imageNamed(text<"missed_icon">())},
                            UIImage::imageNamed(text<"delete_all_icon">()),
                            UIImage::imageNamed(text<"delete_icon">()),
                            UIImage::imageNamed(text<"cancel">())},
                           trash->target(), trash->action());
}

void DateLogScreen::emptyLists() {
    auto calls = QVDataController::sharedInstance();
    calls.callList().removeAllObjects();
    calls.dldCallList().removeAllObjects();
    calls.rcdCallList().removeAllObjects();
    calls.msdCallList().removeAllObjects();
    calls.setAllCallsCount(0);
    calls.setDldCallsCount(0);
    calls.setRcdCallsCount(0);
    calls.setMsdCallsCount(0);
    state_.srcList.store({});
    state_.forgetPaging();
}

void DateLogScreen::viewWillAppear(bool animated) {
    auto settings = QVSettingsDataController::sharedInstance();
    auto calls = QVDataController::sharedInstance();
    // Recents answers a deletion in a history above at once: it lets the lists go and the flags with them.
    const bool isListGone =
        state_.srcList.load() && listOfFilter(calls, state_.filter(), false).self != state_.srcList.load().self();
    const bool reload =
        settings.isCallSettingsChanged() || calls.isAnyRecDeleted() || settings.isNeedToLoadData() || isListGone;
    if (reload) {
        state_.edition.invalidate();
        if (settings.isNeedToLoadData()) emptyLists();
        objc::send<"initializeCallList">(screen());
    }
    if (state_.searching) {
        if (calls.isAnyRecDeleted()) state_.copyListOfItems.load()->removeAllObjects();
        objc::send<"searchTableView">(screen());
    }
    if (state_.searching || reload) objc::send<"refreshTableData">(screen());

    objc::sendSuper<"viewWillAppear:">(screen(), objc::classOf<DateLogScreen>(), animated);

    if (calls.isAnyRecDeleted() || settings.isNeedToLoadData()) objc::send<"updateDateEntry">(screen());
    if (settings.isNeedToLoadData()) {
        objc::send<"refreshTableData">(
            rows::firstControllerOf(screen().navigationController(), objc::classNamed<"PHRecentsViewController">()));
        settings.setIsNeedToLoadData(false);
    }
    if (state_.searching) screen().searchDisplayController().searchBar().becomeFirstResponder();
}

void DateLogScreen::viewDidAppear(bool animated) {
    objc::sendSuper<"viewDidAppear:">(screen(), objc::classOf<DateLogScreen>(), animated);
    if (isDayEmpty()) screen().navigationController().popToRootViewController(true);
}

void DateLogScreen::viewWillDisappear(bool animated) {
    if (isDayEmpty()) {
        auto calls = QVDataController::sharedInstance();
        calls.dateCallsList().removeObject(dateEntry_.load());
        calls.setAllCallsCount(calls.allCallsCount() - 1);
    }
    objc::sendSuper<"viewWillDisappear:">(screen(), objc::classOf<DateLogScreen>(), animated);
}

void DateLogScreen::viewDidDisappear(bool animated) {
    objc::sendSuper<"viewDidDisappear:">(screen(), objc::classOf<DateLogScreen>(), animated);
}

void DateLogScreen::didReceiveMemoryWarning() {
    objc::sendSuper<"didReceiveMemoryWarning">(screen(), objc::classOf<DateLogScreen>());
}

}  // namespace datelog

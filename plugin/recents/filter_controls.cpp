// Building the segmented control and the search bar.
#include "plugin/recents/filter_controls.h"

#include "plugin/companion/settings.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/scroll_offsets.h"
#include "plugin/rows/filter_texts.h"

namespace recents {
namespace {

constexpr CGFloat segmentedControlWidth = 220;
constexpr CGRect searchBarFrame{{0, 0}, {320, 88}};
constexpr CGFloat scopeMargin = 55;
constexpr CGRect deleteAllButtonFrame{{8, 6}, {32, 32}};
constexpr CGRect editButtonFrame{{280, 6}, {32, 32}};

UIButton addScopeButton(UIView area, NSInteger tag, CGRect frame, UIImage image) {
    constexpr NSInteger custom = 0;
    auto button = UIButton::buttonWithType(custom);
    button.setTag(tag);
    button.setFrame(frame);
    button.setImage(image, UIButton::normal);
    area.addSubview(button);
    return button;
}

void finishScopeButton(UIButton button, UISegmentedControl scope, objc::Object target, SEL action) {
    button.addTarget(target, action, UIControl::touchUpInside);
    button.setHidden(true);
    button.setImageTintColor(scope.tintColor());
}

}  // namespace

void handleSegmentControler(CallList list) {
    if (QVSettingsDataController::sharedInstance().isGroupByDate()) {
        list.screen.navigationItem().setTitleView({});
        list.screen.setTitle(localized<"Title">());
        // The days have no filter: none that was chosen before may choose for them.
        list.state.segmentedControl.store({});
        return;
    }
    auto control = UISegmentedControl::makeWithItems(rows::filterIcons());
    list.state.segmentedControl.store(control);
    list.screen.navigationItem().setTitleView(control);
    control->addTarget(list.screen, objc::selector<"segmentAction:">(), UIControl::valueChanged);
    control->setSelectedSegmentIndex(0);
    CGRect frame = control->frame();
    frame.size.width = segmentedControlWidth;
    control->setFrame(frame);
    list.screen.setTitle({});
}

UISegmentedControl segmentControl(CallList list, UIView view) {
    auto subviews = view.subviews();
    const NSUInteger count = subviews.count();
    for (NSUInteger i = 0; i < count; ++i) {
        auto subview = subviews.objectAtIndex<UIView>(i);
        if (objc::isKindOf(subview, objc::classNamed<"UISegmentedControl">()))
            return objc::as<UISegmentedControl>(subview);
        if (auto found = objc::send<"segmentControl:", UISegmentedControl>(list.screen, subview)) return found;
    }
    return {};
}

UISegmentedControl scopeControl(const CallList& list) {
    UIView bar = list.screen.searchDisplayController().searchBar();
    return objc::send<"segmentControl:", UISegmentedControl>(list.screen, bar);
}

void decorateScope(const CallList& list, const ScopeIcons& icons, objc::Object editTarget, SEL editAction) {
    auto scope = scopeControl(list);
    if (!scope) return;
    for (NSUInteger segment = 0; segment < rows::filterCount; ++segment)
        scope.setImage(icons.filters[segment], segment);
    CGRect frame = scope.frame();
    frame.origin.x = scopeMargin;
    frame.size.width = UIScreen::mainScreen().bounds().size.width - 2 * scopeMargin;
    scope.setFrame(frame);

    auto area = scope.superview();
    auto deleteAll = addScopeButton(area, deleteAllButtonTag, deleteAllButtonFrame, icons.deleteAll);
    finishScopeButton(deleteAll, scope, list.screen, objc::selector<"deleteAllAction:">());
    auto edit = addScopeButton(area, editButtonTag, editButtonFrame, icons.edit);
    edit.setImage(icons.cancel, UIButton::selected);
    finishScopeButton(edit, scope, editTarget, editAction);
}

void prepareSearchBarScopeTitlesAndTintColor(CallList list) {
    decorateScope(list,
                  {{rows::filterIcon(0), rows::filterIcon(1), rows::filterIcon(2), rows::filterIcon(3)},
                   rows::productImage<"/Applications/Quorvel.app/delete_all_icon.png">(),
                   rows::productImage<"/Applications/Quorvel.app/delete_icon.png">(),
                   rows::productImage<"/Applications/Quorvel.app/cancel.png">()},
                  list.screen, objc::selector<"editButtonClicked:">());
}

void makeSearchBar(const CallList& list) {
    auto bar = UISearchBar::makeWithFrame(searchBarFrame);
    bar->setPlaceholder(localized<"SEARCH_CALL_HISTORY">());
    auto titles = NSMutableArray::make();
    for (NSUInteger segment = 0; segment < rows::filterCount; ++segment) titles->addObject(rows::scopeTitle(segment));
    bar->setScopeButtonTitles(titles);
    auto controller = UISearchDisplayController::makeWithSearchBar(bar, list.screen);
    list.screen.setSearchDisplayController(controller);
    controller->setSearchResultsDelegate(list.screen);
    controller->setSearchResultsDataSource(list.screen);
    controller->setDelegate(list.screen);
    list.screen.table().setTableHeaderView(bar);
    objc::send<"prepareSearchBarScopeTitlesAndTintColor">(list.screen);
}

void showSearchBar(const CallList& list, bool settle) {
    auto table = list.screen.table();
    if (!table.tableHeaderView()) table.setTableHeaderView(list.screen.searchDisplayController().searchBar());
    const CGFloat offset = table.contentOffset().y;
    if (offset == 0)
        table.setContentOffset({0, searchBarOffset}, false);
    else if (offset < 0 && settle)
        table.setContentOffset({0, offset + table.tableHeaderView().frame().size.height}, false);
}

void handleEnableDisableSearchAction(CallList list, bool settle) {
    auto settings = QVSettingsDataController::sharedInstance();
    if (settings.isEnableCallSearch() && !settings.isGroupByDate())
        showSearchBar(list, settle);
    else
        list.screen.table().setTableHeaderView({});
}

}  // namespace recents

// The buttons of the navigation bar and of the search bar's scope area.
#include "plugin/recents/editing.h"

#include "platform/dispatch.h"
#include "plugin/companion/utilities.h"
#include "plugin/recents/filter_controls.h"
#include "plugin/rows/filter_texts.h"

namespace recents {
namespace {

/// The scope area's two buttons: delete-all shown or hidden; edit selected or not, shown or hidden.
void showScopeButtons(const CallList& list, bool editing) {
    auto scope = scopeControl(list);
    if (!scope) return;
    auto area = scope.superview();
    const bool hasRows = list.state.rowCount >= 1;
    area.viewWithTag(deleteAllButtonTag).setHidden(!(editing && hasRows));
    auto edit = objc::as<UIButton>(area.viewWithTag(editButtonTag));
    edit.setSelected(editing && hasRows);
    if (!editing || !hasRows) edit.setHidden(!hasRows);
}

void showEditingButtons(const CallList& list, bool groupEdit) {
    auto& state = list.state;
    if (state.searching) {
        if (state.copyListOfItems.load()->count() == 0 && state.rowCount < 1) return;
        showScopeButtons(list, true);
        return;
    }
    if (state.rowCount < 1) return;
    auto item = list.screen.navigationItem();
    if (groupEdit) {
        auto deleteAll =
            UIBarButtonItem::makeWithImage(rows::productImage<"/Applications/Quorvel.app/delete_all_icon.png">(),
                                           UIBarButtonItem::done, list.screen, objc::selector<"deleteAllAction:">());
        item.setLeftBarButtonItem(deleteAll, true);
    } else {
        item.setLeftBarButtonItem({}, true);
        item.setHidesBackButton(true, true);
    }
    auto cancel =
        UIBarButtonItem::makeSystemItem(UIBarButtonItem::stop, list.screen, objc::selector<"editButtonClicked:">());
    item.setRightBarButtonItem(cancel, true);
}

void showNormalButtons(const CallList& list) {
    if (list.state.searching) {
        showScopeButtons(list, false);
        return;
    }
    auto item = list.screen.navigationItem();
    item.setLeftBarButtonItem({}, false);
    item.setHidesBackButton(false, true);
    auto trash = list.state.trashIcon.load();
    item.setRightBarButtonItem(list.state.rowCount >= 1 ? trash.get() : UIBarButtonItem{}, true);
}

}  // namespace

void editButtonClicked(CallList list, objc::Object) {
    auto results = list.screen.searchDisplayController().searchResultsTableView();
    const bool searching = list.state.searching;
    const bool editing = list.state.isEditing || (searching ? results.isEditing() : list.screen.isEditing());
    if (searching)
        results.setEditing(!editing, true);
    else
        list.screen.setEditing(!editing, true);
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(list.screen, !editing, true);
}

void updateNavigationBarButtonItems(CallList list, bool editing, bool groupEdit) {
    dispatch::asyncOnMain([screen = objc::Strong(list.screen), &state = list.state, editing, groupEdit] {
        const CallList now{screen, state};
        if (editing)
            showEditingButtons(now, groupEdit);
        else
            showNormalButtons(now);
    });
}

NSString getDeleteAllButtonText(CallList list) {
    if (list.state.searching) return localized<"DEL_ALL_SEARCHED">();
    return rows::deleteAllTitle(list.state.filter());
}

}  // namespace recents

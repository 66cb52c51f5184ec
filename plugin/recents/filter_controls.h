// The controls that choose a filter: the title's segmented control, and the search bar with its scope and two buttons.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

using rows::CallList;

/// Where days are shown: the title. Otherwise a new segmented control of the four filter icons, all selected.
void handleSegmentControler(CallList list);
/// The first segmented control below the view, in depth-first order; null when there is none.
UISegmentedControl segmentControl(CallList list, UIView view);
/// The search display controller's bar's scope control; null without a search bar.
UISegmentedControl scopeControl(const CallList& list);
/// What stands in and beside the scope control.
struct ScopeIcons {
    UIImage filters[4];
    UIImage deleteAll;
    UIImage edit;
    UIImage cancel;  ///< the edit button's while it is selected
};
/// Puts the icons in place of the scope's titles and the two hidden buttons beside it; nothing without a scope control.
/// The edit button sends `editAction` to `editTarget`.
void decorateScope(const CallList& list, const ScopeIcons& icons, objc::Object editTarget, SEL editAction);
/// The same with the product's icons, by path: puts icons in place of the scope's titles and the two hidden buttons
/// beside it.
void prepareSearchBarScopeTitlesAndTintColor(CallList list);
/// Makes the search bar and its controller and gives them to the screen.
void makeSearchBar(const CallList& list);
/// Puts the search bar above the rows where it is not, and scrolls it out of sight as below.
void showSearchBar(const CallList& list, bool settle);
/// Shows or takes away the search bar as the settings want it; a bar that comes into view at the very top is scrolled
/// out of sight.
void handleEnableDisableSearchAction(CallList list, bool settle);

/// The two buttons of the scope area, as they are found by tag.
inline constexpr NSInteger deleteAllButtonTag = 1;
inline constexpr NSInteger editButtonTag = 2;

}  // namespace recents

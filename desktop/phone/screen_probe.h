// What is on the screen, for `show` and for the commands that touch it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/uikit/application.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/table_view.h"

namespace phone {

/// The screen in front: the one on top of the selected tab's stack, or what it presents. Null before launch.
uikit::ViewController* frontScreen();
/// The stack that it stands on, or what is presented in front of it; null when there is none.
uikit::NavigationController* frontNavigation();
/// The search of the screen in front; null when it has none.
uikit::SearchDisplayController* frontSearch();
/// The table in front: what a search found while it shows, else the screen's own; null when there is none.
uikit::TableView* frontTable();
/// Rows are counted through all sections of a table, from 0.
long rowCount(uikit::TableView* table);
/// The place of that row; nothing where there is none.
std::optional<uikit::RowPlace> rowPlace(uikit::TableView* table, long row);
/// The row at that place.
long rowNumber(uikit::TableView* table, uikit::RowPlace place);
/// The segmented control in the title; null when there is none.
uikit::SegmentedControl* titleSegments();

/// The texts that the view and all below it draw, in order; hidden views draw none.
std::vector<std::string> textsOf(const uikit::View* view);
/// The first visible view below for which the question is answered true, front to back; null when there is none.
template <class Question>
uikit::View* findView(uikit::View* view, Question question) {
    if (!view || view->isHidden()) return nullptr;
    if (question(view)) return view;
    const auto& below = view->subviews();
    for (auto each = below.rbegin(); each != below.rend(); ++each)
        if (auto* found = findView(each->get(), question)) return found;
    return nullptr;
}

/// Touches the middle of the view, as a finger does. Answers false when another view is in the way or none is there.
bool tapView(uikit::View* view);
/// Touches the point, in the window's coordinates.
void tapPoint(uikit::Point point);

}  // namespace phone

// UITableView: taps, selection, the swipe that deletes, edit mode.
#include <algorithm>
#include <cmath>

#include "desktop/uikit/main_thread.h"
#include "desktop/uikit/table_view.h"

namespace uikit {
namespace {

constexpr double deleteWidth = 82;
constexpr double swipeThreshold = 12;
constexpr long deleteStyle = 1;

}  // namespace

void TableView::tellDelegate(SEL message, RowPlace place) {
    if (delegateAnswers(message)) objc::sendSelector(delegate(), message, object(), indexPath(place));
}

std::optional<RowPlace> TableView::placeAt(Point point) {
    for (const auto& [place, cell] : cells_)
        if (cell->frame().contains(point)) return place;
    return std::nullopt;
}

bool TableView::scrollIntoView(RowPlace place) {
    if (place.row < 0 || place.row >= numberOfRowsInSection(place.section)) return false;
    const double y = offsetFor(rectOf(place), scrollNone);
    if (y != contentOffset().y) setContentOffset({0, y});
    layoutIfNeeded();
    return cells_.contains(place);
}

/// At the ends of the content a row comes as near to its position as the content reaches.
double TableView::offsetFor(const Rect& row, long position) const {
    const double visibleTop = contentInset().top;
    const double visibleHeight = bounds().size.height - visibleTop - contentInset().bottom;
    const double atTop = row.top() - visibleTop;
    const double atBottom = row.bottom() - visibleTop - visibleHeight;
    const double now = contentOffset().y;
    double y = now;
    if (position == scrollTop)
        y = atTop;
    else if (position == scrollMiddle)
        y = (atTop + atBottom) / 2;
    else if (position == scrollBottom)
        y = atBottom;
    else if (now > atTop || row.height() > visibleHeight)
        y = atTop;
    else
        y = std::max(now, atBottom);
    // A row in sight stays where a finger or a message put it, even beyond an end.
    return y == now ? now : std::clamp(y, leastOffset(), greatestOffset());
}

void TableView::scrollToRow(objc::Object path, long position, bool animated) {
    const RowPlace place = placeOf(path);
    if (place.row < 0 || place.row >= numberOfRowsInSection(place.section)) return;
    setContentOffsetAnimated({0, offsetFor(rectOf(place), position)}, animated);
    if (!animated) layoutIfNeeded();
}

bool TableView::touch(const Touch& touch) {
    if (touch.phase == TouchPhase::Began) press(touch);
    ScrollView::touch(touch);
    if (touch.phase == TouchPhase::Moved && pressed_) {
        const Point moved = touch.point - pressBegan_.point;
        const bool swiped = moved.x < -swipeThreshold && std::abs(moved.x) > std::abs(moved.y);
        if (swiped && !isDragging()) {
            const RowPlace place = *pressed_;
            unpress();
            revealDelete(place.row, place.section);
        } else if (isDragging()) {
            unpress();
        }
    }
    if (touch.phase == TouchPhase::Ended) release(touch);
    if (touch.phase == TouchPhase::Cancelled) unpress();
    return true;
}

void TableView::press(const Touch& touch) {
    pressBegan_ = touch;
    if (revealed_) {
        hideDelete();
        return;
    }
    pressed_ = placeAt(pointFromWindow(touch.point));
    if (!pressed_) return;
    const auto& cell = cells_.at(*pressed_);
    const Point inCell = cell->pointFromWindow(touch.point);
    if (cell->detailRect().contains(inCell))
        cell->setDetailPressed(canSelect());
    else if (canSelect())
        cell->setHighlightedAnimated(true, false);
}

void TableView::unpress() {
    if (!pressed_) return;
    if (const auto found = cells_.find(*pressed_); found != cells_.end()) {
        found->second->setHighlightedAnimated(false, false);
        found->second->setDetailPressed(false);
    }
    pressed_.reset();
}

void TableView::release(const Touch& touch) {
    if (!pressed_) return;
    const RowPlace place = *pressed_;
    unpress();
    const auto found = cells_.find(place);
    if (found == cells_.end()) return;
    const objc::Ref<TableViewCell> cell = found->second;
    const Point inCell = cell->pointFromWindow(touch.point);
    if (!cell->bounds().contains(inCell)) return;
    if (editing_ && cell->minusRect().contains(inCell)) {
        revealDelete(place.row, place.section);
    } else if (!canSelect()) {
        return;
    } else if (cell->detailRect().contains(inCell)) {
        tellDelegate(objc::selector<"tableView:accessoryButtonTappedForRowWithIndexPath:">(), place);
    } else {
        select(place);
    }
}

std::optional<RowPlace> TableView::placeToSelect(RowPlace tapped) {
    constexpr auto question = objc::Name{"tableView:willSelectRowAtIndexPath:"};
    const auto receiver = delegate();
    if (!receiver || !objc::respondsTo(receiver, objc::selector<question>())) return tapped;
    const auto path = objc::send<question, objc::Object>(receiver, object(), indexPath(tapped));
    return path ? std::optional(placeOf(path)) : std::nullopt;
}

void TableView::select(RowPlace tapped) {
    const auto place = placeToSelect(tapped);
    if (!place) return;
    if (selected_ && selected_ != place) deselectRow(indexPath(*selected_), false);
    selected_ = place;
    if (const auto found = cells_.find(*place); found != cells_.end())
        found->second->setHighlightedAnimated(true, false);
    tellDelegate(objc::selector<"tableView:didSelectRowAtIndexPath:">(), *place);
}

objc::Object TableView::pathOfSelectedRow() const { return selected_ ? indexPath(*selected_) : objc::Object{}; }

void TableView::deselectRow(objc::Object path, bool animated) {
    const RowPlace place = placeOf(path);
    if (selected_ == place) selected_.reset();
    if (const auto found = cells_.find(place); found != cells_.end())
        found->second->setHighlightedAnimated(false, animated);
}

bool TableView::tapRow(long row, long section) {
    const RowPlace place{section, row};
    if (!canSelect() || !scrollIntoView(place)) return false;
    if (revealed_) hideDelete();
    select(place);
    return true;
}

bool TableView::tapAccessory(long row, long section) {
    const RowPlace place{section, row};
    if (editing_ || !scrollIntoView(place) || cells_.at(place)->detailRect().isEmpty()) return false;
    tellDelegate(objc::selector<"tableView:accessoryButtonTappedForRowWithIndexPath:">(), place);
    return true;
}

bool TableView::canEdit(RowPlace place) {
    const auto source = dataSource();
    if (!source) return false;
    constexpr auto question = objc::Name{"tableView:canEditRowAtIndexPath:"};
    if (objc::respondsTo(source, objc::selector<question>()))
        return objc::send<question, bool>(source, object(), indexPath(place));
    return objc::respondsTo(source, objc::selector<"tableView:commitEditingStyle:forRowAtIndexPath:">());
}

bool TableView::revealDelete(long row, long section) {
    const RowPlace place{section, row};
    if (!scrollIntoView(place) || !canEdit(place)) return false;
    if (revealed_) hideDelete();
    revealedBySwipe_ = !editing_;
    if (revealedBySwipe_) tellDelegate(objc::selector<"tableView:willBeginEditingRowAtIndexPath:">(), place);
    // The delegate may have asked for a reload; the row must still be there.
    if (!scrollIntoView(place)) return false;
    revealed_ = place;
    constexpr long customType = 0;
    deleteButton_ = objc::Ref<Button>(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), customType)));
    std::string title = localized("Delete");
    constexpr auto question = objc::Name{"tableView:titleForDeleteConfirmationButtonForRowAtIndexPath:"};
    if (delegateAnswers(objc::selector<question>()))
        title = utf8(objc::send<question, objc::Object>(delegate(), object(), indexPath(place)));
    deleteButton_->setTitleForState(nsString(title), normalState);
    deleteButton_->setTitleColorForState(uiColor(Color::white()), normalState);
    deleteButton_->titleLabel()->setFontValue(graphics::Font::system(17));
    deleteButton_->setBackgroundColor(uiColor(palette::destructive));
    deleteButton_->addTargetActionForControlEvents(object(), objc::selector<"confirmDelete">(), touchUpInside);
    addSubview(deleteButton_);
    placeDeleteButton();
    cells_.at(place)->slideToRevealed(deleteWidth);
    return true;
}

void TableView::placeDeleteButton() {
    if (!revealed_ || !deleteButton_) return;
    const Rect rect = rectOf(*revealed_);
    deleteButton_->setFrame({{rect.right() - deleteWidth, rect.top()}, {deleteWidth, rect.height()}});
}

void TableView::hideDelete() {
    if (!revealed_) return;
    const RowPlace place = *revealed_;
    if (const auto found = cells_.find(place); found != cells_.end()) found->second->slideToRevealed(0);
    revealed_.reset();
    if (const auto button = std::exchange(deleteButton_, {})) button->removeFromSuperview();
    if (std::exchange(revealedBySwipe_, false))
        tellDelegate(objc::selector<"tableView:didEndEditingRowAtIndexPath:">(), place);
}

void TableView::confirmDelete() {
    if (!revealed_) return;
    const RowPlace place = *revealed_;
    const bool bySwipe = std::exchange(revealedBySwipe_, false);
    if (const auto found = cells_.find(place); found != cells_.end()) found->second->setRevealed(0);
    revealed_.reset();
    if (const auto button = std::exchange(deleteButton_, {})) button->removeFromSuperview();
    objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(dataSource(), object(), deleteStyle,
                                                                  indexPath(place));
    if (bySwipe) tellDelegate(objc::selector<"tableView:didEndEditingRowAtIndexPath:">(), place);
}

/// Any thread: the mode changes at once, the cells follow on the main thread.
void TableView::setEditingAnimated(bool editing, bool) {
    if (editing == editing_.exchange(editing)) return;
    onMainThread([kept = objc::Ref<TableView>(this)] { kept->followEditing(); });
}

void TableView::followEditing() {
    const bool editing = editing_;
    if (revealed_) hideDelete();
    for (auto& [place, cell] : cells_) {
        cell->setShowsMinus(editing && canEdit(place));
        cell->setEditing(editing);
    }
}

}  // namespace uikit

// UITableView: what it asks its data source, and where the rows stand.
#include "desktop/uikit/table_view.h"

#include <algorithm>
#include <cstdio>

#include "desktop/dispatch/clock.h"
#include "desktop/uikit/search_bar.h"

namespace uikit {
namespace {

constexpr double separatorInset = 15;
/// Seconds for which a list without rows counts as one that is being loaded.
constexpr double momentWithoutRows = 2;

}  // namespace

void TableView::define(objc::ClassDefinition<TableView>& definition) {
    definition.method<"initWithFrame:style:", &TableView::initWithFrameStyle>()
        .method<"style", &TableView::style>()
        .method<"dataSource", &TableView::dataSource>()
        .method<"setDataSource:", &TableView::setDataSource>()
        .method<"setDelegate:", &TableView::setDelegate>()
        .method<"reloadData", &TableView::reloadData>()
        .method<"reloadSections:withRowAnimation:", &TableView::reloadSections>()
        .method<"reloadRowsAtIndexPaths:withRowAnimation:", &TableView::reloadRows>()
        .method<"deleteRowsAtIndexPaths:withRowAnimation:", &TableView::deleteRows>()
        .method<"insertRowsAtIndexPaths:withRowAnimation:", &TableView::insertRows>()
        .method<"beginUpdates", &TableView::beginUpdates>()
        .method<"endUpdates", &TableView::endUpdates>()
        .method<"registerClass:forCellReuseIdentifier:", &TableView::registerClass>()
        .method<"registerClass:forHeaderFooterViewReuseIdentifier:", &TableView::registerHeaderFooterClass>()
        .method<"dequeueReusableHeaderFooterViewWithIdentifier:", &TableView::dequeueHeaderFooter>()
        .method<"dequeueReusableCellWithIdentifier:", &TableView::dequeueCell>()
        .method<"dequeueReusableCellWithIdentifier:forIndexPath:", &TableView::dequeueCellForPath>()
        .method<"cellForRowAtIndexPath:", &TableView::cellAtPath>()
        .method<"indexPathForCell:", &TableView::pathOfCell>()
        .method<"indexPathsForVisibleRows", &TableView::pathsOfVisibleRows>()
        .method<"numberOfSections", &TableView::numberOfSections>()
        .method<"numberOfRowsInSection:", &TableView::numberOfRowsInSection>()
        .method<"rectForRowAtIndexPath:", &TableView::rectForRow>()
        .method<"tableHeaderView", &TableView::tableHeaderView>()
        .method<"setTableHeaderView:", &TableView::setTableHeaderView>()
        .method<"tableFooterView", &TableView::tableFooterView>()
        .method<"setTableFooterView:", &TableView::setTableFooterView>()
        .method<"rowHeight", &TableView::rowHeight>()
        .method<"setRowHeight:", &TableView::setRowHeight>()
        .method<"isEditing", &TableView::isEditing>()
        .method<"setEditing:", &TableView::setEditing>()
        .method<"setEditing:animated:", &TableView::setEditingAnimated>()
        .method<"allowsSelectionDuringEditing", &TableView::allowsSelectionDuringEditing>()
        .method<"setAllowsSelectionDuringEditing:", &TableView::setAllowsSelectionDuringEditing>()
        .method<"indexPathForSelectedRow", &TableView::pathOfSelectedRow>()
        .method<"deselectRowAtIndexPath:animated:", &TableView::deselectRow>()
        .method<"scrollToRowAtIndexPath:atScrollPosition:animated:", &TableView::scrollToRow>()
        .method<"confirmDelete", &TableView::confirmDelete>();
}

objc::Object TableView::initWithFrame(Rect frame) {
    const auto made = ScrollView::initWithFrame(frame);
    setBackgroundColor(uiColor(style_ == grouped ? palette::groupedBackground : Color::white()));
    return made;
}

objc::Object TableView::initWithFrameStyle(Rect frame, long style) {
    style_ = style;
    return objc::send<"initWithFrame:", objc::Object>(object(), frame);
}

void TableView::setDataSource(objc::Object source) {
    dataSource_ = source;
    reloadData();
}

void TableView::setDelegate(objc::Object delegate) {
    ScrollView::setDelegate(delegate);
    reloadData();
}

void TableView::setRowHeight(double height) {
    rowHeight_ = height;
    reloadData();
}

bool TableView::delegateAnswers(SEL message) const {
    const auto receiver = delegate();
    return receiver && objc::respondsTo(receiver, message);
}

void TableView::reloadData() {
    needsReload_ = true;
    setNeedsLayout();
    setNeedsDisplay();
}

void TableView::reloadSections(objc::Object, long) { reloadData(); }
void TableView::reloadRows(objc::Object, long) { reloadData(); }
void TableView::deleteRows(objc::Object, long) { reloadData(); }
void TableView::insertRows(objc::Object, long) { reloadData(); }

void TableView::endUpdates() {
    if (updates_ > 0 && --updates_ == 0) reloadData();
}

TableView::Section TableView::makeSection(long index, double top) {
    const long rows = objc::send<"tableView:numberOfRowsInSection:", long>(dataSource(), object(), index);
    std::vector<double> heights(static_cast<std::size_t>(std::max(rows, 0L)), rowHeight_);
    if (const auto receiver = delegate();
        receiver && objc::respondsTo(receiver, objc::selector<"tableView:heightForRowAtIndexPath:">()))
        for (std::size_t row = 0; row < heights.size(); ++row)
            heights[row] = objc::send<"tableView:heightForRowAtIndexPath:", double>(
                receiver, object(), indexPath({index, static_cast<long>(row)}));
    std::string header = ask(objc::selector<"tableView:titleForHeaderInSection:">(), index);
    std::string footer = ask(objc::selector<"tableView:titleForFooterInSection:">(), index);
    const double headerHeight = heightOf(headerBand(), index, header);
    const double footerHeight = heightOf(footerBand(), index, footer);
    return {
        SectionLayout(top, headerHeight, heights, footerHeight), std::move(header), std::move(footer), {}, {}, false};
}

void TableView::dropCells() {
    for (auto& [place, cell] : std::exchange(cells_, {})) recycle(cell);
}

void TableView::reloadIfNeeded() {
    // What is there already stays until all updates are told.
    if (!needsReload_ || (updates_ > 0 && !sections_.empty())) return;
    needsReload_ = false;
    dropCells();
    hideDelete();
    selected_.reset();
    dropBands();
    sections_.clear();
    double top = header_ ? header_->frame().size.height : 0;
    if (const auto source = dataSource()) {
        long count = 1;
        if (objc::respondsTo(source, objc::selector<"numberOfSectionsInTableView:">()))
            count = objc::send<"numberOfSectionsInTableView:", long>(source, object());
        for (long i = 0; i < count; ++i) {
            sections_.push_back(makeSection(i, top));
            top = sections_.back().layout.bottom();
        }
    }
    if (footer_) {
        footer_->setFrame({{0, top}, footer_->frame().size});
        top += footer_->frame().size.height;
    }
    setContentSize({bounds().size.width, top});
    keepInView();
}

/// A list that became shorter comes back into view, and one that is empty for a moment, between two loads, stands where
/// it stood once its rows are back. What the finger holds is left to the finger, and a place that was set since is
/// kept.
void TableView::keepInView() {
    if (isDragging() || isDecelerating()) return lost_.reset();
    const double greatest = greatestOffset();
    const double stands = contentOffset().y;
    const bool isEmpty = std::all_of(sections_.begin(), sections_.end(),
                                     [](const Section& each) { return each.layout.rowCount() == 0; });
    const double now = dispatch::Clock::now();
    if (isEmpty && stands > greatest) lost_ = {stands, greatest, now};
    if (stands > greatest) setContentOffset({0, greatest});
    if (isEmpty) return;
    const auto lost = std::exchange(lost_, std::nullopt);
    if (lost && stands == lost->left && now - lost->since <= momentWithoutRows)
        setContentOffset({0, std::min(lost->stood, greatest)});
}

double TableView::greatestOffset() const {
    const double filled = ScrollView::greatestOffset();
    const bool hasSearch = header_ && objc::peerIf<SearchBar>(header_->object());
    return hasSearch ? std::max(filled, leastOffset() + header_->frame().size.height) : filled;
}

long TableView::numberOfSections() {
    reloadIfNeeded();
    return static_cast<long>(sections_.size());
}

long TableView::numberOfRowsInSection(long section) {
    reloadIfNeeded();
    if (section < 0 || section >= static_cast<long>(sections_.size())) return 0;
    return sections_[static_cast<std::size_t>(section)].layout.rowCount();
}

void TableView::setTableHeaderView(View* view) {
    if (header_ && header_.get() != view) header_->removeFromSuperview();
    header_ = objc::Ref<View>(view);
    if (view) {
        view->setFrame({{0, 0}, {bounds().size.width, view->frame().size.height}});
        addSubview(view);
    }
    reloadData();
}

void TableView::setTableFooterView(View* view) {
    if (footer_ && footer_.get() != view) footer_->removeFromSuperview();
    footer_ = objc::Ref<View>(view);
    if (view) addSubview(view);
    reloadData();
}

void TableView::layoutSubviews() {
    reloadIfNeeded();
    if (header_) header_->setFrame({{0, 0}, {bounds().size.width, header_->frame().size.height}});
    layOutRows();
    layOutBands();
    placeDeleteButton();
    // What a search found lies over the rows and the bands, those included that came just now.
    if (auto* found = coveringTable()) bringSubviewToFront(found);
}

TableView* TableView::coveringTable() const {
    for (const auto& view : subviews())
        if (auto* table = objc::peerIf<TableView>(view->object()); table && !table->isHidden()) return table;
    return nullptr;
}

void TableView::layOutRows() {
    const Rect window = bounds();
    std::map<RowPlace, objc::Ref<TableViewCell>> gone;
    for (auto& [place, cell] : cells_)
        if (!rectOf(place).intersects(window)) gone.emplace(place, cell);
    for (auto& [place, cell] : gone) {
        cells_.erase(place);
        recycle(cell);
    }
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        const long first = sections_[i].layout.firstRowBelow(window.top());
        const long end = std::min(sections_[i].layout.firstRowFrom(window.bottom()), sections_[i].layout.rowCount());
        for (long row = first; row < end; ++row) {
            showRow({static_cast<long>(i), row});
            // Making a cell may ask for a reload: the rows as they stood are over then.
            if (needsReload_) return;
        }
    }
}

void TableView::showRow(RowPlace place) {
    auto found = cells_.find(place);
    if (found == cells_.end()) {
        auto* cell =
            objc::send<"tableView:cellForRowAtIndexPath:", TableViewCell*>(dataSource(), object(), indexPath(place));
        if (!cell) {
            std::fprintf(stderr, "UITableView: the data source gave no cell for row %ld of section %ld\n", place.row,
                         place.section);
            return;
        }
        cell->setFrame(rectOf(place));
        cell->setShowsMinus(editing_ && canEdit(place));
        cell->setEditing(editing_);
        if (selected_ == place) cell->setHighlightedAnimated(true, false);
        if (delegateAnswers(objc::selector<"tableView:willDisplayCell:forRowAtIndexPath:">()))
            objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(delegate(), object(), cell->object(),
                                                                       indexPath(place));
        insertSubviewAtIndex(cell, 0);
        found = cells_.emplace(place, objc::Ref<TableViewCell>(cell)).first;
    }
    found->second->setFrame(rectOf(place));
}

void TableView::recycle(TableViewCell* cell) {
    const objc::Ref<TableViewCell> kept(cell);
    cell->removeFromSuperview();
    const std::string identifier = utf8(cell->reuseIdentifier());
    if (!identifier.empty()) reusable_[identifier].push_back(kept);
}

Rect TableView::rectOf(RowPlace place) {
    const SectionLayout& layout = sections_[static_cast<std::size_t>(place.section)].layout;
    if (place.row >= layout.rowCount()) return {};
    return {{0, layout.rowTop(place.row)}, {bounds().size.width, layout.rowHeight(place.row)}};
}

void TableView::draw(graphics::Canvas& canvas) {
    // The pull below the last row shows the table's own ground; nothing else is drawn behind the rows.
    canvas.fill(bounds(), colorOf(backgroundColor()));
}

void TableView::drawAbove(graphics::Canvas& canvas) {
    if (coveringTable()) return;
    for (const auto& [place, cell] : cells_) {
        // The last row of a group has the group's edge below it.
        if (style_ == grouped && place.row + 1 == sections_[static_cast<std::size_t>(place.section)].layout.rowCount())
            continue;
        const double y = cell->frame().bottom() - canvas.pixel();
        const auto& header = sections_[static_cast<std::size_t>(place.section)].header;
        if (header && y < header->frame().bottom()) continue;
        canvas.horizontalHairline(separatorInset, bounds().size.width, y, palette::separator);
    }
    if (style_ == grouped) drawGroupEdges(canvas);
    ScrollView::drawAbove(canvas);
}

}  // namespace uikit

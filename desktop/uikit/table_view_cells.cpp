// UITableView: cells and their reuse, index paths.
#include <stdexcept>

#include "desktop/uikit/table_view.h"

namespace uikit {
namespace {

long rowOfPath(objc::Object path) { return placeOf(path).row; }
long sectionOfPath(objc::Object path) { return placeOf(path).section; }
objc::Object pathForRow(Class, long row, long section) { return indexPath({section, row}); }

}  // namespace

void addIndexPathMethods() {
    Class cls = objc::classNamed<"NSIndexPath">();
    objc::addMethod<"row", &rowOfPath>(cls);
    objc::addMethod<"section", &sectionOfPath>(cls);
    objc::addMethod<"indexPathForRow:inSection:", &pathForRow>(object_getClass(objc::raw(cls)));
}

objc::Object indexPath(RowPlace place) {
    const unsigned long indexes[] = {static_cast<unsigned long>(place.section), static_cast<unsigned long>(place.row)};
    constexpr unsigned long length = 2;
    return objc::sendClass<"NSIndexPath", "indexPathWithIndexes:length:", objc::Object>(
        static_cast<const unsigned long*>(indexes), length);
}

RowPlace placeOf(objc::Object path) {
    if (!path) return {};
    return {objc::send<"indexAtPosition:", long>(path, 0UL), objc::send<"indexAtPosition:", long>(path, 1UL)};
}

void TableView::registerClass(Class cellClass, objc::Object identifier) { cellClasses_[utf8(identifier)] = cellClass; }

objc::Object TableView::dequeueCell(objc::Object identifier) {
    const std::string name = utf8(identifier);
    auto& pool = reusable_[name];
    if (!pool.empty()) {
        const objc::Ref<TableViewCell> cell = pool.back();
        pool.pop_back();
        objc::send<"prepareForReuse">(cell->object());
        return objc::autorelease(objc::Strong<>(cell->object()));
    }
    const auto known = cellClasses_.find(name);
    if (known == cellClasses_.end()) return {};
    return objc::autorelease(objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(
        known->second, static_cast<long>(TableViewCell::plain), identifier));
}

objc::Object TableView::dequeueCellForPath(objc::Object identifier, objc::Object) {
    const auto cell = dequeueCell(identifier);
    if (!cell) throw std::logic_error("UITableView: no class is registered for the cells named " + utf8(identifier));
    return cell;
}

objc::Object TableView::cellAtPath(objc::Object path) {
    const auto found = cells_.find(placeOf(path));
    return found == cells_.end() ? objc::Object{} : found->second->object();
}

objc::Object TableView::pathOfCell(TableViewCell* cell) {
    for (const auto& [place, each] : cells_)
        if (each.get() == cell) return indexPath(place);
    return {};
}

objc::Object TableView::pathsOfVisibleRows() {
    const auto paths = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    for (const auto& row : visibleRows()) objc::send<"addObject:">(paths, indexPath({row.section, row.row}));
    return paths;
}

std::vector<TableView::VisibleRow> TableView::visibleRows() {
    layoutIfNeeded();
    std::vector<VisibleRow> rows;
    for (const auto& [place, cell] : cells_)
        if (cell->frame().intersects(bounds())) rows.push_back({place.row, place.section, cell.get()});
    return rows;
}

Rect TableView::rectForRow(objc::Object path) {
    const RowPlace place = placeOf(path);
    return place.row < numberOfRowsInSection(place.section) ? rectOf(place) : Rect{};
}

std::string TableView::titleForHeader(long section) {
    return section < numberOfSections() ? sections_[static_cast<std::size_t>(section)].headerTitle : std::string();
}

std::string TableView::titleForFooter(long section) {
    return section < numberOfSections() ? sections_[static_cast<std::size_t>(section)].footerTitle : std::string();
}

}  // namespace uikit

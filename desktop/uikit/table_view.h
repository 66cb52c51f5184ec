// UITableView: rows that a data source gives, of which only the visible ones exist.
#pragma once

#include <atomic>
#include <map>
#include <optional>

#include "desktop/uikit/button.h"
#include "desktop/uikit/scroll_view.h"
#include "desktop/uikit/table_layout.h"
#include "desktop/uikit/table_view_cell.h"

namespace uikit {

/// UITableViewHeaderFooterView: a band with a text.
class TableHeaderFooterView : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UITableViewHeaderFooterView"};
    static void define(objc::ClassDefinition<TableHeaderFooterView>& definition);

    static constexpr double usualHeight = 26;

    objc::Object initWithFrame(Rect frame) override;
    objc::Object initWithReuseIdentifier(objc::Object identifier);
    objc::Object reuseIdentifier() const { return identifier_; }
    virtual void prepareForReuse() {}
    Label* textLabel() const { return label_; }
    void layoutSubviews() override;

    /// The look in a grouped table: no ground, the text next to its group.
    enum class Side { Header, Footer };
    void setGrouped(Side side);

  private:
    objc::Strong<> identifier_;
    objc::Ref<Label> label_;
    bool grouped_ = false;
};

struct RowPlace {
    long section = 0;
    long row = 0;
    friend auto operator<=>(const RowPlace&, const RowPlace&) = default;
};

class TableView : public ScrollView {
  public:
    using Super = ScrollView;
    static constexpr objc::Name className{"UITableView"};
    static void define(objc::ClassDefinition<TableView>& definition);

    // Messages of the same names. Delegate and data source are not retained. Heights are asked for every row at each
    // reload where the delegate answers `tableView:heightForRowAtIndexPath:`; cells for visible rows only. A tap
    // selects the row that `tableView:willSelectRowAtIndexPath:` answers, none for nil; the tapped one where the
    // delegate does not answer it.
    objc::Object initWithFrame(Rect frame) override;
    enum Style : long { plain = 0, grouped = 1 };
    objc::Object initWithFrameStyle(Rect frame, long style);
    long style() const { return style_; }
    objc::Strong<> dataSource() const { return dataSource_.load(); }
    void setDataSource(objc::Object source);
    void setDelegate(objc::Object delegate) override;
    void reloadData();
    void reloadSections(objc::Object sections, long animation);
    void reloadRows(objc::Object paths, long animation);
    void deleteRows(objc::Object paths, long animation);
    void insertRows(objc::Object paths, long animation);
    /// Between these the rows stay as they are; they may be nested, and the outermost end shows what has changed.
    void beginUpdates() { ++updates_; }
    void endUpdates();
    void registerClass(Class cellClass, objc::Object identifier);
    void registerHeaderFooterClass(Class viewClass, objc::Object identifier);
    objc::Object dequeueCell(objc::Object identifier);
    /// nil where no class is registered for it and none came out of use.
    objc::Object dequeueHeaderFooter(objc::Object identifier);
    objc::Object dequeueCellForPath(objc::Object identifier, objc::Object path);
    objc::Object cellAtPath(objc::Object path);
    objc::Object pathOfCell(TableViewCell* cell);
    objc::Object pathsOfVisibleRows();
    long numberOfSections();
    long numberOfRowsInSection(long section);
    Rect rectForRow(objc::Object path);
    View* tableHeaderView() const { return header_; }
    void setTableHeaderView(View* view);
    View* tableFooterView() const { return footer_; }
    void setTableFooterView(View* view);
    double rowHeight() const { return rowHeight_; }
    void setRowHeight(double height);
    bool isEditing() const { return editing_; }  ///< Any thread.
    void setEditing(bool editing) { setEditingAnimated(editing, false); }
    void setEditingAnimated(bool editing, bool animated);
    /// Whether a tap selects a row while the table is edited; not unless it is set.
    bool allowsSelectionDuringEditing() const { return selectsWhileEditing_; }
    void setAllowsSelectionDuringEditing(bool allows) { selectsWhileEditing_ = allows; }
    objc::Object pathOfSelectedRow() const;
    void deselectRow(objc::Object path, bool animated);
    /// UITableViewScrollPosition; none moves as little as shows the whole row.
    enum ScrollPosition : long { scrollNone = 0, scrollTop = 1, scrollMiddle = 2, scrollBottom = 3 };
    /// No such row: nothing.
    void scrollToRow(objc::Object path, long position, bool animated);

    /// A search bar above the rows can be scrolled out of sight, however few they are.
    double greatestOffset() const override;
    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    void drawAbove(graphics::Canvas& canvas) override;
    bool touch(const Touch& touch) override;

    // For scripts and `show`.
    struct VisibleRow {
        long row = 0;
        long section = 0;
        TableViewCell* cell = nullptr;
    };
    /// The rows on the screen, top down, after laying out.
    std::vector<VisibleRow> visibleRows();
    /// The texts at head and foot of a section; empty for none.
    std::string titleForHeader(long section);
    std::string titleForFooter(long section);
    /// As a tap does; a row out of sight is scrolled into view first. False where there is nothing to tap.
    bool tapRow(long row, long section);
    bool tapAccessory(long row, long section);
    /// The swipe that shows the delete button, taking it back, and a tap on the button.
    bool revealDelete(long row, long section);
    void hideDelete();
    void confirmDelete();

  private:
    struct Section {
        SectionLayout layout;
        std::string headerTitle;
        std::string footerTitle;
        objc::Ref<View> header;
        objc::Ref<View> footer;
        bool hasBands = false;
    };
    /// Where the list stood when a reload found it empty, and where that left it.
    struct LostPlace {
        double stood;
        double left;
        double since;  // by dispatch::Clock
    };
    void reloadIfNeeded();
    void keepInView();
    Section makeSection(long index, double top);
    /// What is asked for a header or a footer, and how high it is when nobody says.
    struct Band {
        SEL height;
        SEL view;
        TableHeaderFooterView::Side side;
        double titled;
        double untitled;
    };
    Band headerBand() const;
    Band footerBand() const;
    objc::Ref<View> makeBand(const Band& band, long section, const std::string& title);
    void dropBands();
    void drawGroupEdges(graphics::Canvas& canvas);
    std::string ask(SEL title, long section);
    double heightOf(const Band& band, long section, const std::string& title);
    void layOutBands();
    void layOutRows();
    void showRow(RowPlace place);
    void recycle(TableViewCell* cell);
    void dropCells();
    std::optional<RowPlace> placeAt(Point point);
    Rect rectOf(RowPlace place);
    double offsetFor(const Rect& row, long position) const;
    bool scrollIntoView(RowPlace place);
    bool canEdit(RowPlace place);
    bool canSelect() const { return !editing_ || selectsWhileEditing_; }
    void placeDeleteButton();
    void press(const Touch& touch);
    void unpress();
    void release(const Touch& touch);
    /// The row that the delegate lets a tap select, one at a time; none where it answers nil.
    std::optional<RowPlace> placeToSelect(RowPlace tapped);
    void select(RowPlace tapped);
    void tellDelegate(SEL message, RowPlace place);
    void followEditing();
    bool delegateAnswers(SEL message) const;
    /// The table that lies over this one's rows; null for none.
    TableView* coveringTable() const;

    weak::Object dataSource_;
    long style_ = plain;
    double rowHeight_ = 44;
    bool needsReload_ = true;
    std::atomic<bool> editing_{false};
    bool selectsWhileEditing_ = false;
    int updates_ = 0;
    std::vector<Section> sections_;
    std::optional<LostPlace> lost_;
    std::map<RowPlace, objc::Ref<TableViewCell>> cells_;
    std::map<std::string, std::vector<objc::Ref<TableViewCell>>> reusable_;
    std::map<std::string, Class> cellClasses_;
    std::map<std::string, std::vector<objc::Ref<View>>> reusableBands_;
    std::map<std::string, Class> bandClasses_;
    objc::Ref<View> header_;
    objc::Ref<View> footer_;
    std::optional<RowPlace> pressed_;
    std::optional<RowPlace> selected_;
    std::optional<RowPlace> revealed_;
    bool revealedBySwipe_ = false;
    Touch pressBegan_;
    objc::Ref<Button> deleteButton_;
};

/// Adds `row`, `section` and `indexPathForRow:inSection:` to NSIndexPath. Once, at load.
void addIndexPathMethods();
objc::Object indexPath(RowPlace place);
RowPlace placeOf(objc::Object path);

}  // namespace uikit

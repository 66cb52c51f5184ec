// Cells that serve one row after another, and tables that are loaded again while they move.
#include <algorithm>
#include <iterator>
#include <set>

#include "desktop/uikit/table_view.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

/// A cell that counts how often it is made ready for another row.
class CountingCell : public TableViewCell {
  public:
    using Super = TableViewCell;
    static constexpr objc::Name className{"TestCountingCell"};
    static void define(objc::ClassDefinition<CountingCell>&) {}
    CountingCell() { ++made; }

    void prepareForReuse() override {
        TableViewCell::prepareForReuse();
        ++reused;
    }

    static inline int made = 0;
    static inline int reused = 0;
};

/// Rows of 40 points, whose identifier is that of their row's parity.
class ParitySource : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestParitySource"};
    static void define(objc::ClassDefinition<ParitySource>& definition) {
        definition.method<"tableView:numberOfRowsInSection:", &ParitySource::rowCount>()
            .method<"tableView:cellForRowAtIndexPath:", &ParitySource::cell>()
            .method<"tableView:canEditRowAtIndexPath:", &ParitySource::canEdit>()
            .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &ParitySource::commit>();
    }
    long rowCount(objc::Object, long) { return rows; }
    objc::Object cell(TableView* table, objc::Object path) {
        const bool odd = placeOf(path).row % 2 != 0;
        const auto cell = table->dequeueCellForPath(nsString(odd ? "odd" : "even"), path);
        (odd ? oddCells : evenCells).insert(cell.self);
        return cell;
    }
    bool canEdit(objc::Object, objc::Object) { return true; }
    void commit(objc::Object, long, objc::Object) {}
    objc::Object object() const { return objc::Object{self}; }

    long rows = 1000;
    std::set<id> oddCells;
    std::set<id> evenCells;
};

class TableReuseTest : public ToolkitTest {
  protected:
    TableReuseTest() {
        objc::registerClasses<CountingCell, ParitySource>();
        CountingCell::made = CountingCell::reused = 0;
        source_ = objc::Ref<ParitySource>::make();
        table_ = add<TableView>({{0, 0}, {320, 400}});
        for (const char* name : {"odd", "even"}) table_->registerClass(objc::classOf<CountingCell>(), nsString(name));
        table_->setRowHeight(40);
        table_->setDataSource(source_->object());
        table_->setDelegate(source_->object());
        window().layoutIfNeeded();
    }
    void reload(long rows) {
        source_->rows = rows;
        table_->reloadData();
        window().layoutIfNeeded();
    }
    void scrollTo(double y) {
        table_->setContentOffset({0, y});
        window().layoutIfNeeded();
    }
    void dragBy(double points, double rest) {
        touch(TouchPhase::Began, {100, 300});
        for (int step = 1; step <= 4; ++step) {
            advance(0.02);
            touch(TouchPhase::Moved, {100, 300 - points * step / 4});
        }
        advance(rest);
    }
    void settle() {
        for (int frame = 0; frame < 1200 && table_->isDecelerating(); ++frame) {
            advance(1.0 / 60);
            window().layoutIfNeeded();
        }
    }
    TableViewCell* cellAt(long row) { return objc::peerOf<TableViewCell>(table_->cellAtPath(indexPath({0, row}))); }
    std::uint32_t groundOf(long row) {
        window().layoutIfNeeded();
        graphics::Image image({320, 568}, 1);
        {
            graphics::Canvas canvas(image);
            window().renderScreen(canvas);
        }
        const Point point = cellAt(row)->pointToWindow({100, 20});
        return image.pixel(static_cast<int>(point.x), static_cast<int>(point.y));
    }
    double offset() const { return table_->contentOffset().y; }

    static constexpr std::uint32_t white = 0xFFFFFFFF;
    objc::Ref<ParitySource> source_;
    objc::Ref<TableView> table_;
};

TEST_F(TableReuseTest, aCellIsMadeReadyOnceForEachRowAfterItsFirst) {
    EXPECT_EQ(CountingCell::made, 10);
    EXPECT_EQ(CountingCell::reused, 0);
    scrollTo(4000);
    EXPECT_EQ(CountingCell::made, 10);
    EXPECT_EQ(CountingCell::reused, 10);
}

TEST_F(TableReuseTest, cellsOfOneIdentifierNeverServeTheOther) {
    for (double y = 0; y < 8000; y += 120) scrollTo(y);
    std::vector<id> both;
    std::set_intersection(source_->oddCells.begin(), source_->oddCells.end(), source_->evenCells.begin(),
                          source_->evenCells.end(), std::back_inserter(both));
    EXPECT_TRUE(both.empty());
    EXPECT_LE(source_->oddCells.size() + source_->evenCells.size(), 12u);
}

TEST_F(TableReuseTest, reloadsMakeNoMoreCellsThanTheScreenHolds) {
    for (int time = 0; time < 50; ++time) reload(1000 - time);
    EXPECT_EQ(CountingCell::made, 10);
    EXPECT_EQ(table_->visibleRows().size(), 10u);
}

TEST_F(TableReuseTest, aRowThatWasGreyFadesForNobodyElse) {
    table_->tapRow(2, 0);
    EXPECT_NE(groundOf(2), white);
    table_->deselectRow(indexPath({0, 2}), true);
    advance(0.1);
    EXPECT_NE(groundOf(2), white);
    reload(1000);
    advance(0.1);
    for (long row = 0; row < 10; ++row) EXPECT_EQ(groundOf(row), white) << row;
}

TEST_F(TableReuseTest, aRowThatWasSlidAsideSlidesForNobodyElse) {
    EXPECT_TRUE(table_->revealDelete(2, 0));
    advance(0.1);
    EXPECT_GT(cellAt(2)->revealed(), 0);
    reload(1000);
    advance(0.05);
    for (long row = 0; row < 10; ++row) EXPECT_EQ(cellAt(row)->revealed(), 0) << row;
}

TEST_F(TableReuseTest, aRowThatIsTakenBackOnItsWayComesBackFromThere) {
    table_->revealDelete(2, 0);
    advance(0.05);
    const double shown = cellAt(2)->revealed();
    EXPECT_GT(shown, 0);
    EXPECT_LT(shown, 82);
    table_->hideDelete();
    EXPECT_EQ(cellAt(2)->revealed(), shown);
    advance(0.05);
    EXPECT_LT(cellAt(2)->revealed(), shown);
    advance(1);
    EXPECT_EQ(cellAt(2)->revealed(), 0);
}

TEST_F(TableReuseTest, theSelectedRowIsStillGreyWhenItComesBackIntoView) {
    table_->tapRow(2, 0);
    scrollTo(4000);
    for (const auto& row : table_->visibleRows()) EXPECT_FALSE(row.cell->isHighlighted()) << row.row;
    scrollTo(0);
    EXPECT_TRUE(cellAt(2)->isHighlighted());
}

TEST_F(TableReuseTest, aReloadUnderTheFingerLeavesTheRowsWithTheFinger) {
    scrollTo(4000);
    dragBy(100, 0.5);
    EXPECT_EQ(offset(), 4100);
    reload(50);
    EXPECT_EQ(offset(), 4100) << "the finger still holds them";
    touch(TouchPhase::Ended, {100, 200});
    settle();
    EXPECT_EQ(offset(), 1600);
    EXPECT_EQ(table_->visibleRows().size(), 10u);
}

TEST_F(TableReuseTest, aReloadWithMoreRowsDoesNotStopAMovingList) {
    dragBy(100, 0);
    touch(TouchPhase::Ended, {100, 200});
    EXPECT_TRUE(table_->isDecelerating());
    const double before = offset();
    reload(2000);
    EXPECT_TRUE(table_->isDecelerating());
    EXPECT_EQ(offset(), before);
    settle();
    EXPECT_GT(offset(), before);
}

TEST_F(TableReuseTest, aMovingListThatBecameShorterComesToRestAtItsEnd) {
    scrollTo(4000);
    dragBy(100, 0);
    touch(TouchPhase::Ended, {100, 200});
    reload(50);
    settle();
    EXPECT_FALSE(table_->isDecelerating());
    EXPECT_EQ(offset(), 1600);
}

TEST_F(TableReuseTest, aScrollToARowThatHasGoneEndsAtTheLastOne) {
    table_->scrollToRow(indexPath({0, 900}), TableView::scrollTop, true);
    advance(0.05);
    EXPECT_LT(offset(), 1600);
    reload(50);
    advance(1);
    EXPECT_EQ(offset(), 1600);
}

}  // namespace
}  // namespace uikit::test

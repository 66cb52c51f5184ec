// The rows that a table shows, against a plain walk over all rows: heights, headers, offsets, reloads.
#include <rapidcheck.h>

#include <algorithm>

#include "desktop/uikit/table_view.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

struct SectionPlan {
    std::vector<int> heights;
    int header = 0;
    int footer = 0;
};

/// A data source of planned heights, which writes down the rows that it was asked for.
class PlannedSource : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestPlannedSource"};
    static void define(objc::ClassDefinition<PlannedSource>& definition) {
        definition.method<"numberOfSectionsInTableView:", &PlannedSource::sectionCount>()
            .method<"tableView:numberOfRowsInSection:", &PlannedSource::rowCount>()
            .method<"tableView:heightForRowAtIndexPath:", &PlannedSource::rowHeight>()
            .method<"tableView:heightForHeaderInSection:", &PlannedSource::headerHeight>()
            .method<"tableView:heightForFooterInSection:", &PlannedSource::footerHeight>()
            .method<"tableView:cellForRowAtIndexPath:", &PlannedSource::cell>();
    }
    long sectionCount(objc::Object) { return static_cast<long>(plan.size()); }
    long rowCount(objc::Object, long section) { return static_cast<long>(at(section).heights.size()); }
    double rowHeight(objc::Object, objc::Object path) {
        const RowPlace place = placeOf(path);
        return at(place.section).heights[static_cast<std::size_t>(place.row)];
    }
    double headerHeight(objc::Object, long section) { return at(section).header; }
    double footerHeight(objc::Object, long section) { return at(section).footer; }
    objc::Object cell(TableView* table, objc::Object path) {
        asked.push_back(placeOf(path));
        const auto kept = table->dequeueCell(nsString("row"));
        if (kept) return kept;
        ++made;
        return objc::autorelease(objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(
            objc::classOf<TableViewCell>(), 0L, nsString("row")));
    }
    const SectionPlan& at(long section) const { return plan[static_cast<std::size_t>(section)]; }
    objc::Object object() const { return objc::Object{self}; }

    std::vector<SectionPlan> plan;
    std::vector<RowPlace> asked;
    int made = 0;
};

class TableLayoutTest : public ToolkitTest {
  protected:
    TableLayoutTest() {
        objc::registerClasses<PlannedSource>();
        source_ = objc::Ref<PlannedSource>::make();
        table_ = add<TableView>({{0, 0}, {320, 400}});
        table_->setDataSource(source_->object());
        table_->setDelegate(source_->object());
    }
    void show(std::vector<SectionPlan> plan) {
        source_->plan = std::move(plan);
        table_->reloadData();
        table_->layoutIfNeeded();
    }
    static std::vector<SectionPlan> rows(std::size_t count) { return {{std::vector<int>(count, 40), 0, 0}}; }
    std::vector<RowPlace> visible() {
        std::vector<RowPlace> places;
        for (const auto& row : table_->visibleRows()) places.push_back({row.section, row.row});
        return places;
    }
    std::vector<RowPlace> walked(double offset) const {
        std::vector<RowPlace> places;
        double y = 0;
        for (std::size_t section = 0; section < source_->plan.size(); ++section) {
            const SectionPlan& plan = source_->plan[section];
            y += plan.header;
            for (std::size_t row = 0; row < plan.heights.size(); ++row) {
                const double bottom = y + plan.heights[row];
                if (bottom > offset && y < offset + 400)
                    places.push_back({static_cast<long>(section), static_cast<long>(row)});
                y = bottom;
            }
            y += plan.footer;
        }
        return places;
    }

    objc::Ref<PlannedSource> source_;
    objc::Ref<TableView> table_;
};

rc::Gen<std::vector<SectionPlan>> anyPlan() {
    const auto section = rc::gen::build<SectionPlan>(
        rc::gen::set(&SectionPlan::heights, rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 120))),
        rc::gen::set(&SectionPlan::header, rc::gen::inRange(0, 60)),
        rc::gen::set(&SectionPlan::footer, rc::gen::inRange(0, 60)));
    return rc::gen::container<std::vector<SectionPlan>>(section);
}

TEST_F(TableLayoutTest, theVisibleRowsAreThoseOfAPlainWalkOverAllRows) {
    const bool held = rc::check("visible rows after reloads and scrolling", [this] {
        const objc::AutoreleasePool pool;
        for (int reload = 0; reload < 2; ++reload) {
            show(*anyPlan());
            const int top = *rc::gen::inRange(0, 100);
            const int bottom = *rc::gen::inRange(0, 100);
            table_->setContentInset({static_cast<double>(top), 0, static_cast<double>(bottom), 0});
            const auto greatest = static_cast<int>(table_->greatestOffset());
            for (int step = 0; step < 3; ++step) {
                const double offset = *rc::gen::inRange(-top, greatest + 1);
                table_->setContentOffset({0, offset});
                RC_ASSERT(visible() == walked(offset));
            }
        }
    });
    EXPECT_TRUE(held);
}

TEST_F(TableLayoutTest, onlyVisibleRowsAreAskedFor) {
    show({{std::vector<int>(100000, 40), 0, 0}});
    EXPECT_EQ(source_->asked.size(), 10u);
    EXPECT_EQ(source_->asked.back(), (RowPlace{0, 9}));
}

TEST_F(TableLayoutTest, rowsThatLeaveServeThoseThatCome) {
    show({{std::vector<int>(1000, 40), 0, 0}});
    for (int offset = 0; offset < 20000; offset += 200) {
        table_->setContentOffset({0, static_cast<double>(offset)});
        table_->layoutIfNeeded();
    }
    EXPECT_LE(source_->made, 11);
}

TEST_F(TableLayoutTest, aListThatBecomesShorterComesBackIntoView) {
    show({{std::vector<int>(100, 40), 0, 0}});
    table_->setContentOffset({0, 3600});
    show({{std::vector<int>(15, 40), 0, 0}});
    EXPECT_EQ(table_->contentOffset().y, 200);
    EXPECT_EQ(visible().size(), 10u);
}

TEST_F(TableLayoutTest, aListThatIsEmptyForAMomentStandsWhereItStood) {
    show(rows(100));
    table_->setContentOffset({0, 3000});
    show({{{}, 0, 0}});
    EXPECT_EQ(table_->contentOffset().y, 0);
    show({{{}, 0, 0}});
    advance(1);
    show(rows(99));
    EXPECT_EQ(table_->contentOffset().y, 3000);
}

TEST_F(TableLayoutTest, aListThatComesBackShorterStandsAtItsEnd) {
    show(rows(100));
    table_->setContentOffset({0, 3000});
    show({});
    show(rows(51));
    EXPECT_EQ(table_->contentOffset().y, 1640);
    show(rows(100));
    EXPECT_EQ(table_->contentOffset().y, 1640) << "once only";
}

TEST_F(TableLayoutTest, aListThatWasEmptyForLongerBeginsAtItsTop) {
    show(rows(100));
    table_->setContentOffset({0, 3000});
    show({});
    advance(3);
    show(rows(100));
    EXPECT_EQ(table_->contentOffset().y, 0);
}

TEST_F(TableLayoutTest, aPlaceThatIsSetWhileTheListIsEmptyIsKept) {
    show(rows(100));
    table_->setContentOffset({0, 3000});
    show({});
    table_->setContentOffset({0, 44});
    show(rows(100));
    EXPECT_EQ(table_->contentOffset().y, 44);
}

TEST_F(TableLayoutTest, aReloadAsksAgainForTheRowsInView) {
    show({{std::vector<int>(20, 40), 0, 0}});
    source_->asked.clear();
    table_->reloadData();
    EXPECT_TRUE(source_->asked.empty());
    table_->layoutIfNeeded();
    EXPECT_EQ(source_->asked.size(), 10u);
}

TEST_F(TableLayoutTest, theLoadMoreRowIsAskedForOnceItComesIntoView) {
    show({{std::vector<int>(20, 40), 0, 0}});
    const auto asked = [this] { return std::ranges::count(source_->asked, RowPlace{0, 19}); };
    EXPECT_EQ(asked(), 0);
    table_->setContentOffset({0, table_->greatestOffset()});
    table_->layoutIfNeeded();
    EXPECT_EQ(asked(), 1);
}

TEST_F(TableLayoutTest, aClassRegisteredForHeadersIsMadeForItsIdentifier) {
    EXPECT_FALSE(table_->dequeueHeaderFooter(nsString("band")));
    table_->registerHeaderFooterClass(objc::classOf<TableHeaderFooterView>(), nsString("band"));
    const auto band = table_->dequeueHeaderFooter(nsString("band"));
    ASSERT_TRUE(band);
    EXPECT_EQ(utf8(objc::peerOf<TableHeaderFooterView>(band)->reuseIdentifier()), "band");
}

TEST_F(TableLayoutTest, aGroupedTableKnowsItsStyleAndHasTheGroundOfGroups) {
    auto grouped = objc::Ref<TableView>::make<"initWithFrame:style:">(Rect{{0, 0}, {320, 400}}, 1L);
    EXPECT_EQ(grouped->style(), 1);
    EXPECT_EQ(colorOf(grouped->backgroundColor()), palette::groupedBackground);
}

TEST_F(TableLayoutTest, aRowIsScrolledToThePositionThatIsAskedFor) {
    show({{std::vector<int>(100, 40), 0, 0}});
    const auto offsetFor = [this](long position) {
        table_->scrollToRow(indexPath({0, 50}), position, false);
        return table_->contentOffset().y;
    };
    EXPECT_EQ(offsetFor(TableView::scrollTop), 2000);
    EXPECT_EQ(offsetFor(TableView::scrollMiddle), 1820);
    EXPECT_EQ(offsetFor(TableView::scrollNone), 1820);
    EXPECT_EQ(offsetFor(TableView::scrollBottom), 1640);
    table_->setContentInset({30, 0, 10, 0});
    EXPECT_EQ(offsetFor(TableView::scrollTop), 1970);
    EXPECT_EQ(offsetFor(TableView::scrollBottom), 1650);
}

TEST_F(TableLayoutTest, aRowAtAnEndComesAsNearToItsPositionAsTheContentReaches) {
    show({{std::vector<int>(100, 40), 0, 0}});
    table_->scrollToRow(indexPath({0, 99}), TableView::scrollTop, false);
    EXPECT_EQ(table_->contentOffset().y, 3600);
    table_->scrollToRow(indexPath({0, 0}), TableView::scrollBottom, false);
    EXPECT_EQ(table_->contentOffset().y, 0);
    table_->scrollToRow(indexPath({0, 100}), TableView::scrollTop, false);
    EXPECT_EQ(table_->contentOffset().y, 0);
}

TEST_F(TableLayoutTest, aTappedRowComesOutFromUnderTheInsets) {
    show({{std::vector<int>(100, 40), 0, 0}});
    table_->setContentInset({30, 0, 10, 0});
    table_->setContentOffset({0, 1000});
    EXPECT_TRUE(table_->tapRow(25, 0));
    EXPECT_EQ(table_->contentOffset().y, 970);
    EXPECT_TRUE(table_->tapRow(50, 0));
    EXPECT_EQ(table_->contentOffset().y, 1650);
    EXPECT_TRUE(table_->tapRow(50, 0));
    EXPECT_EQ(table_->contentOffset().y, 1650);
    EXPECT_TRUE(table_->tapRow(0, 0));
    EXPECT_EQ(table_->contentOffset().y, -30);
    EXPECT_FALSE(table_->tapRow(100, 0));
}

TEST_F(TableLayoutTest, anAnimatedScrollToARowArrivesInTime) {
    show({{std::vector<int>(100, 40), 0, 0}});
    table_->scrollToRow(indexPath({0, 50}), TableView::scrollTop, true);
    EXPECT_EQ(table_->contentOffset().y, 0);
    advance(0.15);
    EXPECT_GT(table_->contentOffset().y, 0);
    EXPECT_LT(table_->contentOffset().y, 2000);
    advance(1);
    EXPECT_EQ(table_->contentOffset().y, 2000);
}

}  // namespace
}  // namespace uikit::test

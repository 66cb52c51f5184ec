// Tables under a search, and rows that are selected while their table is edited.
#include "desktop/uikit/table_view_controller.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

/// Three rows under a title; says which was selected.
class Rows : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestThreeRows"};
    static void define(objc::ClassDefinition<Rows>& definition) {
        definition.method<"tableView:numberOfRowsInSection:", &Rows::count>()
            .method<"tableView:cellForRowAtIndexPath:", &Rows::cell>()
            .method<"tableView:titleForHeaderInSection:", &Rows::title>()
            .method<"tableView:didSelectRowAtIndexPath:", &Rows::select>();
    }
    long count(objc::Object, long) { return 3; }
    objc::Object cell(objc::Object, objc::Object) {
        return objc::autorelease(objc::make<objc::Object, "initWithStyle:reuseIdentifier:">(
            objc::classOf<TableViewCell>(), 0L, objc::Object{}));
    }
    objc::Object title(objc::Object, long) { return nsString("Rows"); }
    void select(objc::Object, objc::Object path) { selected.push_back(placeOf(path).row); }
    objc::Object object() const { return objc::Object{self}; }

    std::vector<long> selected;
};

class TableCoverTest : public ToolkitTest {
  protected:
    TableCoverTest() {
        objc::registerClasses<Rows>();
        rows_ = objc::Ref<Rows>::make();
        table_ = add<TableView>({{}, {320, 568}});
        table_->setDataSource(rows_->object());
        table_->setDelegate(rows_->object());
        window().layoutIfNeeded();
    }

    objc::Ref<Rows> rows_;
    objc::Ref<TableView> table_;
};

TEST_F(TableCoverTest, whatASearchFoundStaysInFrontWhenTheListIsLoadedAgain) {
    auto found = objc::Ref<TableView>::make<"initWithFrame:">(Rect{{}, {320, 568}});
    table_->addSubview(found);
    table_->reloadData();
    window().layoutIfNeeded();
    EXPECT_EQ(table_->subviews().back().get(), found.get());
}

TEST_F(TableCoverTest, noLineOfARowShowsThroughTheTitleAboveIt) {
    table_->setContentOffset({0, 50});  // the first row ends in the middle of the title
    window().layoutIfNeeded();
    graphics::Image image({320, 568}, 1);
    {
        graphics::Canvas canvas(image);
        table_->render(canvas);
    }
    for (int y = 0; y < 26; ++y) EXPECT_EQ(image.pixel(300, y), image.pixel(300, 5)) << y;
    EXPECT_NE(image.pixel(300, 63), image.pixel(300, 62)) << "the second row's own line";
}

TEST_F(TableCoverTest, aTableUnderEditSelectsNothingUnlessItIsAskedTo) {
    table_->setEditing(true);
    EXPECT_FALSE(table_->tapRow(1, 0));
    tap({160, 26 + 44 + 22});
    EXPECT_TRUE(rows_->selected.empty());
    objc::send<"setAllowsSelectionDuringEditing:">(table_->object(), true);
    EXPECT_TRUE(table_->tapRow(1, 0));
    tap({160, 26 + 44 + 22});
    EXPECT_EQ(rows_->selected, (std::vector<long>{1, 1}));
}

}  // namespace
}  // namespace uikit::test

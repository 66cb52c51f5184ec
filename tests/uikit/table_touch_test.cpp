// What touches do to a table: selection, accessories, the swipe that deletes, edit mode, rows that come and go.
#include "desktop/uikit/table_view.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

/// A list of names that can be deleted from, which writes down what the table tells it.
class NameSource : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestNameSource"};
    static void define(objc::ClassDefinition<NameSource>& definition) {
        definition.method<"tableView:numberOfRowsInSection:", &NameSource::rowCount>()
            .method<"tableView:cellForRowAtIndexPath:", &NameSource::cell>()
            .method<"tableView:canEditRowAtIndexPath:", &NameSource::canEdit>()
            .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &NameSource::commit>()
            .method<"tableView:willSelectRowAtIndexPath:", &NameSource::willSelect>()
            .method<"tableView:didSelectRowAtIndexPath:", &NameSource::selected>()
            .method<"tableView:accessoryButtonTappedForRowWithIndexPath:", &NameSource::accessory>()
            .method<"tableView:willBeginEditingRowAtIndexPath:", &NameSource::willEdit>()
            .method<"tableView:didEndEditingRowAtIndexPath:", &NameSource::didEdit>();
    }
    long rowCount(objc::Object, long) { return static_cast<long>(names.size()); }
    objc::Object willSelect(objc::Object, objc::Object path) {
        if (!selectedInstead) return path;
        return *selectedInstead < 0 ? objc::Object{} : indexPath({0, *selectedInstead});
    }
    objc::Object cell(objc::Object, objc::Object path) {
        auto made = objc::Ref<TableViewCell>::make<"initWithStyle:reuseIdentifier:">(0L, nsString("row"));
        made->textLabel()->setString(nameAt(path));
        made->setAccessoryType(accessoryType);
        return objc::autorelease(objc::Strong<>(made->object()));
    }
    bool canEdit(objc::Object, objc::Object path) { return nameAt(path) != "fixed"; }
    void commit(TableView* table, long style, objc::Object path) {
        heard.push_back("commit " + std::to_string(style) + " " + nameAt(path));
        names.erase(names.begin() + placeOf(path).row);
        table->deleteRows(objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(path), 0);
    }
    void selected(objc::Object, objc::Object path) { heard.push_back("select " + nameAt(path)); }
    void accessory(objc::Object, objc::Object path) { heard.push_back("details " + nameAt(path)); }
    void willEdit(objc::Object, objc::Object path) { heard.push_back("will edit " + nameAt(path)); }
    void didEdit(objc::Object, objc::Object) { heard.emplace_back("did edit"); }
    std::string nameAt(objc::Object path) const { return names[static_cast<std::size_t>(placeOf(path).row)]; }
    objc::Object object() const { return objc::Object{self}; }

    Names names{"ada", "bob", "fixed", "cleo"};
    long accessoryType = TableViewCell::detailButton;
    Names heard;
    std::optional<long> selectedInstead;  // a negative row refuses the selection
};

class TableTouchTest : public ToolkitTest {
  protected:
    TableTouchTest() {
        objc::registerClasses<NameSource>();
        source_ = objc::Ref<NameSource>::make();
        table_ = add<TableView>({{0, 0}, {320, 400}});
        table_->setDataSource(source_->object());
        table_->setDelegate(source_->object());
        window().layoutIfNeeded();
    }
    Names heard() { return std::exchange(source_->heard, {}); }
    Names shown() {
        Names names;
        for (const auto& row : table_->visibleRows()) names.push_back(row.cell->textLabel()->string());
        return names;
    }
    void swipe(double y) {
        touch(TouchPhase::Began, {250, y});
        touch(TouchPhase::Moved, {200, y});
        touch(TouchPhase::Ended, {200, y});
        advance(1);
    }
    TableViewCell* cellAt(long row) { return objc::peerOf<TableViewCell>(table_->cellAtPath(indexPath({0, row}))); }

    objc::Ref<NameSource> source_;
    objc::Ref<TableView> table_;
};

TEST_F(TableTouchTest, aTapSelectsItsRowUntilItIsDeselected) {
    tap({100, 66});
    EXPECT_EQ(heard(), Names{"select bob"});
    EXPECT_EQ(placeOf(table_->pathOfSelectedRow()), (RowPlace{0, 1}));
    EXPECT_TRUE(cellAt(1)->isHighlighted());
    table_->deselectRow(indexPath({0, 1}), false);
    EXPECT_FALSE(table_->pathOfSelectedRow());
    EXPECT_FALSE(cellAt(1)->isHighlighted());
}

TEST_F(TableTouchTest, aSelectionThatTheDelegateRefusesLeavesNoHighlight) {
    source_->selectedInstead = -1;
    tap({100, 66});
    EXPECT_FALSE(cellAt(1)->isHighlighted());
    EXPECT_TRUE(table_->tapRow(1, 0));
    EXPECT_FALSE(cellAt(1)->isHighlighted());
    EXPECT_FALSE(table_->pathOfSelectedRow());
    EXPECT_EQ(heard(), Names{});
}

TEST_F(TableTouchTest, theDelegateMayHaveAnotherRowSelected) {
    source_->selectedInstead = 3;
    tap({100, 66});
    EXPECT_EQ(heard(), Names{"select cleo"});
    EXPECT_FALSE(cellAt(1)->isHighlighted());
    EXPECT_TRUE(cellAt(3)->isHighlighted());
}

TEST_F(TableTouchTest, oneRowIsSelectedAtATime) {
    tap({100, 66});
    tap({100, 22});
    EXPECT_TRUE(cellAt(0)->isHighlighted());
    EXPECT_FALSE(cellAt(1)->isHighlighted());
    EXPECT_EQ(placeOf(table_->pathOfSelectedRow()), (RowPlace{0, 0}));
}

TEST_F(TableTouchTest, aFingerThatLeavesItsRowSelectsNothing) {
    touch(TouchPhase::Began, {100, 66});
    EXPECT_TRUE(cellAt(1)->isHighlighted());
    touch(TouchPhase::Cancelled, {100, 66});
    EXPECT_FALSE(cellAt(1)->isHighlighted());
    EXPECT_EQ(heard(), Names{});
}

TEST_F(TableTouchTest, aTapOnTheDetailButtonOpensTheDetailsAlone) {
    tap(cellAt(1)->pointToWindow(cellAt(1)->detailRect().centre()));
    EXPECT_EQ(heard(), Names{"details bob"});
    EXPECT_FALSE(table_->pathOfSelectedRow());
}

TEST_F(TableTouchTest, aSwipeShowsTheDeleteButtonAndATapOnItDeletes) {
    swipe(66);
    EXPECT_EQ(heard(), Names{"will edit bob"});
    EXPECT_EQ(cellAt(1)->revealed(), 82);
    tap({300, 66});
    EXPECT_EQ(heard(), (Names{"commit 1 bob", "did edit"}));
    EXPECT_EQ(shown(), (Names{"ada", "fixed", "cleo"}));
}

TEST_F(TableTouchTest, aTouchElsewhereTakesTheDeleteButtonBackAndIsNothingElse) {
    swipe(66);
    heard();
    tap({100, 22});
    EXPECT_EQ(heard(), Names{"did edit"});
    advance(1);
    EXPECT_EQ(cellAt(1)->revealed(), 0);
}

TEST_F(TableTouchTest, aRowThatMayNotBeEditedHasNoDeleteButton) {
    swipe(110);
    EXPECT_EQ(heard(), Names{});
    EXPECT_EQ(cellAt(2)->revealed(), 0);
}

TEST_F(TableTouchTest, inEditModeTheMinusShowsTheDeleteButtonAndRowsAreNotSelected) {
    table_->setEditing(true);
    tap({150, 66});
    EXPECT_EQ(heard(), Names{});
    tap(cellAt(1)->pointToWindow(cellAt(1)->minusRect().centre()));
    advance(1);
    EXPECT_EQ(cellAt(1)->revealed(), 82);
    table_->confirmDelete();
    EXPECT_EQ(heard(), Names{"commit 1 bob"});
    table_->setEditing(false);
    EXPECT_TRUE(cellAt(0)->minusRect().isEmpty());
}

struct Accessory {
    const char* name;
    long type;
    const char* heard;
};

class AccessoryTest : public TableTouchTest, public testing::WithParamInterface<Accessory> {};

TEST_P(AccessoryTest, aTapAtTheRightEdgeOpensDetailsWhereThereIsADetailButtonAndSelectsElsewhere) {
    source_->accessoryType = GetParam().type;
    table_->reloadData();
    window().layoutIfNeeded();
    tap({290, 66});
    EXPECT_EQ(heard(), Names{GetParam().heard});
}

INSTANTIATE_TEST_SUITE_P(Types, AccessoryTest,
                         testing::Values(Accessory{"none", TableViewCell::none, "select bob"},
                                         Accessory{"arrow", TableViewCell::disclosureIndicator, "select bob"},
                                         Accessory{"arrowAndDetails", TableViewCell::detailDisclosure, "details bob"},
                                         Accessory{"checkmark", TableViewCell::checkmark, "select bob"},
                                         Accessory{"details", TableViewCell::detailButton, "details bob"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(TableTouchTest, theArrowBesideADetailButtonSelectsItsRow) {
    source_->accessoryType = TableViewCell::detailDisclosure;
    table_->reloadData();
    window().layoutIfNeeded();
    tap({318, 66});
    EXPECT_EQ(heard(), Names{"select bob"});
    EXPECT_TRUE(table_->tapAccessory(1, 0));
    EXPECT_EQ(heard(), Names{"details bob"});
}

TEST_F(TableTouchTest, aRowWithoutADetailButtonHasNoDetailsToOpen) {
    source_->accessoryType = TableViewCell::disclosureIndicator;
    table_->reloadData();
    EXPECT_FALSE(table_->tapAccessory(1, 0));
    EXPECT_EQ(heard(), Names{});
}

TEST_F(TableTouchTest, underEditTheDetailButtonOpensNothing) {
    table_->setEditing(true);
    EXPECT_FALSE(table_->tapAccessory(1, 0));
    tap({290, 66});
    EXPECT_EQ(heard(), Names{});
}

TEST_F(TableTouchTest, underEditTheAccessoryIsAwayAndLeavesItsRoom) {
    const auto own = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {30, 30}});
    cellAt(1)->setAccessoryView(own);
    EXPECT_GT(cellAt(0)->accessoryWidth(), 0);
    table_->setEditing(true);
    EXPECT_EQ(cellAt(0)->accessoryWidth(), 0);
    EXPECT_TRUE(cellAt(0)->detailRect().isEmpty());
    EXPECT_TRUE(own->isHidden());
    table_->setEditing(false);
    EXPECT_FALSE(own->isHidden());
    EXPECT_FALSE(cellAt(0)->detailRect().isEmpty());
}

TEST_F(TableTouchTest, aSwipeOnAnotherRowTakesTheFirstDeleteButtonBackAndIsNothingElse) {
    swipe(66);
    swipe(22);
    EXPECT_EQ(heard(), (Names{"will edit bob", "did edit"}));
    swipe(22);
    EXPECT_EQ(heard(), Names{"will edit ada"});
    EXPECT_EQ(cellAt(1)->revealed(), 0);
    EXPECT_EQ(cellAt(0)->revealed(), 82);
}

TEST_F(TableTouchTest, editModeTakesTheDeleteButtonBack) {
    swipe(66);
    heard();
    table_->setEditing(true);
    EXPECT_EQ(heard(), Names{"did edit"});
    advance(1);
    EXPECT_EQ(cellAt(1)->revealed(), 0);
}

TEST_F(TableTouchTest, aReloadTakesTheDeleteButtonBack) {
    swipe(66);
    heard();
    table_->reloadData();
    window().layoutIfNeeded();
    EXPECT_EQ(heard(), Names{"did edit"});
    EXPECT_EQ(cellAt(1)->revealed(), 0);
    table_->confirmDelete();
    EXPECT_EQ(heard(), Names{}) << "there is no button any more";
}

TEST_F(TableTouchTest, aReloadForgetsTheSelection) {
    tap({100, 66});
    table_->reloadData();
    window().layoutIfNeeded();
    EXPECT_FALSE(table_->pathOfSelectedRow());
    EXPECT_FALSE(cellAt(1)->isHighlighted());
}

TEST_F(TableTouchTest, rowsThatAreTakenAwayInNestedUpdatesGoWithTheOutermostEnd) {
    const auto path = indexPath({0, 0});
    const auto paths = objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(path);
    table_->beginUpdates();
    table_->beginUpdates();
    source_->names.erase(source_->names.begin());
    table_->deleteRows(paths, 0);
    EXPECT_EQ(table_->numberOfRowsInSection(0), 4) << "the table has not been told all yet";
    table_->endUpdates();
    EXPECT_EQ(table_->numberOfRowsInSection(0), 4);
    table_->endUpdates();
    EXPECT_EQ(shown(), (Names{"bob", "fixed", "cleo"}));
}

TEST_F(TableTouchTest, anEndWithoutABeginningChangesNothing) {
    table_->endUpdates();
    table_->beginUpdates();
    source_->names.pop_back();
    EXPECT_EQ(shown().size(), 4u);
    table_->endUpdates();
    EXPECT_EQ(shown().size(), 3u);
}

TEST_F(TableTouchTest, insertedRowsShowAfterTheUpdatesEnd) {
    table_->beginUpdates();
    source_->names.insert(source_->names.begin(), "zoe");
    table_->insertRows(objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(indexPath({0, 0})), 0);
    table_->endUpdates();
    EXPECT_EQ(shown(), (Names{"zoe", "ada", "bob", "fixed", "cleo"}));
}

}  // namespace
}  // namespace uikit::test

// What the Recents screen builds when its view loads, literally: the search bar, the scope control, the two buttons
// beside it, and the order of the steps.
#include "desktop/substrate/trace.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/text.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

using uikit::Rect;

class RecentsControls : public RecentsMessages {
  protected:
    void SetUp() override {
        RecentsMessages::SetUp();
        companion().setRows(1, people(3));
    }
    static std::string nameOf(objc::Object image) {
        return image ? objc::peerOf<uikit::ImageObject>(image)->name : std::string();
    }
    static std::vector<std::string> texts(objc::Object array) {
        std::vector<std::string> found;
        const auto count = objc::send<"count", unsigned long>(array);
        for (unsigned long i = 0; i < count; ++i)
            found.push_back(uikit::utf8(objc::send<"objectAtIndex:", objc::Object>(array, i)));
        return found;
    }
    static std::vector<std::string> actionsOf(uikit::Control* control, objc::Object target) {
        constexpr unsigned long touchUpInside = 64;
        std::vector<std::string> names;
        const auto actions =
            objc::send<"actionsForTarget:forControlEvent:", objc::Object>(control->object(), target, touchUpInside);
        return actions ? texts(actions) : names;
    }
    uikit::SegmentedControl* scope() const { return search()->searchBar()->scopeControl(); }
    std::vector<std::string> iconsOf(uikit::SegmentedControl* control) const {
        std::vector<std::string> names;
        for (unsigned long i = 0; i < control->numberOfSegments(); ++i)
            names.push_back(nameOf(control->imageForSegment(i)));
        return names;
    }
};

TEST_F(RecentsControls, theSearchBarHasItsFrameItsPlaceholderAndFourTitles) {
    open();
    auto* bar = search()->searchBar();
    EXPECT_EQ(bar->frame().size.width, 320);
    EXPECT_EQ(uikit::utf8(bar->placeholder()), "SEARCH_CALL_HISTORY");
    EXPECT_THAT(texts(bar->scopeButtonTitles()), ElementsAre("All", "Dialed", "Received", "Missed"));
    EXPECT_EQ(table()->tableHeaderView(), bar);
}

TEST_F(RecentsControls, theSearchBarIsMadeAsHighAsItIsWithItsScopes) {
    std::vector<std::string> lines;
    ASSERT_FALSE(substrate::trace::begin(
        {"UISearchBar"}, [&](const std::string& line) { lines.push_back(line); },
        substrate::trace::Ownership::leftOut));
    open();
    EXPECT_THAT(lines, Contains("-[UISearchBar initWithFrame:] {{0, 0}, {320, 88}}"));
}

TEST_F(RecentsControls, theSearchAnswersToTheScreenThreeTimes) {
    open();
    EXPECT_EQ(search()->delegate().get(), screen());
    EXPECT_EQ(search()->searchResultsDelegate().get(), screen());
    EXPECT_EQ(search()->searchResultsDataSource().get(), screen());
}

TEST_F(RecentsControls, theScopesAndTheSegmentsShowTheFiltersIconsInOrder) {
    open();
    EXPECT_THAT(iconsOf(scope()), ElementsAre("all_icon", "dialled_icon", "received_icon", "missed_icon"));
    EXPECT_THAT(iconsOf(segments()), ElementsAre("all_icon", "dialled_icon", "received_icon", "missed_icon"));
}

TEST_F(RecentsControls, theScopeControlLeavesRoomForAButtonOnEitherSide) {
    open();
    EXPECT_EQ(scope()->frame(), (Rect{{55, 8}, {210, 28}})) << "from the top and as high as it was";
}

TEST_F(RecentsControls, theButtonThatDeletesAllStandsOnTheLeft) {
    open();
    EXPECT_EQ(button(1)->frame(), (Rect{{8, 6}, {32, 32}}));
    EXPECT_EQ(nameOf(button(1)->imageForState(0)), "delete_all_icon");
    EXPECT_THAT(actionsOf(button(1), screen()), ElementsAre("deleteAllAction:"));
    EXPECT_EQ(uikit::colorOf(imageTintOf(button(1))), uikit::colorOf(scope()->tintColor()));
    EXPECT_TRUE(button(1)->isHidden());
}

TEST_F(RecentsControls, theButtonThatEditsStandsOnTheRightAndBecomesCancel) {
    constexpr unsigned long selected = 4;
    open();
    EXPECT_EQ(button(2)->frame(), (Rect{{280, 6}, {32, 32}}));
    EXPECT_EQ(nameOf(button(2)->imageForState(0)), "delete_icon");
    EXPECT_EQ(nameOf(button(2)->imageForState(selected)), "cancel");
    EXPECT_THAT(actionsOf(button(2), screen()), ElementsAre("editButtonClicked:"));
    EXPECT_EQ(uikit::colorOf(imageTintOf(button(2))), uikit::colorOf(scope()->tintColor()));
    EXPECT_TRUE(button(2)->isHidden());
}

TEST_F(RecentsControls, theButtonThatEditsComesWithResultsAndStaysAsItIsInEditMode) {
    open();
    type("person");
    settle();
    button(2)->setHidden(true);
    send<"updateNavigationBarButtonItems:groupEdit:">(true, true);
    settle();
    EXPECT_TRUE(button(2)->isHidden());
    EXPECT_TRUE(button(2)->isSelected());
    EXPECT_FALSE(button(1)->isHidden());
    send<"updateNavigationBarButtonItems:groupEdit:">(false, true);
    settle();
    EXPECT_FALSE(button(2)->isHidden());
    EXPECT_FALSE(button(2)->isSelected());
    EXPECT_TRUE(button(1)->isHidden());
}

TEST_F(RecentsControls, areBuiltInThisOrderBeforeTheFirstLoad) {
    std::vector<std::string> lines;
    ASSERT_FALSE(substrate::trace::begin(
        {"PHRecentsViewController", "UITableView", "UISearchDisplayController", "NSNotificationCenter"},
        [&](const std::string& line) {
            const auto start = line.find(' ') + 1;
            // The results' table is made, with a delegate of its own, when it is first asked for.
            if (!line.starts_with("-[UITableView setDelegate:"))
                lines.push_back(line.substr(start, line.find(']') - start));
        },
        substrate::trace::Ownership::leftOut));
    open();
    std::vector<std::string> steps;
    for (const auto& line : lines)
        for (const char* step :
             {"setSearchDisplayController:", "setSearchResultsDelegate:", "setSearchResultsDataSource:", "setDelegate:",
              "setTableHeaderView:", "prepareSearchBarScopeTitlesAndTintColor", "handleSegmentControler",
              "initDatabase", "handleEnableDisableSearchAction:", "registerClass:forCellReuseIdentifier:",
              "registerClass:forHeaderFooterViewReuseIdentifier:", "addObserver:selector:name:object:"})
            if (line == step) steps.push_back(step);
    EXPECT_THAT(
        steps, ElementsAre("setSearchDisplayController:", "setSearchResultsDelegate:", "setSearchResultsDataSource:",
                           "setDelegate:", "setTableHeaderView:", "prepareSearchBarScopeTitlesAndTintColor",
                           "handleSegmentControler", "initDatabase", "handleEnableDisableSearchAction:",
                           "registerClass:forCellReuseIdentifier:", "registerClass:forCellReuseIdentifier:",
                           "registerClass:forHeaderFooterViewReuseIdentifier:", "registerClass:forCellReuseIdentifier:",
                           "registerClass:forCellReuseIdentifier:", "registerClass:forHeaderFooterViewReuseIdentifier:",
                           "addObserver:selector:name:object:", "addObserver:selector:name:object:"));
}

}  // namespace
}  // namespace recentsmessages

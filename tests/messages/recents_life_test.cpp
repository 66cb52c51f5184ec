// The Recents screen's life: what its view builds, when lists are loaded again, what the background closes.
#include <dlfcn.h>

#include "desktop/uikit/text.h"
#include "tests/messages/recents_screen.h"
#include "tests/plugin_image.h"

namespace recentsmessages {
namespace {

class RecentsLife : public RecentsMessages {
  protected:
    std::string title() const {
        const auto text = send<"title", objc::Object>();
        return text ? uikit::utf8(text) : std::string();
    }
};

TEST_F(RecentsLife, withoutSearchThereIsNoBarAndTheSegmentsAreTheOnlyFilterControl) {
    companion().isSearchEnabled = false;
    companion().setRows(1, people(3));
    open();
    EXPECT_EQ(search(), nullptr);
    EXPECT_EQ(table()->tableHeaderView(), nullptr);
    ASSERT_NE(segments(), nullptr);
    EXPECT_EQ(segments()->numberOfSegments(), 4U);
    EXPECT_EQ(segments()->frame().size.width, 220);
    send<"prepareSearchBarScopeTitlesAndTintColor">();
    EXPECT_EQ(rows(), 3);
}

TEST_F(RecentsLife, groupedByDateThereIsATitleInPlaceOfTheSegmentsAndNoBar) {
    companion().isGroupByDate = true;
    companion().setRows(5, people(2));
    open();
    EXPECT_EQ(segments(), nullptr);
    EXPECT_EQ(table()->tableHeaderView(), nullptr);
    EXPECT_EQ(title(), "Title");
}

TEST_F(RecentsLife, theTitleOfDaysLeavesWhenTheSegmentsComeBack) {
    companion().isGroupByDate = true;
    open();
    companion().isGroupByDate = false;
    send<"handleSegmentControler">();
    EXPECT_NE(segments(), nullptr);
    EXPECT_EQ(title(), "");
}

TEST_F(RecentsLife, groupingByDateForgetsTheFilterThatWasChosenBefore) {
    companion().setRows(4, people(2));
    companion().setRows(5, people(7));
    open();
    pick(3);
    settle();
    companion().isGroupByDate = true;
    companion().isSettingsChanged = true;
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    settle();
    EXPECT_EQ(rows(), 7);
}

TEST_F(RecentsLife, aTableAtTheVeryTopIsScrolledPastTheBarAndAnyOtherStays) {
    companion().setRows(1, people(3));
    open();
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 0});
    send<"handleEnableDisableSearchAction:">(false);
    EXPECT_EQ(table()->contentOffset().y, 44);
    table()->setContentOffset({0, 300});
    send<"handleEnableDisableSearchAction:">(true);
    EXPECT_EQ(table()->contentOffset().y, 300);
}

TEST_F(RecentsLife, aTablePulledBelowItsTopSettlesByTheBarsHeightOnlyWhenAsked) {
    companion().setRows(1, people(3));
    open();
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, -60});
    send<"handleEnableDisableSearchAction:">(false);
    EXPECT_EQ(table()->contentOffset().y, -60);
    send<"handleEnableDisableSearchAction:">(true);
    EXPECT_EQ(table()->contentOffset().y, -60 + table()->tableHeaderView()->frame().size.height);
}

TEST_F(RecentsLife, anAppearanceWithoutAFlagDropsTheListsOfTheOtherModeAndDoesNothingMore) {
    companion().setRows(1, people(3));
    open();
    trace();
    send<"viewAppearedAction">();
    settle();
    EXPECT_THAT(log().lines(), ElementsAre("main: viewAppearedAction", "main: clearCallLists", "main: list 5 dropped"));
}

TEST_F(RecentsLife, theSecondOfTwoNotificationsFindsTheFlagsCleared) {
    companion().setRows(1, people(3));
    open();
    trace();
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    send<"viewAppearedAction">();
    settle();
    EXPECT_EQ(log().linesWith("clearCallLists").size(), 2U);
    EXPECT_EQ(log().linesWith("handleReloadDataAction").size(), 1U);
    EXPECT_EQ(log().linesWith("loadCallRecsFromDBInBackGround").size(), 1U);
}

TEST_F(RecentsLife, changedDataIsLoadedAgainOnTheDefaultQueueInThisOrder) {
    companion().setRows(1, people(3));
    open();
    trace();
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    settle();
    EXPECT_THAT(
        log().lines(),
        ElementsAre("main: viewAppearedAction", "main: clearCallLists", "main: list 5 dropped", "main: hideHUD",
                    "main: indicator hidden", "main: handleReloadDataAction",
                    "main: showHUD:", "main: showHUD:detailText:", "main: showHUD:detailText:delegate:",
                    "main: showHUD:detailText:delegate:mode:", "main: showHUD:detailText:delegate:mode:selector:",
                    "main: showHUD:detailText:delegate:mode:selector:withObject:", "main: indicator \"Refreshing\"",
                    "default: loadCallRecsFromDBInBackGround", "default: initializeCallList", "default: count of 1",
                    "default: read 50 from 0 of 1", "default: refreshTableData", "default: duration of 1",
                    "default: refreshTableData", "main: setEditing:animated:",
                    "main: updateNavigationBarButtonItems:groupEdit:", "main: hideHUD", "main: indicator hidden"));
    EXPECT_FALSE(companion().isNeedToLoadData);
}

TEST_F(RecentsLife, anotherPageSizeForgetsHowFarTheUserHadLoaded) {
    companion().setRows(1, people(150));
    open();
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 101);
    companion().pageSize = 40;
    companion().isAnyRecordDeleted = true;
    send<"viewAppearedAction">();
    settle();
    EXPECT_EQ(rows(), 41);
}

TEST_F(RecentsLife, aReloadKeepsTheFilterOfTheSelectedSegment) {
    companion().setRows(1, people(9));
    companion().setRows(3, people(4));
    open();
    pick(2);
    settle();
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    settle();
    EXPECT_EQ(rows(), 4);
}

TEST_F(RecentsLife, aNewCallIsShownByALoadFromTheStart) {
    companion().setRows(1, people(3));
    open();
    companion().setRows(1, people(4));
    send<"newCallRecordAdded:">(objc::Object{});
    settle();
    EXPECT_EQ(rows(), 4);
}

TEST_F(RecentsLife, goingToTheBackgroundWithoutADeleteMenuOnlyGoesBackToTheList) {
    if (hasMadeSheets()) GTEST_SKIP() << "the process keeps the menu of an earlier test";
    companion().setRows(1, people(3));
    open();
    send<"handleApplicationDidEnterBackground:">(objc::Object{});
    EXPECT_THAT(log().linesWith("dismissed"), IsEmpty());
    EXPECT_EQ(rows(), 3);
}

TEST_F(RecentsLife, goingToTheBackgroundDismissesTheDeleteMenuAndKeepsItsReference) {
    companion().setRows(1, people(3));
    open();
    send<"deleteAllAction:">(objc::Object{});
    send<"handleApplicationDidEnterBackground:">(objc::Object{});
    send<"handleApplicationDidEnterBackground:">(objc::Object{});
    EXPECT_EQ(log().linesWith("sheet dismissed -1 YES").size(), 2U);
}

TEST_F(RecentsLife, theScopeButtonsStandHiddenBesideTheControl) {
    companion().setRows(1, people(3));
    open();
    EXPECT_TRUE(button(1)->isHidden());
    EXPECT_TRUE(button(2)->isHidden());
    EXPECT_EQ(button(1)->frame().left(), 8);
    EXPECT_EQ(button(2)->frame().left(), 280);
    EXPECT_EQ(search()->searchBar()->scopeControl()->frame().left(), 55);
}

TEST_F(RecentsLife, theOffsetsAreExportedAndStartOverWithAReload) {
    companion().setRows(1, people(3));
    open();
    void* image = dlopen(pluginImage(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(image, nullptr);
    for (const char* name : {"allCallsOffSetY", "dldCallsOffSetY", "rcdCallsOffSetY", "msdCallsOffSetY"}) {
        auto* offset = static_cast<float*>(dlsym(image, name));
        ASSERT_NE(offset, nullptr) << name;
        *offset = 7;
        send<"handleReloadDataAction">();
        EXPECT_EQ(*offset, 44) << name;
        companion().isSearchEnabled = false;
        send<"handleReloadDataAction">();
        EXPECT_EQ(*offset, 0) << name;
        companion().isSearchEnabled = true;
    }
    dlclose(image);
}

}  // namespace
}  // namespace recentsmessages

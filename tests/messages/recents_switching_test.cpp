// Switching between the four lists.
#include <dlfcn.h>

#include "tests/messages/recents_screen.h"
#include "tests/plugin_image.h"

namespace recentsmessages {
namespace {

class RecentsSwitching : public RecentsMessages {
  protected:
    void openAll() {
        companion().setRows(1, people(60));
        companion().setRows(2, people(5));
        companion().setRows(3, people(4));
        companion().setRows(4, people(3));
        open();
    }
    static void setOffsets(float all, float dialled, float received, float missed) {
        offset("allCallsOffSetY") = all;
        offset("dldCallsOffSetY") = dialled;
        offset("rcdCallsOffSetY") = received;
        offset("msdCallsOffSetY") = missed;
    }
    static std::vector<float> offsets() {
        return {offset("allCallsOffSetY"), offset("dldCallsOffSetY"), offset("rcdCallsOffSetY"),
                offset("msdCallsOffSetY")};
    }

  private:
    static float& offset(const char* name) {
        static void* const image = dlopen(pluginImage(), RTLD_NOW | RTLD_NOLOAD);
        return *static_cast<float*>(dlsym(image, name));
    }
};

TEST_F(RecentsSwitching, loadsOnTheBackgroundQueueBehindTheIndicatorAndClosesOnTheMainQueue) {
    openAll();
    trace();
    pick(3);
    settle();
    EXPECT_THAT(
        log().lines(),
        ElementsAre("main: segmentAction:", "main: segMentBackGroundAction:", "main: scrollViewDidEndDecelerating:",
                    "main: showHUD:", "main: showHUD:detailText:", "main: showHUD:detailText:delegate:",
                    "main: showHUD:detailText:delegate:mode:", "main: showHUD:detailText:delegate:mode:selector:",
                    "main: showHUD:detailText:delegate:mode:selector:withObject:", "main: indicator \"LOADING\"",
                    "background: initializeCallList", "background: count of 4", "background: read 50 from 0 of 4",
                    "background: refreshTableData", "background: duration of 4", "main: hideHUD",
                    "main: indicator hidden", "main: refreshTableData",
                    "main: updateNavigationBarButtonItems:groupEdit:"));
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsSwitching, inEditModeLeavesItFirst) {
    openAll();
    send<"editButtonClicked:">(objc::Object{});
    settle();
    trace();
    pick(1);
    EXPECT_THAT(log().lines().at(1), "main: editButtonClicked:");
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    EXPECT_EQ(right(), "trash");
}

TEST_F(RecentsSwitching, toAListThatIsLoadedShowsNoIndicatorAndTouchesNoDatabase) {
    openAll();
    pick(3);
    settle();
    for (std::size_t i = 0; i < 4; ++i) companion().counts[i] = static_cast<std::int64_t>(companion().rows[i].size());
    for (auto& seconds : companion().keptDurations) seconds = 60;
    pick(0);
    settle();
    log().clear();
    trace();
    pick(3);
    settle();
    EXPECT_THAT(log().linesWith("indicator \""), IsEmpty());
    EXPECT_THAT(log().linesWith("initializeCallList"), ElementsAre("background: initializeCallList"));
    for (const char* question : {"read", "count of", "duration of", "search "})
        EXPECT_THAT(log().linesWith(question), IsEmpty()) << question;
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsSwitching, toALoadedListShowsTheIndicatorAfterAChangeOfAnyKind) {
    openAll();
    pick(3);
    settle();
    for (auto* flag :
         {&companion().isSettingsChanged, &companion().isAnyRecordDeleted, &companion().isNeedToLoadData}) {
        *flag = true;
        log().clear();
        pick(0);
        EXPECT_THAT(log().linesWith("indicator \""), ElementsAre("main: indicator \"LOADING\""));
        settle();
        *flag = false;
    }
}

TEST_F(RecentsSwitching, toAnEmptyListAlwaysShowsTheIndicator) {
    openAll();
    companion().setRows(4, {});
    for (int i = 0; i < 2; ++i) {
        log().clear();
        pick(3);
        EXPECT_THAT(log().linesWith("indicator \""), ElementsAre("main: indicator \"LOADING\""));
        settle();
        pick(0);
        settle();
    }
}

TEST_F(RecentsSwitching, whileSearchingSearchesTheOtherFilterAndOffersItsRest) {
    openAll();
    pick(3);
    settle();
    pick(0);
    settle();
    type("person");
    send<"loadMoreSearchedRecords">();
    EXPECT_EQ(rows(), 50) << "the search of all calls is complete";
    pick(3);
    settle();
    // No copies of that filter were ever made, so its rest can be loaded.
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
    send<"loadMoreSearchedRecords">();
    EXPECT_EQ(rows(), 3);
    pick(0);
    settle();
    EXPECT_EQ(rows(), 50) << "its copies exist, though they are empty";
}

TEST_F(RecentsSwitching, whileSearchingPutsTheBarBackIntoTheTablesHead) {
    openAll();
    type("person");
    objc::send<"setTableHeaderView:">(table()->object(), objc::Object{});
    pick(1);
    settle();
    EXPECT_EQ(table()->tableHeaderView(), search()->searchBar());
}

TEST_F(RecentsSwitching, remembersTheOffsetOfTheListThatIsLeft) {
    openAll();
    setOffsets(1, 2, 3, 4);
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 130});
    pick(2);
    settle();
    EXPECT_THAT(offsets(), ElementsAre(130, 2, 3, 4));
}

TEST_F(RecentsSwitching, offsetsOfTheBarsHeightBecomeZeroWhileOneIsZero) {
    openAll();
    pick(1);
    settle();
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 10});
    setOffsets(44, 0, 44, 0);
    send<"scrollViewDidEndDecelerating:">(objc::Object{});
    EXPECT_THAT(offsets(), ElementsAre(0, 10, 0, 0));
}

TEST_F(RecentsSwitching, fourOffsetsThatHoldSomethingKeepTheBarsHeightOnPurpose) {
    openAll();
    pick(1);
    settle();
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 10});
    setOffsets(44, 0, 44, 5);
    send<"scrollViewDidEndDecelerating:">(objc::Object{});
    EXPECT_THAT(offsets(), ElementsAre(44, 10, 44, 5));
}

TEST_F(RecentsSwitching, aFilterOutsideTheFourRemembersNoOffset) {
    openAll();
    pick(-1);
    settle();
    setOffsets(1, 2, 3, 4);
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 10});
    send<"scrollViewDidEndDecelerating:">(objc::Object{});
    EXPECT_THAT(offsets(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(rows(), 51) << "it counts as all calls";
    pick(0);
    settle();
}

TEST_F(RecentsSwitching, noMethodScrollsTheTableToARememberedOffsetOnPurpose) {
    openAll();
    table()->setContentSize({320, 4000});
    table()->setContentOffset({0, 130});
    pick(2);
    settle();
    pick(0);
    settle();
    EXPECT_EQ(table()->contentOffset().y, 130);
}

TEST_F(RecentsSwitching, dropsTheListsThatTheModeDoesNotShow) {
    openAll();
    send<"clearCallLists">();
    EXPECT_THAT(log().lines(), ElementsAre("main: list 5 dropped"));
    log().clear();
    companion().isGroupByDate = true;
    send<"clearCallLists">();
    EXPECT_THAT(log().lines(), ElementsAre("main: list 1 dropped", "main: list 2 dropped", "main: list 3 dropped",
                                           "main: list 4 dropped"));
}

TEST_F(RecentsSwitching, theDayOfAnotherScreenIsNothingHere) {
    openAll();
    send<"updateDateEntry">();
    EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(RecentsSwitching, twiceInARowShowsTheSecondFilter) {
    openAll();
    pick(1);
    pick(3);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
    pick(2);
    pick(0);
    settle();
    EXPECT_EQ(rows(), 51);
}

}  // namespace
}  // namespace recentsmessages

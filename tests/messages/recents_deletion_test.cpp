// Delete all, and the confirmation before it.
#include "tests/messages/recents_deletion.h"

namespace recentsmessages {
namespace {

TEST_F(RecentsDeletion, ofNothingShowsNoMenu) {
    openWith(0);
    ask();
    EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(RecentsDeletion, ofASearchThatFoundNothingShowsNoMenu) {
    openWith(3);
    type("nobody");
    settle();
    ask();
    EXPECT_THAT(log().linesWith("sheet"), IsEmpty());
}

TEST_F(RecentsDeletion, asksFirstWithTheFiltersMessageAndTitle) {
    openWith(3);
    const char* const prefixes[] = {"ALL", "DLD", "RCD", "MSD"};
    const char* const titles[] = {"DEL_ALL", "DEL_ALL_DLD", "DEL_ALL_RCD", "DEL_ALL_MSD"};
    for (int segment = 0; segment < 4; ++segment) {
        companion().setRows(segment + 1, people(3));
        pick(segment);
        settle();
        log().clear();
        ask();
        const std::string message = prefixes[segment] + std::string("_DEL_ALL_CONFIRM_MSG");
        EXPECT_THAT(log().lines(), ElementsAre("main: sheet \"" + message + '"',
                                               "main: destructive \"" + std::string(titles[segment]) + '"',
                                               "main: cancel \"Cancel\"", "main: sheet shown"));
    }
}

TEST_F(RecentsDeletion, ofDaysAsksWithTheNullMarkerInTheDaysPlaceOnPurpose) {
    companion().isGroupByDate = true;
    companion().setRows(5, people(2));
    open();
    ask();
    EXPECT_THAT(log().linesWith("sheet \""), ElementsAre("main: sheet \"ALL_DEL_ALL_CONTACT_CONFIRM_MSG (null)\""));
}

TEST_F(RecentsDeletion, ofASearchAsksWithTheFiltersMessageAndTheSearchsTitle) {
    openWith(3);
    type("person");
    ask();
    EXPECT_THAT(log().linesWith("\""), Contains("main: sheet \"ALL_DEL_ALL_CONFIRM_MSG\""));
    EXPECT_THAT(log().linesWith("destructive"), ElementsAre("main: destructive \"DEL_ALL_SEARCHED\""));
}

TEST_F(RecentsDeletion, ofAllCallsRunsInThisOrderOnItsOwnThread) {
    openWith(3);
    ask();
    log().clear();
    trace();
    confirm();
    settle();
    EXPECT_THAT(work(),
                ElementsAre("main: handleDeleteAllAction", "main: refreshTableData",
                            "main: removeAllRecordsInBackGround", "worker: removeAllRecords", "worker: delete filter 1",
                            "worker: clearCallLists", "worker: list 5 dropped", "worker: initializeCallList",
                            "worker: count of 1", "worker: duration of 1", "worker: refreshTableData",
                            "main: setEditing:animated:", "main: updateNavigationBarButtonItems:groupEdit:"));
    EXPECT_THAT(log().linesWith("indicator \""), ElementsAre("main: indicator \"Deleting\""));
    EXPECT_EQ(rows(), 0);
}

TEST_F(RecentsDeletion, emptiesTheListAtOnceBeforeTheDatabaseHasAnswered) {
    openWith(3);
    ask();
    companion().duringDeletion = [this] { EXPECT_EQ(rows(), 0); };
    confirm();
    settle();
}

TEST_F(RecentsDeletion, leavesEditModeAndTheStack) {
    openWith(3);
    auto* stack = objc::peerOf<uikit::NavigationController>(send<"navigationController", objc::Object>());
    const auto above = objc::make<objc::Object>(objc::classNamed<"UIViewController">());
    stack->pushViewControllerAnimated(objc::peerOf<uikit::ViewController>(above.self()), false);
    send<"setEditing:animated:">(true, false);
    ask();
    confirm();
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    EXPECT_EQ(stack->stack().size(), 1U);
}

TEST_F(RecentsDeletion, ofAFilterTakesItsCallsOutOfTheListOfAllCalls) {
    companion().setRows(1, {{.id = 1, .isDialed = true},
                            {.id = 2, .isCanceled = true},
                            {.id = 3, .isReceived = true},
                            {.id = 4, .isMissed = true},
                            {.id = 5, .isDialed = true}});
    struct Case {
        int segment;
        std::vector<int> left;
    };
    for (const auto& [segment, left] : {Case{1, {3, 4}}, Case{2, {1, 2, 4, 5}}, Case{3, {1, 2, 3, 5}}}) {
        open();
        companion().lists[0].store(callcompanion::arrayOf({{.id = 1, .isDialed = true},
                                                           {.id = 2, .isCanceled = true},
                                                           {.id = 3, .isReceived = true},
                                                           {.id = 4, .isMissed = true},
                                                           {.id = 5, .isDialed = true}}));
        companion().setRows(segment + 1, people(2));
        pick(segment);
        settle();
        ask();
        confirm();
        settle();
        EXPECT_EQ(callcompanion::idsIn(companion().list(1)), left) << segment;
        EXPECT_EQ(rows(), 0);
    }
}

TEST_F(RecentsDeletion, ofMissedCallsLowersTheRowsByThoseThatTheListOfAllHeldBeforeTheReload) {
    openWith(4);
    companion().lists[0].store(callcompanion::arrayOf(
        {{.id = 1, .isMissed = true}, {.id = 2, .isMissed = true}, {.id = 3, .isMissed = true}}));
    companion().setRows(4, people(9));
    pick(3);
    settle();
    long before = 0;
    companion().duringDropping = [&] { before = rows(); };
    trace();
    ask();
    log().clear();
    confirm();
    settle();
    EXPECT_EQ(before, -3);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(companion().list(1).count(), 0U);
    EXPECT_THAT(log().linesWith("updateDateEntry"), ElementsAre("worker: updateDateEntry"));
}

TEST_F(RecentsDeletion, ofMissedCallsLowersRowsAndTotalByTheThreeThatTheListOfAllHeld) {
    openWith(4);
    companion().lists[0].store(callcompanion::arrayOf({{.id = 1, .isMissed = true},
                                                       {.id = 2, .isReceived = true},
                                                       {.id = 3, .isMissed = true},
                                                       {.id = 4, .isMissed = true}}));
    companion().setRows(4, people(9));
    pick(3);
    settle();
    EXPECT_EQ(header(), "9 of MSD shown");
    EXPECT_EQ(footer(), "of 9");
    std::vector<std::string> beforeTheReload;
    companion().duringDropping = [&] { beforeTheReload = {header(), footer()}; };
    send<"removeAllRecords">();
    settle();
    EXPECT_THAT(beforeTheReload, ElementsAre("6 of MSD shown", "of 6"));
}

/// Only reached by the message itself: while a search is on, the button deletes what was found.
TEST_F(RecentsDeletion, ofAFilterDuringASearchTakesEveryMatchOutOfAllCallsOnceForEachOnPurpose) {
    openWith(0);
    companion().lists[0].store(callcompanion::arrayOf({{.id = 1, .name = "p", .number = "100"},
                                                       {.id = 2, .name = "q", .number = "200"},
                                                       {.id = 3, .name = "r", .number = "100"}}));
    companion().setRows(4, {{.id = 4, .name = "p", .number = "100"}, {.id = 5, .name = "p", .number = "300"}});
    pick(3);
    settle();
    type("p");
    settle();
    std::vector<int> left;
    companion().duringDropping = [&] { left = callcompanion::idsIn(companion().list(1)); };
    send<"removeAllRecords">();
    settle();
    EXPECT_THAT(left, ElementsAre(2)) << "a name or a number is enough";
}

TEST_F(RecentsDeletion, ofAFilterDuringAGroupedSearchTakesTheCallsOffTheGroupedEntries) {
    companion().isGroupContacts = true;
    openWith(0);
    const auto five = callcompanion::entryOf({.id = 1, .name = "p", .number = "100", .count = 5});
    const auto two = callcompanion::entryOf({.id = 2, .name = "q", .number = "200", .count = 2});
    auto all = callcompanion::arrayOf({});
    all->addObject(five.get());
    all->addObject(two.get());
    companion().lists[0].store(all);
    companion().setRows(
        4, {{.id = 4, .name = "p", .number = "100", .count = 2}, {.id = 5, .name = "q", .number = "200", .count = 2}});
    pick(3);
    settle();
    type("0");
    settle();
    std::vector<int> left;
    companion().duringDropping = [&] { left = callcompanion::idsIn(companion().list(1)); };
    send<"removeAllRecords">();
    settle();
    EXPECT_THAT(left, ElementsAre(1));
    EXPECT_EQ(five->count(), 3);
}

TEST_F(RecentsDeletion, thatTheDatabaseRefusesReloadsTheListWithoutAMessage) {
    openWith(3);
    companion().refusesDeletions = true;
    ask();
    confirm();
    settle();
    EXPECT_EQ(rows(), 3);
    EXPECT_THAT(log().linesWith("error"), IsEmpty());
    EXPECT_THAT(log().linesWith("list "), IsEmpty()) << "no list is dropped";
}

TEST_F(RecentsDeletion, thatTheDatabaseRefusesGoesBackToTheRootAllTheSame) {
    openWith(3);
    auto* stack = objc::peerOf<uikit::NavigationController>(send<"navigationController", objc::Object>());
    const auto above = objc::make<objc::Object>(objc::classNamed<"UIViewController">());
    stack->pushViewControllerAnimated(objc::peerOf<uikit::ViewController>(above.self()), false);
    companion().refusesDeletions = true;
    ask();
    confirm();
    settle();
    EXPECT_EQ(stack->stack().size(), 1U);
}

TEST_F(RecentsDeletion, postsNothing) {
    openWith(3);
    while (notify::pending()) notify::deliverPending();
    ask();
    confirm();
    settle();
    EXPECT_FALSE(notify::pending());
}

TEST_F(RecentsDeletion, upkeepOfAllCallsWithoutASearchForgetsTheOtherFilters) {
    openWith(3);
    companion().setRows(2, people(2));
    pick(1);
    settle();
    pick(0);
    settle();
    for (auto& count : companion().counts) count = 9;
    auto list = callcompanion::arrayOf(people(3));
    send<"removeCallsFromCallList:">(list.get());
    EXPECT_EQ(list->count(), 0U);
    EXPECT_EQ(companion().list(2).count(), 0U);
    EXPECT_EQ(companion().counts[0], 0);
    EXPECT_EQ(companion().counts[1], 0);
    EXPECT_EQ(companion().counts[2], 9) << "a filter without a list keeps its count";
    send<"initializeCallList">();
}

}  // namespace
}  // namespace recentsmessages

// The first page, the row count rule at work, and which thread does what.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

using RecentsLoading = RecentsMessages;

TEST_F(RecentsLoading, theFirstPageIsReadUnderTheIndicatorOnItsOwnThread) {
    companion().setRows(1, people(120));
    companion().durations[0] = 90;
    open();
    EXPECT_EQ(rows(), 51);
    EXPECT_EQ(header(), "50 shown");
    EXPECT_EQ(footer(), "of 120, 90 s");
    EXPECT_EQ(callcompanion::idsIn(companion().list(1)).size(), 50U);
    send<"handleReloadDataAction">();
    trace();
    send<"initDatabase">();
    settle();
    EXPECT_THAT(log().lines(),
                ElementsAre("main: initDatabase",
                            "main: loadCallRecordsFromDB:", "main: showHUD:detailText:delegate:mode:selector:",
                            "main: showHUD:detailText:delegate:mode:selector:withObject:",
                            "main: indicator \"LOADING\"", "worker: loadCallRecsFromDBInBackGround",
                            "worker: initializeCallList", "worker: count of 1", "worker: read 50 from 0 of 1",
                            "worker: refreshTableData", "worker: duration of 1", "worker: refreshTableData",
                            "main: setEditing:animated:", "main: updateNavigationBarButtonItems:groupEdit:"));
}

TEST_F(RecentsLoading, anEmptyDatabaseIsCountedAndShowsNoRow) {
    open();
    companion().lists[0].store(callcompanion::arrayOf(people(3)));
    send<"initializeCallList">();
    EXPECT_THAT(log().linesWith("count of"), ElementsAre("main: count of 1"));
    EXPECT_EQ(companion().list(1).count(), 0U);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(header(), "");
    EXPECT_EQ(footer(), "");
}

TEST_F(RecentsLoading, aPartlyLoadedPageIsFilledUp) {
    companion().setRows(1, people(150));
    open();
    companion().lists[0].store(callcompanion::arrayOf(people(30)));
    send<"initializeCallList">();
    EXPECT_THAT(log().linesWith("read"), ElementsAre("main: read 20 from 30 of 1"));
    EXPECT_EQ(rows(), 51);
}

TEST_F(RecentsLoading, aRaisedPageSizeReadsAWholePageBesideWhatTheUserHadReached) {
    companion().setRows(1, people(150));
    companion().pageSize = 25;
    open();
    send<"loadMoreRecordsAction">();
    log().clear();
    companion().pageSize = 80;
    send<"initializeCallList">();
    // 80, not the 30 that the page lacks.
    EXPECT_THAT(log().linesWith("read"), ElementsAre("main: read 80 from 50 of 1"));
}

TEST_F(RecentsLoading, whatTheUserHadReachedIsShownAgainWithoutReading) {
    companion().setRows(1, people(150));
    open();
    send<"loadMoreRecordsAction">();
    log().clear();
    send<"initializeCallList">();
    EXPECT_THAT(log().linesWith("read"), IsEmpty());
    EXPECT_EQ(rows(), 101);
}

TEST_F(RecentsLoading, aLoweredPageSizeShortensAWholeList) {
    companion().setRows(1, people(40));
    companion().counts[0] = 40;
    open();
    EXPECT_EQ(rows(), 40);
    companion().pageSize = 20;
    send<"initializeCallList">();
    EXPECT_EQ(rows(), 21);
}

TEST_F(RecentsLoading, readingAfterADeletionSortsTheList) {
    companion().setRows(1, people(60));
    open();
    companion().lists[0].load()->removeAllObjects();
    companion().isAnyRecordDeleted = true;
    send<"initializeCallList">();
    EXPECT_THAT(log().linesWith("sort"), ElementsAre("main: sort"));
}

TEST_F(RecentsLoading, theDurationThatIsKnownIsNotAskedForAgain) {
    companion().setRows(1, people(5));
    open();
    companion().keptDurations[0] = 77;
    send<"initializeCallList">();
    EXPECT_THAT(log().linesWith("duration of"), IsEmpty());
    EXPECT_EQ(footer(), "of 5, 77 s");
}

TEST_F(RecentsLoading, inTheBackgroundReturnsToTheMainQueueForTheEditingUpkeep) {
    companion().setRows(1, people(5));
    open();
    trace();
    send<"loadCallRecsFromDBInBackGround">();
    EXPECT_THAT(log().linesWith("setEditing"), IsEmpty());
    settle();
    EXPECT_THAT(log().linesWith("setEditing"), ElementsAre("main: setEditing:animated:"));
}

TEST_F(RecentsLoading, onAQueueDoesTheEditingUpkeepThereOnPurpose) {
    companion().setRows(1, people(5));
    open();
    trace();
    companion().isAnyRecordDeleted = true;
    send<"viewAppearedAction">();
    settle();
    EXPECT_THAT(log().linesWith("loadCallRecsFromDB"), ElementsAre("default: loadCallRecsFromDB"));
    EXPECT_THAT(log().linesWith("setEditing"), ElementsAre("default: setEditing:animated:"));
}

TEST_F(RecentsLoading, keepsEditModeWhileThereAreRowsAndEndsItWithTheLastOne) {
    companion().setRows(1, people(5));
    open();
    send<"setEditing:animated:">(true, false);
    send<"loadCallRecsFromDB">();
    EXPECT_TRUE((send<"isEditing", bool>()));
    companion().setRows(1, {});
    companion().lists[0].load()->removeAllObjects();
    send<"loadCallRecsFromDB">();
    EXPECT_FALSE((send<"isEditing", bool>()));
}

TEST_F(RecentsLoading, addsUpDurationsAndRemembersHowManyEntriesThereWere) {
    companion().setRows(1, people(4));
    open();
    EXPECT_EQ((send<"getCallsDuration:", int>(companion().list(1))), 120);
    // Every row of the list counts as loaded now: a search would not offer more.
    EXPECT_EQ((send<"getCallsDuration:", int>(NSArray{})), 0);
}

}  // namespace
}  // namespace recentsmessages

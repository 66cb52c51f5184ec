// What a reload leaves of a search and of a list, and how often the table is told.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

using RecentsReload = RecentsMessages;

TEST_F(RecentsReload, forgetsWhatASearchHasFoundAndLoaded) {
    companion().setRows(1, people(3));
    open();
    type("person");
    settle();
    companion().matches = {callcompanion::entryOf({.id = 90, .name = "Person of the database"})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 90));
    send<"handleReloadDataAction">();
    send<"searchTableView">();
    EXPECT_THAT(found(), IsEmpty());
    send<"initializeCallList">();
    send<"searchTableView">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsReload, keepsTheListOfALogThatHasOneCall) {
    companion().setRows(1, people(1));
    open();
    companion().lists[0].store(callcompanion::arrayOf(people(1)));
    send<"initializeCallList">();
    EXPECT_EQ(companion().list(1).count(), 1U);
    EXPECT_THAT(log().linesWith("read"), IsEmpty());
    EXPECT_EQ(footer(), "of 1, 0 s");
}

TEST_F(RecentsReload, ofAPageLeavesTheLastWordToASearchThatBeginsMeanwhile) {
    companion().setRows(1, people(120));
    open();
    companion().duringReading = [this, isOver = false]() mutable {
        if (!std::exchange(isOver, true)) type("Person 1005");
    };
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(found(), ElementsAre(5));
    EXPECT_EQ(rows(), 2) << "with the load-more row";
}

TEST_F(RecentsReload, duringASearchTellsTheTableOnce) {
    companion().setRows(1, people(3));
    companion().counts[0] = 3;
    open();
    type("person");
    settle();
    trace();
    log().clear();
    send<"loadCallRecsFromDB">();
    EXPECT_THAT(log().linesWith("searchTableView"), ElementsAre("main: searchTableView"));
    EXPECT_THAT(log().linesWith("refreshTableData"), ElementsAre("main: refreshTableData"));
    settle();
}

}  // namespace
}  // namespace recentsmessages

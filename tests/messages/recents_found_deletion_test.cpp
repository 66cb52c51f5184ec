// Deleting what a search found.
#include "tests/messages/recents_deletion.h"

namespace recentsmessages {
namespace {

class RecentsFoundDeletion : public RecentsDeletion {
  protected:
    /// A search of missed calls that found 1, 2 and 3.
    void findMissed() {
        companion().setRows(1, people(3));
        companion().setRows(4, people(3));
        open();
        pick(3);
        settle();
        type("person");
        settle();
        log().clear();
    }
};

TEST_F(RecentsFoundDeletion, showsMinusOneRowWhereEverythingWasLoadedOnPurpose) {
    findMissed();
    send<"loadMoreSearchedRecords">();
    ask();
    companion().refusesDeletions = true;
    confirm();
    EXPECT_EQ(rows(), -1);
}

TEST_F(RecentsFoundDeletion, showsTheLoadMoreRowAloneWhereMoreCanBeLoaded) {
    findMissed();
    ask();
    companion().refusesDeletions = true;
    confirm();
    EXPECT_EQ(rows(), 1);
}

TEST_F(RecentsFoundDeletion, runsInThisOrder) {
    findMissed();
    ask();
    log().clear();
    trace();
    confirm();
    settle();
    EXPECT_THAT(work(), ElementsAre("main: handleDeleteAllAction", "main: removeSearchedRecordsInBackGround",
                                    "worker: removeSearchedRecords", "worker: delete listed 3 of 4 YES",
                                    "worker: removeCallsFromCallList:", "worker: forget entry 1 of 4",
                                    "worker: forget entry 2 of 4", "worker: forget entry 3 of 4",
                                    "worker: setEditing:", "worker: setEditing:animated:", "worker: editButtonClicked:",
                                    "worker: updateNavigationBarButtonItems:groupEdit:", "worker: initializeCallList",
                                    "worker: count of 4", "worker: duration of 4", "worker: refreshTableData",
                                    "main: setEditing:animated:", "main: updateNavigationBarButtonItems:groupEdit:"));
}

TEST_F(RecentsFoundDeletion, leavesTheResultsEmptyAndTheirEditMode) {
    findMissed();
    send<"editButtonClicked:">(objc::Object{});
    settle();
    ask();
    confirm();
    settle();
    EXPECT_FALSE(results()->isEditing());
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_TRUE(button(1)->isHidden());
}

TEST_F(RecentsFoundDeletion, thatEmptiesTheLoadedListShowsTheMatchesOfThePageThatFollows) {
    companion().setRows(1, people(120));
    open();
    type("person");
    settle();
    ask();
    confirm();
    settle();
    const auto shown = found();
    EXPECT_EQ(shown.size(), 50U);
    EXPECT_EQ(shown.front(), 51);
}

TEST_F(RecentsFoundDeletion, dropsAListOfAllCallsThatWasPagedWhileGrouped) {
    companion().isGroupContacts = true;
    companion().setRows(1, people(120));
    companion().setRows(4, people(3));
    open();
    send<"loadMoreRecordsAction">();
    pick(3);
    settle();
    type("person");
    ask();
    confirm();
    settle();
    EXPECT_FALSE(companion().list(1));
    EXPECT_EQ(companion().counts[0], 0);
    // Forgotten again, so that other tests begin without it.
    type("");
    companion().isNeedToLoadData = true;
    send<"viewAppearedAction">();
    settle();
}

TEST_F(RecentsFoundDeletion, thatIsRefusedSaysSoAndLeavesTheListsAsTheyWere) {
    findMissed();
    companion().refusesDeletions = true;
    ask();
    log().clear();
    confirm();
    settle();
    EXPECT_THAT(log().linesWith("error"), ElementsAre(HasSubstr("worker: error")));
    EXPECT_THAT(log().linesWith("forget"), IsEmpty());
    send<"searchTableView">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsFoundDeletion, thatIsRefusedSaysSoInTheHostsOwnWordsUnlikeEveryOtherTextOnPurpose) {
    findMissed();
    companion().refusesDeletions = true;
    ask();
    confirm();
    settle();
    // The main bundle's own table says this; the companion's texts are their keys.
    EXPECT_THAT(log().linesWith("error"), ElementsAre("worker: error \"The calls found stay.\""));
}

TEST_F(RecentsFoundDeletion, takesWhatWasFoundWhenItBeganOutOfTheListsThoughMoreIsFoundMeanwhile) {
    findMissed();
    companion().matches = {callcompanion::entryOf({.id = 9, .name = "Person 1009"})};
    companion().duringDeletion = [this] { send<"loadMoreSearchedRecords">(); };
    send<"removeSearchedRecords">();
    settle();
    EXPECT_THAT(log().linesWith("delete listed"), ElementsAre("main: delete listed 3 of 4 YES"));
    EXPECT_THAT(log().linesWith("forget"),
                ElementsAre("main: forget entry 1 of 4", "main: forget entry 2 of 4", "main: forget entry 3 of 4"));
}

TEST_F(RecentsFoundDeletion, postsNothing) {
    findMissed();
    while (notify::pending()) notify::deliverPending();
    ask();
    confirm();
    settle();
    EXPECT_FALSE(notify::pending());
}

TEST_F(RecentsFoundDeletion, takesTheUpkeepsListNotItsArgumentOutOfTheScreensList) {
    findMissed();
    auto other = callcompanion::arrayOf({});
    send<"removeCallsFromCallList:">(other.get());
    EXPECT_EQ(companion().list(4).count(), 0U);
    EXPECT_THAT(found(), IsEmpty());
}

}  // namespace
}  // namespace recentsmessages

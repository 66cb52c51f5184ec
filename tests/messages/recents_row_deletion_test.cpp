// One row swiped away: the database, the lists, the undo, and the search's copies.
#include <chrono>
#include <future>
#include <utility>

#include "desktop/notify/notify.h"
#include "platform/dispatch.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsRowDeletion : public RecentsMessages {
  protected:
    void SetUp() override {
        RecentsMessages::SetUp();
        forgetPosts();
    }
    static void forgetPosts() {
        while (notify::pending()) notify::deliverPending();
        companion().isNeedToLoadData = false;
    }
    /// What the user does, on the main thread, while the database is asked for the first time.
    static void duringDeletion(std::function<void()> acts) {
        companion().duringDeletion = [acts = std::move(acts), isOver = false]() mutable {
            if (std::exchange(isOver, true)) return;
            std::promise<void> acted;
            dispatch::asyncOnMain([&] {
                acts();
                acted.set_value();
            });
            constexpr std::chrono::seconds bound{30};
            EXPECT_EQ(acted.get_future().wait_for(bound), std::future_status::ready);
        };
    }
    void openWith(int rows) {
        companion().setRows(1, people(rows));
        companion().counts[0] = rows;
        open();
    }
};

TEST_F(RecentsRowDeletion, takesTheCallOutOfTheDatabaseOnTheDefaultQueueAndThenAnnouncesIt) {
    openWith(5);
    trace();
    swipe(1);
    EXPECT_EQ(rows(), 4) << "the row left at once";
    settle();
    EXPECT_THAT(log().lines(), ElementsAre("main: removeRowData:indexPath:", "default: delete entry 2 of 1",
                                           "default: initializeCallList", "default: duration of 1"));
    EXPECT_THAT(found(), ElementsAre(1, 3, 4, 5));
    EXPECT_TRUE(notify::pending());
    forgetPosts();
}

TEST_F(RecentsRowDeletion, withoutAnEntryDoesNothing) {
    openWith(5);
    send<"removeRowData:indexPath:">(objc::Object{}, objc::Object{});
    settle();
    EXPECT_THAT(log().lines(), IsEmpty());
    EXPECT_FALSE(notify::pending());
}

TEST_F(RecentsRowDeletion, ofADayDeletesTheWholeDayAndLowersTheCountByExactlyOne) {
    companion().isGroupByDate = true;
    companion().setRows(5, {{.id = 1, .day = "2024-06-15"}, {.id = 2, .day = "2024-06-14"}});
    companion().counts[0] = 2;
    companion().keptDurations[0] = 500;
    open();
    swipe(1);
    settle();
    EXPECT_THAT(log().linesWith("delete"), ElementsAre("default: delete filter 1 on 2024-06-14"));
    EXPECT_EQ(companion().counts[0], 1);
    EXPECT_THAT(log().linesWith("duration of"), ElementsAre("default: duration of 1")) << "the kept one was cleared";
    forgetPosts();
}

TEST_F(RecentsRowDeletion, thatIsRefusedPutsTheEntryBackAtItsRowWithoutAMessageOrAPost) {
    openWith(10);
    companion().refusesDeletions = true;
    companion().duringDeletion = [this] { EXPECT_EQ(rows(), 9); };
    trace();
    swipe(4);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_THAT(log().lines(), ElementsAre("main: removeRowData:indexPath:", "default: delete entry 5 of 1",
                                           "default: refreshTableData"));
    EXPECT_FALSE(notify::pending());
}

TEST_F(RecentsRowDeletion, thatIsRefusedOnAWholeListLeavesTheTotalThatTheCommitHadLowered) {
    openWith(10);
    companion().refusesDeletions = true;
    swipe(4);
    settle();
    EXPECT_EQ(header(), "10 shown");
    EXPECT_EQ(footer(), "of 9, 0 s");
}

TEST_F(RecentsRowDeletion, thatIsRefusedWithNineRowsOfTenShowsTenOfEleven) {
    companion().setRows(1, people(10));
    companion().pageSize = 9;
    open();
    companion().refusesDeletions = true;
    EXPECT_EQ(header(), "9 shown");
    EXPECT_EQ(footer(), "of 10, 0 s");
    const auto entry = callcompanion::entryOf({.id = 77});
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(4L, 0L);
    send<"removeRowData:indexPath:">(entry.get(), path);
    settle();
    EXPECT_EQ(header(), "10 shown");
    EXPECT_EQ(footer(), "of 11, 0 s");
    EXPECT_EQ(shownAt(4), 77);
}

TEST_F(RecentsRowDeletion, thatIsRefusedAfterASwitchComesBackToTheListThatItWasTakenFrom) {
    companion().setRows(4, people(2));
    openWith(5);
    companion().refusesDeletions = true;
    duringDeletion([this] {
        pick(3);
        send<"initializeCallList">();
    });
    swipe(2);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2));
    pick(0);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(RecentsRowDeletion, thatIsRefusedAfterAReloadShowsTheEntryOnce) {
    openWith(5);
    companion().refusesDeletions = true;
    duringDeletion([this] {
        send<"handleReloadDataAction">();
        send<"initializeCallList">();
    });
    swipe(2);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(RecentsRowDeletion, ofTheLastRowEndsEditModeOnTheMainQueue) {
    openWith(1);
    send<"editButtonClicked:">(objc::Object{});
    settle();
    swipe(0);
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    EXPECT_EQ(right(), "-");
    forgetPosts();
}

TEST_F(RecentsRowDeletion, ofOneResultSearchesAgainAndLeavesTheOthers) {
    openWith(5);
    type("person");
    trace();
    log().clear();
    swipe(1);
    settle();
    EXPECT_THAT(log().linesWith("updateSearchRecords"), ElementsAre("default: updateSearchRecords:"));
    EXPECT_THAT(log().linesWith("searchTableView"), ElementsAre("default: searchTableView"));
    EXPECT_THAT(found(), Contains(2).Times(0));
    forgetPosts();
}

/// A search whose copies hold what the database matched.
class RecentsSearchCopies : public RecentsRowDeletion {
  protected:
    void load(int segment, const std::vector<Call>& calls) {
        pick(segment);
        settle();
        companion().matches.clear();
        for (const auto& call : calls) companion().matches.push_back(callcompanion::entryOf(call));
        send<"loadMoreSearchedRecords">();
    }
    /// What the search of the segment shows now, found in its copies alone.
    std::vector<int> shown(int segment) {
        pick(segment);
        settle();
        return found();
    }
    void searchNothingLoaded() {
        open();
        type("p");
        settle();
    }
    int countOf(int id) const {
        for (const auto& entry : kept_)
            if (entry->ROWID() == id) return entry->count();
        return -1;
    }
    std::vector<objc::Strong<QVCallEntry>> kept_;
};

TEST_F(RecentsSearchCopies, ofADialledCallLoseItAndTheGroupedEntryOfAllCallsLosesItsCalls) {
    companion().isGroupContacts = true;
    searchNothingLoaded();
    companion().matches = {callcompanion::entryOf({.id = 21, .name = "p", .number = "100", .count = 5}),
                           callcompanion::entryOf({.id = 22, .name = "pp", .number = "200", .count = 2})};
    kept_ = companion().matches;
    send<"loadMoreSearchedRecords">();
    load(1,
         {{.id = 31, .name = "p", .number = "100", .count = 2}, {.id = 32, .name = "pp", .number = "200", .count = 2}});
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 31, .name = "p", .number = "100", .count = 2}).get());
    EXPECT_THAT(shown(1), ElementsAre(32));
    EXPECT_EQ(countOf(21), 3);
    EXPECT_THAT(shown(0), ElementsAre(21, 22));
    pick(1);
    settle();
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 32, .name = "pp", .number = "200", .count = 2}).get());
    EXPECT_THAT(shown(1), IsEmpty());
    EXPECT_THAT(shown(0), ElementsAre(21)) << "an entry without calls leaves";
}

TEST_F(RecentsSearchCopies, ofAllFiltersLoseACallThatWasDeletedAmongAllCalls) {
    companion().isGroupContacts = true;
    searchNothingLoaded();
    load(0, {{.id = 21, .name = "p", .number = "100"}, {.id = 22, .name = "pq", .number = "200"}});
    load(1, {{.id = 31, .name = "p", .number = "100"}});
    load(3, {{.id = 41, .name = "p", .number = "900"}});
    pick(0);
    settle();
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 21, .name = "p", .number = "100"}).get());
    EXPECT_THAT(shown(0), ElementsAre(22));
    EXPECT_THAT(shown(1), IsEmpty());
    EXPECT_THAT(shown(3), IsEmpty()) << "the same name is enough";
}

TEST_F(RecentsSearchCopies, ungroupedKeepACallOfTheSameNameWithAnotherRecord) {
    searchNothingLoaded();
    load(1, {{.id = 31, .name = "p", .number = "100"}, {.id = 32, .name = "p", .number = "100"}});
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 32, .name = "p", .number = "100"}).get());
    EXPECT_THAT(shown(1), ElementsAre(31));
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 99, .name = "p", .number = "100"}).get());
    EXPECT_THAT(shown(1), ElementsAre(31));
}

TEST_F(RecentsSearchCopies, ofAFilterThatHasNoneAreNotLookedFor) {
    companion().isGroupContacts = true;
    searchNothingLoaded();
    load(0, {{.id = 21, .name = "p", .number = "100", .count = 2}});
    pick(1);
    settle();
    send<"updateSearchRecords:">(callcompanion::entryOf({.id = 31, .name = "p", .number = "100", .count = 2}).get());
    EXPECT_THAT(shown(0), ElementsAre(21));
}

TEST_F(RecentsSearchCopies, loseOneEntryAtMost) {
    companion().isGroupContacts = true;
    openWith(0);
    auto copies = callcompanion::arrayOf({{.id = 1, .name = "p"}, {.id = 2, .name = "q"}, {.id = 3, .name = "p"}});
    const auto deleted = callcompanion::entryOf({.id = 9, .name = "p", .number = "7"});
    send<"removeSearchRecordFromList:sourceList:">(deleted.get(), copies.get());
    EXPECT_THAT(callcompanion::idsIn(copies), ElementsAre(2, 3));
    send<"removeSearchRecordFromList:sourceList:">(deleted.get(), objc::Object{});
}

}  // namespace
}  // namespace recentsmessages

// What tells one call from another: its record while results are compared with each other, its row in the database
// where rows are.
#include "desktop/notify/notify.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsIdentity : public RecentsMessages {
  protected:
    void TearDown() override {
        while (notify::pending()) notify::deliverPending();
        RecentsMessages::TearDown();
    }
};

TEST_F(RecentsIdentity, aSearchOfLoadedCallsFindsEachRecordOnce) {
    companion().setRows(1, {{.id = 1, .name = "p", .number = "1", .record = 7},
                            {.id = 2, .name = "p", .number = "2", .record = 7},
                            {.id = 3, .name = "p", .number = "3", .record = 8}});
    open();
    type("p");
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 3));
}

TEST_F(RecentsIdentity, matchesOfTheDatabaseAreAddedUnlessTheirRowIsShown) {
    companion().setRows(1, {{.id = 1, .name = "p", .number = "1", .record = 7}});
    open();
    type("p");
    settle();
    companion().matches = {callcompanion::entryOf({.id = 1, .name = "p", .number = "1", .record = 8}),
                           callcompanion::entryOf({.id = 2, .name = "p", .number = "2", .record = 7})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2));
}

TEST_F(RecentsIdentity, copiesLoseTheDeletedRecord) {
    open();
    auto copies = callcompanion::arrayOf({{.id = 31, .name = "p", .record = 5}, {.id = 32, .name = "p", .record = 6}});
    const auto deleted = callcompanion::entryOf({.id = 32, .name = "p", .record = 5});
    send<"removeSearchRecordFromList:sourceList:">(deleted.get(), copies.get());
    EXPECT_THAT(callcompanion::idsIn(copies), ElementsAre(32));
}

TEST_F(RecentsIdentity, aRefusedDeletionPutsARowBackWhateverTheRecordsOfTheOthers) {
    companion().setRows(1, {{.id = 1, .name = "p", .record = 2},
                            {.id = 2, .name = "q", .record = 7},
                            {.id = 3, .name = "r", .record = 7}});
    open();
    companion().refusesDeletions = true;
    swipe(1);
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

}  // namespace
}  // namespace recentsmessages

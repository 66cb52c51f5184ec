// When a search counts as complete: after a load, and after a switch of the filter.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsCompleteness : public RecentsMessages {
  protected:
    void TearDown() override {
        if (screen()) countEntries(0);
        RecentsMessages::TearDown();
    }
    /// Has the screen add up the durations of so many entries, of which it remembers the number.
    void countEntries(int count) const { send<"getCallsDuration:", int>(callcompanion::arrayOf(people(count)).get()); }
};

TEST_F(RecentsCompleteness, afterALoadIsThatEveryEntryCountedLastIsARow) {
    companion().setRows(1, people(60));
    open();
    type("person");
    EXPECT_EQ(rows(), 51);
    countEntries(0);
    send<"initializeCallList">();
    EXPECT_EQ(rows(), 0) << "no row, and none was counted";
    countEntries(3);
    send<"initializeCallList">();
    EXPECT_EQ(rows(), 1) << "three were counted: the load-more row stands alone";
}

TEST_F(RecentsCompleteness, afterASwitchIsThatTheFiltersRestWasLoadedBefore) {
    companion().setRows(1, people(60));
    companion().setRows(4, people(60));
    open();
    type("person");
    settle();
    pick(3);
    settle();
    EXPECT_EQ(rows(), 51) << "fifty found, and more to load";
    send<"loadMoreSearchedRecords">();
    pick(0);
    settle();
    EXPECT_EQ(rows(), 51);
    pick(3);
    settle();
    EXPECT_EQ(rows(), 50) << "its rest was loaded, though there was none";
}

}  // namespace
}  // namespace recentsmessages

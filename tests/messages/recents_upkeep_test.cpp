// The lists, the counts and the edit mode after deletions of many calls.
#include "tests/messages/recents_deletion.h"

namespace recentsmessages {
namespace {

class RecentsUpkeep : public RecentsDeletion {
  protected:
    /// All four lists loaded, each count 9; the filter of the segment is shown.
    void openLists(int segment) {
        for (const int filter : {1, 2, 3, 4}) companion().setRows(filter, people(3));
        open();
        for (const int other : {1, 2, 3, 0, segment}) {
            pick(other);
            settle();
        }
        for (auto& count : companion().counts) count = 9;
        log().clear();
    }
    static std::vector<std::int64_t> counts() { return {companion().counts.begin(), companion().counts.end()}; }
    static std::vector<NSUInteger> lengths() {
        std::vector<NSUInteger> found;
        for (const int filter : {1, 2, 3, 4}) found.push_back(companion().list(filter).count());
        return found;
    }
};

TEST_F(RecentsUpkeep, ofAllCallsEmptiesTheOtherListsAndForgetsEveryCount) {
    openLists(0);
    auto deleted = callcompanion::arrayOf(people(3));
    send<"removeCallsFromCallList:">(deleted.get());
    EXPECT_EQ(deleted->count(), 0U);
    EXPECT_THAT(counts(), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(lengths(), ElementsAre(3, 0, 0, 0));
    EXPECT_EQ(shownAt(0), 0) << "the screen has let its list go";
    EXPECT_THAT(log().linesWith("forget"), IsEmpty());
}

TEST_F(RecentsUpkeep, ofAnotherFilterTakesItsCallsFromTheServiceAndLeavesTheOtherLists) {
    for (const int segment : {1, 2, 3}) {
        openLists(segment);
        auto deleted = callcompanion::arrayOf(people(2));
        send<"removeCallsFromCallList:">(deleted.get());
        const std::string filter = std::to_string(segment + 1);
        EXPECT_THAT(log().linesWith("forget"),
                    ElementsAre("main: forget entry 1 of " + filter, "main: forget entry 2 of " + filter));
        EXPECT_EQ(deleted->count(), 0U);
        EXPECT_THAT(counts(), ElementsAre(9, 9, 9, 9));
        EXPECT_THAT(lengths(), ElementsAre(3, 3, 3, 3));
        EXPECT_EQ(shownAt(0), 0);
    }
}

TEST_F(RecentsUpkeep, ofASearchDropsWhatEveryFiltersSearchHadLoaded) {
    openWith(3);
    type("person");
    settle();
    companion().matches = {callcompanion::entryOf({.id = 90, .name = "Person of the database"})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 90));
    ask();
    confirm();
    settle();
    send<"searchTableView">();
    EXPECT_THAT(found(), Not(Contains(90)));
}

TEST_F(RecentsUpkeep, deletingAllEndsARowsSwipeSoThatTheNextTapBeginsEditMode) {
    openWith(3);
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(0L, 0L);
    send<"tableView:willBeginEditingRowAtIndexPath:">(table()->object(), path);
    settle();
    ask();
    companion().refusesDeletions = true;
    confirm();
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    send<"editButtonClicked:">(objc::Object{});
    EXPECT_TRUE((send<"isEditing", bool>()));
    send<"editButtonClicked:">(objc::Object{});
    settle();
}

TEST_F(RecentsUpkeep, theQuestionStandsInTheViewOfTheScreensParent) {
    openWith(3);
    ask();
    auto* navigation = objc::peerOf<uikit::NavigationController>(send<"navigationController", objc::Object>());
    EXPECT_EQ(viewOfSheet(), navigation->view());
}

TEST_F(RecentsUpkeep, withReplaceRecentsOffAFullListHasNoTitles) {
    openWith(3);
    EXPECT_EQ(header(), "3 shown");
    EXPECT_EQ(footer(), "of 3, 0 s");
    companion().isReplaceRecentsOn = false;
    EXPECT_EQ(header(), "");
    EXPECT_EQ(footer(), "");
}

}  // namespace
}  // namespace recentsmessages

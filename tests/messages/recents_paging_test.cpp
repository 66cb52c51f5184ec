// Load more: pages from memory and from the database, the rest of a search, the row that loads by coming into view.
#include "desktop/uikit/activity_indicator.h"
#include "desktop/uikit/text.h"
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsPaging : public RecentsMessages {
  protected:
    void openWith(int rows, int pageSize) {
        companion().setRows(1, people(rows));
        companion().pageSize = pageSize;
        open();
    }
    /// Asks for the load-more row, as the table does when it comes into view.
    uikit::TableViewCell* moreRow() const {
        const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(rows() - 1, 0L);
        return objc::peerOf<uikit::TableViewCell>(
            send<"tableView:cellForRowAtIndexPath:", objc::Object>(table()->object(), path));
    }
};

TEST_F(RecentsPaging, aFullPageFromTheDatabaseIsBelievedAndNotCounted) {
    openWith(45, 20);
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(log().lines(), ElementsAre("main: read 20 from 20 of 1"));
    EXPECT_EQ(rows(), 41);
}

TEST_F(RecentsPaging, aShortPageHasTheTotalCountedAgain) {
    openWith(45, 20);
    companion().mostPerReading = 15;
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(log().lines(), ElementsAre("main: read 20 from 20 of 1", "main: count of 1"));
    EXPECT_EQ(rows(), 36);
}

TEST_F(RecentsPaging, theLastPageIsFullWhenItReachesTheTotal) {
    openWith(45, 20);
    send<"loadMoreRecordsAction">();
    log().clear();
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(log().lines(), ElementsAre("main: read 20 from 40 of 1"));
    EXPECT_EQ(rows(), 45);
}

TEST_F(RecentsPaging, aReadingThatBringsNothingLeavesTheRowsAndHasTheTotalCounted) {
    openWith(45, 20);
    companion().mostPerReading = 0;
    companion().rows[0].resize(20);
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(log().lines(), ElementsAre("main: read 20 from 20 of 1", "main: count of 1"));
    EXPECT_EQ(rows(), 20);
    EXPECT_EQ(footer(), "of 20, 0 s");
}

TEST_F(RecentsPaging, aPageThatIsInMemoryIsShownWithoutReading) {
    openWith(100, 20);
    companion().lists[0].store(callcompanion::arrayOf(people(40)));
    send<"loadMoreRecordsAction">();
    EXPECT_THAT(log().lines(), IsEmpty());
    EXPECT_EQ(rows(), 41);
}

TEST_F(RecentsPaging, aWholeListInMemoryGrowsByPagesToItsEnd) {
    openWith(45, 20);
    companion().lists[0].store(callcompanion::arrayOf(people(45)));
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 41);
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 45);
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 45);
    EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(RecentsPaging, aWholeListWithinOnePageKeepsItsRows) {
    openWith(15, 20);
    send<"loadMoreRecordsAction">();
    EXPECT_EQ(rows(), 15);
    EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(RecentsPaging, eachFilterRemembersHowFarItWasLoaded) {
    companion().setRows(4, people(90));
    openWith(90, 20);
    send<"loadMoreRecordsAction">();
    pick(3);
    settle();
    EXPECT_EQ(rows(), 21);
    send<"loadMoreRecordsAction">();
    send<"loadMoreRecordsAction">();
    pick(0);
    settle();
    EXPECT_EQ(rows(), 41);
    pick(3);
    settle();
    EXPECT_EQ(rows(), 61);
}

TEST_F(RecentsPaging, theRowLoadsByComingIntoViewOnTheDefaultQueueAndThenStopsItsIndicator) {
    openWith(45, 20);
    trace();
    auto* row = moreRow();
    auto* indicator = objc::peerOf<uikit::ActivityIndicator>(row->accessoryView()->object());
    EXPECT_TRUE(indicator->isAnimating());
    auto* label = objc::peerOf<uikit::Label>(row->contentView()->viewWithTag(1)->object());
    EXPECT_EQ(uikit::utf8(label->text()), "LOAD_MORE_REC");
    const objc::Ref<uikit::ActivityIndicator> kept(indicator);
    settle();
    EXPECT_THAT(log().linesWith("RecordsAction"),
                ElementsAre("main: handleLoadMoreRecordsAction:", "default: loadMoreRecordsAction"));
    EXPECT_THAT(log().linesWith("refreshTableData"), ElementsAre("default: refreshTableData"));
    EXPECT_FALSE(kept->isAnimating());
    EXPECT_EQ(row->accessoryView(), nullptr);
    EXPECT_EQ(rows(), 41);
}

TEST_F(RecentsPaging, theRowOfASearchSaysSoAndLoadsItsRest) {
    openWith(45, 20);
    type("person");
    trace();
    auto* row = moreRow();
    auto* label = objc::peerOf<uikit::Label>(row->contentView()->viewWithTag(1)->object());
    EXPECT_EQ(uikit::utf8(label->text()), "LOAD_MORE_SRCH_REC");
    settle();
    EXPECT_THAT(log().linesWith("search 1"), ElementsAre("default: search 1 for \"person\""));
}

TEST_F(RecentsPaging, theRestOfASearchComesInOneGoAndEndsIt) {
    openWith(45, 20);
    type("person");
    EXPECT_EQ(rows(), 21);
    for (const auto& call : people(45)) companion().matches.push_back(callcompanion::entryOf(call));
    send<"loadMoreSearchedRecords">();
    EXPECT_EQ(rows(), 45);
    EXPECT_EQ(found().size(), 45U);
    EXPECT_EQ(header(), "45 shown");
}

TEST_F(RecentsPaging, theRestOfASearchHoldsNoRecordThatIsShown) {
    openWith(3, 20);
    type("person");
    companion().matches = {callcompanion::entryOf({.id = 1, .name = "Person x"}),
                           callcompanion::entryOf({.id = 8, .name = "Person 1001"})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 8));
}

TEST_F(RecentsPaging, groupedByContactTheRestHoldsNoNameAndNoNumberThatIsShown) {
    companion().isGroupContacts = true;
    companion().setRows(1, {{1, "Anna", "100"}, {2, "Bert", "200"}});
    open();
    type("0");
    companion().matches = {callcompanion::entryOf({.id = 11, .name = "Anna", .number = "900"}),
                           callcompanion::entryOf({.id = 12, .name = "Carl", .number = "200"}),
                           callcompanion::entryOf({.id = 13, .name = "Dora", .number = "300"})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 13));
}

TEST_F(RecentsPaging, aSearchThatEndsWhileItsRestIsFetchedIsGivenNothing) {
    openWith(45, 20);
    type("person");
    for (const auto& call : people(45)) companion().matches.push_back(callcompanion::entryOf(call));
    companion().duringSearch = [this] {
        send<"searchDisplayControllerWillEndSearch:">(send<"searchDisplayController", objc::Object>());
    };
    send<"loadMoreSearchedRecords">();
    EXPECT_EQ(found().size(), 20U) << "the rows of before";
}

TEST_F(RecentsPaging, aSearchWhoseTextChangesWhileItsRestIsFetchedIsGivenNothingOfTheOldText) {
    openWith(45, 20);
    type("person");
    for (const auto& call : people(45)) companion().matches.push_back(callcompanion::entryOf(call));
    companion().duringSearch = [this] {
        companion().duringSearch = nullptr;
        search()->searchBar()->type("person 1003");
    };
    send<"loadMoreSearchedRecords">();
    settle();
    EXPECT_THAT(found(), ElementsAre(3));
}

TEST_F(RecentsPaging, aFilterSwitchedWhileItsPageIsReadKeepsTheOtherFiltersRows) {
    companion().setRows(4, people(7));
    openWith(45, 20);
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        pick(3);
        send<"initializeCallList">();
    };
    send<"loadMoreRecordsAction">();
    settle();
    EXPECT_EQ(rows(), 7);
    pick(0);
    settle();
    EXPECT_EQ(found().front(), 1);
}

TEST_F(RecentsPaging, aSearchThatBeginsWhileAPageIsReadKeepsItsResults) {
    openWith(45, 20);
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        type("person 1003");
    };
    send<"loadMoreRecordsAction">();
    settle();
    EXPECT_THAT(found(), ElementsAre(3));
}

TEST_F(RecentsPaging, listsThatAreEmptiedWhileAPageIsReadShowNoRowThatIsNotThere) {
    openWith(45, 20);
    companion().duringReading = [this] {
        companion().duringReading = nullptr;
        companion().isNeedToLoadData = true;
        send<"viewAppearedAction">();
        settle();
    };
    send<"loadMoreRecordsAction">();
    settle();
    EXPECT_EQ(found().size(), static_cast<std::size_t>(rows() - (rows() < 45 ? 1 : 0)));
}

TEST_F(RecentsPaging, aSearchThatFindsNothingElseHidesTheEditButton) {
    openWith(3, 20);
    type("nobody");
    settle();
    button(2)->setHidden(false);
    send<"loadMoreSearchedRecords">();
    settle();
    EXPECT_TRUE(button(2)->isHidden());
    EXPECT_EQ(rows(), 0);
}

TEST_F(RecentsPaging, theRestOfASearchIsNotFetchedOutsideOne) {
    openWith(45, 20);
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(log().lines(), IsEmpty());
}

}  // namespace
}  // namespace recentsmessages

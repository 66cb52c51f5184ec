// Searching the loaded list: what matches, what is the same, how far it looks, and what begins and ends a search.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

using RecentsSearch = RecentsMessages;

TEST_F(RecentsSearch, anEmptyTextShowsEveryEntryAndLooksForNoDuplicates) {
    companion().isGroupContacts = true;
    companion().setRows(1, {{1, "Anna", "100"}, {2, "Anna", "100"}, {3, "Anna", "100"}});
    open();
    type("x");
    type("");
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsSearch, groupedByContactOneResultStandsForACallerAndANumber) {
    companion().isGroupContacts = true;
    companion().setRows(
        1, {{1, "Anna", "100"}, {2, "Anna", "100"}, {3, "Anna", "200"}, {4, "Bert", "100"}, {5, "Bert", "200"}});
    open();
    type("0");
    // The last one's name and number were both seen, though with others.
    EXPECT_THAT(found(), ElementsAre(1, 3, 4));
}

TEST_F(RecentsSearch, groupedByContactCallersWithoutANameAreKnownByTheirNumber) {
    companion().isGroupContacts = true;
    companion().setRows(1, {{1, nullptr, "100"}, {2, nullptr, "100"}, {3, nullptr, "200"}});
    open();
    type("00");
    EXPECT_THAT(found(), ElementsAre(1, 3));
}

TEST_F(RecentsSearch, ungroupedOneRecordNeverShowsTwiceThoughListAndCopiesHoldIt) {
    companion().setRows(1, people(3));
    open();
    type("person");
    companion().matches = {callcompanion::entryOf({.id = 2, .name = "Person 1002"}),
                           callcompanion::entryOf({.id = 9, .name = "Person 1009"})};
    send<"loadMoreSearchedRecords">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 9));
    send<"searchTableView">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 9));
}

TEST_F(RecentsSearch, findsPartsOfNamesAndNumbersWithoutRegardToCase) {
    companion().setRows(1, {{1, "Anna Berg", "+49 30 12"}, {2, "Johannes", "555"}, {3, "Carl", "0049301"}});
    open();
    type("aNN");
    EXPECT_THAT(found(), ElementsAre(1, 2));
    type("30");
    EXPECT_THAT(found(), ElementsAre(1, 3));
    // Numbers are searched as they are stored.
    type("3012");
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(RecentsSearch, looksAtOnePageOnlyWhileNothingWasPagedHoweverManyMatch) {
    companion().setRows(1, people(120));
    open();
    companion().lists[0].store(callcompanion::arrayOf(people(120)));
    type("person");
    EXPECT_EQ(found().size(), 50U);
}

TEST_F(RecentsSearch, looksAsFarAsTheUserHadLoaded) {
    companion().setRows(1, people(120));
    open();
    send<"loadMoreRecordsAction">();
    type("person");
    EXPECT_EQ(found().size(), 100U);
}

TEST_F(RecentsSearch, looksAtAtLeastOnePageWhereAnotherFilterWasPaged) {
    companion().setRows(1, people(120));
    companion().setRows(4, people(60));
    open();
    send<"loadMoreRecordsAction">();
    pick(3);
    settle();
    type("person");
    EXPECT_EQ(found().size(), 50U);
}

TEST_F(RecentsSearch, hidesTheEditButtonWhereNothingIsFound) {
    companion().setRows(1, people(3));
    open();
    type("person");
    settle();
    EXPECT_FALSE(button(2)->isHidden());
    type("nobody");
    EXPECT_FALSE(button(2)->isHidden()) << "the button follows on the main queue";
    settle();
    EXPECT_TRUE(button(2)->isHidden());
}

TEST_F(RecentsSearch, searchedAgainWithoutEmptyingAddsOnlyNewMatches) {
    companion().setRows(1, people(3));
    open();
    type("person");
    companion().lists[0].store(callcompanion::arrayOf(people(5)));
    send<"searchTableView">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(RecentsSearch, ofAnEmptyTextAgainWithoutEmptyingAddsTheWholeListAgain) {
    companion().setRows(1, people(2));
    open();
    type("x");
    type("");
    send<"searchTableView">();
    EXPECT_THAT(found(), ElementsAre(1, 2, 1, 2));
}

TEST_F(RecentsSearch, looksAtThePlainListAlsoWhereDaysAreShown) {
    companion().setRows(1, people(3));
    open();
    companion().isGroupByDate = true;
    type("person");
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
}

TEST_F(RecentsSearch, aChangedTextStartsOverInThisOrder) {
    companion().setRows(1, people(3));
    open();
    search()->setActive(true);
    trace();
    search()->searchBar()->type("person");
    settle();
    EXPECT_THAT(log().lines(), ElementsAre("main: searchDisplayController:shouldReloadTableForSearchString:",
                                           "main: searchTableView", "main: refreshTableData"));
}

TEST_F(RecentsSearch, aChangedTextForgetsThatEverythingWasLoaded) {
    companion().setRows(1, people(120));
    companion().counts[0] = 120;
    open();
    type("person 100");
    const long before = rows();
    send<"loadMoreSearchedRecords">();
    EXPECT_EQ(rows(), before - 1);
    type("person 101");
    EXPECT_EQ(rows(), 11);
}

TEST_F(RecentsSearch, aScopeIsAFilterAndMovesTheSegmentWithIt) {
    companion().setRows(1, people(3));
    companion().setRows(4, {{7, "Person Seven", "1"}});
    open();
    pick(3);
    settle();
    pick(0);
    settle();
    type("person");
    constexpr long missed = 3;
    EXPECT_TRUE((send<"searchDisplayController:shouldReloadTableForSearchScope:", bool>(
        objc::send<"searchDisplayController", objc::Object>(screen()), missed)));
    EXPECT_EQ(segments()->selectedSegmentIndex(), 3);
    EXPECT_THAT(found(), ElementsAre(7));
}

TEST_F(RecentsSearch, aScopeEndsTheEditModeOfTheResults) {
    companion().setRows(1, people(3));
    open();
    type("person");
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_TRUE(results()->isEditing());
    EXPECT_FALSE(button(1)->isHidden());
    send<"searchDisplayController:shouldReloadTableForSearchScope:", bool>(
        objc::send<"searchDisplayController", objc::Object>(screen()), 0L);
    settle();
    EXPECT_FALSE(results()->isEditing());
    EXPECT_TRUE(button(1)->isHidden());
}

TEST_F(RecentsSearch, beginsByEndingEditModeAndWithTheScopeOfTheSegmentAndIsNotOnYet) {
    companion().setRows(1, people(3));
    companion().setRows(3, people(2));
    open();
    pick(2);
    settle();
    send<"setEditing:animated:">(true, false);
    log().clear();
    trace();
    search()->setActive(true);
    EXPECT_THAT(log().lines(),
                ElementsAre("main: searchDisplayControllerWillBeginSearch:", "main: setEditing:animated:",
                            "main: updateNavigationBarButtonItems:groupEdit:"));
    EXPECT_EQ(search()->searchBar()->selectedScopeButtonIndex(), 2);
    EXPECT_EQ(rows(), 2) << "the rows are still the list's";
}

TEST_F(RecentsSearch, endsWithTheListsRowsAndBothButtonsHidden) {
    companion().setRows(1, people(3));
    open();
    type("person 1001");
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_TRUE(button(2)->isSelected());
    trace();
    search()->setActive(false);
    EXPECT_THAT(log().lines(), ElementsAre("main: searchDisplayControllerWillEndSearch:",
                                           "main: searchDisplayControllerDidEndSearch:", "main: initializeCallList",
                                           "main: count of 1", "main: duration of 1", "main: refreshTableData"));
    settle();
    EXPECT_THAT(found(), ElementsAre(1, 2, 3));
    EXPECT_TRUE(button(1)->isHidden());
    EXPECT_TRUE(button(2)->isHidden());
    EXPECT_FALSE(button(2)->isSelected());
    EXPECT_FALSE(results()->isEditing());
}

TEST_F(RecentsSearch, isRunAgainByAReloadOnItsQueue) {
    companion().setRows(1, people(3));
    open();
    type("person");
    companion().setRows(1, people(4));
    companion().isNeedToLoadData = true;
    trace();
    send<"viewAppearedAction">();
    settle();
    EXPECT_THAT(log().linesWith("searchTableView"), ElementsAre("default: searchTableView"));
    EXPECT_THAT(found(), ElementsAre(1, 2, 3, 4));
}

}  // namespace
}  // namespace recentsmessages

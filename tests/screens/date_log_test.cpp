// The day's screen: what it loads and shows, what it deletes, how its day's entry follows.
#include <fstream>

#include "tests/screens/fixture.h"

namespace screens {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct DateLog : UIViewController {
    UITableView tableView() const { return objc::send<"tableView", UITableView>(*this); }
    NSMutableArray srcList() const { return objc::send<"srcList", NSMutableArray>(*this); }
    NSInteger rows() const { return objc::send<"tableView:numberOfRowsInSection:", NSInteger>(*this, tableView(), 0L); }
    NSString header() const {
        return objc::send<"tableView:titleForHeaderInSection:", NSString>(*this, tableView(), 0L);
    }
    NSString footer() const {
        return objc::send<"tableView:titleForFooterInSection:", NSString>(*this, tableView(), 0L);
    }
    double headerHeight() const {
        return objc::send<"tableView:heightForHeaderInSection:", double>(*this, tableView(), 0L);
    }
    double footerHeight() const {
        return objc::send<"tableView:heightForFooterInSection:", double>(*this, tableView(), 0L);
    }
};

/// Three days: noon's with one of each kind, the day before with one call, the day before that with two.
std::vector<Call> threeDays() {
    return {{.address = "+4930100", .date = noon - 2 * day, .flags = outgoing, .duration = 10},
            {.address = "+4930200", .date = noon - 2 * day + 5, .flags = incoming, .duration = 20},
            {.address = "+4930300", .date = noon - day, .flags = incoming, .duration = 0},
            {.address = "+4930100", .date = noon, .flags = outgoing, .duration = 60},
            {.address = "+4930200", .date = noon + 60, .flags = outgoing, .duration = 0},
            {.address = "+4930300", .date = noon + 120, .flags = incoming, .duration = 30},
            {.address = "+4930400", .date = noon + 180, .flags = incoming, .duration = 0}};
}

class DateLogTest : public ScreenTest {
  protected:
    /// Starts with days shown.
    void startByDate() {
        setSetting("isGroupByDate", "on");
        start();
    }
    static objc::Strong<DateLog> make(QVCallEntry dayEntry) {
        auto screen = objc::make<DateLog>(objc::classNamed<"QVDateLogViewController">());
        objc::send<"setDateEntry:">(screen.get(), dayEntry);
        return screen;
    }
    /// Opens the day of that row.
    void openDay(NSUInteger row = 0) {
        dayEntry_ = objc::Strong(service().dateCallsList().objectAtIndex<QVCallEntry>(row));
        screen_ = make(dayEntry_);
        navigation().pushViewController(screen_.get(), true);
        settle();
    }
    void chooseSegment(NSInteger index) {
        auto control = objc::send<"titleView", UISegmentedControl>(screen_->navigationItem());
        control.setSelectedSegmentIndex(index);
        objc::send<"segmentAction:">(screen_.get(), control);
        settle();
    }
    void removeAll() {
        objc::send<"removeAllRecordsInBackGround">(screen_.get());
        settle();
    }
    void swipe(long row) {
        const auto front = screen_->searchDisplayController().searchResultsTableView();
        const bool isSearching = objc::send<"isActive", bool>(screen_->searchDisplayController());
        objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(
            screen_.get(), isSearching ? front : screen_->tableView(), 1L, rowPath(row));
        settle();
    }
    /// The rows that the table itself has.
    long tableRows() const { return objc::send<"numberOfRowsInSection:", long>(screen_->tableView(), 0L); }
    void chooseScope(long index) {
        objc::send<"searchDisplayController:shouldReloadTableForSearchScope:", bool>(
            screen_.get(), screen_->searchDisplayController(), index);
        settle();
    }
    void search(const char* text) {
        auto controller = screen_->searchDisplayController();
        objc::send<"setActive:">(controller, true);
        objc::send<"setText:">(controller.searchBar(), ns(text));
        objc::send<"searchDisplayController:shouldReloadTableForSearchString:", bool>(screen_.get(), controller,
                                                                                      ns(text));
        settle();
    }
    std::vector<std::string> numbers(NSArray list) const {
        std::vector<std::string> found;
        for (NSUInteger i = 0; i < list.count(); ++i)
            found.push_back(utf8(list.objectAtIndex<QVCallEntry>(i).phoneNumber()));
        return found;
    }

    objc::Strong<QVCallEntry> dayEntry_;
    objc::Strong<DateLog> screen_;
};

TEST_F(DateLogTest, showsTheCallsOfItsDayAlone) {
    fill(threeDays());
    startByDate();
    openDay();
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVDateLogViewController"));
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_THAT(numbers(screen_->srcList()), ElementsAre("+4930400", "+4930300", "+4930200", "+4930100"));
    EXPECT_EQ(utf8(screen_->header()), "Showing 4 calls");
    EXPECT_EQ(utf8(screen_->footer()), "4 calls, 0:01:30");
    EXPECT_EQ(screen_->headerHeight(), 22.0);
    EXPECT_EQ(screen_->footerHeight(), 22.0);
}

TEST_F(DateLogTest, hasSegmentsInTheTitleAndATrashButtonOnceThereAreRows) {
    fill(threeDays());
    startByDate();
    openDay();
    auto control = objc::send<"titleView", UISegmentedControl>(screen_->navigationItem());
    EXPECT_EQ((objc::send<"numberOfSegments", unsigned long>(control)), 4U);
    EXPECT_EQ(control.frame().size.width, 200.0);
    EXPECT_TRUE((objc::send<"rightBarButtonItem", objc::Object>(screen_->navigationItem())));
}

TEST_F(DateLogTest, eachSegmentShowsTheDaysCallsOfItsKindUnderAnIndicator) {
    fill(threeDays());
    startByDate();
    openDay();
    trace({"QVDateLogViewController"});
    chooseSegment(1);
    EXPECT_THAT(traced(), Contains(StartsWith("showHUD:")));
    EXPECT_THAT(numbers(screen_->srcList()), ElementsAre("+4930200", "+4930100"));
    chooseSegment(2);
    EXPECT_THAT(numbers(screen_->srcList()), ElementsAre("+4930300"));
    chooseSegment(3);
    EXPECT_THAT(numbers(screen_->srcList()), ElementsAre("+4930400"));
    EXPECT_EQ(utf8(screen_->footer()), "1 call");
    chooseSegment(0);
    EXPECT_EQ(screen_->rows(), 4);
}

TEST_F(DateLogTest, aPageIsShownAndTheRestComesFromMemory) {
    std::vector<Call> calls;
    for (int i = 0; i < 35; ++i) calls.push_back({.address = "+4930100", .date = noon + i});
    fill(calls);
    setSetting("minRec_Call", "20");
    startByDate();
    openDay();
    EXPECT_EQ(screen_->rows(), 21);
    trace({"QVDataController"});
    objc::send<"loadMoreRecordsAction">(screen_.get());
    EXPECT_THAT(traced(), Not(Contains(StartsWith("readCalls"))));
    EXPECT_EQ(screen_->rows(), 35);
    EXPECT_EQ(screen_->srcList().count(), 35U);
}

TEST_F(DateLogTest, withoutAddressBookAccessLoadsNothing) {
    fill(threeDays());
    startByDate();
    denyAddressBook();
    openDay();
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_FALSE(screen_->srcList());
    EXPECT_FALSE(screen_->header());
    auto cell = objc::make<objc::Object>(objc::classNamed<"QVLoadMoreRecordsCell">());
    trace({"QVDataController"});
    objc::send<"handleLoadMoreRecordsAction:">(screen_.get(), cell.get());
    objc::send<"loadMoreSearchedRecords">(screen_.get());
    settle();
    EXPECT_THAT(traced(), Not(Contains(StartsWith("read"))));
}

TEST_F(DateLogTest, ofADayWithoutCallsGoesBackToTheRootOnceItHasAppeared) {
    fill(threeDays());
    startByDate();
    auto empty = objc::make<QVCallEntry>(objc::classNamed<"QVCallEntry">());
    objc::send<"setGrpByDate:">(empty.get(), ns("2024-01-01"));
    service().dateCallsList().addObject(empty);
    trace({"QVDataController"});
    openDay(service().dateCallsList().count() - 1);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
    EXPECT_THAT(traced(), Contains("setAllCallsCount: 2"));
    EXPECT_EQ(service().dateCallsList().count(), 3U);
    EXPECT_EQ(service().allCallsCount(), 3) << "the log never had that day";
}

TEST_F(DateLogTest, removesItsDayFromTheListOfDaysWhenItLeavesItEmpty) {
    fill(threeDays());
    startByDate();
    openDay(1);
    EXPECT_EQ(service().dateCallsList().count(), 3U);
    removeAll();
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
    EXPECT_THAT(log(), Not(Contains(StartsWith("+4930300 -1"))));
    EXPECT_EQ(service().dateCallsList().count(), 2U);
}

TEST_F(DateLogTest, deleteAllOfAFilterTakesThatKindOfThatDayAlone) {
    fill(threeDays());
    startByDate();
    openDay();
    chooseSegment(1);
    removeAll();
    EXPECT_THAT(log(), ElementsAre("+4930400 0 0 0", "+4930300 0 0 30", "+4930300 -1 0 0", "+4930200 -1 0 20",
                                   "+4930100 -2 1 10"));
    EXPECT_EQ(dayEntry_->dldCallsCnt(), 0);
    EXPECT_EQ(dayEntry_->dldCallsDuration(), 0);
    EXPECT_EQ(dayEntry_->rcdCallsCnt(), 1);
    EXPECT_EQ(dayEntry_->msdCallsCnt(), 1);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVDateLogViewController"));
}

TEST_F(DateLogTest, deleteAllOfDialledCallsTakesCancelledOnesFromTheListOfAll) {
    fill(threeDays());
    startByDate();
    openDay();
    auto all = objc::Strong(service().callList());
    chooseSegment(1);
    removeAll();
    EXPECT_THAT(numbers(all), ElementsAre("+4930400", "+4930300"));
}

TEST_F(DateLogTest, deleteAllOfMissedCallsClearsTheirCountAlone) {
    fill(threeDays());
    startByDate();
    openDay();
    const auto dialled = dayEntry_->dldCallsDuration();
    const auto received = dayEntry_->rcdCallsDuration();
    chooseSegment(3);
    removeAll();
    EXPECT_EQ(dayEntry_->msdCallsCnt(), 0);
    EXPECT_EQ(dayEntry_->dldCallsDuration(), dialled);
    EXPECT_EQ(dayEntry_->rcdCallsDuration(), received);
}

TEST_F(DateLogTest, deleteAllOfAllCallsDropsTheListsWithoutWalkingThem) {
    fill(threeDays());
    startByDate();
    openDay(2);
    trace({"QVDateLogViewController"});
    objc::send<"removeAllRecords">(screen_.get());
    EXPECT_THAT(traced(), Not(Contains(StartsWith("updateDateEntry"))));
    settle();
    EXPECT_EQ(log().size(), 5U);
}

TEST_F(DateLogTest, aRefusedDeletionLeavesTheListsAndAppliesTheEmptyDayCheck) {
    fill(threeDays());
    startByDate();
    openDay();
    closeDatabase();
    removeAll();
    EXPECT_EQ(dayEntry_->callsOfDay(), 4);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVDateLogViewController"));
}

TEST_F(DateLogTest, deleteSearchedDeletesNothingAndLoadsTheListsAgain) {
    fill(threeDays());
    startByDate();
    openDay();
    search("49301");
    trace({"QVDateLogViewController"});
    objc::send<"handleDeleteAllAction">(screen_.get());
    settle();
    const auto sent = traced();
    EXPECT_THAT(sent, Contains(StartsWith("loadCallRecsFromDBInBackGround")));
    EXPECT_THAT(sent, Not(Contains("removeSearchedRecords")));
    EXPECT_EQ(log().size(), 7U);
}

TEST_F(DateLogTest, searchesItsDayAloneInTheDatabaseToo) {
    fill(threeDays());
    startByDate();
    openDay();
    trace({"QVDataController"});
    search("+49302");  // its load-more row comes into view
    EXPECT_THAT(traced(), Contains("getSearchedRecordsFromDB:searchString:date: 1 \"+49302\" \"2024-06-15\""));
    EXPECT_EQ(screen_->rows(), 1);
}

TEST_F(DateLogTest, whileSearchingLoadingTheListShowsNoRows) {
    fill(threeDays());
    startByDate();
    openDay();
    search("49301");
    EXPECT_EQ(screen_->rows(), 1);
    objc::send<"initializeCallList">(screen_.get());
    EXPECT_EQ(screen_->rows(), 0);
}

TEST_F(DateLogTest, aScopeDoesNotLeaveEditMode) {
    fill(threeDays());
    startByDate();
    openDay();
    search("4");
    auto controller = screen_->searchDisplayController();
    auto results = controller.searchResultsTableView();
    results.setEditing(true, false);
    EXPECT_TRUE(
        (objc::send<"searchDisplayController:shouldReloadTableForSearchScope:", bool>(screen_.get(), controller, 1L)));
    EXPECT_TRUE(results.isEditing());
    settle();
    EXPECT_EQ((objc::send<"filterType", std::int64_t>(screen_.get())), 2);
}

TEST_F(DateLogTest, aSwipedRowIsDeletedByItsDayWhateverTheGrouping) {
    fill(threeDays());
    startByDate();
    openDay();
    setSetting("isGroupByDate", "off");
    chooseSegment(3);
    trace({"QVDataController"});
    objc::send<"tableView:commitEditingStyle:forRowAtIndexPath:">(screen_.get(), screen_->tableView(), 1L, rowPath(0));
    settle();
    EXPECT_THAT(traced(), Contains("removeCallsFromDB:date: 4 \"2024-06-15\""));
    EXPECT_EQ(deletionsAnnounced(), 1);
}

TEST_F(DateLogTest, aSwipedRowLeavesNoOtherRowOfItsKindOnTheScreen) {
    fill(threeDays());
    startByDate();
    openDay();
    chooseSegment(1);
    EXPECT_EQ(screen_->rows(), 2);
    swipe(0);
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_EQ(tableRows(), 0) << "the table has asked again";
    EXPECT_FALSE(screen_->header());
    EXPECT_EQ(dayEntry_->dldCallsCnt(), 0);
    EXPECT_EQ(dayEntry_->dldCallsDuration(), 0);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVDateLogViewController"));
    chooseSegment(0);
    EXPECT_THAT(numbers(screen_->srcList()), ElementsAre("+4930400", "+4930300"));
    EXPECT_EQ(utf8(screen_->footer()), "2 calls, 0:00:30");
}

TEST_F(DateLogTest, aSwipedRowThatEmptiesItsDayLeavesForTheRoot) {
    fill(threeDays());
    startByDate();
    openDay(2);
    swipe(0);
    EXPECT_THAT(log(), Not(Contains(HasSubstr(" -2 "))));
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
    EXPECT_EQ(service().dateCallsList().count(), 2U);
}

TEST_F(DateLogTest, aSwipedResultLeavesNoResultOfItsDay) {
    fill(threeDays());
    startByDate();
    openDay();
    search("+4930");
    EXPECT_EQ(screen_->rows(), 4);
    chooseScope(1);
    objc::send<"loadMoreSearchedRecords">(screen_.get());
    EXPECT_EQ(screen_->rows(), 2);
    swipe(0);
    objc::send<"loadMoreSearchedRecords">(screen_.get());
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_THAT(log(), Not(Contains(HasSubstr(" 0 1 "))));
}

TEST_F(DateLogTest, aSwipedRowThatTheDatabaseRefusesComesBackBesideTheOthers) {
    fill(threeDays());
    startByDate();
    openDay();
    closeDatabase();
    swipe(0);
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVDateLogViewController"));
}

TEST_F(DateLogTest, answersItsTableItselfSinceItsBaseDoesNot) {
    fill(threeDays());
    startByDate();
    openDay();
    EXPECT_EQ((objc::send<"table", UITableView>(screen_.get()).self), screen_->tableView().self);
    const auto base = class_getSuperclass(object_getClass(screen_.self()));
    EXPECT_FALSE(class_respondsToSelector(base, objc::selector<"table">()));
}

TEST_F(DateLogTest, itsEntryTakesOverTheNewestCallOfTheDay) {
    fill(threeDays());
    startByDate();
    openDay();
    auto newest = service().callList().objectAtIndex<QVCallEntry>(1);
    service().callList().removeObjectAtIndex(0);
    objc::send<"updateDateEntry">(screen_.get());
    EXPECT_EQ(utf8(dayEntry_->phoneNumber()), "+4930300");
    EXPECT_EQ(dayEntry_->ROWID(), newest.ROWID());
    EXPECT_EQ(dayEntry_->iLogOID(), newest.iLogOID());
    EXPECT_EQ(dayEntry_->duration(), 30);
    EXPECT_EQ(dayEntry_->dldCallsCnt(), 2);  // the day's counts stay
    trace({"QVCallEntry"});
    objc::send<"updateDateEntry">(screen_.get());
    EXPECT_THAT(traced(), Not(Contains(StartsWith("set"))));
}

TEST_F(DateLogTest, dropsFourListsAndNeverTheDays) {
    fill(threeDays());
    startByDate();
    openDay();
    setSetting("isGroupByDate", "off");
    objc::send<"clearCallLists">(screen_.get());
    EXPECT_FALSE(service().callList());
    EXPECT_FALSE(service().dldCallList());
    EXPECT_EQ(service().dateCallsList().count(), 3U);
}

TEST_F(DateLogTest, twoOnOneStackHaveAStateOfTheirOwn) {
    fill(threeDays());
    startByDate();
    auto older = objc::Strong(service().dateCallsList().objectAtIndex<QVCallEntry>(2));
    openDay();
    chooseSegment(1);
    auto below = screen_;
    screen_ = make(older);
    navigation().pushViewController(screen_.get(), true);
    settle();
    EXPECT_EQ((objc::send<"filterType", std::int64_t>(screen_.get())), 1);
    EXPECT_EQ((objc::send<"filterType", std::int64_t>(below.get())), 2);
    chooseSegment(2);
    EXPECT_EQ((objc::send<"filterType", std::int64_t>(below.get())), 2);
}

TEST_F(DateLogTest, newDataReloadsTheListsUpdatesTheEntryAndHasRecentsRefreshed) {
    fill(threeDays());
    startByDate();
    openDay();
    fill({{.address = "+4930900", .date = noon + 600}});
    settings().setIsNeedToLoadData(true);
    trace({"PHRecentsViewController"});
    objc::send<"viewWillAppear:">(screen_.get(), false);
    EXPECT_THAT(traced(), Contains(StartsWith("refreshTableData")));
    settle();
    EXPECT_FALSE(settings().isNeedToLoadData());
    EXPECT_EQ(utf8(dayEntry_->phoneNumber()), "+4930900");
    EXPECT_EQ(screen_->rows(), 5);
}

TEST_F(DateLogTest, rowsAreFiftyPointsHighDeletableAndNoDays) {
    fill(threeDays());
    startByDate();
    openDay();
    auto table = screen_->tableView();
    EXPECT_EQ((objc::send<"tableView:heightForRowAtIndexPath:", double>(screen_.get(), table, rowPath(0))), 50.0);
    EXPECT_TRUE((objc::send<"tableView:canEditRowAtIndexPath:", bool>(screen_.get(), table, rowPath(99))));
    trace({"QVUITableViewCell"});
    objc::send<"tableView:cellForRowAtIndexPath:", objc::Object>(screen_.get(), table, rowPath(0));
    const auto sent = traced();
    EXPECT_THAT(sent, Contains("setShowGroupByDateCell: NO"));
    EXPECT_THAT(sent, Contains("setAccessoryType: 4"));
    EXPECT_THAT(sent, Contains(StartsWith("setBackgroundColor:")));
}

TEST_F(DateLogTest, theFooterFollowsItsSetting) {
    fill(threeDays());
    startByDate();
    openDay();
    setSetting("isShowFooter_Call", "off");
    EXPECT_FALSE(screen_->footer());
    EXPECT_EQ(screen_->footerHeight(), 0.0);
    setSetting("isShowHeader_Call", "off");
    EXPECT_FALSE(screen_->header());
    EXPECT_EQ(screen_->headerHeight(), 0.0);
}

TEST_F(DateLogTest, theQuestionBeforeDeletingAllNamesTheDay) {
    fill(threeDays());
    startByDate();
    openDay();
    trace({"BlockActionSheet"});
    objc::send<"deleteAllAction:">(screen_.get(), objc::Object{});
    EXPECT_THAT(traced(), Contains(testing::AllOf(StartsWith("initWithTitle:"), testing::HasSubstr("2024-06-15"))));
    const auto sheet = objc::send<"actionSheet", objc::Object>(screen_.get());
    ASSERT_TRUE(sheet);
    objc::send<"dismissWithClickedButtonIndex:animated:">(sheet, -1L, false);
}

}  // namespace
}  // namespace screens

// The history screen's edit mode, deletions and closing.
#include <functional>
#include <utility>

#include "platform/dispatch.h"
#include "tests/screens/history_fixture.h"

namespace screens {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class HistoryDeletion : public HistoryTest {
  protected:
    void deleteAllShown() {
        objc::send<"showLogDeleteAllRecordsFromDB:">(screen_.get(), ns("Deleting"));
        settle();
    }
};

TEST_F(HistoryDeletion, theTrashButtonEntersGroupEditAndTheStopButtonLeavesIt) {
    fill(oneOfEach());
    open();
    const auto trash = screen_->rightItem();
    objc::send<"showLogDeleteAction:">(screen_.get(), objc::Object{});
    EXPECT_TRUE(screen_->isEditing());
    EXPECT_TRUE(screen_->isLogEditing());
    EXPECT_TRUE(screen_->hidesBack());
    EXPECT_TRUE(screen_->leftItem());
    EXPECT_NE(screen_->rightItem().self, trash.self);
    objc::send<"showLogDeleteAction:">(screen_.get(), objc::Object{});
    EXPECT_FALSE(screen_->isEditing());
    EXPECT_FALSE(screen_->isLogEditing());
    EXPECT_FALSE(screen_->hidesBack());
    EXPECT_FALSE(screen_->leftItem());
    EXPECT_EQ(screen_->rightItem().self, trash.self);
}

TEST_F(HistoryDeletion, aSwipedRowHasAStopButtonAndNoDeleteAll) {
    fill(oneOfEach());
    open();
    objc::send<"tableView:willBeginEditingRowAtIndexPath:">(screen_.get(), screen_->tableView(), rowPath(0));
    EXPECT_TRUE(screen_->isLogEditing());
    EXPECT_TRUE(screen_->hidesBack());
    EXPECT_FALSE(screen_->leftItem());
    objc::send<"tableView:didEndEditingRowAtIndexPath:">(screen_.get(), screen_->tableView(), rowPath(0));
    EXPECT_FALSE(screen_->isLogEditing());
    EXPECT_FALSE(screen_->hidesBack());
}

TEST_F(HistoryDeletion, aSegmentLeavesEditMode) {
    fill(oneOfEach());
    open();
    objc::send<"showLogDeleteAction:">(screen_.get(), objc::Object{});
    screen_->chooseSegment(1);
    EXPECT_FALSE(screen_->isEditing());
    EXPECT_FALSE(screen_->isLogEditing());
}

TEST_F(HistoryDeletion, anEmptyListHasNoButtonAndNothingToDelete) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing}});
    open();
    screen_->chooseSegment(3);
    EXPECT_FALSE(screen_->rightItem());
    objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen_.get(), true, true);
    EXPECT_FALSE(screen_->rightItem());
    EXPECT_TRUE(screen_->isLogEditing());
    objc::send<"showLogDeleteAllAction:">(screen_.get(), objc::Object{});
    EXPECT_FALSE((objc::send<"actionSheet", objc::Object>(screen_.get())));
}

TEST_F(HistoryDeletion, ofOneRowTakesItFromTheLogTheListsAndTheCounts) {
    fill(oneOfEach());
    open();
    screen_->commitDeletion(1);
    EXPECT_THAT(log(), ElementsAre("+4930100 0 0 0", "+4930200 -1 0 7", "+4930100 -2 1 60", "+4930100 -3 1 0"));
    EXPECT_EQ(screen_->rows(), 3);
    EXPECT_EQ(screen_->history().count(), 3U);
    EXPECT_EQ(utf8(screen_->footerInfo()), "3 calls, 0:01:00");
    EXPECT_TRUE(service().isAnyRecDeleted());
}

TEST_F(HistoryDeletion, thatIsRefusedLeavesTheListsAndReloadsLater) {
    fill(oneOfEach());
    open();
    closeDatabase();
    auto call = screen_->logInfoList().objectAtIndex<QVCallEntry>(1);
    trace({"QVLogViewController"});
    objc::send<"removeLogRowData:">(screen_.get(), call);
    EXPECT_THAT(traced(), Contains(StartsWith("reloadLogTableData")));
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_EQ(screen_->history().count(), 4U);
}

TEST_F(HistoryDeletion, ofTheRowIsIssuedToTheTableAlsoWhereItWasRefused) {
    fill(oneOfEach());
    open();
    closeDatabase();
    trace({"UITableView"});
    screen_->commitDeletion(0);
    EXPECT_THAT(traced(), Contains(StartsWith("deleteRowsAtIndexPaths:withRowAnimation:")));
    settle();
    EXPECT_EQ(screen_->rows(), 4);
}

TEST_F(HistoryDeletion, ofTheLastMissedCallKeepsTheScreenOpenWithoutATrashButton) {
    fill(oneOfEach());
    open();
    screen_->chooseSegment(3);
    objc::send<"tableView:willBeginEditingRowAtIndexPath:">(screen_.get(), screen_->tableView(), rowPath(0));
    screen_->commitDeletion(0);
    objc::send<"tableView:didEndEditingRowAtIndexPath:">(screen_.get(), screen_->tableView(), rowPath(0));
    settle();
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_FALSE(screen_->rightItem());
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVLogViewController"));
}

TEST_F(HistoryDeletion, ofTheLastCallClosesToTheRoot) {
    fill({{.address = "+4930100", .date = noon}});
    open();
    screen_->commitDeletion(0);
    settle();
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(HistoryDeletion, withDaysShownClosesToTheRecentsScreenInTheStack) {
    fill({{.address = "+4930100", .date = noon}});
    start();
    auto between = objc::make<UIViewController>(objc::classNamed<"UIViewController">());
    navigation().pushViewController(between.get(), false);
    settle();
    make(service().callList().objectAtIndex<QVCallEntry>(0));
    navigation().pushViewController(screen_.get(), true);
    settle();
    setSetting("isGroupByDate", "on");
    screen_->commitDeletion(0);
    settle();
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
}

TEST_F(HistoryDeletion, withDaysShownAndNoRecentsScreenGoesOneLevelBack) {
    fill({{.address = "+4930100", .date = noon}});
    start();
    make(service().callList().objectAtIndex<QVCallEntry>(0));
    auto controllers = NSMutableArray::make();
    for (int i = 0; i < 2; ++i)
        controllers->addObject(objc::make<UIViewController>(objc::classNamed<"UIViewController">()));
    controllers->addObject(screen_);
    objc::send<"setViewControllers:">(navigation(), controllers.get());
    settle();
    setSetting("isGroupByDate", "on");
    screen_->commitDeletion(0);
    settle();
    EXPECT_THAT(stack(), ElementsAre("UIViewController", "UIViewController"));
}

TEST_F(HistoryDeletion, ofAllIsAskedForByNameAndKind) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing, .contact = 3, .name = "Anna Berg"}});
    open();
    trace({"BlockActionSheet"});
    objc::send<"showLogDeleteAllAction:">(screen_.get(), objc::Object{});
    const auto all = traced();
    EXPECT_THAT(all, Contains(testing::AllOf(StartsWith("initWithTitle:"), testing::HasSubstr("Anna Berg"))));
    EXPECT_THAT(all, Contains(StartsWith("setDestructiveButtonWithTitle:block: \"Delete All Calls\"")));
    EXPECT_THAT(all, Contains(StartsWith("setCancelButtonWithTitle:block: \"Cancel\"")));
    EXPECT_TRUE((objc::send<"actionSheet", objc::Object>(screen_.get())));
    objc::send<"dismissWithClickedButtonIndex:animated:">(objc::send<"actionSheet", objc::Object>(screen_.get()), -1L,
                                                          false);
    settle();
    screen_->chooseSegment(1);
    EXPECT_EQ(utf8(objc::send<"getShowLogDeleteAllButtonText", NSString>(screen_.get())), "Delete All Dialed Calls");
}

TEST_F(HistoryDeletion, ofAllOfAFilterTakesThoseAndKeepsTheScreen) {
    fill(oneOfEach());
    open();
    screen_->chooseSegment(1);
    deleteAllShown();
    EXPECT_THAT(log(), ElementsAre("+4930100 0 0 0", "+4930100 -1 0 30", "+4930200 -1 0 7"));
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_EQ(screen_->history().count(), 2U);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVLogViewController"));
}

/// What the test does while the database deletes listed calls.
std::function<void()> whileListedCallsAreDeleted;
IMP deleteListedCalls = nullptr;
bool deleteListedCallsLater(id self, SEL selector, id entries, std::int64_t filter) {
    if (const auto now = std::exchange(whileListedCallsAreDeleted, nullptr)) now();
    return objc::detail::typed<bool (*)(id, SEL, id, std::int64_t)>(deleteListedCalls)(self, selector, entries, filter);
}

TEST_F(HistoryDeletion, ofAllTakesWhatWasShownWhenItBeganThoughAnotherKindIsChosenMeanwhile) {
    fill(oneOfEach());
    open();
    const SEL selector = objc::selector<"removeLogEntriesFromDB:calFilterType:">();
    const auto method = class_getInstanceMethod(objc::classNamed<"QVDataController">(), selector);
    deleteListedCalls =
        method_setImplementation(const_cast<Method>(method), objc::implementation(&deleteListedCallsLater));
    whileListedCallsAreDeleted = [this] { screen_->chooseSegment(3); };
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    method_setImplementation(const_cast<Method>(method), deleteListedCalls);
    EXPECT_THAT(log(), ElementsAre("+4930200 -1 0 7"));
    EXPECT_EQ(screen_->history().count(), 0U) << "the screen lost what the database lost";
}

TEST_F(HistoryDeletion, ofAllClosesTheScreenOnceTheIndicatorIsGone) {
    fill(oneOfEach());
    open();
    deleteAllShown();
    EXPECT_THAT(log(), ElementsAre("+4930200 -1 0 7"));
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController"));
}

TEST_F(HistoryDeletion, ofAllThatIsRefusedChangesNothing) {
    fill(oneOfEach());
    open();
    closeDatabase();
    deleteAllShown();
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_EQ(screen_->history().count(), 4U);
}

TEST_F(HistoryDeletion, ofOneIsAnnouncedAndOfAllIsNot) {
    fill(oneOfEach());
    open();
    objc::send<"removeLogRowData:">(screen_.get(), screen_->logInfoList().objectAtIndex<QVCallEntry>(0));
    EXPECT_EQ(deletionsAnnounced(), 1);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    EXPECT_EQ(deletionsAnnounced(), 0);
}

TEST_F(HistoryDeletion, ofAGroupedContactSteersByFlagAndDurationAndGivesTheEntryItsOwnBack) {
    fill(oneOfEach());
    open();
    setSetting("isGroupContacts_Call", "on");
    entry().setFlag(0);
    entry().setDuration(42);
    const struct {
        NSInteger segment;
        std::vector<std::string> steering;
    } cases[] = {{0, {"setFlag: 0", "setDuration: 42"}},
                 {1, {"setFlag: 9", "setFlag: 0", "setDuration: 42"}},
                 {2, {"setFlag: 0", "setFlag: 0", "setDuration: 42"}},
                 {3, {"setFlag: 0", "setDuration: 0", "setFlag: 0", "setDuration: 42"}}};
    closeDatabase();
    for (const auto& [segment, steering] : cases) {
        objc::send<"setFilterType:">(screen_.get(), std::int64_t{segment + 1});
        trace({"QVCallEntry"});
        objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
        std::vector<std::string> set;
        for (const auto& line : traced())
            if (line.starts_with("set")) set.push_back(line);
        EXPECT_EQ(set, steering) << segment;
        EXPECT_EQ(entry().flag(), 0);
        EXPECT_EQ(entry().duration(), 42);
    }
}

TEST_F(HistoryDeletion, ofAGroupedContactTakesAllItsCallsOfTheKind) {
    setSetting("isGroupContacts_Call", "on");
    fill(oneOfEach());
    open();
    screen_->chooseSegment(1);
    deleteAllShown();
    EXPECT_THAT(log(), ElementsAre("+4930100 0 0 0", "+4930100 -1 0 30", "+4930200 -1 0 7"));
}

class HistoryDays : public HistoryDeletion {
  protected:
    QVCallEntry dayEntry(const char* text, std::int64_t dialled, std::int64_t received, std::int64_t missed) {
        auto entry = objc::make<QVCallEntry>(objc::classNamed<"QVCallEntry">());
        objc::send<"setGrpByDate:">(entry.get(), ns(text));
        entry->setDldCallsCnt(dialled);
        entry->setRcdCallsCnt(received);
        entry->setMsdCallsCnt(missed);
        entry->setDldCallsDuration(100);
        entry->setRcdCallsDuration(100);
        if (!service().dateCallsList()) service().setDateCallsList(NSMutableArray::make());
        service().dateCallsList().addObject(entry);
        return entry;
    }
};

TEST_F(HistoryDays, losesTheDeletedCallsAndGoesWhenItIsEmpty) {
    fill(oneOfEach());
    open();
    setSetting("isGroupByDate", "on");
    service().setDateCallsList({});
    auto today = objc::Strong(dayEntry("2024-06-15", 0, 0, 1));      // the missed call
    auto yesterday = objc::Strong(dayEntry("2024-06-14", 1, 2, 0));  // a received one among others
    auto dayBefore = objc::Strong(dayEntry("2024-06-13", 3, 0, 0));  // a dialled one among others
    trace({"QVDataController"});
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    const auto sent = traced();
    EXPECT_EQ(today->msdCallsCnt(), 0);
    EXPECT_EQ(yesterday->rcdCallsCnt(), 1);
    EXPECT_EQ(yesterday->rcdCallsDuration(), 70);
    EXPECT_EQ(dayBefore->dldCallsCnt(), 2);
    EXPECT_EQ(dayBefore->dldCallsDuration(), 40);
    EXPECT_EQ(service().dateCallsList().count(), 2U);
    // The deletion left one of the log's four days, and the screen takes off the one that its list lost.
    EXPECT_THAT(sent, Contains("setAllCallsCount: 0"));
    EXPECT_EQ(screen_->history().count(), 0U);
    EXPECT_EQ(screen_->logInfoList().count(), 0U);
}

TEST_F(HistoryDays, countsAnIncomingCallWithoutADurationAsMissedWhateverItsKind) {
    fill(oneOfEach());
    open();
    setSetting("isGroupByDate", "on");
    service().setDateCallsList({});
    auto today = objc::Strong(dayEntry("2024-06-15", 1, 5, 5));
    auto call = screen_->logInfoList().objectAtIndex<QVCallEntry>(0);
    call.setDuration(-1);
    screen_->logInfoList().removeAllObjects();
    screen_->logInfoList().addObject(call);
    objc::send<"showLogDeleteAllRecordsAction">(screen_.get());
    EXPECT_EQ(today->msdCallsCnt(), 4);
    EXPECT_EQ(today->rcdCallsCnt(), 5);
}

TEST_F(HistoryDays, withoutAnyLeavesTheDeletedCallsInTheHistory) {
    fill(oneOfEach());
    open();
    setSetting("isGroupByDate", "on");
    service().setDateCallsList({});
    deleteAllShown();
    EXPECT_THAT(log(), ElementsAre("+4930200 -1 0 7"));
    EXPECT_EQ(screen_->history().count(), 4U);
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVLogViewController"));
}

}  // namespace
}  // namespace screens

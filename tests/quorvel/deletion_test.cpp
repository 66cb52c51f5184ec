// Deleting: what goes, what stays, and that lists, counts and flags follow.
#include "desktop/quorvel/store/import_session.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class DeletionTest : public CompanionTest {
  protected:
    static bool anyDeleted() { return get<"isAnyRecDeleted", bool>(); }
    static void readAll() {
        for (const auto filter : {all, dialled, received, missed}) {
            read(99, 0, filter);
            objc::send<"getTotalCallCount:", std::int64_t>(object(), filter);
        }
    }
    static bool removeCalls(std::int64_t filter, const char* onDay = nullptr) {
        return objc::send<"removeCallsFromDB:date:", bool>(object(), filter, onDay ? ns(onDay) : NSString{});
    }
    static bool removeRow(NSArray list, unsigned long row, std::int64_t filter) {
        return objc::send<"removeData:calFilterType:date:", bool>(object(), list.objectAtIndex(row), filter,
                                                                  objc::Object{});
    }
    static std::vector<std::int64_t> counts() { return {count(all), count(dialled), count(received), count(missed)}; }
    static std::int64_t inLog() { return (*callStore()->totals(store::Filter::all, {})).calls; }
    static void mixed() {
        add({{"1", noon, 9, 5},
             {"2", noon + 1, 8, 4},
             {"3", noon + 2, 0, 4},
             {"4", noon + day, 0, 4},
             {"5", noon + day, 7, 5}});
    }
};

TEST_F(DeletionTest, aRowGoesFromTheLogAndFromEveryList) {
    mixed();
    readAll();
    const objc::Strong<> gone(list(dialled).objectAtIndex(0));
    EXPECT_FALSE(anyDeleted());
    EXPECT_TRUE(removeRow(list(dialled), 0, dialled));
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2, 1}));
    EXPECT_EQ(rowIds(list(dialled)), (std::vector{1}));
    EXPECT_EQ(counts(), (std::vector<std::int64_t>{4, 1, 1, 2}));
    EXPECT_EQ(duration(all), 17);
    EXPECT_EQ(duration(dialled), 9);
    EXPECT_TRUE(anyDeleted());
    EXPECT_TRUE(objc::peerOf<CallEntry>(gone.self())->isDeleted());
    EXPECT_EQ(inLog(), 4);
}

TEST_F(DeletionTest, deletingAllOfAFilterLeavesTheOthers) {
    mixed();
    readAll();
    EXPECT_TRUE(removeCalls(missed));
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 2, 1}));
    EXPECT_EQ(list(missed).count(), 0U);
    EXPECT_EQ(counts(), (std::vector<std::int64_t>{3, 2, 1, 0}));
    EXPECT_TRUE(removeCalls(all));
    EXPECT_EQ(counts(), (std::vector<std::int64_t>{0, 0, 0, 0}));
    for (const auto filter : {all, dialled, received, missed}) EXPECT_EQ(list(filter).count(), 0U);
}

TEST_F(DeletionTest, deletingADayTakesTheFiltersCallsOfThatDayOnly) {
    mixed();
    readAll();
    EXPECT_TRUE(removeCalls(missed, "2024-06-15"));
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4, 2, 1}));
    EXPECT_TRUE(removeCalls(all, "2024-06-15"));
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4}));
    EXPECT_EQ(counts(), (std::vector<std::int64_t>{2, 1, 0, 1}));
}

TEST_F(DeletionTest, deletingNothingSucceedsAndSetsNoFlag) {
    mixed();
    EXPECT_TRUE(removeCalls(all, "1999-01-01"));
    EXPECT_FALSE(anyDeleted());
    EXPECT_EQ(inLog(), 5);
}

TEST_F(DeletionTest, searchedCallsGoTogether) {
    mixed();
    readAll();
    const auto found =
        objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), missed, ns(""), NSString{});
    ASSERT_EQ(found.count(), 2U);
    EXPECT_TRUE((objc::send<"removeDataFromDB:calFilterType:forDate:", bool>(object(), found, missed, true)));
    EXPECT_EQ(inLog(), 3);
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 2, 1}));
    EXPECT_TRUE(anyDeleted());
}

TEST_F(DeletionTest, aFoldedRowGoesWithTheCallsThatItFoldsAndItsNeighboursJoin) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"2", noon + 1}, {"2", noon + 2}, {"1", noon + 3}});
    readAll();
    ASSERT_EQ(rowIds(list(all)), (std::vector{4, 3, 1}));
    const objc::Strong<> first(list(all).objectAtIndex(0));
    EXPECT_TRUE(removeRow(list(all), 1, all));
    EXPECT_EQ(rowIds(list(all)), (std::vector{4}));
    EXPECT_EQ(list(all).objectAtIndex(0).self, first.self());
    EXPECT_EQ(entry(list(all), 0).count, 2);
    EXPECT_EQ(count(all), 1);
    EXPECT_EQ(inLog(), 2);
}

TEST_F(DeletionTest, aSearchedCallOfAFoldedRowGoesAlone) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"1", noon + 1}, {"1", noon + 2}});
    readAll();
    const auto found =
        objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), all, ns("1"), NSString{});
    ASSERT_EQ(found.count(), 3U);
    EXPECT_TRUE(removeRow(found, 0, all));
    EXPECT_EQ(inLog(), 2);
    ASSERT_EQ(rowIds(list(all)), (std::vector{2}));
    EXPECT_EQ(entry(list(all), 0).count, 2);
}

TEST_F(DeletionTest, aDayThatEveryScreenTakesOffTheNumberOfDaysIsTakenOffOnce) {
    setSetting("isGroupByDate", "on");
    mixed();
    add({{"6", noon + 2 * day}});
    read(9, 0, all);
    objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    EXPECT_TRUE(removeCalls(all, "2024-06-15"));
    EXPECT_EQ(count(all), 2);
    for (int screen = 0; screen < 3; ++screen) {
        objc::send<"setAllCallsCount:">(object(), count(all) - 1);
        EXPECT_EQ(count(all), 2);
    }
    EXPECT_EQ((get<"dateCallsList", NSMutableArray>().count()), 2U);
}

TEST_F(DeletionTest, aDayThatAHistoryEmptiesIsOffTheNumberOfDaysBeforeAnyScreenSaysSo) {
    setSetting("isGroupByDate", "on");
    add({{"1", noon}, {"2", noon + day}, {"2", noon + day + 1}});
    read(9, 0, all);
    objc::send<"getTotalCallCount:", std::int64_t>(object(), all);
    const auto gone = [](const char* number) {
        return objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), all, ns(number),
                                                                                  NSString{});
    };
    EXPECT_TRUE((objc::send<"removeLogEntry:calFilterType:", bool>(object(), gone("1").objectAtIndex(0), all)));
    EXPECT_EQ(count(all), 1);
    EXPECT_TRUE((objc::send<"removeLogEntriesFromDB:calFilterType:", bool>(object(), gone("2"), all)));
    objc::send<"setAllCallsCount:">(object(), std::int64_t{-1});
    EXPECT_EQ(count(all), 0);
}

TEST_F(DeletionTest, aDayShowsWhatRemainsOfIt) {
    setSetting("isGroupByDate", "on");
    mixed();
    read(9, 0, all);
    const auto days = get<"dateCallsList", NSMutableArray>();
    const objc::Strong<> older(days.objectAtIndex(1));
    CallEntry& shown = *objc::peerOf<CallEntry>(older.self());
    EXPECT_TRUE(removeCalls(received, "2024-06-15"));
    EXPECT_EQ(shown.dialledCount, 1);
    EXPECT_EQ(shown.receivedCount, 0);
    EXPECT_EQ(shown.receivedDuration, 0);
    EXPECT_EQ(shown.missedCount, 1);
    EXPECT_TRUE(removeCalls(all, "2024-06-15"));
    EXPECT_EQ(shown.dialledCount + shown.receivedCount + shown.missedCount, 0);
}

TEST_F(DeletionTest, allOfAFoldedHistoryGoesForTheFilterWhateverTheFlagSaysMeanwhile) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon, 9, 5, 3, "Anna"}, {"1", noon + 1, 0, 5, 3}, {"1", noon + 2, 4, 4, 3}, {"2", noon + 3, 9, 5}});
    readAll();
    CallEntry& anna = entry(list(all), 1);
    anna.flag = 9;
    EXPECT_TRUE((objc::send<"removeLogEntryFromDB:calFilterType:date:currentCount:", bool>(
        object(), objc::Object{anna.self}, dialled, objc::Object{}, std::int64_t{2})));
    EXPECT_EQ(inLog(), 2);
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3}));
    EXPECT_EQ(rowIds(list(dialled)), (std::vector{4}));
}

TEST_F(DeletionTest, callsOfAHistoryGoOneByOneAndTogether) {
    mixed();
    readAll();
    EXPECT_TRUE((objc::send<"removeLogEntry:calFilterType:", bool>(object(), list(all).objectAtIndex(0), all)));
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2, 1}));
    const auto two = NSMutableArray::make();
    two->addObject(list(all).objectAtIndex(0));
    two->addObject(list(all).objectAtIndex(3));
    EXPECT_TRUE((objc::send<"removeLogEntriesFromDB:calFilterType:", bool>(object(), two.get(), all)));
    EXPECT_EQ(rowIds(list(all)), (std::vector{3, 2}));
}

TEST_F(DeletionTest, anEmptiedHistoryLeavesTheLists) {
    add({{"1", noon}, {"2", noon + 1}, {"1", noon + 2}});
    readAll();
    ASSERT_TRUE((*callStore()).deleteHistory(store::Filter::all, -1, "1").ok());
    objc::send<"allHistoryDeletedForEntry:">(object(), list(all).objectAtIndex(0));
    EXPECT_EQ(rowIds(list(all)), (std::vector{2}));
    EXPECT_EQ(count(all), 1);
    EXPECT_TRUE(anyDeleted());
}

TEST_F(DeletionTest, groupedEntriesShowTheirNewestRemainingCall) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"1", noon + 1, 6, 5}, {"1", noon + 2}});
    readAll();
    const std::int64_t newest = 3;
    ASSERT_TRUE((*callStore()).deleteCalls({&newest, 1}).ok());
    const auto history = objc::send<"getHistoryForContact:", NSArray>(object(), list(all).objectAtIndex(0));
    objc::send<"updateCallEntriesTimeStamp:dldCallEntry:rcdCallEntry:msdCallEntry:">(
        object(), history.objectAtIndex(0), history.objectAtIndex(0), history.objectAtIndex(1), objc::Object{});
    EXPECT_EQ(rowIds(list(all)), (std::vector{2}));
    EXPECT_EQ(entry(list(all), 0).date, noon + 1);
    EXPECT_EQ(entry(list(all), 0).count, 2);
    EXPECT_EQ(rowIds(list(received)), (std::vector{1}));
}

TEST_F(DeletionTest, anEntryLeavesTheListsInMemoryAlone) {
    mixed();
    readAll();
    objc::send<"removeEntriesFromCallList:calFilterType:">(object(), list(all).objectAtIndex(0), dialled);
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2, 1}));
    EXPECT_EQ(rowIds(list(dialled)), (std::vector{1}));
    EXPECT_EQ(inLog(), 5);
}

TEST_F(DeletionTest, withoutALogDeletingFailsAndReadingFindsNothing) {
    mixed();
    readAll();
    const objc::Strong<> entry(list(all).objectAtIndex(0));
    closeCompanion();
    EXPECT_FALSE(removeCalls(all));
    EXPECT_FALSE((objc::send<"removeData:calFilterType:date:", bool>(object(), entry.get(), all, objc::Object{})));
    EXPECT_EQ((objc::send<"getTotalCallCount:", std::int64_t>(object(), all)), 0);
    EXPECT_EQ((objc::send<"getResult:", NSArray>(object(), ns("select 1")).count()), 0U);
}

TEST_F(DeletionTest, aCallThatArrivedAboveAFoldedRowSurvivesItsDeletion) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"1", noon + 1}});
    readAll();
    add({{"1", noon + 2}});
    EXPECT_TRUE(removeRow(list(all), 0, all));
    EXPECT_EQ(inLog(), 1);
    EXPECT_TRUE((*callStore()->call(3)).has_value());
}

TEST_F(DeletionTest, whatIsDeletedIsKeptAsideAndTheListsKnowNothingOfIt) {
    mixed();
    readAll();
    EXPECT_TRUE(removeCalls(missed));
    EXPECT_EQ((*callStore()->deletedCalls(store::Cursor::top(), 9)).rows.size(), 2U);
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 2, 1}));
    EXPECT_EQ(counts(), (std::vector<std::int64_t>{3, 2, 1, 0}));
}

TEST_F(DeletionTest, aLogThatAnotherProgramKeepsLockedRefusesEveryDeletionAndTheListsStay) {
    mixed();
    store::OpenOptions hasty;
    hasty.busyBound = std::chrono::milliseconds(5);
    service().setStore(std::make_unique<store::CallStore>(*store::CallStore::open(directory().calls(), hasty)));
    readAll();
    const auto before = counts();
    {
        auto import = store::CallStore::open(directory().calls())->beginImport();
        ASSERT_TRUE(import.ok());
        EXPECT_FALSE(removeCalls(all));
        EXPECT_FALSE(removeCalls(missed, "2024-06-15"));
        EXPECT_FALSE(removeRow(list(all), 0, all));
        EXPECT_FALSE((objc::send<"removeDataFromDB:calFilterType:forDate:", bool>(object(), list(all), all, true)));
        EXPECT_FALSE((objc::send<"removeLogEntry:calFilterType:", bool>(object(), list(all).objectAtIndex(0), all)));
        EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4, 3, 2, 1}));
        EXPECT_EQ(counts(), before);
        EXPECT_FALSE(anyDeleted());
        EXPECT_FALSE(entry(list(all), 0).isDeleted());
    }
    EXPECT_TRUE(removeCalls(all));
    EXPECT_EQ(inLog(), 0);
}

}  // namespace
}  // namespace quorvel::test

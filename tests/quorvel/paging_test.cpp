// Reading pages into the lists: appending, new lists, old holders, every mode against a plain model.
#include <rapidcheck.h>

#include <functional>

#include "desktop/quorvel/store/import_session.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class PagingTest : public CompanionTest {
  protected:
    static std::vector<Call> row(int calls, const char* address = "100") {
        std::vector<Call> made;
        for (int i = 0; i < calls; ++i) made.push_back({address, noon + i * 60});
        return made;
    }
};

TEST_F(PagingTest, aPageIsAppendedToTheListThatIsThere) {
    add(row(5));
    read(2, 0, all);
    const objc::Strong<> held(list(all));
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4}));
    read(2, 2, all);
    EXPECT_EQ(list(all).self, held.self());
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4, 3, 2}));
    read(2, 4, all);
    read(2, 5, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{5, 4, 3, 2, 1}));
}

TEST_F(PagingTest, whereTheListIsNilANewOneIsMadeAndTheOldHolderKeepsHis) {
    add(row(3));
    read(2, 0, all);
    const objc::Strong<> held(list(all));
    objc::send<"setCallList:">(object(), objc::Object{});
    EXPECT_FALSE(list(all));
    read(3, 0, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{3, 2, 1}));
    EXPECT_EQ(rowIds(objc::as<NSArray>(held.self())), (std::vector{3, 2}));
}

TEST_F(PagingTest, aCallThatArrivesAboveShiftsNothing) {
    add(row(4));
    read(2, 0, all);
    add({{"200", noon + day}});
    read(2, 2, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2, 1}));
}

TEST_F(PagingTest, whatTheListHoldsIsNotAppendedAgain) {
    add(row(6));
    read(4, 0, all);
    read(4, 2, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{6, 5, 4, 3, 2, 1}));
}

TEST_F(PagingTest, anEmptiedListBeginsAtTheTop) {
    add(row(4));
    read(2, 0, all);
    list(all).removeAllObjects();
    read(2, 0, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3}));
}

TEST_F(PagingTest, aLongReadIsTheWholeListThoughItGoesInPieces) {
    auto session = callStore()->beginImport();
    constexpr int calls = 2500;
    for (int i = 0; i < calls; ++i) {
        store::NewCall call;
        call.address = std::to_string(i / 2);
        call.date = noon + i;
        ASSERT_TRUE((*session).add(call).ok());
    }
    ASSERT_TRUE((*session).finish().ok());
    read(calls, 0, all);
    const auto ids = rowIds(list(all));
    ASSERT_EQ(ids.size(), 2500U);
    for (int i = 0; i < calls; ++i) ASSERT_EQ(ids[static_cast<std::size_t>(i)], calls - i);
    setSetting("isGroupContacts_Call", "on");
    objc::send<"setCallList:">(object(), objc::Object{});
    read(calls, 0, all);
    ASSERT_EQ(list(all).count(), 1250U);
    EXPECT_EQ(entry(list(all), 999).count, 2) << "a run at the end of a piece is whole";
    EXPECT_EQ(entry(list(all), 1000).count, 2);
}

TEST_F(PagingTest, entriesOfOnePersonShareTheirTexts) {
    add({{"100", noon, 30, 4, 7, "Anna"}, {"100", noon + 60, 30, 4, 7, "Anna"}, {"200", noon + 120, 30, 4, 8, "Bert"}});
    read(9, 0, all);
    EXPECT_EQ(entry(list(all), 1).text<&CounterpartTexts::name>().self(),
              entry(list(all), 2).text<&CounterpartTexts::name>().self());
    EXPECT_EQ(uikit::utf8(entry(list(all), 0).text<&CounterpartTexts::name>()), "Bert");
    EXPECT_EQ(uikit::utf8(entry(list(all), 2).phoneNumber()), "100");
}

TEST_F(PagingTest, aPageAskedForBelowTheEndOfTheListLeavesNoGap) {
    add(row(6));
    read(2, 0, all);
    // Another thread empties the list while the next page is on its way.
    list(all).removeAllObjects();
    read(2, 2, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{6, 5, 4, 3}));
}

/// Runs `work` once, while the next entry is made: the page has been read by then and is not in the list yet.
void whileAPageIsUnderWay(std::function<void()> work) {
    static std::function<void()> once;
    static const auto init = +[](id self, SEL) {
        if (const auto now = std::exchange(once, nullptr)) now();
        return self;
    };
    once = std::move(work);
    class_addMethod(objc::classNamed<"QVCallEntry">(), objc::selector<"init">(), reinterpret_cast<IMP>(init), "@@:");
}

TEST_F(PagingTest, aFirstPageThatWasReadBeforeTheListWasEmptiedIsReadAgain) {
    add(row(3));
    read(1, 0, all);
    list(all).removeAllObjects();
    whileAPageIsUnderWay([] {
        add({{"200", noon + day}});
        list(all).removeAllObjects();
    });
    read(3, 0, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2})) << "the call that came is there";
}

TEST_F(PagingTest, aNextPageThatWasReadBeforeTheListWasEmptiedIsReadAgain) {
    add(row(6));
    read(2, 0, all);
    whileAPageIsUnderWay([] {
        add({{"200", noon + day}});
        list(all).removeAllObjects();
    });
    read(2, 2, all);
    EXPECT_EQ(rowIds(list(all)), (std::vector{7, 6, 5, 4}));
}

TEST_F(PagingTest, aDaysPageThatWasReadBeforeTheListWasEmptiedIsReadAgain) {
    add(row(2));
    whileAPageIsUnderWay([] {
        add({{"200", noon + 600}});
        list(all).removeAllObjects();
    });
    read(0, 0, all);
    objc::send<"setCallList:">(object(), NSMutableArray::make().get());
    objc::send<"readCallsForDate:offset:flag:date:">(object(), objc::Object{}, std::int64_t{0}, all, ns("2024-06-15"));
    EXPECT_EQ(rowIds(list(all)), (std::vector{3, 2, 1}));
}

TEST_F(PagingTest, foldedRowsThatWereReadBeforeTheListWasEmptiedAreNotPutBack) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"2", noon + 1}, {"1", noon + 2}});
    read(9, 0, all);
    const auto found =
        objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), all, ns("2"), NSString{});
    whileAPageIsUnderWay([] {
        // The row that two others become once the one between them is gone is made.
        list(all).removeAllObjects();
    });
    list(all).removeObjectAtIndex(0);
    EXPECT_TRUE(
        (objc::send<"removeData:calFilterType:date:", bool>(object(), found.objectAtIndex(0), all, objc::Object{})));
    EXPECT_EQ(list(all).count(), 0U);
}

TEST_F(PagingTest, eachFilterHasItsOwnListAndAnyOtherCodeMeansAll) {
    add({{"1", noon, 5, 5}, {"2", noon + 1, 0, 5}, {"3", noon + 2, 5, 4}, {"4", noon + 3, 0, 4}});
    for (const auto filter : {dialled, received, missed}) read(9, 0, filter);
    read(9, 0, 77);
    EXPECT_EQ(rowIds(list(dialled)), (std::vector{2, 1}));
    EXPECT_EQ(rowIds(list(received)), (std::vector{3}));
    EXPECT_EQ(rowIds(list(missed)), (std::vector{4}));
    EXPECT_EQ(rowIds(list(all)), (std::vector{4, 3, 2, 1}));
}

TEST_F(PagingTest, groupedByDateTheFirstFilterReadsDaysIntoTheListOfDays) {
    setSetting("isGroupByDate", "on");
    add({{"1", noon, 10, 5}, {"2", noon + 60, 20, 4}, {"3", noon + 120, 0, 4}, {"4", noon + day, 7, 5}});
    read(9, 0, all);
    EXPECT_FALSE(list(all));
    const auto days = get<"dateCallsList", NSMutableArray>();
    ASSERT_EQ(days.count(), 2U);
    const CallEntry& older = entry(days, 1);
    EXPECT_EQ(uikit::utf8(older.dayText()), "2024-06-15");
    EXPECT_EQ(older.dialledCount, 1);
    EXPECT_EQ(older.receivedCount, 1);
    EXPECT_EQ(older.missedCount, 1);
    EXPECT_EQ(older.dialledDuration, 10);
    EXPECT_EQ(older.receivedDuration, 20);
    EXPECT_EQ(uikit::utf8(entry(days, 0).dayText()), "2024-06-16");
}

TEST_F(PagingTest, groupedByContactCallsInARowAreOneEntry) {
    setSetting("isGroupContacts_Call", "on");
    add({{"1", noon}, {"1", noon + 1}, {"2", noon + 2}, {"1", noon + 3}});
    read(9, 0, all);
    ASSERT_EQ(rowIds(list(all)), (std::vector{4, 3, 2}));
    EXPECT_EQ(entry(list(all), 2).count, 2);
}

TEST_F(PagingTest, theCallsOfADayAreReadFromWhereTheListEnds) {
    add({{"1", noon}, {"2", noon + 60}, {"3", noon + day}});
    objc::send<"readCallsForDate:offset:flag:date:">(object(), objc::Object{}, std::int64_t{0}, all, ns("2024-06-15"));
    EXPECT_EQ(rowIds(list(all)), (std::vector{2, 1}));
    objc::send<"readCallsForDate:offset:flag:date:">(object(), objc::Object{}, std::int64_t{1}, received,
                                                     ns("2024-06-15"));
    EXPECT_EQ(rowIds(list(received)), (std::vector{2, 1}));
    add({{"4", noon - 60}});
    objc::send<"readCallsForDate:offset:flag:date:">(object(), objc::Object{}, std::int64_t{2}, received,
                                                     ns("2024-06-15"));
    EXPECT_EQ(rowIds(list(received)), (std::vector{2, 1, 4}));
}

/// The rows of a list as a slow reader would make them: the row identifier and the number of calls of each.
std::vector<std::pair<int, int>> modelRows(const std::vector<Call>& calls, const std::vector<int>& ids,
                                           std::int64_t filter, bool byDate, bool byContact) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const auto kind = store::listOf(calls[i].flags, calls[i].duration);
        if (filter == all || static_cast<std::int64_t>(kind) == filter) order.push_back(i);
    }
    std::sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return calls[one].date != calls[other].date ? calls[one].date > calls[other].date : ids[one] > ids[other];
    });
    std::vector<std::pair<int, int>> rows;
    std::size_t before = 0;
    for (const std::size_t i : order) {
        bool joins = false;
        if (!rows.empty() && byDate && filter == all)
            joins = calls[i].date / day == calls[before].date / day;
        else if (!rows.empty() && byContact)
            joins = std::string_view(calls[i].address) == calls[before].address;
        if (joins)
            ++rows.back().second;
        else
            rows.emplace_back(ids[i], 1);
        before = i;
    }
    return rows;
}

TEST_F(PagingTest, pagesToTheEndAreTheWholeListInEveryMode) {
    const bool holds = rc::check([this] {
        const char* addresses[] = {"1", "2", "a@b.example"};
        std::vector<Call> calls;
        const int number = *rc::gen::inRange(0, 40);
        for (int i = 0; i < number; ++i)
            calls.push_back({addresses[*rc::gen::inRange(0, 3)], noon + *rc::gen::inRange(0, 8) * (day / 4),
                             *rc::gen::inRange(0, 2) * 9, *rc::gen::element(4, 5)});
        service().removeCalls(all, {});
        const auto ids = add(calls);
        for (const char* byDate : {"off", "on"}) {
            for (const char* byContact : {"off", "on"}) {
                setSetting("isGroupByDate", byDate);
                setSetting("isGroupContacts_Call", byContact);
                for (const auto filter : {all, dialled, received, missed}) {
                    const bool days = *byDate == 'o' && byDate[1] == 'n';
                    objc::send<"setCallList:">(object(), objc::Object{});
                    objc::send<"setDateCallsList:">(object(), objc::Object{});
                    objc::send<"setDldCallList:">(object(), objc::Object{});
                    objc::send<"setRcdCallList:">(object(), objc::Object{});
                    objc::send<"setMsdCallList:">(object(), objc::Object{});
                    const auto present = [&] {
                        return days && filter == all ? get<"dateCallsList", NSMutableArray>() : list(filter);
                    };
                    const auto total = objc::send<"getTotalCallCount:", std::int64_t>(object(), filter);
                    std::int64_t held = 0;
                    while (held < total) {
                        read(*rc::gen::inRange(1, 9), held, filter);
                        const auto now = static_cast<std::int64_t>(present().count());
                        RC_ASSERT(now > held);
                        held = now;
                    }
                    std::vector<std::pair<int, int>> rows;
                    for (unsigned long i = 0; i < present().count(); ++i)
                        rows.emplace_back(entry(present(), i).rowId, entry(present(), i).count);
                    RC_ASSERT(rows == modelRows(calls, ids, filter, days, byContact[1] == 'n'));
                }
            }
        }
    });
    EXPECT_TRUE(holds);
}

}  // namespace
}  // namespace quorvel::test

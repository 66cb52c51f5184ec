// Histories: whose calls they are of, and what the lists show once calls of one were deleted.
#include <gmock/gmock.h>
#include <rapidcheck.h>

#include "desktop/addressbook/book.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/quorvel/store/local_days.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

using contacts::Book;
using contacts::Property;
using testing::ElementsAre;
using testing::IsEmpty;

/// Germany is home, and Anna has two numbers and an address.
class HistoryTest : public CompanionTest {
  protected:
    HistoryTest() {
        setSetting("region", "DE");
        contacts::Contact anna;
        anna.setText(Property::firstName, "Anna");
        anna.lists[Property::phone].push_back({0, "_$!<Mobile>!$_", "+49 30 5550101", {}});
        anna.lists[Property::phone].push_back({1, "_$!<Home>!$_", "(040) 555 0102", {}});
        anna.lists[Property::email].push_back({0, "", "anna@example.com", {}});
        const auto written = Book::shared().write({anna});
        if (!written) throw std::runtime_error(written.error().message);
        anna_ = written->front();
        settle();
    }
    ~HistoryTest() override { settle(); }
    static void settle() {
        const double deadline = dispatch::steadyNow() + 60;
        while (!dispatch::idle() && dispatch::steadyNow() < deadline) {
            dispatch::waitForWork(deadline);
            dispatch::drainMainQueue();
        }
    }
    static NSArray historyOf(objc::Object entry) {
        return objc::send<"getHistoryForContact:", NSArray>(object(), entry);
    }
    static std::vector<int> historyOfRow(unsigned long row) { return rowIds(historyOf(list(all).objectAtIndex(row))); }
    static bool removeHistory(objc::Object entry, std::int64_t filter, std::int64_t shown) {
        return objc::send<"removeLogEntryFromDB:calFilterType:date:currentCount:", bool>(object(), entry, filter,
                                                                                         objc::Object{}, shown);
    }
    int anna() const { return anna_; }

  private:
    int anna_ = 0;
};

TEST_F(HistoryTest, aNumberIsItselfInEveryFormNewestFirst) {
    add({{"+493012345601", noon},
         {"+49 30 12345602", noon + 1},
         {"0049 30 123 456 01", noon + 2},
         {"(030) 12345601", noon + 3},
         {"03012345601", noon - 1}});
    read(9, 0, all);
    for (const unsigned long row : {0UL, 1UL, 3UL, 4UL}) EXPECT_THAT(historyOfRow(row), ElementsAre(4, 3, 1, 5));
    EXPECT_THAT(historyOfRow(2), ElementsAre(2));
}

TEST_F(HistoryTest, aContactIsAllItsNumbersInEveryFormAndWhatIsLinkedToIt) {
    add({{"030 5550101", noon},
         {"+49405550102", noon + 1, 9, 5, anna(), "Anna"},
         {"Anna@Example.com", noon + 2},
         {"0800 1", noon + 3, 9, 5, anna(), "Anna"},
         {"030 5550199", noon + 4}});
    read(9, 0, all);
    EXPECT_THAT(historyOfRow(1), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT(historyOfRow(3), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT(historyOfRow(0), ElementsAre(5));
}

TEST_F(HistoryTest, callsThatAreLinkedToAContactAreNotANumbersWithoutOne) {
    add({{"030 5550101", noon, 9, 5, anna(), "Anna"}, {"030 5550101", noon + 1}});
    read(9, 0, all);
    EXPECT_THAT(historyOfRow(0), ElementsAre(2));
}

TEST_F(HistoryTest, withheldNumbersAreOneAnotherAndNobodyElse) {
    add({{"", noon}, {"+493012345601", noon + 1}, {"", noon + 2}, {"-1", noon + 3}});
    read(9, 0, all);
    EXPECT_THAT(historyOfRow(1), ElementsAre(3, 1));
    EXPECT_THAT(historyOfRow(0), ElementsAre(4));
}

TEST_F(HistoryTest, emailAddressesAreTheSameWhateverTheirCase) {
    add({{"Bob@Example.com", noon, 30, 16}, {"bob@example.com", noon + 1, 30, 16}});
    read(9, 0, all);
    EXPECT_THAT(historyOfRow(0), ElementsAre(2, 1));
}

TEST_F(HistoryTest, aCallThatCameWhileTheUserWasAskedSurvivesTheDeletionOfAll) {
    setSetting("isGroupContacts_Call", "on");
    add({{"030 5550101", noon}, {"030 5550101", noon + 1}});
    read(9, 0, all);
    add({{"+49305550101", noon + 2}});
    EXPECT_TRUE(removeHistory(list(all).objectAtIndex(0), all, 2));
    EXPECT_TRUE((*callStore()->call(3)).has_value());
    EXPECT_THAT(rowIds(list(all)), ElementsAre(3));
}

TEST_F(HistoryTest, aCallThatCameAfterTheHistoryWasEmptiedStaysInTheLists) {
    add({{"030 5550101", noon}, {"030 5550102", noon + 1}});
    read(9, 0, all);
    const objc::Strong<> first(list(all).objectAtIndex(1));
    const std::int64_t gone = 1;
    ASSERT_TRUE(callStore()->deleteCalls({&gone, 1}).ok());
    add({{"+49 30 5550101", noon + 2}});
    read(9, 2, all);
    objc::send<"allHistoryDeletedForEntry:">(object(), first.get());
    EXPECT_THAT(rowIds(list(all)), ElementsAre(2));
    read(9, 1, all);
    EXPECT_EQ(count(all), 2);
}

TEST_F(HistoryTest, ofAllFormsOfANumberGoesTogether) {
    setSetting("isGroupContacts_Call", "on");
    add({{"+493012345601", noon, 9, 5}, {"0049 30 12345601", noon + 1, 9, 5}, {"030 12345601", noon + 2}});
    for (const auto filter : {all, dialled, received}) read(9, 0, filter);
    EXPECT_TRUE(removeHistory(list(all).objectAtIndex(0), dialled, 2));
    EXPECT_THAT(rowIds(list(all)), ElementsAre(3));
    EXPECT_THAT(rowIds(list(dialled)), IsEmpty());
    EXPECT_THAT(rowIds(list(received)), ElementsAre(3));
}

// What a slow reader would make of the log.

struct Address {
    const char* text;
    bool isAnnas;  ///< One of her numbers, in some form.
    int number;    ///< The same for all forms of a number.
    bool isLinked;
};
constexpr Address addresses[] = {{"+49305550101", true, 1, true},    {"030 5550101", true, 1, false},
                                 {"(040) 5550102", true, 2, true},   {"08001234", false, 3, true},
                                 {"+493012345601", false, 4, false}, {"0049 30 12345601", false, 4, false},
                                 {"030-12345601", false, 4, false},  {"", false, 5, false},
                                 {"030 12345699", false, 6, false}};

struct ModelCall {
    int id = 0;
    std::size_t address = 0;
    Call call;

    std::int64_t kind() const { return static_cast<std::int64_t>(store::listOf(call.flags, call.duration)); }
    bool isOf(std::int64_t filter) const { return filter == all || kind() == filter; }
    std::int64_t day() const { return call.date / test::day; }
};

struct ModelLog {
    std::vector<ModelCall> calls;  // newest first

    std::vector<ModelCall> history(const ModelCall& of, std::int64_t filter = all) const {
        const Address& mine = addresses[of.address];
        std::vector<ModelCall> found;
        for (const auto& each : calls) {
            const Address& other = addresses[each.address];
            const bool isWithAnna = other.isLinked || other.isAnnas;
            const bool isWithNumber = !other.isLinked && other.number == mine.number;
            if (each.isOf(filter) && (mine.isLinked ? isWithAnna : isWithNumber)) found.push_back(each);
        }
        return found;
    }
    void remove(const std::vector<ModelCall>& gone) {
        std::erase_if(calls, [&](const ModelCall& each) {
            return std::any_of(gone.begin(), gone.end(), [&](const ModelCall& one) { return one.id == each.id; });
        });
    }
    /// Rows as row identifier and number of calls.
    std::vector<std::pair<int, int>> rows(std::int64_t filter, bool byContact, std::int64_t onDay = -1) const {
        std::vector<std::pair<int, int>> made;
        const ModelCall* before = nullptr;
        for (const auto& each : calls) {
            if (!each.isOf(filter) || (onDay >= 0 && each.day() != onDay)) continue;
            const bool joins = byContact && before && isSameParty(*before, each);
            if (joins)
                ++made.back().second;
            else
                made.emplace_back(each.id, 1);
            before = &each;
        }
        return made;
    }
    static bool isSameParty(const ModelCall& one, const ModelCall& other) {
        const Address& left = addresses[one.address];
        const Address& right = addresses[other.address];
        return left.isLinked || right.isLinked ? left.isLinked && right.isLinked : one.address == other.address;
    }
};

struct DayRow {
    std::int64_t day;
    std::int64_t dialled, received, missed;
    std::int64_t dialledSeconds, receivedSeconds;
    friend bool operator==(const DayRow&, const DayRow&) = default;
    friend std::ostream& operator<<(std::ostream& out, const DayRow& row) {
        return out << row.day << ": " << row.dialled << ' ' << row.received << ' ' << row.missed << ' '
                   << row.dialledSeconds << ' ' << row.receivedSeconds;
    }
};

std::vector<DayRow> daysOf(const ModelLog& log) {
    std::vector<DayRow> days;
    for (const auto& each : log.calls) {
        if (days.empty() || days.back().day != each.day()) days.push_back({each.day(), 0, 0, 0, 0, 0});
        DayRow& row = days.back();
        if (each.kind() == dialled) ++row.dialled, row.dialledSeconds += each.call.duration;
        if (each.kind() == received) ++row.received, row.receivedSeconds += each.call.duration;
        if (each.kind() == missed) ++row.missed;
    }
    return days;
}

/// What the history screen does to the companion, and the lists that the companion is then asked for.
class Visits : public HistoryTest {
  protected:
    static std::vector<std::pair<int, int>> rowsOf(NSArray list) {
        std::vector<std::pair<int, int>> rows;
        for (unsigned long i = 0; i < list.count(); ++i) rows.emplace_back(entry(list, i).rowId, entry(list, i).count);
        return rows;
    }
    static std::vector<DayRow> shownDays() {
        const auto list = get<"dateCallsList", NSMutableArray>();
        std::vector<DayRow> days;
        for (unsigned long i = 0; i < list.count(); ++i) {
            const CallEntry& row = entry(list, i);
            days.push_back({row.date / test::day, row.dialledCount, row.receivedCount, row.missedCount,
                            row.dialledDuration, row.receivedDuration});
        }
        return days;
    }
    ModelLog fill() {
        service().removeCalls(all, {});
        ModelLog log;
        const int number = *rc::gen::inRange(1, 30);
        for (int i = 0; i < number; ++i) {
            ModelCall made;
            made.address = *rc::gen::inRange<std::size_t>(0, std::size(addresses));
            const Address& address = addresses[made.address];
            made.call = {address.text, noon + *rc::gen::inRange(0, 12) * (day / 4), *rc::gen::inRange(0, 2) * 9,
                         *rc::gen::element(4, 5), address.isLinked ? anna() : store::noContact};
            made.id = add({made.call}).front();
            log.calls.push_back(made);
        }
        std::sort(log.calls.begin(), log.calls.end(), [](const ModelCall& one, const ModelCall& other) {
            return one.call.date != other.call.date ? one.call.date > other.call.date : one.id > other.id;
        });
        return log;
    }
    void load(bool byDate, std::int64_t onDay) {
        for (const auto filter : {all, dialled, received, missed}) {
            list(filter).removeAllObjects();
            if (!byDate) read(999, 0, filter);
        }
        if (!byDate) return;
        get<"dateCallsList", NSMutableArray>().removeAllObjects();
        read(999, 0, all);
        const std::string text = store::dayText(onDay);
        for (const auto filter : {all, dialled, received, missed})
            objc::send<"readCallsForDate:offset:flag:date:">(object(), objc::Object{}, std::int64_t{0}, filter,
                                                             ns(text.c_str()));
    }
    /// Opens the history of a call, deletes from it, and leaves.
    void visit(ModelLog& log, bool byContact) {
        const auto& chosen = log.calls[*rc::gen::inRange<std::size_t>(0, log.calls.size())];
        SharedTexts texts;
        const auto shown = CallEntry::of(**callStore()->call(chosen.id), texts);
        const objc::Object shownObject{shown.self()};
        const auto calls = historyOf(shownObject);
        const auto expected = log.history(chosen);
        RC_ASSERT(rowIds(calls) == idsOf(expected));

        const auto filter = *rc::gen::element(all, dialled, received, missed);
        const auto ofFilter = log.history(chosen, filter);
        const auto picked = NSMutableArray::make();
        for (unsigned long i = 0; i < calls.count(); ++i)
            if (expected[i].isOf(filter)) picked->addObject(calls.objectAtIndex(i));
        if (!ofFilter.empty() && *rc::gen::arbitrary<bool>()) {
            const auto at = *rc::gen::inRange<std::size_t>(0, ofFilter.size());
            RC_ASSERT((objc::send<"removeLogEntry:calFilterType:", bool>(object(), picked->objectAtIndex(at), filter)));
            log.remove({ofFilter[at]});
        } else if (byContact) {
            RC_ASSERT(removeHistory(shownObject, filter, static_cast<std::int64_t>(ofFilter.size())));
            log.remove(ofFilter);
        } else {
            RC_ASSERT((objc::send<"removeLogEntriesFromDB:calFilterType:", bool>(object(), picked.get(), filter)));
            log.remove(ofFilter);
        }
        leave(shownObject);
    }
    static void leave(objc::Object shown) {
        const auto left = historyOf(shown);
        if (left.count() == 0) return objc::send<"allHistoryDeletedForEntry:">(object(), shown);
        objc::send<"updateCallEntriesTimeStamp:dldCallEntry:rcdCallEntry:msdCallEntry:">(
            object(), left.objectAtIndex(0), objc::Object{}, objc::Object{}, objc::Object{});
    }
    static std::vector<int> idsOf(const std::vector<ModelCall>& calls) {
        std::vector<int> ids;
        for (const auto& each : calls) ids.push_back(each.id);
        return ids;
    }
    static void compare(const ModelLog& log, bool byDate, bool byContact, std::int64_t onDay) {
        for (const auto filter : {all, dialled, received, missed}) {
            RC_ASSERT(rowsOf(list(filter)) == log.rows(filter, byContact, byDate ? onDay : -1));
            const auto rows = byDate && filter == all ? daysOf(log).size() : log.rows(filter, byContact).size();
            RC_ASSERT(count(filter) == static_cast<std::int64_t>(rows));
            RC_ASSERT((objc::send<"getTotalCallCount:", std::int64_t>(object(), filter)) ==
                      static_cast<std::int64_t>(rows));
            std::int64_t seconds = 0;
            for (const auto& each : log.calls) seconds += each.isOf(filter) ? each.call.duration : 0;
            RC_ASSERT(duration(filter) == seconds);
        }
        if (byDate) RC_ASSERT(shownDays() == daysOf(log));
    }
};

TEST_F(Visits, leaveEveryListAndCountAsAPlainReaderOfTheLogMakesThem) {
    const bool holds = rc::check([this] {
        const bool byDate = *rc::gen::arbitrary<bool>();
        const bool byContact = *rc::gen::arbitrary<bool>();
        setSetting("isGroupByDate", byDate ? "on" : "off");
        setSetting("isGroupContacts_Call", byContact ? "on" : "off");
        ModelLog log = fill();
        const std::int64_t onDay = log.calls.front().day();
        load(byDate, onDay);
        for (const auto filter : {all, dialled, received, missed})
            objc::send<"getTotalCallCount:", std::int64_t>(object(), filter);
        while (!log.calls.empty()) {
            visit(log, byContact);
            compare(log, byDate, byContact, onDay);
        }
    });
    EXPECT_TRUE(holds);
}

}  // namespace
}  // namespace quorvel::test

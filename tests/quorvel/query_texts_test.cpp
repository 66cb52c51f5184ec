// The queries for an entry's calls, formed as the plug-in forms them, on a real call log: whatever a number holds, the
// companion answers a list and nothing is written.
#include <gmock/gmock.h>

#include <string>

#include "fixture.h"
#include "plugin/rows/call_query_rule.h"
#include "plugin/rows/call_records.h"

namespace quorvel::test {
namespace {

using testing::ElementsAre;

/// How a flag names an outgoing call.
constexpr int outgoing = 5;
constexpr int incoming = 4;

class QueryTexts : public CompanionTest {
  protected:
    /// An entry as a list has it.
    static objc::Strong<QVCallEntry> entryOf(const std::string& number, int record = -1, std::int64_t date = noon) {
        auto made = objc::make<QVCallEntry>(objc::classNamed<"QVCallEntry">());
        made->setPhoneNumber(ns(number.c_str()));
        made->setAbRecID(record);
        made->setDate(static_cast<int>(date));
        return made;
    }
    NSMutableArray selected(QVCallEntry entry) { return rows::callListForSelectedCall({{}, state_}, entry); }
    NSMutableDictionary ofTheDay(QVCallEntry entry) {
        return objc::autorelease(rows::callListForTheDay({{}, state_}, entry));
    }
    static NSArray side(NSMutableDictionary byDirection, const char* key) {
        const auto title = objc::sendClass<"QuorvelUtils", "getLocalizedString:", objc::Object>(ns(key));
        return byDirection.objectForKey<NSArray>(title);
    }
    NSMutableArray ask(rows::Columns columns, rows::Span span, const std::string& number) {
        const auto format = ns(rows::queryFormat(columns, rows::Whose::Address, span));
        const auto query = NSString::stringWithFormat(format, ns(number.c_str()), ns("2024-06-15"));
        return objc::send<"getResult:", NSMutableArray>(object(), query);
    }
    std::int64_t calls() { return objc::send<"getTotalCallCount:", std::int64_t>(object(), all); }

    rows::CallListState state_;
};

TEST_F(QueryTexts, giveTheCallsOfTheDayNewestFirst) {
    const auto ids = add({{.address = "1", .date = noon},
                          {.address = "1", .date = noon + 60},
                          {.address = "2", .date = noon + 70},
                          {.address = "1", .date = noon + day}});
    EXPECT_THAT(rowIds(selected(entryOf("1"))), ElementsAre(ids[1], ids[0]));
}

TEST_F(QueryTexts, giveTheCallsOfAContactWhateverTheNumber) {
    const auto ids = add({{.address = "1", .date = noon, .contact = 7},
                          {.address = "2", .date = noon + 60, .contact = 7},
                          {.address = "1", .date = noon + 70}});
    EXPECT_THAT(rowIds(selected(entryOf("9", 7))), ElementsAre(ids[1], ids[0]));
}

TEST_F(QueryTexts, giveTheLatestCallOfAnyDayWhereTheEntrysDayHasNoneLeft) {
    const auto ids = add({{.address = "1", .date = noon}, {.address = "1", .date = noon + day}});
    EXPECT_THAT(rowIds(selected(entryOf("1", -1, noon + 5 * day))), ElementsAre(ids[1]));
}

TEST_F(QueryTexts, giveTheEntryItselfWhereTheLogHasNoCallOfIt) {
    auto entry = entryOf("1");
    auto found = selected(entry);
    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.objectAtIndex(0), entry.get());
}

TEST_F(QueryTexts, ofTheDaySplitItsCallsByDirectionNewestFirst) {
    const auto ids = add({{.address = "1", .date = noon, .flags = outgoing},
                          {.address = "1", .date = noon + 60, .flags = incoming},
                          {.address = "1", .date = noon + 70, .flags = outgoing}});
    auto found = ofTheDay(entryOf("1"));
    EXPECT_THAT(rowIds(side(found, "OUT_CALLS")), ElementsAre(ids[2], ids[0]));
    EXPECT_THAT(rowIds(side(found, "INC_CALLS")), ElementsAre(ids[1]));
}

TEST_F(QueryTexts, ofTheDayHaveBothSidesEvenWhereOneIsEmpty) {
    add({{.address = "1", .date = noon, .flags = outgoing}});
    auto found = ofTheDay(entryOf("1"));
    EXPECT_EQ(side(found, "OUT_CALLS").count(), 1U);
    ASSERT_TRUE(side(found, "INC_CALLS"));
    EXPECT_EQ(side(found, "INC_CALLS").count(), 0U);
}

TEST_F(QueryTexts, ofADayWithoutAnyLeftGiveTheEntryTheLatestCallsFlagsDurationAndDate) {
    const auto ids = add({{.address = "1", .date = noon, .duration = 90, .flags = outgoing}});
    auto entry = entryOf("1", -1, noon + 5 * day);
    auto found = ofTheDay(entry);
    EXPECT_THAT(rowIds(side(found, "OUT_CALLS")), ElementsAre(ids[0]));
    EXPECT_EQ(entry->flag(), outgoing);
    EXPECT_EQ(entry->duration(), 90);
    EXPECT_EQ(entry->date(), noon);
}

TEST_F(QueryTexts, ofADayWithCallsLeaveTheEntryAsItIs) {
    add({{.address = "1", .date = noon + 60, .duration = 90, .flags = outgoing}});
    auto entry = entryOf("1");
    ofTheDay(entry);
    EXPECT_EQ(entry->date(), noon);
    EXPECT_EQ(entry->duration(), 0);
}

TEST_F(QueryTexts, ofTheDayGiveTheEntryItselfWhereTheLogHasNoCallOfIt) {
    auto entry = entryOf("1");
    auto found = ofTheDay(entry);
    ASSERT_EQ(side(found, "INC_CALLS").count(), 1U);
    EXPECT_EQ(side(found, "INC_CALLS").objectAtIndex(0), entry.get());
    EXPECT_EQ(side(found, "OUT_CALLS").count(), 0U);
}

/// Numbers that end the text's quotation, or would.
const char* const hostileNumbers[] = {
    "'",
    "''",
    "O'Neill",
    "x'; delete from call; --",
    "x'; delete from call; select '1",
    "x' or 1=1 --",
    "x' or 1=1; drop table call; --",
    "x' union select ROWID, date, duration, flags from call where ''='",
    "x'/*",
    "x' /* */ or '1'='1",
    "-- x",
    "x;",
    "\\'",
    "%@%d%n",
    "\"; vacuum; --",
    "x'; pragma query_only = off; --",
    "x'; attach 'y.db' as y; --",
    "\xF0\x9F\x93\x9E' --",
};

TEST_F(QueryTexts, writeNothingAndAnswerAListWhateverTheNumberHolds) {
    add({{.address = "1", .date = noon}, {.address = "2", .date = noon + 1}});
    for (const char* number : hostileNumbers) {
        for (const auto columns : {rows::Columns::Full, rows::Columns::Short})
            for (const auto span : {rows::Span::Day, rows::Span::Latest})
                EXPECT_TRUE(ask(columns, span, number)) << number;
        EXPECT_GT(selected(entryOf(number)).count(), 0U) << number;
        EXPECT_EQ(calls(), 2) << number;
    }
    EXPECT_THAT(callStore()->verify().valueOr({"cannot be read"}), testing::IsEmpty());
}

TEST_F(QueryTexts, runNoSecondStatementThatANumberBringsAlong) {
    add({{.address = "1", .date = noon}});
    for (const char* number :
         {"1'; delete from call; --", "1'; select ROWID from call; --", "1'; delete from call; select '1"}) {
        EXPECT_EQ(ask(rows::Columns::Full, rows::Span::Latest, number).count(), 0U) << number;
        EXPECT_EQ(calls(), 1) << number;
    }
}

TEST_F(QueryTexts, areCutShortByACommentWithinANumberAndStillOnlyRead) {
    const auto ids = add({{.address = "1", .date = noon}});
    EXPECT_THAT(rowIds(ask(rows::Columns::Full, rows::Span::Day, "1' --")), ElementsAre(ids[0]));
    EXPECT_EQ(calls(), 1);
}

TEST_F(QueryTexts, findANumberWithDoubledQuotesUnderItsPlainSpellingAlone) {
    const auto ids = add({{.address = "O'Neill", .date = noon}});
    EXPECT_THAT(rowIds(ask(rows::Columns::Full, rows::Span::Day, "O''Neill")), ElementsAre(ids[0]));
}

TEST_F(QueryTexts, ofAQuoteInTheNumberGiveTheEntryItselfOnPurpose) {
    add({{.address = "O'Neill", .date = noon}});
    auto entry = entryOf("O'Neill");
    auto found = selected(entry);
    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.objectAtIndex(0), entry.get());
}

TEST_F(QueryTexts, ofAMegabyteAnswerAnEmptyListAndGiveTheEntryItself) {
    add({{.address = "1", .date = noon}});
    const std::string megabyte(1 << 20, '7');
    EXPECT_EQ(ask(rows::Columns::Full, rows::Span::Day, megabyte).count(), 0U);
    EXPECT_EQ(ask(rows::Columns::Short, rows::Span::Latest, std::string(1 << 20, '\'')).count(), 0U);
    auto entry = entryOf(megabyte);
    auto found = selected(entry);
    ASSERT_EQ(found.count(), 1U);
    EXPECT_EQ(found.objectAtIndex(0), entry.get());
    EXPECT_EQ(calls(), 1);
}

TEST_F(QueryTexts, answerEachTimeAListOfTheCallersOwn) {
    add({{.address = "1", .date = noon}});
    auto first = ask(rows::Columns::Full, rows::Span::Day, "1");
    first.removeAllObjects();
    EXPECT_EQ(ask(rows::Columns::Full, rows::Span::Day, "1").count(), 1U);
}

}  // namespace
}  // namespace quorvel::test

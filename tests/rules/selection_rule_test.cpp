// What a tap does and what opening shows, against plain models.
#include "plugin/rows/selection_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "plugin/rows/highlight_rule.h"

namespace {

using rows::Card;
using rows::cardOf;
using rows::Tap;
using rows::tapOn;

TEST(ATap, opensACallRowAndLeavesTheLoadMoreRowAlone) {
    EXPECT_EQ(tapOn(0, 2, false), Tap::Open);
    EXPECT_EQ(tapOn(1, 2, false), Tap::Open);
    EXPECT_EQ(tapOn(2, 2, false), Tap::Nothing);
}

TEST(ATap, callsBackOnTheLoadMoreRowTooOnPurpose) {
    EXPECT_EQ(tapOn(0, 2, true), Tap::CallBack);
    EXPECT_EQ(tapOn(2, 2, true), Tap::CallBack);
}

TEST(ATap, doesNothingWhileADeletionOfEverythingFoundCountsBelowZero) { EXPECT_EQ(tapOn(0, -1, false), Tap::Nothing); }

TEST(ATap, amongDaysCallsNobodyBack) {
    EXPECT_TRUE(rows::callsBackAmongDays(true, false));
    EXPECT_FALSE(rows::callsBackAmongDays(true, true));
    EXPECT_FALSE(rows::callsBackAmongDays(false, false));
    EXPECT_FALSE(rows::callsBackAmongDays(false, true));
}

/// The rule as it is told: first the setting, then the rows that are there.
Tap toldTap(std::int64_t row, const std::vector<int>& shown, bool isCallOnTap, bool isGroupByDate) {
    if (isCallOnTap && !isGroupByDate) return Tap::CallBack;
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (static_cast<std::int64_t>(i) == row) return Tap::Open;
    return Tap::Nothing;
}

RC_GTEST_PROP(ATap, isAsTold, ()) {
    const auto shown = *rc::gen::arbitrary<std::vector<int>>();
    const auto count = static_cast<std::int64_t>(shown.size());
    const auto row = *rc::gen::inRange<std::int64_t>(0, count + 3);
    const bool isCallOnTap = *rc::gen::arbitrary<bool>();
    const bool isGroupByDate = *rc::gen::arbitrary<bool>();
    RC_ASSERT(tapOn(row, count, rows::callsBackAmongDays(isCallOnTap, isGroupByDate)) ==
              toldTap(row, shown, isCallOnTap, isGroupByDate));
}

TEST(TheCard, ofAnEntryWithoutAContactIsNobodysEvenWhereAnEarlierPersonIsStillKnown) {
    EXPECT_EQ(cardOf(-1, true), Card::UnknownPerson);
    EXPECT_EQ(cardOf(-1, false), Card::UnknownPerson);
}

TEST(TheCard, ofAContactThatCannotBeReadIsNobodys) { EXPECT_EQ(cardOf(7, false), Card::UnknownPerson); }

RC_GTEST_PROP(TheCard, isThePersonsForEveryRecordButThatOfNobody, (int record, bool isPersonKnown)) {
    const bool isPersons = isPersonKnown && record != -1;
    RC_ASSERT((cardOf(record, isPersonKnown) == Card::Person) == isPersons);
    RC_ASSERT(cardOf(-1, isPersonKnown) == Card::UnknownPerson);
}

TEST(TheHighlight, isOnTheAddressOnlyWhereNoNumberIsTheCalls) {
    EXPECT_FALSE(rows::isEmailHighlighted(0));
    EXPECT_FALSE(rows::isEmailHighlighted(3));
    EXPECT_TRUE(rows::isEmailHighlighted(-1));
}

}  // namespace

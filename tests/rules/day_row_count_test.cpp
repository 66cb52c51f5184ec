// How many rows a day shows: the cases by name, and the rule against a table of its conditions.
#include "plugin/datelog/day_row_count_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using datelog::dayRowCount;

TEST(TheRowsOfADay, areAllOfAShortDay) { EXPECT_EQ(dayRowCount(7, 20, 0), 7); }

TEST(TheRowsOfADay, areOnePageAlsoWhereMoreWasReachedBefore) { EXPECT_EQ(dayRowCount(60, 20, 40), 20); }

TEST(TheRowsOfADay, areAllWhereMoreWasReachedThanThereIsNow) { EXPECT_EQ(dayRowCount(60, 20, 80), 60); }

RC_GTEST_PROP(TheRowsOfADay, areNeverMoreThanThereAreAndNeverFewerThanAPageOfThem, ()) {
    const auto loaded = *rc::gen::inRange<std::int64_t>(0, 300);
    const auto page = *rc::gen::inRange<std::int64_t>(1, 100);
    const auto saved = *rc::gen::inRange<std::int64_t>(0, 400);
    const auto rows = dayRowCount(loaded, page, saved);
    RC_ASSERT(rows <= loaded);
    RC_ASSERT(rows >= std::min(loaded, page));
    // All beyond a page show only where paging had gone beyond what is left.
    RC_ASSERT(rows == std::min(loaded, page) || (saved > loaded && rows == loaded));
}

}  // namespace

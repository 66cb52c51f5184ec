// The table's rows: the stated cases and the invariants.
#include "plugin/rows/number_of_rows.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/case_names.h"

namespace {

using rows::numberOfRows;

struct Case {
    const char* holds;
    rows::RowSituation now;
    std::int64_t expected;
};

class NumberOfRows : public testing::TestWithParam<Case> {};

TEST_P(NumberOfRows, holds) { EXPECT_EQ(numberOfRows(GetParam().now), GetParam().expected) << GetParam().holds; }

// rowCount, totalCount, found, searching, isAllRecsLoaded
INSTANTIATE_TEST_SUITE_P(
    Table, NumberOfRows,
    testing::Values(
        Case{"a search that has found nothing yet has the load-more row alone", {0, 0, 0, true, false}, 1},
        Case{"a search that found nothing at all has no row", {0, 0, 0, true, true}, 0},
        Case{"an empty list has no row", {0, 0, 0, false, false}, 0},
        Case{"a whole list has no load-more row", {40, 40, 0, false, false}, 40},
        Case{"a part of a list has one", {50, 500, 0, false, false}, 51},
        Case{"the flag of searches does not end a list", {50, 500, 0, false, true}, 51},
        Case{"a search that is complete has none", {50, 500, 50, true, true}, 50},
        Case{"a search that goes on keeps it while less was found than there is", {40, 40, 12, true, false}, 41},
        Case{"a search that found everything has none", {40, 40, 40, true, false}, 40},
        Case{"a negative count during a deletion stays negative", {-1, 40, 0, true, true}, -1}),
    [](const auto& each) { return tests::caseName(each.param.holds); });

TEST(NumberOfRows, isTheCallRowsAndAtMostOneMore) {
    EXPECT_TRUE(rc::check([] {
        const rows::RowSituation now{*rc::gen::inRange<std::int64_t>(-1, 9), *rc::gen::inRange<std::int64_t>(0, 9),
                                     *rc::gen::inRange<std::int64_t>(0, 9), *rc::gen::arbitrary<bool>(),
                                     *rc::gen::arbitrary<bool>()};
        const std::int64_t extra = numberOfRows(now) - now.rowCount;
        RC_ASSERT(extra == 0 || extra == 1);
        if (!now.searching) RC_ASSERT((extra == 1) == (now.rowCount >= 1 && now.rowCount < now.totalCount));
        if (now.searching && now.isAllRecsLoaded) RC_ASSERT(extra == 0);
    }));
}

TEST(LoadMoreRow, standsAfterTheCallRows) {
    EXPECT_FALSE(rows::isLoadMoreRow(49, 50));
    EXPECT_TRUE(rows::isLoadMoreRow(50, 50));
    EXPECT_TRUE(rows::isLoadMoreRow(0, 0));
    EXPECT_FALSE(rows::isLoadMoreRow(0, -1));
}

TEST(LoadMoreRow, cannotBeSwiped) {
    EXPECT_TRUE(rows::canEditRow(49, 50));
    EXPECT_FALSE(rows::canEditRow(50, 50));
    EXPECT_TRUE(rows::canEditRow(3, -1));
}

TEST(DeletingARow, lowersTheTotalOnlyWhileEveryRowIsShown) {
    EXPECT_EQ(rows::afterDeletingRow({10, 10}).rowCount, 9);
    EXPECT_EQ(rows::afterDeletingRow({10, 10}).totalCount, 9);
    EXPECT_EQ(rows::afterDeletingRow({10, 500}).rowCount, 9);
    EXPECT_EQ(rows::afterDeletingRow({10, 500}).totalCount, 500);
}

}  // namespace

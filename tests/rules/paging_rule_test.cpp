// The load-more arithmetic: its stated cases, and a plain model.
#include "plugin/recents/paging_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using recents::isShortPage;
using recents::PagingSituation;
using recents::planNextPage;

TEST(NextPage, isReadWhenMemoryDoesNotHoldIt) {
    EXPECT_TRUE(planNextPage({20, 20, 20, 45}).read);
    EXPECT_TRUE(planNextPage({20, 20, 39, 45}).read);
}

TEST(NextPage, comesFromMemoryWhereItIsThere) {
    const auto plan = planNextPage({20, 20, 40, 45});
    EXPECT_FALSE(plan.read);
    EXPECT_EQ(plan.rowCount, 40);
}

TEST(NextPage, ofAWholeListEndsWithTheList) {
    EXPECT_EQ(planNextPage({20, 20, 30, 30}).rowCount, 30);
    EXPECT_EQ(planNextPage({20, 20, 100, 100}).rowCount, 40);
}

TEST(NextPage, ofAWholeListWithinOnePageLeavesTheRowsButForTheListsEnd) {
    EXPECT_EQ(planNextPage({10, 50, 30, 30}).rowCount, 10);
    EXPECT_EQ(planNextPage({40, 50, 30, 30}).rowCount, 30);
}

TEST(ShortPage, isOneThatBroughtNothingOrTooLittle) {
    EXPECT_FALSE(isShortPage(20, 40, 20, 45));
    EXPECT_TRUE(isShortPage(20, 35, 20, 45));
    EXPECT_TRUE(isShortPage(20, 20, 20, 45));
    EXPECT_FALSE(isShortPage(40, 45, 20, 45));
}

TEST(NextPage, neverShowsMoreThanIsLoaded) {
    EXPECT_TRUE(rc::check([] {
        const auto any = [] { return *rc::gen::inRange<std::int64_t>(0, 60); };
        const auto loaded = any();
        const auto rowCount = *rc::gen::inRange<std::int64_t>(0, loaded + 1);
        const auto plan = planNextPage({rowCount, *rc::gen::inRange<std::int64_t>(1, 30), loaded, any()});
        if (!plan.read) RC_ASSERT(plan.rowCount <= loaded && plan.rowCount >= rowCount);
    }));
}

/// The rule as it is stated, step by step.
std::int64_t plainRows(const PagingSituation& now, bool& read) {
    std::int64_t rowCount = now.rowCount;
    read = false;
    if (now.loaded >= now.total) {
        if (now.loaded > now.pageSize) rowCount += now.pageSize;
        if (rowCount > now.loaded) rowCount = now.loaded;
        return rowCount;
    }
    const std::int64_t next = rowCount + now.pageSize;
    if (next <= now.loaded) return next;
    read = true;
    return rowCount;
}

TEST(NextPage, agreesWithThePlainRuleEverywhere) {
    EXPECT_TRUE(rc::check([] {
        const auto any = [] { return *rc::gen::inRange<std::int64_t>(0, 12); };
        const PagingSituation now{any(), any(), any(), any()};
        bool read = false;
        const auto rowCount = plainRows(now, read);
        const auto plan = planNextPage(now);
        RC_ASSERT(plan.read == read);
        RC_ASSERT(plan.rowCount == rowCount);
    }));
}

// Pages of a database that does not change: every row is shown once the load-more row has gone, and no page needs the
// total counted again.
TEST(NextPages, leadToTheEndOfAListThatStandsStill) {
    EXPECT_TRUE(rc::check([] {
        const auto total = *rc::gen::inRange<std::int64_t>(1, 200);
        const auto pageSize = *rc::gen::inRange<std::int64_t>(1, 40);
        std::int64_t loaded = std::min(total, pageSize);
        std::int64_t rowCount = loaded;
        for (int step = 0; rowCount < total; ++step) {
            RC_ASSERT(step < 200);
            const auto plan = planNextPage({rowCount, pageSize, loaded, total});
            if (!plan.read) {
                rowCount = plan.rowCount;
                continue;
            }
            const auto before = rowCount;
            loaded = std::min(total, rowCount + pageSize);
            rowCount = loaded;
            RC_ASSERT(!isShortPage(before, rowCount, pageSize, total));
        }
        RC_ASSERT(rowCount == total);
    }));
}

}  // namespace

// The load-more arithmetic.
#include "plugin/recents/paging_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using recents::isShortPage;
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

}  // namespace

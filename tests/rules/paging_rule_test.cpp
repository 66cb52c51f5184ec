// The load-more arithmetic: its cases, each with its own answer, and what holds for every list.
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

TEST(NextPage, answersItsTableOfCases) {
    struct Case {
        PagingSituation now;  // rows, page size, loaded, total
        bool read;
        std::int64_t rowCount;
    };
    constexpr Case cases[] = {
        // Everything is loaded: a page more, up to the end, where the list is longer than a page.
        {{0, 20, 0, 0}, false, 0},
        {{20, 20, 50, 50}, false, 40},
        {{20, 20, 40, 40}, false, 40},
        {{20, 20, 39, 39}, false, 39},
        {{20, 20, 21, 21}, false, 21},
        {{10, 20, 20, 20}, false, 10},
        {{10, 20, 21, 21}, false, 21},
        {{10, 20, 19, 19}, false, 10},
        {{30, 20, 25, 25}, false, 25},
        {{20, 20, 50, 40}, false, 40},
        {{20, 0, 50, 50}, false, 20},
        // Part of it is loaded: the page comes from memory where all of it is there.
        {{20, 20, 40, 50}, false, 40},
        {{20, 20, 41, 50}, false, 40},
        {{20, 20, 49, 50}, false, 40},
        {{20, 20, 39, 50}, true, 20},
        {{20, 20, 39, 40}, true, 20},
        {{20, 20, 20, 50}, true, 20},
        {{0, 20, 0, 1}, true, 0},
    };
    for (const auto& [now, read, rowCount] : cases) {
        const auto plan = planNextPage(now);
        EXPECT_EQ(plan.read, read) << now.rowCount << " rows, " << now.loaded << " of " << now.total;
        EXPECT_EQ(plan.rowCount, rowCount) << now.rowCount << " rows, " << now.loaded << " of " << now.total;
    }
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

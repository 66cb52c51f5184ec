// The row count rule: a table of its cases, each with its own answer, and what holds in every situation.
#include "plugin/recents/row_count_rule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace recents {

/// For the messages of the tests.
inline void PrintTo(const RowCountSituation& now, std::ostream* out) {
    *out << "page " << now.pageSize << ", reached " << now.saved << ", loaded " << now.loaded << " of " << now.total
         << ", page before " << now.lastPageSize << (now.searching ? ", searching" : "");
}

}  // namespace recents

namespace {

using recents::clampRowCount;
using recents::planRowCount;
using recents::RowCountPlan;
using recents::RowCountSituation;

constexpr bool searching = true;

struct Case {
    const char* what;
    RowCountSituation now;  // page size, reached, loaded, total, page size at the start, searching
    std::int64_t rowCount;
    std::int64_t read;  // 0: nothing is read
};

constexpr Case cases[] = {
    {"an empty log shows no row", {50, 0, 0, 0, 50, false}, 0, 0},
    {"an empty log shows no row after a change of the page size", {20, 0, 0, 0, 50, false}, 0, 0},
    // Part of the list is loaded, and it is enough.
    {"one page is shown", {50, 0, 120, 500, 50, false}, 50, 0},
    {"a page that is just loaded is shown", {50, 0, 50, 500, 50, false}, 50, 0},
    {"what was reached is shown", {50, 100, 120, 500, 50, false}, 100, 0},
    {"what was reached is shown where just that is loaded", {50, 100, 100, 500, 50, false}, 100, 0},
    {"one row more than a page counts as reached", {50, 51, 120, 500, 50, false}, 51, 0},
    {"a page that was reached is a page", {50, 50, 120, 500, 50, false}, 50, 0},
    {"less than a page that was reached is a page", {50, 49, 120, 500, 50, false}, 50, 0},
    {"without a page size only what was reached counts", {0, 1, 3, 4, 0, false}, 1, 0},
    {"without a page size and a memory no row is shown", {0, 0, 3, 4, 0, false}, 0, 0},
    // Part of the list is loaded, and it is not enough.
    {"the first load reads one page", {50, 0, 0, 500, 50, false}, 0, 50},
    {"the first load of a log of one call reads one page", {50, 0, 0, 1, 50, false}, 0, 50},
    {"a part of a page is filled up", {50, 0, 30, 500, 50, false}, 30, 20},
    {"a page that lacks one call is filled up", {50, 0, 49, 500, 50, false}, 49, 1},
    {"what was reached is read back", {50, 200, 50, 500, 50, false}, 50, 150},
    {"what was reached is read back up to the last call", {50, 51, 50, 500, 50, false}, 50, 1},
    {"what was reached is read back also where it is less than a page", {80, 60, 50, 500, 50, false}, 50, 10},
    {"less that was reached than is loaded leaves the page to be filled", {80, 40, 50, 500, 50, false}, 50, 30},
    {"a grown page reads a whole page, not the difference", {80, 50, 50, 500, 50, false}, 50, 80},
    {"a negative page size is a huge one", {-1, 0, 3, 9, -1, false}, 3, -4},
    // Everything is loaded.
    {"a whole list stays while the page size is the same", {50, 0, 40, 40, 50, false}, 40, 0},
    {"a whole list of many pages stays while the page size is the same", {50, 0, 400, 400, 50, false}, 400, 0},
    {"a shrunk page shortens a whole list", {20, 0, 40, 40, 50, false}, 20, 0},
    {"a page as long as the list shows it", {40, 0, 40, 40, 50, false}, 40, 0},
    {"a page longer than the list shows it", {60, 0, 40, 40, 50, false}, 40, 0},
    {"a changed page keeps what was reached", {20, 30, 40, 40, 50, false}, 30, 0},
    {"a changed page keeps what was reached up to the end", {20, 40, 40, 40, 50, false}, 40, 0},
    {"a memory beyond the end counts as a page", {20, 41, 40, 40, 50, false}, 20, 0},
    {"a memory of less than a page counts as a page", {20, 10, 40, 40, 50, false}, 20, 0},
    {"a memory of one page counts as a page", {20, 20, 40, 40, 50, false}, 20, 0},
    {"a memory beyond a list that is shorter than a page shows the list", {60, 70, 40, 40, 50, false}, 40, 0},
    {"a memory within a list that is shorter than a page shows the list", {60, 30, 40, 40, 50, false}, 40, 0},
    {"a list of one call is shortened to none without a page size", {0, 0, 1, 1, 50, false}, 0, 0},
    {"a list longer than its total stays", {20, 0, 45, 40, 50, false}, 45, 0},
    {"a list that is one longer than its total stays", {20, 0, 41, 40, 50, false}, 41, 0},
    // While searching.
    {"a search shows no row of a list that is partly loaded", {50, 0, 40, 500, 50, searching}, 0, 0},
    {"a search shows no row of a whole list", {20, 0, 40, 40, 50, searching}, 0, 0},
    {"a search shows no row of one call", {50, 0, 1, 500, 50, searching}, 0, 0},
    {"a search over a list that was never read reads it", {50, 0, 0, 500, 50, searching}, 0, 50},
    {"a search over an empty log reads nothing", {50, 0, 0, 0, 50, searching}, 0, 0},
};

TEST(RowCountRule, answersItsTableOfCases) {
    for (const auto& [what, now, rowCount, read] : cases) {
        const RowCountPlan plan = planRowCount(now);
        EXPECT_EQ(plan.rowCount, rowCount) << what;
        EXPECT_EQ(plan.load, read != 0) << what;
        EXPECT_EQ(plan.read, read) << what;
    }
}

struct Clamp {
    std::int64_t rowCount;
    std::int64_t pageSize;
    std::int64_t saved;
    std::int64_t total;
    std::int64_t shown;
};

TEST(RowCountRule, clampsToAPageUnlessMoreWasReached) {
    constexpr Clamp clamps[] = {{120, 50, 0, 500, 50},    {120, 50, 100, 500, 100}, {120, 50, 50, 500, 50},
                                {120, 50, 51, 500, 51},   {120, 50, 500, 500, 500}, {120, 50, 501, 500, 500},
                                {120, 50, 600, 500, 500}, {50, 50, 100, 500, 50},   {51, 50, 100, 500, 100},
                                {51, 50, 0, 500, 50},     {30, 50, 100, 500, 30},   {0, 0, 7, 9, 0},
                                {3, 0, 0, 9, 0},          {3, 0, 1, 9, 1},          {120, 50, 45, 40, 40},
                                {120, 50, 40, 40, 50},    {120, 50, 60, 60, 60},    {3, -1, 2, 9, 3}};
    for (const auto& [rowCount, pageSize, saved, total, shown] : clamps)
        EXPECT_EQ(clampRowCount(rowCount, pageSize, saved, total), shown)
            << rowCount << " rows, page " << pageSize << ", reached " << saved << ", total " << total;
}

/// Calls the function with every situation of numbers below the bound; page sizes begin at 1.
template <class Look>
void inEverySituation(Look look) {
    constexpr std::int64_t bound = 7;
    for (std::int64_t page = 1; page < bound; ++page)
        for (std::int64_t saved = 0; saved < bound; ++saved)
            for (std::int64_t loaded = 0; loaded < bound; ++loaded)
                for (std::int64_t total = 0; total < bound; ++total)
                    for (const std::int64_t lastPage : {page, page + 1})
                        for (const bool isSearching : {false, true})
                            look(RowCountSituation{page, saved, loaded, total, lastPage, isSearching});
}

TEST(RowCountRule, readsOnlyWhatIsMissing) {
    inEverySituation([](const RowCountSituation& now) {
        const RowCountPlan plan = planRowCount(now);
        if (!plan.load) return;
        EXPECT_LT(now.loaded, now.total) << testing::PrintToString(now);
        EXPECT_GE(plan.read, 1) << testing::PrintToString(now);
        EXPECT_EQ(plan.rowCount, now.loaded) << testing::PrintToString(now);
        EXPECT_TRUE(now.pageSize > now.loaded || now.saved > now.loaded) << testing::PrintToString(now);
        EXPECT_GE(now.loaded + plan.read, std::max(now.saved, std::min(now.pageSize, now.loaded + 1)))
            << testing::PrintToString(now);
    });
}

TEST(RowCountRule, readsWheneverLessThanAPageOrThanWasReachedIsLoaded) {
    inEverySituation([](const RowCountSituation& now) {
        if (now.loaded >= now.total || (now.searching && now.loaded >= 1)) return;
        const bool lacks = now.loaded < now.pageSize || now.loaded < now.saved;
        EXPECT_EQ(planRowCount(now).load, lacks) << testing::PrintToString(now);
    });
}

TEST(RowCountRule, neverShowsMoreThanIsLoaded) {
    inEverySituation([](const RowCountSituation& now) {
        EXPECT_LE(planRowCount(now).rowCount, now.loaded) << testing::PrintToString(now);
        EXPECT_GE(planRowCount(now).rowCount, 0) << testing::PrintToString(now);
    });
}

TEST(RowCountRule, showsNoRowDuringASearch) {
    inEverySituation([](RowCountSituation now) {
        now.searching = true;
        EXPECT_EQ(planRowCount(now).rowCount, 0) << testing::PrintToString(now);
    });
}

TEST(RowCountRule, showsAtLeastAPageOfALongEnoughList) {
    inEverySituation([](const RowCountSituation& now) {
        const RowCountPlan plan = planRowCount(now);
        if (now.searching || plan.load || now.loaded > now.total) return;
        EXPECT_GE(plan.rowCount, std::min(now.pageSize, now.loaded)) << testing::PrintToString(now);
    });
}

TEST(RowCountRule, showsWhatWasReachedAfterTheClampAlso) {
    inEverySituation([](const RowCountSituation& now) {
        if (now.searching || now.saved <= now.pageSize || now.saved > now.total || now.loaded < now.saved) return;
        const RowCountPlan plan = planRowCount(now);
        if (plan.load) return;
        EXPECT_EQ(clampRowCount(plan.rowCount, now.pageSize, now.saved, now.total), now.saved)
            << testing::PrintToString(now);
    });
}

}  // namespace

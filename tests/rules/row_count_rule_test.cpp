// The row count rule: its stated cases, its deliberate oddities, and its invariants against a plain model.
#include "plugin/recents/row_count_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <optional>

namespace {

using recents::clampRowCount;
using recents::planRowCount;
using recents::RowCountPlan;
using recents::RowCountSituation;

RowCountSituation situation(std::int64_t pageSize, std::int64_t saved, std::int64_t loaded, std::int64_t total) {
    return {pageSize, saved, loaded, total, pageSize, false};
}

TEST(RowCountRule, theFirstLoadReadsOnePage) {
    const RowCountPlan plan = planRowCount(situation(50, 0, 0, 500));
    EXPECT_TRUE(plan.load);
    EXPECT_EQ(plan.read, 50);
    EXPECT_EQ(clampRowCount(50, 50, 0, 500), 50);
}

TEST(RowCountRule, aPartOfAPageIsFilledUp) {
    const RowCountPlan plan = planRowCount(situation(50, 0, 30, 500));
    EXPECT_TRUE(plan.load);
    EXPECT_EQ(plan.read, 20);
}

TEST(RowCountRule, aGrownPageSizeReadsAWholePageAndNotTheDifference) {
    const RowCountPlan plan = planRowCount(situation(80, 50, 50, 500));
    EXPECT_TRUE(plan.load);
    EXPECT_EQ(plan.read, 80);
}

TEST(RowCountRule, whatTheUserReachedIsReadBackWhenLessIsLoaded) {
    const RowCountPlan plan = planRowCount(situation(50, 200, 50, 500));
    EXPECT_TRUE(plan.load);
    EXPECT_EQ(plan.read, 150);
}

TEST(RowCountRule, whatTheUserReachedIsShownWithoutReading) {
    const RowCountPlan plan = planRowCount(situation(50, 100, 120, 500));
    EXPECT_FALSE(plan.load);
    EXPECT_EQ(plan.rowCount, 100);
}

TEST(RowCountRule, onePageIsShownWhereNothingIsRemembered) {
    const RowCountPlan plan = planRowCount(situation(50, 0, 120, 500));
    EXPECT_FALSE(plan.load);
    EXPECT_EQ(plan.rowCount, 50);
}

TEST(RowCountRule, aSearchShowsNoRowsOfTheList) {
    for (const std::int64_t total : {40, 500}) {
        RowCountSituation now = situation(50, 0, 40, total);
        now.searching = true;
        EXPECT_EQ(planRowCount(now).rowCount, 0);
        EXPECT_FALSE(planRowCount(now).load);
    }
}

TEST(RowCountRule, aSearchOverAListThatWasNeverReadReadsIt) {
    RowCountSituation now = situation(50, 0, 0, 500);
    now.searching = true;
    EXPECT_TRUE(planRowCount(now).load);
    EXPECT_EQ(planRowCount(now).read, 50);
}

TEST(RowCountRule, anEmptyLogShowsNoRows) {
    const RowCountPlan plan = planRowCount(situation(50, 0, 0, 0));
    EXPECT_FALSE(plan.load);
    EXPECT_EQ(plan.rowCount, 0);
}

TEST(RowCountRule, aShrunkPageSizeShortensAListThatIsWhollyLoaded) {
    RowCountSituation now = situation(20, 0, 40, 40);
    now.lastPageSize = 50;
    EXPECT_EQ(planRowCount(now).rowCount, 20);
}

TEST(RowCountRule, aListThatIsWhollyLoadedStaysWhileThePageSizeIsTheSame) {
    EXPECT_EQ(planRowCount(situation(50, 0, 40, 40)).rowCount, 40);
}

TEST(RowCountRule, aListLongerThanItsTotalStays) {
    RowCountSituation now = situation(20, 0, 45, 40);
    now.lastPageSize = 50;
    EXPECT_EQ(planRowCount(now).rowCount, 45);
}

TEST(RowCountRule, theClampKeepsWhatTheUserReached) {
    EXPECT_EQ(clampRowCount(120, 50, 100, 500), 100);
    EXPECT_EQ(clampRowCount(120, 50, 0, 500), 50);
    EXPECT_EQ(clampRowCount(120, 50, 600, 500), 500);
    EXPECT_EQ(clampRowCount(50, 50, 100, 500), 50);
}

// The rule once more, as plain as it is stated: the steps in their order, no shared branches.
struct Model {
    std::int64_t rowCount = 0;
    std::optional<std::int64_t> read;
};
Model plainRule(const RowCountSituation& now) {
    const auto u = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
    if (now.loaded >= 1 && now.searching) return {0, {}};
    if (now.loaded < now.total) {
        if (u(now.pageSize) <= u(now.loaded) && u(now.saved) <= u(now.loaded)) {
            if (now.saved != 0 && u(now.saved) > u(now.pageSize) && u(now.saved) < u(now.total)) return {now.saved, {}};
            return {now.pageSize, {}};
        }
        if (u(now.saved) > u(now.loaded)) return {now.loaded, now.saved - now.loaded};
        if (u(now.saved) < u(now.loaded)) return {now.loaded, now.pageSize - now.loaded};
        return {now.loaded, now.pageSize};
    }
    if (now.searching) return {0, {}};
    if (now.loaded > now.total || now.lastPageSize == now.pageSize || now.loaded < 1) return {now.loaded, {}};
    if (u(now.pageSize) <= u(now.total) && now.saved == 0) return {now.pageSize, {}};
    if (u(now.saved) > u(now.pageSize) && u(now.saved) <= u(now.total)) return {now.saved, {}};
    if (u(now.pageSize) <= u(now.total)) return {now.pageSize, {}};
    return {now.loaded, {}};
}

RowCountSituation anySituation() {
    // Small numbers, so that equal ones are common; a negative page size compares as a huge one.
    const auto number = [] { return *rc::gen::inRange<std::int64_t>(0, 12); };
    return {
        *rc::gen::inRange<std::int64_t>(-1, 12), number(), number(), number(), number(), *rc::gen::arbitrary<bool>()};
}

TEST(RowCountRule, agreesWithThePlainRuleEverywhere) {
    EXPECT_TRUE(rc::check([] {
        const RowCountSituation now = anySituation();
        const Model expected = plainRule(now);
        const RowCountPlan plan = planRowCount(now);
        RC_ASSERT(plan.load == expected.read.has_value());
        RC_ASSERT(plan.rowCount == expected.rowCount);
        if (expected.read) RC_ASSERT(plan.read == *expected.read);
    }));
}

TEST(RowCountRule, neverReadsWhenEverythingIsLoadedAndNeverShowsMoreThanIsThere) {
    EXPECT_TRUE(rc::check([] {
        RowCountSituation now = anySituation();
        now.pageSize = *rc::gen::inRange<std::int64_t>(1, 12);
        const RowCountPlan plan = planRowCount(now);
        if (now.loaded >= now.total) RC_ASSERT(!plan.load);
        if (plan.load) RC_ASSERT(plan.read > 0);
        if (!plan.load) RC_ASSERT(plan.rowCount <= now.loaded);
    }));
}

TEST(RowCountRule, theClampShowsAPageAtMostUnlessMoreWasReached) {
    EXPECT_TRUE(rc::check([] {
        const auto rowCount = *rc::gen::inRange<std::int64_t>(0, 40);
        const auto pageSize = *rc::gen::inRange<std::int64_t>(1, 20);
        const auto saved = *rc::gen::inRange<std::int64_t>(0, 40);
        const auto total = *rc::gen::inRange<std::int64_t>(0, 40);
        const auto shown = clampRowCount(rowCount, pageSize, saved, total);
        if (saved <= pageSize && saved <= total) RC_ASSERT(shown <= pageSize);
        if (rowCount <= pageSize) RC_ASSERT(shown == rowCount);
        if (shown > pageSize) RC_ASSERT(shown == saved || shown == total);
    }));
}

}  // namespace

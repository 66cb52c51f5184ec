// How far a search looks, against the loop that it stands for.
#include "plugin/recents/search_rule.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using recents::entriesToScan;
using recents::PagingCounts;
using recents::scanLimit;

TEST(ScanLimit, isOnePageWhileNoFilterWasPaged) {
    for (const std::int64_t filter : {1, 2, 3, 4, 9}) EXPECT_EQ(scanLimit(50, {0, 0, 0, 0}, filter), 50);
    EXPECT_EQ(scanLimit(50, {-1, 0, -7, 0}, 1), 50);
}

TEST(ScanLimit, isWhatTheUserReachedInTheFilterOnceAnyWasPaged) {
    const PagingCounts reached{100, 0, 300, 0};
    EXPECT_EQ(scanLimit(50, reached, 1), 100);
    EXPECT_EQ(scanLimit(50, reached, 2), 0);
    EXPECT_EQ(scanLimit(50, reached, 3), 300);
    EXPECT_EQ(scanLimit(50, reached, 4), 0);
    EXPECT_EQ(scanLimit(50, reached, 9), 50);
}

TEST(EntriesToScan, areAPageAtLeastAndTheLimitWhereThatIsMore) {
    EXPECT_EQ(entriesToScan(50, 50), 50);
    EXPECT_EQ(entriesToScan(50, 0), 50);
    EXPECT_EQ(entriesToScan(50, 300), 300);
    EXPECT_EQ(entriesToScan(-1, -5), 0);
}

/// As it is stated: before each entry, stop when a page (in 32 bits) and the limit have both been looked at.
std::int64_t scanned(std::int64_t entries, std::int64_t pageSize, std::int64_t limit) {
    std::int64_t count = 0;
    for (; count < entries; ++count) {
        const bool aPage = static_cast<std::int32_t>(count) >= static_cast<std::int32_t>(pageSize);
        if (aPage && count >= limit) break;
    }
    return count;
}

TEST(EntriesToScan, agreeWithTheLoopThatStopsBeforeAnEntry) {
    EXPECT_TRUE(rc::check([] {
        const auto number = [] { return *rc::gen::inRange<std::int64_t>(-3, 40); };
        const auto pageSize = number();
        const auto limit = number();
        const auto entries = *rc::gen::inRange<std::int64_t>(0, 50);
        RC_ASSERT(std::min(entries, entriesToScan(pageSize, limit)) == scanned(entries, pageSize, limit));
    }));
}

}  // namespace

// Results that come too late: those of an edition that is over are dropped, and of two in one edition the last knows
// it.
#include "plugin/rows/edition.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(AnEdition, takesResultsThatNothingOvertook) {
    rows::Edition edition;
    auto asked = edition.now();
    EXPECT_TRUE(edition.finish(asked));
    EXPECT_EQ(asked, edition.now());
    EXPECT_TRUE(edition.finish(asked)) << "a second part of the same result";
}

TEST(AnEdition, tellsTheLaterOfTwoThatRanBesideEachOther) {
    rows::Edition edition;
    auto one = edition.now();
    auto other = edition.now();
    EXPECT_TRUE(edition.finish(other));
    EXPECT_TRUE(edition.isCurrent(one));
    EXPECT_FALSE(edition.finish(one));
}

TEST(AnEdition, tellsAResultThatARowWasTakenOutMeanwhile) {
    rows::Edition edition;
    auto asked = edition.now();
    edition.change();
    EXPECT_TRUE(edition.isCurrent(asked));
    EXPECT_FALSE(edition.finish(asked));
}

TEST(AnEdition, isOverForWhatWasAskedForBeforeItWasInvalidatedWhateverCameInSince) {
    rows::Edition edition;
    auto before = edition.now();
    edition.invalidate();
    auto after = edition.now();
    EXPECT_FALSE(edition.isCurrent(before));
    EXPECT_TRUE(edition.isCurrent(after));
    EXPECT_TRUE(edition.finish(after));
    EXPECT_FALSE(edition.isCurrent(before));
    EXPECT_FALSE(edition.finish(before));
}

// One thread changes the state, as a person who types does: it begins a new edition, empties the result and works it
// out again. Others add to the result as load-more does, and drop what they hold where it is older. The last result is
// of the last state alone.
TEST(AnEdition, leavesTheResultOfTheLastStateHoweverManyWorkAtIt) {
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        rows::Edition edition;
        std::atomic<int> state{0};
        std::atomic<int> result{-1};
        const auto work = [&] {
            for (;;) {
                auto asked = edition.now();
                const int seen = state.load(std::memory_order_relaxed);
                if (!edition.isCurrent(asked)) return;
                result.store(seen, std::memory_order_relaxed);
                if (edition.finish(asked)) return;
                edition.invalidate();
            }
        };
        std::vector<std::thread> threads;
        for (int i = 0; i < 3; ++i) threads.emplace_back(work);
        state.store(7, std::memory_order_relaxed);
        edition.invalidate();
        threads.emplace_back(work);
        for (auto& thread : threads) thread.join();
        ASSERT_EQ(result, 7);
    }
}

}  // namespace

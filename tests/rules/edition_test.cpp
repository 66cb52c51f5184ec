// Results that overtake each other: whoever finishes last knows it.
#include "plugin/rows/edition.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(AnEdition, isFinishedByWorkThatNothingOvertook) {
    rows::Edition edition;
    const auto begun = edition.begin();
    EXPECT_TRUE(edition.finish(begun));
    EXPECT_TRUE(edition.isNext(begun));
    EXPECT_TRUE(edition.finish(edition.begin()));
    EXPECT_FALSE(edition.isNext(begun));
}

TEST(AnEdition, tellsTheLaterOfTwoThatRanBesideEachOther) {
    rows::Edition edition;
    const auto one = edition.begin();
    const auto other = edition.begin();
    EXPECT_TRUE(edition.finish(other));
    EXPECT_FALSE(edition.finish(one));
}

// Threads copy one value into another and work it out again where they were overtaken, while it changes: the last copy
// is of the last value.
TEST(AnEdition, leavesTheResultOfTheLastStateHoweverManyWorkAtIt) {
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        rows::Edition edition;
        std::atomic<int> state{0};
        std::atomic<int> result{-1};
        const auto work = [&] {
            for (;;) {
                const auto begun = edition.begin();
                result.store(state.load(std::memory_order_relaxed), std::memory_order_relaxed);
                if (edition.finish(begun)) return;
            }
        };
        std::vector<std::thread> threads;
        for (int i = 0; i < 3; ++i) threads.emplace_back(work);
        state.store(7, std::memory_order_relaxed);
        threads.emplace_back(work);
        for (auto& thread : threads) thread.join();
        ASSERT_EQ(result, 7);
    }
}

}  // namespace

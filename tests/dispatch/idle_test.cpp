// Whether all work is done: never said too early, and the main loop is woken when it happens.
#include <poll.h>

#include <atomic>
#include <future>
#include <thread>

#include "tests/dispatch/recorder.h"

namespace dispatch_tests {
namespace {

bool readable(int descriptor) {
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, 0) == 1;
}

TEST(Idle, isTrueAtFirstAndFalseWhileAnItemIsQueued) {
    ASSERT_TRUE(settle());
    EXPECT_TRUE(dispatch::idle());
    async(&_dispatch_main_q, [] { EXPECT_FALSE(dispatch::idle()); });
    EXPECT_FALSE(dispatch::idle());
    dispatch::drainMainQueue();
    EXPECT_TRUE(dispatch::idle());
}

TEST(Idle, isFalseWhileAnItemRuns) {
    std::promise<void> gate;
    async(defaultQueue(), [&] { gate.get_future().wait(); });
    EXPECT_FALSE(dispatch::idle());
    gate.set_value();
    EXPECT_TRUE(settle());
}

TEST(Idle, neverShowsBetweenTheLinksOfAChain) {
    struct Chain {
        std::atomic<bool> ended{false};
        void next(int links) {
            if (links == 0) {
                ended = true;
                return;
            }
            auto* queue = links % 3 == 0 ? &_dispatch_main_q : links % 3 == 1 ? defaultQueue() : backgroundQueue();
            async(queue, [this, links] { next(links - 1); });
        }
    };
    for (int round = 0; round < 50; ++round) {
        Chain chain;
        chain.next(60);
        const double deadline = dispatch::steadyNow() + 60;
        while (!dispatch::idle()) {
            ASSERT_LT(dispatch::steadyNow(), deadline);
            dispatch::drainMainQueue();
        }
        ASSERT_TRUE(chain.ended) << "round " << round;
    }
}

TEST(Idle, activitiesOfOtherThreadsCount) {
    ASSERT_TRUE(settle());
    std::promise<void> gate;
    std::thread worker([activity = dispatch::Activity(), opened = gate.get_future()]() mutable {
        opened.wait();
        async(&_dispatch_main_q, [] {});
        const dispatch::Activity ends = std::move(activity);
    });
    EXPECT_FALSE(dispatch::idle());
    gate.set_value();
    EXPECT_TRUE(settle());
    worker.join();
    EXPECT_TRUE(dispatch::idle());
}

TEST(WakeUp, isReadableExactlyWhileMainItemsWait) {
    ASSERT_TRUE(settle());
    dispatch::drainMainQueue();
    EXPECT_FALSE(readable(dispatch::mainQueueWakeUp()));
    const dispatch::Activity activity;
    async(&_dispatch_main_q, [] {});
    EXPECT_TRUE(readable(dispatch::mainQueueWakeUp()));
    dispatch::drainMainQueue();
    EXPECT_FALSE(readable(dispatch::mainQueueWakeUp()));
}

TEST(WakeUp, staysReadableForItemsThatADrainLeaves) {
    async(&_dispatch_main_q, [] { async(&_dispatch_main_q, [] {}); });
    dispatch::drainMainQueue();
    EXPECT_TRUE(readable(dispatch::mainQueueWakeUp()));
    EXPECT_TRUE(settle());
}

TEST(WaitForWork, answersTrueForAMainItemAndLeavesItReadable) {
    const dispatch::Activity activity;
    std::thread poster([] { async(&_dispatch_main_q, [] {}); });
    EXPECT_TRUE(dispatch::waitForWork(dispatch::steadyNow() + 60));
    EXPECT_TRUE(readable(dispatch::mainQueueWakeUp()));
    poster.join();
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
}

TEST(WaitForWork, answersFalseWhenTheLastItemEnds) {
    ASSERT_TRUE(settle());
    std::promise<void> gate;
    async(backgroundQueue(), [&] { gate.get_future().wait(); });
    gate.set_value();
    EXPECT_FALSE(dispatch::waitForWork(dispatch::steadyNow() + 60));
    EXPECT_TRUE(dispatch::idle());
}

TEST(WaitForWork, answersFalseAtItsDeadline) {
    const dispatch::Activity activity;
    EXPECT_FALSE(dispatch::waitForWork(dispatch::steadyNow() + 0.005));
    EXPECT_FALSE(dispatch::idle());
}

}  // namespace
}  // namespace dispatch_tests

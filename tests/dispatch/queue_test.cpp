// Queues: what runs where, in which order, and that every worker is fit for Objective-C.
#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <future>
#include <memory>
#include <set>
#include <thread>

#include "objc/block.h"
#include "objc/strong.h"
#include "tests/dispatch/recorder.h"

namespace dispatch_tests {
namespace {

TEST(Queues, onlyTheFourPrioritiesHaveAQueue) {
    for (long priority : {2L, 0L, -2L, -32768L}) {
        EXPECT_NE(dispatch_get_global_queue(priority, 0), nullptr) << priority;
        EXPECT_EQ(dispatch_get_global_queue(priority, 0), dispatch_get_global_queue(priority, 0)) << priority;
    }
    EXPECT_NE(defaultQueue(), backgroundQueue());
    EXPECT_EQ(dispatch_get_global_queue(1, 0), nullptr);
}

TEST(Queues, mainItemsRunInOrderAndOnlyWhenDrained) {
    Recorder recorder;
    async(&_dispatch_main_q, [&] { recorder.add("first"); });
    async(&_dispatch_main_q, [&] { recorder.add("second"); });
    async(&_dispatch_main_q, [&] { recorder.add("third"); });
    EXPECT_EQ(recorder.events(), std::vector<std::string>());
    EXPECT_EQ(dispatch::drainMainQueue(), 3U);
    EXPECT_EQ(recorder.events(), (std::vector<std::string>{"first", "second", "third"}));
    EXPECT_EQ(dispatch::drainMainQueue(), 0U);
}

TEST(Queues, anItemAddedWhileDrainingWaitsForTheNextDrain) {
    Recorder recorder;
    async(&_dispatch_main_q, [&] {
        recorder.add("outer");
        async(&_dispatch_main_q, [&] { recorder.add("inner"); });
    });
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
    EXPECT_EQ(recorder.events(), (std::vector<std::string>{"outer"}));
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
    EXPECT_EQ(recorder.events(), (std::vector<std::string>{"outer", "inner"}));
}

TEST(Queues, anItemThatDrainsKeepsTheOrder) {
    Recorder recorder;
    async(&_dispatch_main_q, [&] {
        recorder.add("modal begins");
        dispatch::drainMainQueue();
        recorder.add("modal ends");
    });
    async(&_dispatch_main_q, [&] { recorder.add("second"); });
    async(&_dispatch_main_q, [&] { recorder.add("third"); });
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
    EXPECT_EQ(recorder.events(), (std::vector<std::string>{"modal begins", "second", "third", "modal ends"}));
}

TEST(Queues, globalItemsRunOffTheCallingThread) {
    for (long priority : {2L, 0L, -2L, -32768L}) {
        std::thread::id ranOn;
        async(dispatch_get_global_queue(priority, 0), [&] { ranOn = std::this_thread::get_id(); });
        ASSERT_TRUE(settle());
        EXPECT_NE(ranOn, std::thread::id()) << priority;
        EXPECT_NE(ranOn, std::this_thread::get_id()) << priority;
    }
}

TEST(Queues, fourDefaultItemsCanBlockOnEachOther) {
    std::barrier meeting(4);
    for (int i = 0; i < 4; ++i) async(defaultQueue(), [&] { meeting.arrive_and_wait(); });
    EXPECT_TRUE(settle());
}

TEST(Queues, blockedBackgroundItemsKeepNoDefaultItemWaiting) {
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    for (int i = 0; i < 64; ++i) async(backgroundQueue(), [opened] { opened.wait(); });
    std::promise<void> ran;
    async(defaultQueue(), [&] { ran.set_value(); });
    EXPECT_EQ(ran.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
    gate.set_value();
    EXPECT_TRUE(settle());
}

TEST(Queues, blockedDefaultItemsKeepNoBackgroundItemWaiting) {
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    for (int i = 0; i < 64; ++i) async(defaultQueue(), [opened] { opened.wait(); });
    std::promise<void> ran;
    async(backgroundQueue(), [&] { ran.set_value(); });
    EXPECT_EQ(ran.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
    gate.set_value();
    EXPECT_TRUE(settle());
}

TEST(Queues, workFromManyThreadsAllRunsOnce) {
    std::atomic<int> ran{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 1000; ++i) {
                async(i % 3 == 0         ? &_dispatch_main_q
                      : (thread + i) % 2 ? defaultQueue()
                                         : backgroundQueue(),
                      [&] { ++ran; });
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_TRUE(settle());
    EXPECT_EQ(ran, 8000);
}

TEST(Queues, aThreadsOwnMainItemsKeepTheirOrder) {
    std::vector<int> seen[4];
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 500; ++i) async(&_dispatch_main_q, [&, thread, i] { seen[thread].push_back(i); });
        });
    }
    for (auto& thread : threads) thread.join();
    ASSERT_TRUE(settle());
    for (const auto& list : seen) {
        ASSERT_EQ(list.size(), 500U);
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
    }
}

TEST(Blocks, aBlockRunsOnItsQueueAndIsReleasedThere) {
    auto captured = std::make_shared<int>(7);
    int seen = 0;
    objc::Block<void()> block([captured, &seen] { seen = *captured; });
    dispatch_async(defaultQueue(), block.get());
    ASSERT_TRUE(settle());
    block = {};
    EXPECT_EQ(seen, 7);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(Blocks, aMainBlockWaitsForTheDrain) {
    int seen = 0;
    dispatch_async(&_dispatch_main_q, objc::Block<void()>([&seen] { seen = 5; }).get());
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
    EXPECT_EQ(seen, 5);
}

TEST(AutoreleasePools, everyItemHasAPoolThatIsDrainedWhenItReturns) {
    for (auto* queue : {&_dispatch_main_q, defaultQueue(), backgroundQueue()}) {
        objc::Strong<> string;
        async(queue, [&] {
            string = objc::Strong<>::adopt(objc::sendClass<"NSMutableString", "new", objc::Object>());
            objc::retain(string.get());
            objc::send<"autorelease", objc::Object>(string.get());
            EXPECT_EQ((objc::send<"retainCount", unsigned long>(string.get())), 2U);
        });
        ASSERT_TRUE(settle());
        EXPECT_EQ((objc::send<"retainCount", unsigned long>(string.get())), 1U);
    }
}

TEST(AutoreleasePools, everyWorkerIsKnownToFoundation) {
    std::mutex mutex;
    std::set<id> threads;
    std::barrier meeting(4);
    for (int i = 0; i < 4; ++i) {
        async(defaultQueue(), [&] {
            meeting.arrive_and_wait();
            const auto thread = objc::sendClass<"NSThread", "currentThread", objc::Object>();
            EXPECT_FALSE((objc::send<"isMainThread", bool>(thread)));
            const std::lock_guard lock(mutex);
            threads.insert(thread.self);
        });
    }
    ASSERT_TRUE(settle());
    EXPECT_EQ(threads.size(), 4U);
    EXPECT_EQ(threads.count(nullptr), 0U);
}

TEST(QueueMisuse, endsTheProcessWithAReason) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(dispatch_async_f(nullptr, nullptr, [](void*) {}), "null queue");
    EXPECT_DEATH(dispatch_async_f(&_dispatch_main_q, nullptr, nullptr), "null function");
    EXPECT_DEATH(dispatch_async(&_dispatch_main_q, nullptr), "null block");
}

}  // namespace
}  // namespace dispatch_tests

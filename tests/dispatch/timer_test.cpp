// The clock and the timers: virtual time moves by hand, and timers fire in the order of their times.
#include <poll.h>

#include <limits>
#include <memory>
#include <thread>

#include "desktop/dispatch/clock.h"
#include "objc/block.h"
#include "tests/dispatch/recorder.h"

namespace dispatch_tests {
namespace {

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::uint64_t forever = ~std::uint64_t{0};

class VirtualClock : public testing::Test {
  protected:
    void SetUp() override { dispatch::Clock::useVirtual(100); }
    void TearDown() override {
        dispatch::forgetTimers();
        dispatch::Clock::useReal();
    }

    void after(std::int64_t nanoseconds, const char* event, dispatch_queue_s* queue = &_dispatch_main_q) {
        struct Context {
            Recorder* recorder;
            std::string event;
        };
        dispatch_after_f(dispatch_time(0, nanoseconds), queue, new Context{&recorder_, event}, [](void* context) {
            const std::unique_ptr<Context> owned(static_cast<Context*>(context));
            owned->recorder->add(owned->event);
        });
    }
    std::vector<std::string> eventsAt(double time) {
        dispatch::Clock::advanceTo(time);
        dispatch::fireTimersDue();
        EXPECT_TRUE(settle());
        return recorder_.events();
    }

    Recorder recorder_;
};

using Events = std::vector<std::string>;

TEST(RealClock, runsWithTheMachine) {
    EXPECT_FALSE(dispatch::Clock::isVirtual());
    const double before = dispatch::steadyNow();
    const double now = dispatch::Clock::now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, dispatch::steadyNow());
    dispatch::Clock::advanceTo(now + 1000);
    EXPECT_LT(dispatch::Clock::now(), now + 1000);
}

TEST_F(VirtualClock, movesOnlyForwardAndByHand) {
    EXPECT_TRUE(dispatch::Clock::isVirtual());
    EXPECT_EQ(dispatch::Clock::now(), 100);
    dispatch::Clock::advanceTo(100.25);
    EXPECT_EQ(dispatch::Clock::now(), 100.25);
    dispatch::Clock::advanceTo(50);
    EXPECT_EQ(dispatch::Clock::now(), 100.25);
}

TEST_F(VirtualClock, timersFireInTheOrderOfTheirTimesThenAsTheyWereSet) {
    after(300 * millisecond, "late");
    after(100 * millisecond, "early");
    after(200 * millisecond, "one of two");
    after(200 * millisecond, "two of two");
    EXPECT_EQ(dispatch::nextTimer(), 100.1);
    EXPECT_EQ(eventsAt(100.05), Events());
    EXPECT_EQ(eventsAt(100.1), (Events{"early"}));
    EXPECT_EQ(dispatch::nextTimer(), 100.2);
    EXPECT_EQ(eventsAt(101), (Events{"early", "one of two", "two of two", "late"}));
    EXPECT_EQ(dispatch::nextTimer(), std::nullopt);
}

TEST_F(VirtualClock, advancingToTheNextTimerMakesItDue) {
    after(123'456'789, "due");
    EXPECT_EQ(eventsAt(*dispatch::nextTimer()), (Events{"due"}));
}

TEST_F(VirtualClock, aTimerThatWaitsIsNoWorkAndOneThatFiredIs) {
    ASSERT_TRUE(settle());
    after(10 * millisecond, "fired");
    EXPECT_TRUE(dispatch::idle());
    dispatch::Clock::advanceTo(101);
    EXPECT_EQ(dispatch::fireTimersDue(), 1U);
    EXPECT_FALSE(dispatch::idle());
    EXPECT_EQ(recorder_.events(), Events());
    EXPECT_EQ(dispatch::drainMainQueue(), 1U);
    EXPECT_EQ(recorder_.events(), (Events{"fired"}));
}

TEST_F(VirtualClock, timersOfOtherQueuesFireThere) {
    after(10 * millisecond, "background", backgroundQueue());
    EXPECT_EQ(eventsAt(101), (Events{"background"}));
}

TEST_F(VirtualClock, aTimerSetFromAnotherThreadWakesTheMainLoop) {
    ASSERT_TRUE(settle());
    dispatch::drainMainQueue();
    std::thread([this] { after(10 * millisecond, "woken"); }).join();
    pollfd wakeUp{dispatch::mainQueueWakeUp(), POLLIN, 0};
    EXPECT_EQ(poll(&wakeUp, 1, 0), 1);
    EXPECT_EQ(eventsAt(101), (Events{"woken"}));
}

TEST_F(VirtualClock, aBlockFiresOnceAndIsReleased) {
    auto captured = std::make_shared<int>(0);
    dispatch_after(dispatch_time(0, 5 * millisecond), &_dispatch_main_q,
                   objc::Block<void()>([captured] { ++*captured; }).get());
    eventsAt(101);
    eventsAt(102);
    EXPECT_EQ(*captured, 1);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(VirtualClock, foreverNeverComes) {
    dispatch_after_f(forever, &_dispatch_main_q, nullptr, [](void*) { ADD_FAILURE(); });
    EXPECT_EQ(dispatch::nextTimer(), std::nullopt);
}

TEST_F(VirtualClock, timesAreCountedFromNowOrFromAnotherTimeAndStayInRange) {
    const std::uint64_t now = dispatch_time(0, 0);
    EXPECT_EQ(now, 100'000'000'000U);
    EXPECT_EQ(dispatch_time(now, 5), now + 5);
    EXPECT_EQ(dispatch_time(now, -5), now - 5);
    EXPECT_EQ(dispatch_time(5, -100), 1U);
    EXPECT_EQ(dispatch_time(5, std::numeric_limits<std::int64_t>::min()), 1U);
    EXPECT_EQ(dispatch_time(forever - 5, 100), forever);
    EXPECT_EQ(dispatch_time(forever, -100), forever);
}

}  // namespace
}  // namespace dispatch_tests

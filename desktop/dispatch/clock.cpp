// The clock, real or turned by hand, and the one ordered list of timers that wait on it.
#include "desktop/dispatch/clock.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <map>
#include <mutex>
#include <vector>

#include "desktop/dispatch/main_loop.h"
#include "desktop/dispatch/timers.h"

namespace dispatch {
namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr std::uint64_t forever = std::numeric_limits<std::uint64_t>::max();

constinit std::atomic<bool> isVirtualNow{false};
constinit std::atomic<double> virtualNow{0};

std::uint64_t nanosecondsNow() {
    const double nanoseconds = std::round(Clock::now() * nanosecondsPerSecond);
    return nanoseconds > 0 ? static_cast<std::uint64_t>(nanoseconds) : 0;
}

struct Timer {
    dispatch_queue_s* queue;
    detail::Work work;
};

struct Timers {
    std::mutex mutex;
    std::multimap<std::uint64_t, Timer> waiting;  // equal times keep the order in which they were set
};

/// Never destroyed: threads may still set timers while the process exits.
Timers& timers() {
    static auto* const shared = new Timers;
    return *shared;
}

}  // namespace

double steadyNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Clock::now() { return isVirtualNow ? virtualNow.load() : steadyNow(); }

void Clock::useVirtual(double start) {
    virtualNow = start;
    isVirtualNow = true;
}

void Clock::useReal() { isVirtualNow = false; }

bool Clock::isVirtual() { return isVirtualNow; }

void Clock::advanceTo(double time) {
    if (isVirtualNow && time > virtualNow) virtualNow = time;
}

std::optional<double> nextTimer() {
    const std::lock_guard lock(timers().mutex);
    const auto& waiting = timers().waiting;
    if (waiting.empty()) return std::nullopt;
    return static_cast<double>(waiting.begin()->first) / nanosecondsPerSecond;
}

std::size_t fireTimersDue() {
    std::vector<Timer> due;
    {
        const std::uint64_t now = nanosecondsNow();
        const std::lock_guard lock(timers().mutex);
        auto& waiting = timers().waiting;
        const auto end = waiting.upper_bound(now);
        for (auto timer = waiting.begin(); timer != end; ++timer) due.push_back(timer->second);
        waiting.erase(waiting.begin(), end);
    }
    for (const Timer& timer : due) detail::enqueue(timer.queue, timer.work);
    return due.size();
}

void forgetTimers() {
    const std::lock_guard lock(timers().mutex);
    timers().waiting.clear();
}

void detail::addTimer(std::uint64_t when, dispatch_queue_s* queue, Work work) {
    if (when == forever) return;
    {
        const std::lock_guard lock(timers().mutex);
        timers().waiting.emplace(when == 0 ? nanosecondsNow() : when, Timer{queue, work});
    }
    wakeMainLoop();
}

}  // namespace dispatch

extern "C" std::uint64_t dispatch_time(std::uint64_t when, std::int64_t nanoseconds) {
    using dispatch::forever;
    if (when == forever) return forever;
    const std::uint64_t base = when == 0 ? dispatch::nanosecondsNow() : when;
    if (nanoseconds >= 0) {
        const auto later = static_cast<std::uint64_t>(nanoseconds);
        return later < forever - base ? base + later : forever;
    }
    // 0 would mean "now", so the earliest time is 1.
    const std::uint64_t earlier = ~static_cast<std::uint64_t>(nanoseconds) + 1;
    return earlier < base ? base - earlier : 1;
}

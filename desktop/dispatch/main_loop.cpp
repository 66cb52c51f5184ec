// The main queue, and the count of unfinished work that the main loop asks for.
#include "desktop/dispatch/main_loop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <deque>
#include <mutex>

#include "desktop/dispatch/work.h"

namespace dispatch {
namespace {

struct Item {
    std::uint64_t serial;
    detail::Work work;
};

struct MainQueue {
    std::mutex mutex;
    std::deque<Item> items;
    std::uint64_t nextSerial = 0;
    int wakeUp = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
};

/// Never destroyed: workers may still enqueue while the process exits.
MainQueue& mainQueueState() {
    static auto* const shared = [] {
        auto* queue = new MainQueue;
        if (queue->wakeUp < 0) detail::fail("dispatch: no descriptor for the main queue; too many files are open");
        return queue;
    }();
    return *shared;
}

/// Items on any queue or running, and activities.
constinit std::atomic<long> unfinished{0};

void clearWakeUp() {
    std::uint64_t count = 0;
    while (read(mainQueueState().wakeUp, &count, sizeof count) < 0 && errno == EINTR) {
    }
}

bool mainQueueHasItems() {
    const std::lock_guard lock(mainQueueState().mutex);
    return !mainQueueState().items.empty();
}

/// The oldest item, unless it was put there at or after `end`.
bool popBefore(std::uint64_t end, detail::Work& work) {
    auto& queue = mainQueueState();
    const std::lock_guard lock(queue.mutex);
    if (queue.items.empty() || queue.items.front().serial >= end) return false;
    work = queue.items.front().work;
    queue.items.pop_front();
    return true;
}

}  // namespace

void detail::wakeMainLoop() {
    const std::uint64_t one = 1;
    // A full counter is readable already, so only an interrupted write is repeated.
    while (write(mainQueueState().wakeUp, &one, sizeof one) < 0 && errno == EINTR) {
    }
}

void detail::pushToMainQueue(Work work) {
    {
        auto& queue = mainQueueState();
        const std::lock_guard lock(queue.mutex);
        queue.items.push_back({queue.nextSerial++, work});
    }
    wakeMainLoop();
}

void detail::run(Work work) noexcept {
    {
        const AutoreleaseScope scope;
        work.function(work.context);
    }
    endActivity();
}

std::size_t drainMainQueue() {
    clearWakeUp();
    std::uint64_t end = 0;
    {
        const std::lock_guard lock(mainQueueState().mutex);
        end = mainQueueState().nextSerial;
    }
    std::size_t ran = 0;
    for (detail::Work work{}; popBefore(end, work); ++ran) detail::run(work);
    return ran;
}

int mainQueueWakeUp() { return mainQueueState().wakeUp; }

bool idle() { return unfinished == 0; }

void beginActivity() { ++unfinished; }

void endActivity() {
    const long left = --unfinished;
    if (left < 0) detail::fail("dispatch: endActivity() without its beginActivity()");
    if (left == 0) detail::wakeMainLoop();
}

bool waitForWork(double deadline) {
    for (;;) {
        clearWakeUp();
        if (mainQueueHasItems()) {
            detail::wakeMainLoop();  // so that a loop that polls before it drains still sees them
            return true;
        }
        const double seconds = deadline - steadyNow();
        if (idle() || seconds <= 0) return false;
        pollfd wakeUp{mainQueueWakeUp(), POLLIN, 0};
        constexpr double longestPoll = 1000;  // seconds; the loop goes round
        poll(&wakeUp, 1, static_cast<int>(std::ceil(std::min(seconds, longestPoll) * 1000)));
    }
}

}  // namespace dispatch

// What a program's main loop does for the queues: it drains the main queue, fires timers and asks whether all work is
// done.
//
//     while (running) {
//         poll({dispatch::mainQueueWakeUp(), ...}, until dispatch::nextTimer());
//         dispatch::fireTimersDue();
//         dispatch::drainMainQueue();
//     }
#pragma once

#include <cstddef>
#include <utility>

#include "desktop/dispatch/queue.h"

namespace dispatch {

/// Runs the items that are on the main queue at the call, each inside an autorelease pool; those that they add wait for
/// the next call. An item may call it itself. Answers how many ran. Main thread.
std::size_t drainMainQueue();

/// A descriptor to poll for reading: readable when the main queue has items, when all work is done, and when a timer
/// was added. drainMainQueue() and waitForWork() make it unreadable again. It lives as long as the process.
int mainQueueWakeUp();

/// Whether no item is queued or running on any queue and no activity is under way. An item counts from the moment it
/// is put on a queue until it has returned and its autorelease pool is drained, so while a chain of items that enqueue
/// each other runs the answer is false throughout. Timers that are not due yet do not count. Any thread.
bool idle();

/// Waits until the main queue has an item (true), or all work is done, or the steady clock reaches `deadline` (false),
/// in seconds as steadyNow() counts; real time even while Clock is virtual. Main thread.
bool waitForWork(double deadline);
/// Seconds of the machine's steady clock, for waitForWork().
double steadyNow();

/// Work of a thread that is not of the pool (the progress indicator's worker), counted by idle(). Every begin needs
/// its end, on any thread.
void beginActivity();
void endActivity();

/// The same as a token: begins when made, ends when it goes. To cover a thread, make it before the thread starts and
/// move it in.
class Activity {
  public:
    Activity() { beginActivity(); }
    Activity(Activity&& other) noexcept : held_(std::exchange(other.held_, false)) {}
    Activity& operator=(Activity&& other) noexcept {
        std::swap(held_, other.held_);
        return *this;
    }
    ~Activity() {
        if (held_) endActivity();
    }

  private:
    bool held_ = true;
};

/// Makes the current thread fit for Objective-C (known to Foundation until it ends) and holds an autorelease pool until
/// it goes. Queues do this around every item; other threads do it themselves.
class AutoreleaseScope {
  public:
    AutoreleaseScope();
    AutoreleaseScope(const AutoreleaseScope&) = delete;
    AutoreleaseScope& operator=(const AutoreleaseScope&) = delete;
    ~AutoreleaseScope();

  private:
    void* pool_;
};

}  // namespace dispatch

// Helpers of these tests: a list that several threads write, and running until all work is done, with a bound.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "desktop/dispatch/main_loop.h"

namespace dispatch_tests {

/// What happened, in order.
class Recorder {
  public:
    void add(const std::string& event) {
        const std::lock_guard lock(mutex_);
        events_.push_back(event);
    }
    std::vector<std::string> events() const {
        const std::lock_guard lock(mutex_);
        return events_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> events_;
};

/// Sends a C++ function to a queue.
inline void async(dispatch_queue_s* queue, std::function<void()> function) {
    dispatch_async_f(queue, new std::function<void()>(std::move(function)), [](void* context) {
        auto* work = static_cast<std::function<void()>*>(context);
        (*work)();
        delete work;
    });
}

inline dispatch_queue_s* defaultQueue() { return dispatch_get_global_queue(0, 0); }
inline dispatch_queue_s* backgroundQueue() { return dispatch_get_global_queue(-32768, 0); }

/// Drains the main queue until all work is done. False when that takes more than a minute.
inline bool settle() {
    const double deadline = dispatch::steadyNow() + 60;
    while (!dispatch::idle()) {
        if (dispatch::steadyNow() > deadline) return false;
        dispatch::waitForWork(deadline);
        dispatch::drainMainQueue();
    }
    return true;
}

}  // namespace dispatch_tests

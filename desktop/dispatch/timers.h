// The library's own view of the timers, whose list lives beside the clock.
#pragma once

#include "desktop/dispatch/work.h"

namespace dispatch::detail {

/// Waits until `when`, a result of dispatch_time(), then puts the work on the queue.
void addTimer(std::uint64_t when, dispatch_queue_s* queue, Work work);

/// Counts the work as under way and puts it on the queue.
void enqueue(dispatch_queue_s* queue, Work work);

}  // namespace dispatch::detail

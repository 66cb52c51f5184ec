// Grand Central Dispatch's C interface, as far as the handset's programs use it, on pools of Asio's.
#pragma once

#include <cstdint>

extern "C" {

struct dispatch_queue_s;

/// The main queue: first in, first out, run by the main loop alone (dispatch::drainMainQueue()).
extern struct dispatch_queue_s _dispatch_main_q;

/// The concurrent queue of that priority: 2 high, 0 default, -2 low, -32768 background. Its items start in order and
/// run beside each other. Null for any other priority. High shares the workers of default, low those of background.
struct dispatch_queue_s* dispatch_get_global_queue(long priority, unsigned long flags);

/// Runs work(context) once on the queue, inside an autorelease pool. Any thread. A null queue or null work ends the
/// process with a message, as on the handset.
void dispatch_async_f(struct dispatch_queue_s* queue, void* context, void (*work)(void*));

/// The same with a block without arguments; it is copied here and released on the queue after it has run.
void dispatch_async(struct dispatch_queue_s* queue, const void* block);

/// The time `nanoseconds` after `when`: 0 for now, ~0 (forever) stays forever, else an earlier result of this function.
/// Times are of dispatch::Clock.
std::uint64_t dispatch_time(std::uint64_t when, std::int64_t nanoseconds);

/// Puts the work on the queue when that time has come; never for forever. The main loop fires it, whatever the queue
/// (dispatch::fireTimersDue()).
void dispatch_after_f(std::uint64_t when, struct dispatch_queue_s* queue, void* context, void (*work)(void*));
void dispatch_after(std::uint64_t when, struct dispatch_queue_s* queue, const void* block);
}

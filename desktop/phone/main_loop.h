// The Phone's main loop: queues, timers, notifications and frames on one thread, and the moment when nothing is left to
// do.
#pragma once

#include <optional>
#include <string>

namespace phone {

/// One turn: fires timers, drains the main queue, delivers notifications, moves animations, lays the window out.
/// Answers whether anything happened. Main thread.
bool turnMainLoop();

/// Turns until nothing is left to do: queues empty, no worker running, no notification to deliver, no animation or
/// timer that ends by itself. On the virtual clock, time jumps ahead to what waits. Answers, in one line, what was
/// still going on when the bound of real seconds was over; nothing when all is settled. Main thread.
std::optional<std::string> settle(double boundSeconds = 60);

/// Sleeps until there is something to do, a descriptor is readable (that of the caller, or -1 for none), or the seconds
/// are over. Answers whether the caller's descriptor is readable. Main thread.
bool waitForEvents(int descriptor, double seconds);

}  // namespace phone

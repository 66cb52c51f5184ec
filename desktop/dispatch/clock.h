// The clock of animations and timers, which scripts and tests can turn by hand, and the timers that wait on it.
#pragma once

#include <cstddef>
#include <optional>

namespace dispatch {

/// Time in seconds that never runs backwards. Real at first: the machine's steady clock. Any thread may read it; only
/// the main thread changes it.
class Clock {
  public:
    Clock() = delete;

    static double now();
    /// From here on time stands still at `start` and moves only by advanceTo(). Timers that wait keep their times, so
    /// switch before the first is set.
    static void useVirtual(double start = 0);
    static void useReal();
    static bool isVirtual();
    /// Virtual time moves on to `time`; nothing happens when that is past, or while the clock is real.
    static void advanceTo(double time);
};

/// When the next timer is due, on Clock; none while no timer waits. Any thread.
std::optional<double> nextTimer();

/// Puts the work of every timer that is due by Clock::now() on its queue, in the order of their times, those of equal
/// times in the order they were set. Answers how many. Main thread.
std::size_t fireTimersDue();

/// Forgets the timers that wait, without running their work, for tests: what their contexts hold is not given back.
void forgetTimers();

}  // namespace dispatch

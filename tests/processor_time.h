// What work costs the processor, for tests that tell work that grows with its input from work that grows far faster.
#pragma once

#include <ctime>

/// Processor time of this thread since the object was made. Other programs do not count.
class ProcessorTime {
  public:
    double seconds() const { return now() - begin_; }

  private:
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    double begin_ = now();
};

/// Tens of times what the work takes that it is held against, and a fraction of what it took when it grew by the square
/// of its input.
inline constexpr double generousSeconds = 10;

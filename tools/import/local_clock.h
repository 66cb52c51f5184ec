// Moments of the machine's time zone from dates and times of day.
#pragma once

#include <cstdint>
#include <ctime>
#include <unordered_map>

namespace tools {

/// Remembers the days it has met, so that most moments cost no question to the system, which looks at the zone's file
/// each time. The zone is the one of each day's first question. One thread.
class LocalClock {
  public:
    /// Seconds since 1970 of a valid date and time of day; -1 where the system knows none. A time that the clock shows
    /// twice is the one that the system prefers; one that it skips, the one just before or behind.
    std::int64_t secondsOf(const std::tm& time);

  private:
    static constexpr std::int64_t uneven = -1;
    std::unordered_map<int, std::int64_t> midnights_;  // by date; `uneven` where the clock is set on that day
};

}  // namespace tools

// Times and durations of calls in words, in the user's language and the machine's time zone.
#pragma once

#include <cstdint>
#include <string>

namespace quorvel {

// Times are seconds since the start of 1970. Hours count to 24, and digits are those of all the product's numbers.
// Main thread.

/// How a list says when a call was: "14:02" today, "Yesterday", the weekday up to six days ago, then the short date.
std::string listTime(std::int64_t time);
/// "14:02".
std::string clockTime(std::int64_t time);
/// "Nov 21, 2026, 14:02".
std::string exactTime(std::int64_t time);
/// "Today", "Yesterday" or "Saturday, November 21", with the year when it is another than this one.
std::string dayName(std::int64_t time);
/// "Saturday, November 21" of a day "yyyy-MM-dd", with the year when it is another than this one. Empty for a text that
/// is no day.
std::string dayHeadline(const std::string& day);
/// "3:05", "1:02:03". Less than nothing counts as nothing.
std::string durationText(std::int64_t seconds);

}  // namespace quorvel

// When a call was, in a few words.
#pragma once

#include <cstdint>
#include <string>

namespace phone {

/// "14:02" today, else "24 Dec 14:02", else with the year; local time.
std::string callTime(std::int64_t secondsSince1970);

}  // namespace phone

// What a handset holds at its first use, so that there is something to see: made-up calls, and the people in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/quorvel/store/call_store.h"

namespace phone {

/// Fills the open book with made-up people and the log with their calls, the newest some minutes before `now` (seconds
/// since 1970). People who are in the book stay as they are; a log that ever had a call does, and so does the book
/// then. Answers what went wrong, or nothing; to try again completes what was done in part.
std::optional<std::string> fillWithSamples(quorvel::store::CallStore& log, std::int64_t now);

}  // namespace phone

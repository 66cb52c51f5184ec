// What a handset holds at its first use, so that there is something to see: made-up calls, and the people in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/quorvel/store/call_store.h"

namespace phone {

/// Fills the open book with made-up people and the log with their calls, the newest some minutes before `now` (seconds
/// since 1970). Where the book has contacts already, both stay as they are: nobody who is there was called by these.
/// Answers what went wrong, or nothing.
std::optional<std::string> fillWithSamples(quorvel::store::CallStore& log, std::int64_t now);

}  // namespace phone

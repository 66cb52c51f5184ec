// The fields of a call as people's files write them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tools/import/local_clock.h"

namespace tools {

/// A whole number that fills the text; nothing for any other text.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Seconds since 1970 of Unix seconds or of ISO 8601: "2024-06-15T12:00:00Z", "2024-06-15 12:00", with or without
/// seconds, their fraction and an offset; without an offset by that clock. Nothing for any other text.
std::optional<std::int64_t> parseTime(std::string_view text, LocalClock& clock);

enum class CallKind { Dialled, Cancelled, Received, Missed };
/// By the words "dialled", "cancelled", "received" and "missed", in the spellings with one l too, whatever the case.
std::optional<CallKind> parseKind(std::string_view text);

}  // namespace tools

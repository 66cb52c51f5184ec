// Fields as other programs and people of several languages write them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/import/call_fields.h"

namespace tools {

/// In bytes; what is longer is neither a date nor a duration.
constexpr std::size_t longestField = 200;

/// In lower case, of ASCII and of Latin letters with accents, without spaces and punctuation.
std::string bareWord(std::string_view text);

/// The kind by words such as "Outgoing call", "Verpasst" or "manqué", or by Android's number of the type. A call that
/// went out and was not answered is cancelled. Nothing for a text without such a word.
std::optional<CallKind> parseWrittenKind(std::string_view text);
/// Whether the text says more than the kind, as "Rejected" does.
bool saysMoreThanKind(std::string_view text);

/// Seconds of "63", "63.4", "1:03", "0:01:03", "1m 3s", "1 min 3 sec" or "PT1M3S"; what lasts at all lasts one. Nothing
/// for any other text.
std::optional<std::int64_t> parseWrittenDuration(std::string_view text);

enum class DateOrder { DayFirst, MonthFirst };
/// Seconds since 1970 of what parseTime takes, of milliseconds since 1970, and of dates such as "15.06.2024 14:05",
/// "15/06/2024 2:05 PM", "Jun 15, 2024 2:05:09 PM" and "Sat 15 June 2024"; the order counts where slashes or hyphens
/// stand between numbers alone. Without a zone by that clock. Nothing for any other text.
std::optional<std::int64_t> parseWrittenTime(std::string_view text, LocalClock& clock, DateOrder order);

}  // namespace tools

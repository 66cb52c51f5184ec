// What is derived from the calls: totals, days and spans, as sums or as differences of sums.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>

#include "desktop/quorvel/store/call_row.h"

namespace quorvel::store {

/// Filters count from 1, arrays from 0.
constexpr std::size_t indexOf(std::int64_t filter) { return static_cast<std::size_t>(filter - 1); }

struct FilterSums {
    std::int64_t calls = 0, duration = 0, runs = 0;
    friend bool operator==(const FilterSums&, const FilterSums&) = default;
};

struct DaySums {
    std::array<std::int64_t, 3> calls{};      ///< Dialled, received, missed.
    std::array<std::int64_t, 2> durations{};  ///< Dialled, received.
    std::int64_t first = INT64_MAX, last = INT64_MIN;
    friend bool operator==(const DaySums&, const DaySums&) = default;
};

struct SpanSums {
    std::array<std::int64_t, 3> calls{};
    std::array<std::int64_t, 4> runs{};  ///< Runs whose newest call lies in the span, a filter each.
    friend bool operator==(const SpanSums&, const SpanSums&) = default;
};

struct Sums {
    std::array<FilterSums, 4> filters;
    std::map<std::int64_t, DaySums> days;
    std::map<std::int64_t, SpanSums> spans;
    std::unordered_map<std::int64_t, std::int64_t> partyCalls;

    /// Adds the call's own share, everything but runs; with -1 takes it away (the bounds of the day then stay).
    void count(const CallRow& call, std::int64_t sign);
    /// Adds `change` runs of the filter with their newest call at the date.
    void countRuns(std::int64_t filter, std::int64_t date, std::int64_t change);
};

/// Makes the sums of calls that are shown to it newest first.
class SumMaker {
  public:
    void see(const CallRow& call);
    Sums take() { return std::move(sums_); }

  private:
    Sums sums_;
    std::array<std::optional<CallRow>, 4> newer_;
};

/// The numbers of calls and of days, as they are kept in the file.
std::int64_t callsOf(Connection& connection);
std::int64_t daysOf(Connection& connection);
/// The sums as they are kept in the file.
Sums readSums(Connection& connection);
/// Puts these sums in the place of those that are kept; parties keep their calls.
void replaceSums(Connection& connection, const Sums& sums);
/// Reads every call along the date index.
Sums makeSums(Connection& connection);

}  // namespace quorvel::store

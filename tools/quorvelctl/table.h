// A table on standard output: aligned for a person at a terminal, with tabs for a program at the other end of a pipe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

struct Column {
    const char* title;
    std::size_t width;  ///< In characters, on a terminal; longer cells push the ones behind them to the right.
};

/// Prints each row as it comes. A row is one line whatever its cells hold: control characters become spaces.
class Table {
  public:
    /// On a terminal the titles are printed too.
    explicit Table(std::vector<Column> columns);

    /// A cell for each column.
    void row(const std::vector<std::string>& cells) const;

  private:
    std::vector<Column> columns_;
    bool isTerminal_;
};

/// The line of the row, without its end.
std::string alignedLine(const std::vector<Column>& columns, const std::vector<std::string>& cells);
std::string tabbedLine(const std::vector<std::string>& cells);

/// Seconds since 1970 as "2024-06-15 12:00:00" in the machine's time zone.
std::string localTime(std::int64_t seconds);

}  // namespace tools

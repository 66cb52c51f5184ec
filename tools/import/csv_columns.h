// Which column of comma-separated values holds which field.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tools/csv/csv_reader.h"

namespace tools {

enum class CsvColumn {
    Date,
    Time,  ///< The time of day, where the date has a column of its own.
    Address,
    Kind,
    Duration,
    FaceTime,
    Name,
    Label,
    Contact,
    Location,
    Flags,
    FaceTimeDataSize,
    Extra,
};

/// The column of the name that `--map` and this program's own files use; nothing for another one.
std::optional<CsvColumn> csvColumnOf(std::string_view name);
/// Those names, as in a sentence.
std::string csvColumnNames();

struct CsvColumns {
    struct Wrong {
        Place place;
        std::string what;
    };

    std::map<CsvColumn, std::size_t> known;
    std::map<std::size_t, std::string> others;  ///< By their header.
    std::size_t count = 0;

    /// By what the user says of a header's names, then by this program's names, then by those that others use.
    static std::variant<CsvColumns, Wrong> of(const CsvRecord& header, const std::map<std::string, std::string>& said);
};

}  // namespace tools

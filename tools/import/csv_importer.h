// Calls from comma-separated values.
#pragma once

#include <map>
#include <optional>

#include "tools/csv/csv_reader.h"
#include "tools/import/importer.h"
#include "tools/import/input_file.h"
#include "tools/import/local_clock.h"

namespace tools {

/// Columns by the names of the first line, in any order: date, address, kind and duration, and perhaps facetime, name,
/// contact and location. Other columns are passed over.
class CsvImporter : public Importer {
  public:
    explicit CsvImporter(InputFile file);
    Item next() override;
    std::string place() const override;
    double progress() const override { return file_.progress(); }
    std::string format() const override { return "comma-separated values"; }

  private:
    enum class Column { Date, Address, Kind, Duration, FaceTime, Name, Contact, Location };
    /// A wrong field of the present record.
    struct Wrong {
        Place place;
        std::string what;
    };

    /// Empty where the header can be used.
    std::optional<Complaint> readHeader();
    std::optional<Complaint> takeColumns(const CsvRecord& header);
    /// The file can no longer be read.
    Complaint readError();
    std::variant<quorvel::store::NewCall, Wrong> callOf(const CsvRecord& record);
    const CsvField& field(const CsvRecord& record, Column column) const;

    InputFile file_;
    CsvReader reader_;
    LocalClock clock_;
    std::map<Column, std::size_t> columns_;
    std::size_t columnCount_ = 0;
    bool headerRead_ = false;
    bool ended_ = false;
    Place place_;
};

}  // namespace tools

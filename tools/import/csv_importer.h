// Calls from comma-separated values.
#pragma once

#include <optional>

#include "tools/csv/csv_reader.h"
#include "tools/import/csv_columns.h"
#include "tools/import/importer.h"
#include "tools/import/input_file.h"
#include "tools/import/local_clock.h"
#include "tools/import/raw_call.h"
#include "tools/import/wide_text.h"

namespace tools {

/// Columns by the names of the first line, in any order and several languages; what stands in columns without a meaning
/// here is kept beside the call. Commas, semicolons or tabs; UTF-8 or UTF-16.
class CsvImporter : public Importer {
  public:
    explicit CsvImporter(InputFile file, ImportOptions options = {});
    Item next() override;
    std::string place() const override;
    double progress() const override { return file_.progress(); }
    std::string format() const override { return "comma-separated values"; }

  private:
    using Wrong = CsvColumns::Wrong;
    using MaybeWrong = std::optional<Wrong>;

    /// Empty where the header can be used.
    std::optional<Complaint> readHeader();
    /// The file can no longer be read.
    Complaint readError();
    std::variant<quorvel::store::NewCall, Wrong> callOf(const CsvRecord& record);
    MaybeWrong readDate(const CsvRecord& record, quorvel::store::NewCall& call);
    MaybeWrong readKind(const CsvRecord& record, quorvel::store::NewCall& call, RawCall& rest) const;
    MaybeWrong readFaceTime(const CsvRecord& record, quorvel::store::NewCall& call) const;
    MaybeWrong readFlags(const CsvRecord& record, quorvel::store::NewCall& call) const;
    MaybeWrong readContact(const CsvRecord& record, quorvel::store::NewCall& call) const;
    void readRest(const CsvRecord& record, quorvel::store::NewCall& call, RawCall& rest) const;
    const CsvField& field(const CsvRecord& record, CsvColumn column) const;

    InputFile file_;
    ImportOptions options_;
    WideText text_;
    CsvReader reader_;
    LocalClock clock_;
    CsvColumns columns_;
    bool headerRead_ = false;
    bool ended_ = false;
    Place place_;
};

}  // namespace tools

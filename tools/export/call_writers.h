// Calls as other programs read them: with every field, so that what is read again is the same.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "desktop/quorvel/store/call_store.h"
#include "tools/export/output.h"

namespace tools {

/// Writes whole calls one after the other.
class CallWriter {
  public:
    virtual ~CallWriter() = default;
    /// Answers what went wrong; then nothing more is written.
    virtual std::optional<std::string> write(const quorvel::store::CallRecord& call) = 0;
    /// After the last call. Answers what went wrong; without it there is no file.
    virtual std::optional<std::string> finish() = 0;
};

/// Comma-separated values (RFC 4180) under a line of names; dates as ISO 8601 with the offset of the machine's zone.
std::unique_ptr<CallWriter> csvWriter(const std::filesystem::path& file, files::Existing existing);
/// JSON of the names in tools/calls/json_fields.h, a line a call.
std::unique_ptr<CallWriter> jsonWriter(const std::filesystem::path& file, files::Existing existing);
/// A log of its own, which needs a file.
std::unique_ptr<CallWriter> logWriter(const std::filesystem::path& file, files::Existing existing);

}  // namespace tools

// The files beside a log: copies in the making, and the logs that were replaced.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "desktop/files/new_file.h"
#include "desktop/quorvel/store/call_store.h"

namespace quorvel::store {

/// The path with the suffix behind its name.
std::filesystem::path with(std::filesystem::path path, const std::string& suffix);

bool isThere(const std::filesystem::path& path);

/// Seconds since 1970 by the options' clock.
std::int64_t momentOf(const OpenOptions& options);

/// A free name that says why and when the log was replaced: PATH.WHY-YYYY-MM-DD-HHMMSS.
std::filesystem::path formerName(const std::filesystem::path& log, const std::string& why, std::int64_t moment);

/// How many of the logs that were replaced or mended stay beside a log.
constexpr std::size_t mostFormerLogs = 10;

/// Removes the oldest logs of before a restoring or mending, so that `mostFormerLogs` stay beside `exceptFor`, which is
/// never removed. Answers which ones; what cannot be removed stays.
std::vector<std::filesystem::path> removeOldFormerLogs(const std::filesystem::path& log,
                                                       const std::filesystem::path& exceptFor);

/// A database in the making beside the log, gone with the object.
class Staging {
  public:
    /// Throws Failure.
    explicit Staging(const std::filesystem::path& log);
    const std::filesystem::path& file() const { return made_.path(); }
    files::NewFile& made() { return made_; }

  private:
    files::NewFile made_;
};

/// Puts the staged log, which nobody has open, in the place of one that cannot be read any more, and answers the name
/// under which the old file is kept. Throws Failure; there is a log under its name at every moment.
std::filesystem::path replaceLog(const std::filesystem::path& log, const std::filesystem::path& staging,
                                 const std::string& why, std::int64_t moment);

}  // namespace quorvel::store

// The measure of a deletion: the bare statement on each row, on a copy of a log that may be changed.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "bench/store/sized_log.h"

namespace quorvel::store {

/// Writes a copy of the log of that size, without the store's journal beside it. The log is made once.
void copyLog(std::int64_t calls, const std::filesystem::path& to);

/// A copy of that log, which goes with its owner.
class LogCopy {
  public:
    explicit LogCopy(std::int64_t calls) : path_(folder_.file("copy.db")) { copyLog(calls, path_); }
    const std::filesystem::path& path() const { return path_; }

  private:
    Folder folder_;
    std::filesystem::path path_;
};

/// The row identifiers of at most so many calls that a search of the log finds, rising.
std::vector<std::int64_t> foundRows(std::int64_t calls, Filter filter, const char* text, std::int64_t most = noLimit);

/// A connection with the settings of the store's own.
class BareLog {
  public:
    explicit BareLog(const std::filesystem::path& path);
    /// Deletes the rows by one statement each, in one transaction.
    void deleteRows(const std::vector<std::int64_t>& rowIds) const;

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    void run(const char* text) const;

    std::unique_ptr<sqlite3, Close> database_;
};

}  // namespace quorvel::store

// The measure of a first page: the bare statement that fetches the newest 50 calls by the index of dates.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>

namespace quorvel::store {

/// A connection of its own to the log, with the statement prepared.
class BarePage {
  public:
    explicit BarePage(const std::filesystem::path& log);
    ~BarePage();
    BarePage(const BarePage&) = delete;
    BarePage& operator=(const BarePage&) = delete;

    /// Fetches every column of the 50 rows and makes nothing of them.
    std::int64_t fetch();

  private:
    sqlite3* database_ = nullptr;
    sqlite3_stmt* page_ = nullptr;
};

}  // namespace quorvel::store

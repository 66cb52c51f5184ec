// Files as bytes and as anybody's database, past the store.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "log_model.h"

namespace quorvel::store {

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
}

inline void runOn(const std::filesystem::path& path, const char* text) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, text, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

/// A log of so many calls in one file, with nothing left beside it.
inline void makeLog(const std::filesystem::path& path, int calls) {
    CallStore store = openStore(path);
    ImportSession session = valueOf(store.beginImport());
    CallMaker maker(3);
    for (int at = 0; at < calls; ++at) valueOf(session.add(maker.call()));
    valueOf(session.finish());
}

}  // namespace quorvel::store

// Copies of a log, and the bare statement that deletes from them.
#include "bench/store/bare_deletion.h"

#include <algorithm>
#include <map>
#include <string>

namespace quorvel::store {

void copyLog(std::int64_t calls, const std::filesystem::path& to) {
    static const Folder folder;
    static std::map<std::int64_t, std::filesystem::path> wholes;
    const auto [whole, isNew] = wholes.try_emplace(calls, folder.file(std::to_string(calls) + ".db"));
    if (isNew) {
        sqlite3* log = nullptr;
        sqlite3_open(storeOf(calls).path().c_str(), &log);
        const std::string copying = "vacuum into '" + whole->second.string() + "'";
        const bool isCopied = sqlite3_exec(log, copying.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(log);
        if (!isCopied) throw std::runtime_error("the log cannot be copied");
        // The copy is a write-ahead log from here on, as the store's own file is.
        valueOf(CallStore::open(whole->second));
    }
    std::filesystem::copy_file(whole->second, to);
}

std::vector<std::int64_t> foundRows(std::int64_t calls, Filter filter, const char* text, std::int64_t most) {
    std::vector<std::int64_t> rowIds;
    const Page page = valueOf(storeOf(calls).search(filter, text, {}, Cursor::top(), most));
    for (const CallRecord& record : page.rows) rowIds.push_back(record.rowId);
    std::sort(rowIds.begin(), rowIds.end());
    return rowIds;
}

BareLog::BareLog(const std::filesystem::path& path) {
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    database_.reset(database);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    run("pragma synchronous = full; pragma temp_store = memory");
}

void BareLog::deleteRows(const std::vector<std::int64_t>& rowIds) const {
    run("begin immediate");
    sqlite3_stmt* erase = nullptr;
    sqlite3_prepare_v2(database_.get(), "delete from call where ROWID = ?1", -1, &erase, nullptr);
    for (const std::int64_t rowId : rowIds) {
        sqlite3_bind_int64(erase, 1, rowId);
        sqlite3_step(erase);
        sqlite3_reset(erase);
    }
    sqlite3_finalize(erase);
    run("commit");
}

void BareLog::run(const char* text) const {
    if (sqlite3_exec(database_.get(), text, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(database_.get()));
}

}  // namespace quorvel::store

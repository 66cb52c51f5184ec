// Statements are put together from lists of what there is in a log; what SQLite refuses has no effect.
#include "raw_log.h"

#include <sqlite3.h>

#include <array>
#include <fstream>
#include <iterator>
#include <memory>

namespace quorvel::store::fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t pageSize = 512;

struct Table {
    const char* name;
    std::array<const char*, 14> columns;
};

constexpr Table tables[] = {
    {"call",
     {"address", "date", "duration", "flags", "face_time_data_size", "location", "id", "datetime", "kind", "party",
      "day", "extra"}},
    {"party", {"address", "contact", "name", "label", "calls"}},
    {"deleted",
     {"address", "date", "duration", "flags", "face_time_data_size", "location", "id", "day", "name", "label", "moment",
      "extra"}},
    {"day", {"dialled", "received", "missed", "dialled_duration", "received_duration", "first", "last"}},
    {"span", {"dialled", "received", "missed", "all_runs", "dialled_runs", "received_runs", "missed_runs"}},
    {"total", {"calls", "duration", "runs"}},
    {"state", {"revision", "party_revision", "last_row", "days", "touched"}},
    {"sqlite_sequence", {"name", "seq"}},
    {"sqlite_schema", {"type", "name", "tbl_name", "rootpage", "sql"}},
};

const char* columnOf(const Table& table, unsigned number) {
    unsigned columns = 0;
    while (columns < table.columns.size() && table.columns[columns]) ++columns;
    return table.columns[number % columns];
}

std::string valueOf(const Step& step) {
    const std::string number = std::to_string(step.value);
    switch (step.extra % 16) {
        case 0:
            return "null";
        case 1:
            return "''";
        case 2:
            return "'abc'";
        case 3:
            return "cast(x'c328ff' as text)";
        case 4:
            return "cast(x'610062' as text)";
        case 5:
            return "x'00ff'";
        case 6:
            return "'" + number + "'";
        case 7:
            return number + ".5";
        case 8:
            return "1e300";
        case 9:
            return "replace(hex(zeroblob(" + std::to_string(step.row % 60000) + ")), '0', 'x')";
        default:
            return number == "-9223372036854775808" ? "(-9223372036854775807 - 1)" : number;
    }
}

std::string nth(const Table& table, unsigned row) {
    const std::string name = table.name;
    return "(select rowid from " + name + " limit 1 offset " + std::to_string(row) +
           " % max(1, (select count(*) from " + name + ")))";
}

constexpr const char* schemaChanges[] = {
    "drop index call_by_kind",
    "drop index call_by_date; create index call_by_date on call (date)",
    "drop index party_by_address; create index party_by_address on party (address, contact)",
    "create unique index by_other on call (date, address, ROWID)",
    "create index by_other on call (abs(date), duration / party)",
    "create index by_other on party (name collate nocase)",
    "create trigger other after insert on call begin delete from call where ROWID < new.ROWID; end",
    "create trigger other before delete on call begin select raise(abort, 'no'); end",
    "alter table call add column other text default 'x'",
    "alter table party rename to parties",
    "alter table call rename column location to place",
    "drop table day; create view day as select 1 as day, 2 as dialled, 3 as received, 4 as missed, 5 as "
    "dialled_duration, 6 as received_duration, 7 as first, 8 as last",
    "drop table span",
    "create table other (a text); insert into other values ('x')",
    "create view other as with recursive n(i) as (select 1 union all select i + 1 from n) select i from n",
    "update sqlite_schema set sql = replace(sql, 'not null', '') where type = 'table'",
    "update sqlite_schema set sql = replace(sql, 'integer', 'text') where name = 'call'",
    "update sqlite_schema set sql = replace(sql, 'autoincrement', '') where type = 'table'",
    "update sqlite_schema set sql = replace(sql, 'date, ROWID', 'ROWID, date') where type = 'index'",
    "update sqlite_schema set sql = replace(sql, ')', ') where date > 1700000000') where name = 'call_by_date'",
    "update sqlite_schema set sql = sql || ' without rowid' where name = 'total'",
    "update sqlite_schema set sql = upper(sql)",
    "insert into sqlite_schema select * from sqlite_schema where name = 'call_by_date'",
    "delete from sqlite_schema where name like 'call_by%'",
    "analyze",
    "reindex",
    "vacuum",
};

constexpr const char* pragmas[] = {
    "pragma journal_mode = delete",
    "pragma journal_mode = wal",
    "pragma wal_checkpoint(truncate)",
    "pragma page_size = 512; pragma journal_mode = delete; vacuum",
    "pragma auto_vacuum = full; pragma journal_mode = delete; vacuum",
    "pragma encoding = 'UTF-16le'; vacuum",
    "pragma incremental_vacuum(3)",
    "pragma max_page_count = 2",
};

std::string statementOf(const Step& step) {
    const Table& table = tables[step.which % std::size(tables)];
    const std::string name = table.name;
    switch (static_cast<Kind>(step.kind)) {
        case Kind::changeCell:
            return "update or replace " + name + " set " + columnOf(table, step.column) + " = " + valueOf(step) +
                   (step.extra % 64 == 63 ? std::string() : " where rowid = " + nth(table, step.row));
        case Kind::changeRowId:
            return "update or replace " + name + " set rowid = " + std::to_string(step.value) +
                   " where rowid = " + nth(table, step.row);
        case Kind::deleteRow:
            return "delete from " + name +
                   (step.extra % 32 == 31 ? std::string() : " where rowid = " + nth(table, step.row));
        case Kind::copyRow: {
            std::string columns;
            for (const char* column : table.columns)
                if (column) columns += (columns.empty() ? "" : ", ") + std::string(column);
            return "insert or replace into " + name + " (" + columns + ") select " + columns + " from " + name +
                   " where rowid = " + nth(table, step.row);
        }
        case Kind::changeSchema:
            return schemaChanges[step.which % std::size(schemaChanges)];
        case Kind::swapRoots:
            return "update sqlite_schema set rootpage = " +
                   (step.extra % 2 == 0 ? "(select rootpage from sqlite_schema where rootpage > 0 limit 1 offset " +
                                              std::to_string(step.column % 16) + ")"
                                        : std::to_string(step.value)) +
                   " where rowid = " + nth(tables[8], step.row);
        default:
            break;
    }
    if (step.extra % 3 == 0) return "pragma user_version = " + std::to_string(step.value % 8);
    if (step.extra % 3 == 1 && step.which % 4 == 0) return "pragma application_id = " + std::to_string(step.value % 8);
    return pragmas[step.which % std::size(pragmas)];
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

void makeEmpty(const fs::path& log) {
    sqlite3* opened = nullptr;
    sqlite3_open(log.c_str(), &opened);
    const std::string text =
        "pragma page_size = " + std::to_string(pageSize) + "; create table one (a); drop table one";
    sqlite3_exec(opened, text.c_str(), nullptr, nullptr, nullptr);
    sqlite3_close(opened);
}

void changeRows(const fs::path& log, const Step& step) {
    sqlite3* opened = nullptr;
    sqlite3_open_v2(log.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
    if (!opened) return;
    // A view of others may be read for ever.
    sqlite3_progress_handler(
        opened, 100000, [](void*) { return 1; }, nullptr);
    // Most changes leave no mark, as those of a program that knows the log, or of damage.
    const bool leavesMark = step.extra % 8 == 7;
    sqlite3_db_config(opened, SQLITE_DBCONFIG_ENABLE_TRIGGER, leavesMark ? 1 : 0, nullptr);
    sqlite3_exec(opened, "pragma writable_schema = on; pragma synchronous = off", nullptr, nullptr, nullptr);
    sqlite3_exec(opened, statementOf(step).c_str(), nullptr, nullptr, nullptr);
}

void changeBytes(const fs::path& log, const Step& step) {
    for (const char* suffix : {"-wal", "-shm"}) {
        std::error_code ignored;
        // Sometimes what was written last is lost, sometimes it lies over the damage.
        if (step.extra % 2 == 0) fs::remove(log.string() + suffix, ignored);
    }
    std::string bytes = contentOf(log);
    if (bytes.empty()) return;
    const std::size_t pages = (bytes.size() + pageSize - 1) / pageSize;
    const std::size_t page = step.row % pages * pageSize;
    const auto byte = static_cast<char>(step.value);
    switch (static_cast<Kind>(step.kind)) {
        case Kind::changeByte:
            // The beginnings of pages are what leads through the file.
            bytes[std::min(page + (step.which % 2 == 0 ? step.column % 24 : step.column % pageSize),
                           bytes.size() - 1)] = byte;
            break;
        case Kind::changeHeader:
            bytes[step.column % std::min<std::size_t>(100, bytes.size())] = byte;
            break;
        case Kind::changePage: {
            const std::string source = step.which % 3 == 0   ? std::string(pageSize, '\0')
                                       : step.which % 3 == 1 ? std::string(pageSize, byte)
                                                             : bytes.substr(step.column % pages * pageSize, pageSize);
            bytes.replace(page, std::min(pageSize, bytes.size() - page), source);
            break;
        }
        default:
            bytes.resize(step.which % 2 == 0 ? page : std::min<std::size_t>(bytes.size(), step.column));
    }
    std::ofstream(log, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace quorvel::store::fuzz

// The file is opened for reading, writing is switched off besides, and the authorizer passes only reading.
#include "desktop/quorvel/store/query_runner.h"

#include <strings.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvel::store {
namespace {

// Of what a text may cost that others have put together: more, and it fails.
constexpr std::chrono::seconds timeBound{3};
constexpr std::size_t mostRows = 1'000'000;
constexpr int longestValue = 10'000'000;
constexpr int stepsBetweenLooks = 10000;

int authorize(void*, int action, const char*, const char* second, const char*, const char*) {
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_FUNCTION:
            return second && strcasecmp(second, "load_extension") == 0 ? SQLITE_DENY : SQLITE_OK;
        default:
            return SQLITE_DENY;
    }
}

/// Ends a statement that has run past its moment.
int isLate(void* end) {
    return std::chrono::steady_clock::now() > *static_cast<const std::chrono::steady_clock::time_point*>(end);
}

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Query = std::unique_ptr<sqlite3_stmt, Finalize>;

/// The one reading statement of the text, or null.
Query prepare(sqlite3* database, std::string_view text) {
    if (text.size() > 1000000) return nullptr;
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v2(database, text.data(), static_cast<int>(text.size()), &statement, &rest);
    Query query(statement);
    if (code != SQLITE_OK || !query || !sqlite3_stmt_readonly(statement) || sqlite3_stmt_isexplain(statement))
        return nullptr;
    // What follows may be blank or a comment; SQLite makes no statement of that.
    const auto left = text.size() - static_cast<std::size_t>(rest - text.data());
    sqlite3_stmt* second = nullptr;
    const int secondCode = sqlite3_prepare_v2(database, rest, static_cast<int>(left), &second, nullptr);
    const Query following(second);
    return secondCode == SQLITE_OK && !following ? std::move(query) : nullptr;
}

std::string textOf(sqlite3_stmt* row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))) : std::string();
}

}  // namespace

/// What the columns of the statement are, by their names in whatever case.
std::vector<QueryRunner::Column> QueryRunner::columnsOf(sqlite3_stmt* statement) {
    static constexpr std::pair<const char*, Column> names[] = {
        {"ROWID", Column::rowId},
        {"date", Column::date},
        {"duration", Column::duration},
        {"flags", Column::flags},
        {"face_time_data_size", Column::faceTimeDataSize},
        {"id", Column::contact},
        {"location", Column::location},
        {"address", Column::address},
        {"datetime", Column::day},
        {"extra", Column::extra},
    };
    std::vector<Column> columns;
    for (int at = 0; at < sqlite3_column_count(statement); ++at) {
        const char* given = sqlite3_column_name(statement, at);
        const auto* known = std::ranges::find_if(
            names, [given](const auto& each) { return given && strcasecmp(given, each.first) == 0; });
        columns.push_back(known == std::end(names) ? Column::other : known->second);
    }
    return columns;
}

QueryRunner::QueryRunner(const std::filesystem::path& path, Connection::Use use, std::chrono::milliseconds busyBound,
                         const std::string& fileSystem)
    : connection_(path, use, busyBound, fileSystem) {
    connection_.execute("pragma temp_store = memory");
    connection_.execute("pragma query_only = on");
    sqlite3_limit(connection_.handle(), SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(connection_.handle(), SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_set_authorizer(connection_.handle(), authorize, nullptr);
}

std::vector<CallRecord> QueryRunner::run(std::string_view text) {
    sqlite3* database = connection_.handle();
    const Query query = prepare(database, text);
    if (!query) return {};
    auto end = std::chrono::steady_clock::now() + timeBound;
    sqlite3_progress_handler(database, stepsBetweenLooks, isLate, &end);
    const auto columns = columnsOf(query.get());
    constexpr std::size_t usualCalls = 16;
    std::vector<CallRecord> records;
    records.reserve(usualCalls);
    int code = SQLITE_ROW;
    while (records.size() <= mostRows && (code = sqlite3_step(query.get())) == SQLITE_ROW)
        records.push_back(recordOf(query.get(), columns));
    sqlite3_progress_handler(database, 0, nullptr, nullptr);
    if (code != SQLITE_DONE) records.clear();
    return records;
}

/// The calls of a card are mostly of one day.
const std::string& QueryRunner::dayOf(std::int64_t date) {
    const std::int64_t day = days_.dayOf(date);
    if (day != latestDay_ || latestDayText_.empty()) {
        latestDay_ = day;
        latestDayText_ = dayText(day);
    }
    return latestDayText_;
}

CallRecord QueryRunner::recordOf(sqlite3_stmt* row, const std::vector<Column>& columns) {
    CallRecord record;
    bool hasDate = false;
    for (int at = 0; at < static_cast<int>(columns.size()); ++at) {
        const auto small = [row, at] { return static_cast<std::int32_t>(sqlite3_column_int64(row, at)); };
        switch (columns[static_cast<std::size_t>(at)]) {
            case Column::rowId:
                record.rowId = record.logId = sqlite3_column_int64(row, at);
                break;
            case Column::date:
                record.date = sqlite3_column_int64(row, at);
                hasDate = true;
                break;
            case Column::duration:
                record.duration = small();
                break;
            case Column::flags:
                record.flags = small();
                break;
            case Column::faceTimeDataSize:
                record.faceTimeDataSize = small();
                break;
            case Column::contact:
                record.contactId = small();
                break;
            case Column::location:
                record.location = textOf(row, at);
                break;
            case Column::address:
                record.address = textOf(row, at);
                break;
            case Column::day:
                record.day = textOf(row, at);
                break;
            case Column::extra:
                record.extra = textOf(row, at);
                break;
            case Column::other:
                break;
        }
    }
    if (record.day.empty() && hasDate) record.day = dayOf(record.date);
    return record;
}

}  // namespace quorvel::store

// The search for all matches, beside the best statements that SQLite has for it and beside a scan with LIKE.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <string>

#include "bench/store/sized_log.h"

namespace {

using namespace quorvel::store;

constexpr std::int64_t logSize = 1'000'000;

void run(sqlite3* database, const std::string& text) {
    if (sqlite3_exec(database, text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(text + ": " + sqlite3_errmsg(database));
}

/// A copy of the log, with a trigram index of the parties' names and numbers, and with the calls and their names in one
/// plain table besides.
sqlite3* databaseOfStatements() {
    static const Folder folder;
    static sqlite3* database = nullptr;
    if (database) return database;
    sqlite3* log = nullptr;
    sqlite3_open(storeOf(logSize).path().c_str(), &log);
    run(log, "vacuum into '" + folder.file("copy.db").string() + "'");
    sqlite3_close(log);
    sqlite3_open(folder.file("copy.db").c_str(), &database);
    run(database, "create virtual table party_text using fts5 (name, address, tokenize = 'trigram')");
    run(database, "insert into party_text (rowid, name, address) select party, name, address from party");
    run(database,
        "create table plain as select call.ROWID as call, call.address, date, duration, flags, call.id, day, location, "
        "name, label from call join party using (party) order by call.ROWID");
    run(database, "create index plain_by_date on plain (date)");
    run(database, "analyze");
    return database;
}

void finish(benchmark::State& state, std::int64_t rows) { state.counters["rows"] = static_cast<double>(rows); }

std::int64_t searchOnce(const CallStore& store, const char* term) {
    return valueOf(
        store.eachFound(Filter::all, term, {}, [](const CallRecord& record) { benchmark::DoNotOptimize(&record); }));
}

/// The third search since the log changed, and each that follows.
void searchOfTheStore(benchmark::State& state, const char* term) {
    const CallStore& store = storeOf(logSize);
    searchOnce(store, term);
    std::int64_t rows = searchOnce(store, term);
    for (auto _ : state) rows = searchOnce(store, term);
    finish(state, rows);
}

/// Searches after the log was opened, when nothing is in memory yet but the parties: the first, or the second, which
/// takes the log into memory where it found much.
void earlySearchOfTheStore(benchmark::State& state, const char* term, bool isSecond) {
    const auto path = storeOf(logSize).path();
    std::int64_t rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            const CallStore store = valueOf(CallStore::open(path));
            valueOf(store.search(Filter::all, "nobody", {}, Cursor::top(), 1));
            if (isSecond) searchOnce(store, term);
            state.ResumeTiming();
            rows = searchOnce(store, term);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    finish(state, rows);
}

/// Each row is shown as the same record as in the store: both answer rows that can be used.
void searchByStatement(benchmark::State& state, const char* text, const std::string& term) {
    sqlite3_stmt* search = nullptr;
    if (sqlite3_prepare_v2(databaseOfStatements(), text, -1, &search, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(databaseOfStatements()));
    const auto textOf = [&](int column) {
        const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(search, column));
        return std::string_view(chars ? chars : "");
    };
    std::int64_t rows = 0;
    CallRecord record;
    for (auto _ : state) {
        rows = 0;
        sqlite3_bind_text(search, 1, term.c_str(), -1, SQLITE_STATIC);
        while (sqlite3_step(search) == SQLITE_ROW) {
            record.rowId = record.logId = sqlite3_column_int64(search, 0);
            record.date = sqlite3_column_int64(search, 1);
            record.duration = sqlite3_column_int(search, 2);
            record.flags = sqlite3_column_int(search, 3);
            record.contactId = sqlite3_column_int(search, 4);
            record.day = textOf(5);
            record.address = textOf(6);
            record.name = textOf(7);
            record.label = textOf(8);
            record.location = textOf(9);
            benchmark::DoNotOptimize(&record);
            ++rows;
        }
        sqlite3_reset(search);
    }
    sqlite3_finalize(search);
    finish(state, rows);
}

/// The parties by the trigram index, their calls by the index of parties, and a sort: best for terms with few matches.
void searchByParties(benchmark::State& state, const char* term) {
    searchByStatement(state,
                      "select call.ROWID, date, duration, flags, id, datetime, party.address, party.name, party.label, "
                      "location from party cross join call indexed by call_by_party on call.party = party.party "
                      "where party.party in (select rowid from party_text where party_text match ?1) "
                      "order by date desc, call.ROWID desc",
                      '"' + std::string(term) + '"');
}

/// The parties by the trigram index, and the calls along the index of dates, which needs no sort: best for terms with
/// many matches.
void searchByDates(benchmark::State& state, const char* term) {
    searchByStatement(state,
                      "select call.ROWID, date, duration, flags, id, date(day * 86400, 'unixepoch'), party.address, "
                      "party.name, party.label, location from call indexed by call_by_date cross join party on "
                      "party.party = call.party "
                      "where call.party in (select rowid from party_text where party_text match ?1) "
                      "order by date desc, call.ROWID desc",
                      '"' + std::string(term) + '"');
}

void searchByLike(benchmark::State& state, const char* term) {
    searchByStatement(state,
                      "select call, date, duration, flags, id, date(day * 86400, 'unixepoch'), address, name, label, "
                      "location from plain where name like ?1 or address like ?1 order by date desc, call desc",
                      '%' + std::string(term) + '%');
}

void firstSearchOfTheStore(benchmark::State& state, const char* term) { earlySearchOfTheStore(state, term, false); }

#define EACH_TERM(search)                                                                            \
    BENCHMARK_CAPTURE(search, oneNumber, "+493010009")->Unit(benchmark::kMicrosecond)->MinTime(0.3); \
    BENCHMARK_CAPTURE(search, oneName, "person 54321")->Unit(benchmark::kMicrosecond)->MinTime(0.3); \
    BENCHMARK_CAPTURE(search, threeLetters, "876")->Unit(benchmark::kMicrosecond)->MinTime(0.3);     \
    BENCHMARK_CAPTURE(search, manyNames, "person 77")->Unit(benchmark::kMicrosecond)->MinTime(0.3);  \
    BENCHMARK_CAPTURE(search, mostNames, "person 1")->Unit(benchmark::kMicrosecond)->MinTime(0.3);   \
    BENCHMARK_CAPTURE(search, nobody, "nobody")->Unit(benchmark::kMicrosecond)->MinTime(0.3)

EACH_TERM(searchOfTheStore);
EACH_TERM(firstSearchOfTheStore);
BENCHMARK_CAPTURE(earlySearchOfTheStore, secondOfMostNames, "person 1", true)
    ->Unit(benchmark::kMicrosecond)
    ->MinTime(0.3);
EACH_TERM(searchByParties);
EACH_TERM(searchByDates);
EACH_TERM(searchByLike);

}  // namespace

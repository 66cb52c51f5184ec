// The store beside bare SQLite on the same data: the first page at every size of the log, deep pages, import.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <unordered_map>

#include "bench/store/bare_page.h"
#include "bench/store/sized_log.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/local_days.h"

namespace {

using namespace quorvel::store;

void bareFirstPage(benchmark::State& state) {
    BarePage page(storeOf(state.range(0)).path());
    for (auto _ : state) benchmark::DoNotOptimize(page.fetch());
}

template <bool byDate, bool byContact, Filter filter>
void firstPage(benchmark::State& state) {
    const CallStore& store = storeOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(store.page(filter, {byDate, byContact}, Cursor::top(), 50));
}

template <bool byContact>
void pageInTheMiddle(benchmark::State& state) {
    const CallStore& store = storeOf(state.range(0));
    const std::int64_t middle = state.range(0) / 3;
    for (auto _ : state) benchmark::DoNotOptimize(store.pageAt(Filter::all, {false, byContact}, middle, 50));
}

/// The next page of a list of which so many rows were loaded, by key.
template <bool byContact>
void nextPage(benchmark::State& state) {
    const CallStore& store = storeOf(1'000'000);
    const Mode mode{false, byContact};
    const Cursor cursor = valueOf(store.cursorAt(Filter::all, mode, state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(store.page(Filter::all, mode, cursor, 50));
}

void totals(benchmark::State& state) {
    const CallStore& store = storeOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(store.totals(Filter::received, {false, true}));
}

void search(benchmark::State& state, const char* term) {
    const CallStore& store = storeOf(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(store.search(Filter::all, term, {}, Cursor::top(), 50));
}

void appendOne(benchmark::State& state) {
    CallStore& store = storeOf(state.range(0));
    NewCall call;
    call.address = "5551234";
    call.date = 1'900'000'000;
    for (auto _ : state) {
        const std::int64_t rowId = valueOf(store.append(call));
        valueOf(store.deleteCalls({&rowId, 1}));
    }
}

/// The same rows into a table with the same indices, in one transaction, and nothing else kept.
void bareImport(benchmark::State& state) {
    const auto calls = makeCalls(state.range(0));
    std::unordered_map<std::string, std::int64_t> parties;
    std::vector<std::pair<std::int64_t, std::string>> derived;
    LocalDays days;
    for (const NewCall& call : calls) {
        const auto party =
            parties.try_emplace(call.address, static_cast<std::int64_t>(parties.size()) + 1).first->second;
        derived.emplace_back(party, dayText(days.dayOf(call.date)));
    }
    for (auto _ : state) {
        state.PauseTiming();
        const Folder folder;
        // The store makes the table and its indices.
        valueOf(CallStore::open(folder.file("bare.db")));
        sqlite3* database = nullptr;
        sqlite3_open(folder.file("bare.db").c_str(), &database);
        // Triggers would slow the bare insert only; the store's own connections have them off as well.
        sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        sqlite3_exec(database, "pragma synchronous = full; pragma cache_size = -262144", nullptr, nullptr, nullptr);
        state.ResumeTiming();
        sqlite3_exec(database, "begin immediate", nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(
            database,
            "insert into call (address, date, duration, flags, face_time_data_size, location, id, datetime, kind, "
            "party, day) values (?1, ?2, ?3, ?4, 0, ?5, ?6, ?9, ?7, ?10, ?8)",
            -1, &insert, nullptr);
        for (std::size_t at = 0; at < calls.size(); ++at) {
            const NewCall& call = calls[at];
            const auto& [party, day] = derived[at];
            sqlite3_bind_text(insert, 9, day.data(), static_cast<int>(day.size()), SQLITE_STATIC);
            sqlite3_bind_int64(insert, 10, party);
            sqlite3_bind_text(insert, 1, call.address.data(), static_cast<int>(call.address.size()), SQLITE_STATIC);
            sqlite3_bind_int64(insert, 2, call.date);
            sqlite3_bind_int64(insert, 3, call.duration);
            sqlite3_bind_int64(insert, 4, call.flags);
            sqlite3_bind_text(insert, 5, call.location.data(), static_cast<int>(call.location.size()), SQLITE_STATIC);
            sqlite3_bind_int64(insert, 6, call.contactId);
            sqlite3_bind_int64(insert, 7, static_cast<std::int64_t>(listOf(call.flags, call.duration)));
            sqlite3_bind_int64(insert, 8, call.date / 86400);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(database, "commit", nullptr, nullptr, nullptr);
        state.PauseTiming();
        sqlite3_close(database);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void import(benchmark::State& state) {
    const auto calls = makeCalls(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const Folder folder;
        CallStore store = valueOf(CallStore::open(folder.file("store.db")));
        state.ResumeTiming();
        ImportSession session = valueOf(store.beginImport());
        for (const NewCall& call : calls) valueOf(session.add(call));
        valueOf(session.finish());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define EACH_SIZE ->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond)

BENCHMARK(bareFirstPage) EACH_SIZE;
BENCHMARK(firstPage<false, false, Filter::all>)->Name("firstPageOfCalls") EACH_SIZE;
BENCHMARK(firstPage<false, false, Filter::missed>)->Name("firstPageOfMissedCalls") EACH_SIZE;
BENCHMARK(firstPage<false, true, Filter::all>)->Name("firstPageOfRuns") EACH_SIZE;
BENCHMARK(firstPage<true, false, Filter::all>)->Name("firstPageOfDays") EACH_SIZE;
BENCHMARK(pageInTheMiddle<false>)->Name("pageOfCallsByRowNumber") EACH_SIZE;
BENCHMARK(pageInTheMiddle<true>)->Name("pageOfRunsByRowNumber") EACH_SIZE;
BENCHMARK(nextPage<false>)->Name("nextPageOfCallsAtDepth")->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(nextPage<true>)->Name("nextPageOfRunsAtDepth")->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(totals) EACH_SIZE;
BENCHMARK_CAPTURE(search, commonTerm, "person 1") EACH_SIZE;
BENCHMARK_CAPTURE(search, rareTerm, "493010009") EACH_SIZE;
BENCHMARK_CAPTURE(search, noMatch, "nobody") EACH_SIZE;
BENCHMARK(appendOne) EACH_SIZE;
BENCHMARK(bareImport)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(import)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();

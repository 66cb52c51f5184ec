// The calls on the card of a caller in a log of 1,000,000, beside the bare statement of the same text.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <string>

#include "bench/store/sized_log.h"
#include "desktop/quorvel/services/call_entry.h"
#include "desktop/quorvel/services/data_service.h"
#include "plugin/rows/call_records.h"

namespace {

namespace store = quorvel::store;
using store::CallRecord;
using store::CallStore;
using store::noContact;
using store::storeOf;
using store::valueOf;

constexpr std::int64_t logSize = 1'000'000;

/// The caller with the most calls on one day, a contact or a number of nobody's.
CallRecord callerOf(bool isContact) {
    const store::Page page = valueOf(storeOf(logSize).page(store::Filter::all, {}, store::Cursor::top(), 20000));
    std::map<std::string, int> counts;
    const CallRecord* best = nullptr;
    int most = 0;
    for (const CallRecord& call : page.rows) {
        if ((call.contactId != noContact) != isContact) continue;
        const int count = ++counts[call.day + call.address];
        if (count > most) {
            most = count;
            best = &call;
        }
    }
    return *best;
}

std::string textFor(const CallRecord& caller) {
    const std::string whose =
        caller.contactId != noContact ? "id=" + std::to_string(caller.contactId) : "address='" + caller.address + "'";
    return "select ROWID, date, duration, flags, face_time_data_size, location from call where " + whose +
           " and datetime='" + caller.day + "' order by date desc";
}

/// Formed, prepared and read anew each time, as a text that comes from elsewhere is.
template <bool isContact>
void bareStatement(benchmark::State& state) {
    const CallRecord caller = callerOf(isContact);
    sqlite3* database = nullptr;
    sqlite3_open_v2(storeOf(logSize).path().c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    for (auto _ : state) {
        const std::string text = textFor(caller);
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, text.c_str(), -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (const int column : {0, 1, 2, 3, 4}) benchmark::DoNotOptimize(sqlite3_column_int64(statement, column));
            benchmark::DoNotOptimize(sqlite3_column_text(statement, 5));
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
}

template <bool isContact>
void query(benchmark::State& state) {
    const CallRecord caller = callerOf(isContact);
    const CallStore& log = storeOf(logSize);
    for (auto _ : state) benchmark::DoNotOptimize(log.query(textFor(caller)));
    state.counters["calls"] = static_cast<double>(log.query(textFor(caller)).size());
}

/// All that the plug-in does for them: the day's text, the query, the entries.
template <bool isContact>
void callsOfTheCard(benchmark::State& state) {
    const objc::AutoreleasePool pool;
    quorvel::DataService::shared()->setStore(
        std::make_unique<CallStore>(valueOf(CallStore::open(storeOf(logSize).path()))));
    quorvel::SharedTexts texts;
    const auto entry = quorvel::CallEntry::of(callerOf(isContact), texts);
    rows::CallListState list;
    for (auto _ : state) {
        const objc::AutoreleasePool each;
        benchmark::DoNotOptimize(rows::callListForSelectedCall({{}, list}, QVCallEntry{entry.self()}));
    }
    quorvel::DataService::shared()->setStore(nullptr);
}

BENCHMARK(bareStatement<true>)->Name("bareStatementByContact")->Unit(benchmark::kMicrosecond);
BENCHMARK(query<true>)->Name("queryByContact")->Unit(benchmark::kMicrosecond);
BENCHMARK(callsOfTheCard<true>)->Name("callsOfTheCardByContact")->Unit(benchmark::kMicrosecond);
BENCHMARK(bareStatement<false>)->Name("bareStatementByNumber")->Unit(benchmark::kMicrosecond);
BENCHMARK(query<false>)->Name("queryByNumber")->Unit(benchmark::kMicrosecond);
BENCHMARK(callsOfTheCard<false>)->Name("callsOfTheCardByNumber")->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();

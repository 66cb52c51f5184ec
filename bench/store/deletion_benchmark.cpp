// Deleting search results and everything, linking a number, and bringing calls back, beside the bare statements.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <string>

#include "bench/store/sized_log.h"

namespace {

using namespace quorvel::store;

constexpr std::int64_t logSize = 1'000'000;
constexpr std::int64_t resultCount = 10'000;

/// A copy of the log, which may be changed.
class Copy {
  public:
    Copy() : path_(folder_.file("copy.db")) {
        static const Folder whole;
        static const std::filesystem::path source = [] {
            const std::filesystem::path path = whole.file("whole.db");
            sqlite3* log = nullptr;
            sqlite3_open(storeOf(logSize).path().c_str(), &log);
            sqlite3_exec(log, ("vacuum into '" + path.string() + "'").c_str(), nullptr, nullptr, nullptr);
            sqlite3_close(log);
            // The copy is a write-ahead log from here on, as the store's own file is.
            valueOf(CallStore::open(path));
            return path;
        }();
        std::filesystem::copy_file(source, path_);
    }
    const std::filesystem::path& path() const { return path_; }

  private:
    Folder folder_;
    std::filesystem::path path_;
};

std::vector<std::int64_t> searchResults() {
    std::vector<std::int64_t> rowIds;
    const Page page = valueOf(storeOf(logSize).search(Filter::all, "person 1", {}, Cursor::top(), resultCount));
    for (const CallRecord& record : page.rows) rowIds.push_back(record.rowId);
    std::sort(rowIds.begin(), rowIds.end());
    return rowIds;
}

/// The work on a fresh copy in each round, without the copying.
template <class Open, class Work>
void eachOnACopy(benchmark::State& state, Open&& open, Work&& work) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            const Copy copy;
            auto opened = open(copy.path());
            state.ResumeTiming();
            work(opened);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

CallStore openCopy(const std::filesystem::path& path) { return valueOf(CallStore::open(path)); }

/// A connection with the settings of the store's own.
struct Bare {
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::unique_ptr<sqlite3, Close> database;
    void run(const char* text) const {
        if (sqlite3_exec(database.get(), text, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database.get()));
    }
};

Bare openBare(const std::filesystem::path& path) {
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    Bare bare{std::unique_ptr<sqlite3, Bare::Close>(database)};
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    bare.run("pragma synchronous = full; pragma temp_store = memory");
    return bare;
}

void deleteResults(benchmark::State& state) {
    const auto rowIds = searchResults();
    eachOnACopy(state, openCopy, [&](CallStore& store) { valueOf(store.deleteCalls(rowIds)); });
}

void bareDeleteResults(benchmark::State& state) {
    const auto rowIds = searchResults();
    eachOnACopy(state, openBare, [&](const Bare& bare) {
        bare.run("begin immediate");
        sqlite3_stmt* erase = nullptr;
        sqlite3_prepare_v2(bare.database.get(), "delete from call where ROWID = ?1", -1, &erase, nullptr);
        for (const std::int64_t rowId : rowIds) {
            sqlite3_bind_int64(erase, 1, rowId);
            sqlite3_step(erase);
            sqlite3_reset(erase);
        }
        sqlite3_finalize(erase);
        bare.run("commit");
    });
}

void undeleteResults(benchmark::State& state) {
    const auto rowIds = searchResults();
    eachOnACopy(
        state,
        [&](const std::filesystem::path& path) {
            CallStore store = openCopy(path);
            valueOf(store.deleteCalls(rowIds));
            return store;
        },
        [&](CallStore& store) { valueOf(store.undelete(rowIds)); });
}

void deleteEverything(benchmark::State& state) {
    eachOnACopy(state, openCopy, [](CallStore& store) { valueOf(store.deleteAll(Filter::all)); });
}

void deleteAllMissed(benchmark::State& state) {
    eachOnACopy(state, openCopy, [](CallStore& store) { valueOf(store.deleteAll(Filter::missed)); });
}

BENCHMARK(bareDeleteResults)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(deleteResults)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(undeleteResults)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(deleteEverything)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(deleteAllMissed)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

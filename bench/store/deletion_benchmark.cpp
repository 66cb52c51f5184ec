// Deleting search results and everything, linking a number, and bringing calls back, beside the bare statements.
#include <benchmark/benchmark.h>

#include <vector>

#include "bench/store/bare_deletion.h"

namespace {

using namespace quorvel::store;

constexpr std::int64_t logSize = 1'000'000;
constexpr std::int64_t resultCount = 10'000;

std::vector<std::int64_t> searchResults() { return foundRows(logSize, Filter::all, "person 1", resultCount); }

/// The work on a fresh copy in each round, without the copying.
template <class Open, class Work>
void eachOnACopy(benchmark::State& state, Open&& open, Work&& work) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            const LogCopy copy(logSize);
            auto opened = open(copy.path());
            state.ResumeTiming();
            work(opened);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

CallStore openCopy(const std::filesystem::path& path) { return valueOf(CallStore::open(path)); }

void deleteResults(benchmark::State& state) {
    const auto rowIds = searchResults();
    eachOnACopy(state, openCopy, [&](CallStore& store) { valueOf(store.deleteCalls(rowIds)); });
}

void bareDeleteResults(benchmark::State& state) {
    const auto rowIds = searchResults();
    eachOnACopy(
        state, [](const std::filesystem::path& path) { return BareLog(path); },
        [&](const BareLog& log) { log.deleteRows(rowIds); });
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

// Deleting 10,000 calls that a search found, by the messages of the Recents screen, beside the bare statement on the
// same rows of the same log.
#include <benchmark/benchmark.h>

#include <stdexcept>

#include "bench/recents/handset.h"
#include "bench/store/bare_deletion.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/screen_probe.h"

namespace {

/// A search of a log's calls, and how many entries are loaded before it begins.
struct Search {
    std::int64_t calls;
    Filter filter;
    const char* text;
    std::int64_t loaded;
};

constexpr Search smallLog{100'000, Filter::All, "+49301002", 50};
constexpr Search smallLogDialled{100'000, Filter::Dialled, "person 1", 50};
constexpr Search largeLog{1'000'000, Filter::All, "+49301025", 50};
constexpr Search largeLogDialled{1'000'000, Filter::Dialled, "+49301009", 50};
constexpr Search largeLogLoaded{1'000'000, Filter::All, "+49301025", 20'000};
constexpr Search largeLogDialledLoaded{1'000'000, Filter::Dialled, "+49301009", 20'000};

std::vector<std::int64_t> rowsOf(const Search& search) {
    using quorvel::store::foundRows;
    return foundRows(search.calls, quorvel::store::filterOf(static_cast<std::int64_t>(search.filter)), search.text);
}

void bareDeleteFound(benchmark::State& state, const Search& search) {
    const auto rowIds = rowsOf(search);
    for (auto _ : state) {
        state.PauseTiming();
        {
            const quorvel::store::LogCopy copy(search.calls);
            const quorvel::store::BareLog log(copy.path());
            state.ResumeTiming();
            log.deleteRows(rowIds);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(rowIds.size());
}

/// The screen with everything that the search finds, asked whether to delete it.
UIViewController findAll(const Search& search) {
    const auto recents = bench::recentsOnACopy(search.calls);
    for (const Filter filter : {Filter::All, search.filter}) {
        bench::switchTo(recents, filter);
        bench::loadMoreTo(recents, search.loaded, filter);
    }
    bench::type(search.text);
    objc::send<"loadMoreSearchedRecords">(recents);
    objc::send<"refreshTableData">(recents);
    bench::drain();
    return recents;
}

/// From the answer "delete" until the screen is at rest again, without what was deleted.
void deleteFound(benchmark::State& state, const Search& search) {
    const auto rowIds = rowsOf(search);
    for (auto _ : state) {
        state.PauseTiming();
        {
            const objc::AutoreleasePool pool;
            const auto recents = findAll(search);
            const auto shown = phone::rowCount(phone::frontTable());
            if (shown != static_cast<long>(rowIds.size()))
                throw std::runtime_error("the search does not show every match");
            state.ResumeTiming();
            objc::send<"handleDeleteAllAction">(recents);
            if (const auto trouble = phone::settle()) throw std::runtime_error(*trouble);
            state.PauseTiming();
            const auto left = bench::service().getTotalCallCount(Filter::All);
            if (left + shown != search.calls) throw std::runtime_error("the log does not lack what was deleted");
            bench::endSearch();
        }
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(rowIds.size());
}

// The work is done by the indicator's thread: the time is that of the process.
#define BOTH_SIDES(search)                             \
    BENCHMARK_CAPTURE(bareDeleteFound, search, search) \
        ->Unit(benchmark::kMillisecond)                \
        ->Iterations(5)                                \
        ->MeasureProcessCPUTime();                     \
    BENCHMARK_CAPTURE(deleteFound, search, search)     \
        ->Unit(benchmark::kMillisecond)                \
        ->Iterations(5)                                \
        ->MeasureProcessCPUTime()
BOTH_SIDES(smallLog);
BOTH_SIDES(smallLogDialled);
BOTH_SIDES(largeLog);
BOTH_SIDES(largeLogDialled);
BOTH_SIDES(largeLogLoaded);
BOTH_SIDES(largeLogDialledLoaded);

}  // namespace

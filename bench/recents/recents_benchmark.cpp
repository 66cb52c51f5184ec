// The Recents screen's work by the messages that do it, beside the bare work on the same rows.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <fstream>
#include <string>

#include "bench/recents/handset.h"
#include "bench/store/bare_page.h"
#include "desktop/phone/handset.h"
#include "desktop/phone/screen_probe.h"
#include "objc/snapshot_array.h"

namespace {

using bench::recentsOn;
using bench::service;

void bareFirstPage(benchmark::State& state) {
    quorvel::store::BarePage page(bench::logOf(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(page.fetch());
}

/// From nothing loaded to the table's knowing its rows: the count, the page, its entries, the duration, the reload.
void firstPage(benchmark::State& state) {
    const auto recents = recentsOn(state.range(0));
    const auto table = objc::send<"table", UITableView>(recents);
    for (auto _ : state) {
        state.PauseTiming();
        service().setCallList({});
        service().setAllCallsCount(0);
        objc::send<"setAllCallsDuration:">(service(), std::int64_t{0});
        {
            const objc::AutoreleasePool pool;
            state.ResumeTiming();
            objc::send<"initializeCallList">(recents);
            bench::drain();
            if (objc::send<"tableView:numberOfRowsInSection:", NSInteger>(recents, table, NSInteger{0}) != 51)
                state.SkipWithError("the page is not there");
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/// The same and the cells of the rows that the screen shows, laid out.
void firstPageWithItsCells(benchmark::State& state) {
    const auto recents = recentsOn(state.range(0));
    auto* table = objc::peerOf<uikit::TableView>(objc::send<"table", UITableView>(recents));
    for (auto _ : state) {
        state.PauseTiming();
        service().setCallList({});
        service().setAllCallsCount(0);
        {
            const objc::AutoreleasePool pool;
            state.ResumeTiming();
            objc::send<"initializeCallList">(recents);
            bench::drain();
            table->layoutIfNeeded();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    bench::drain();
}

bool contains(NSString value, NSString part) { return value && value.rangeOfString(part, 1).length > 0; }

/// Looks at every entry of the list and keeps nothing.
void bareScan(benchmark::State& state, const char* text) {
    bench::loadMoreTo(recentsOn(1'000'000), state.range(0));
    const auto part = objc::make<NSString, "initWithUTF8String:">(objc::classNamed<"NSString">(), text);
    for (auto _ : state) {
        const objc::AutoreleasePool pool;
        const auto entries = service().callList().copy();
        const NSUInteger count = entries->count();
        std::int64_t found = 0;
        for (NSUInteger i = 0; i < count; ++i) {
            const auto entry = entries->objectAtIndex<QVCallEntry>(i);
            if (contains(entry.name(), part.get()) || contains(entry.phoneNumber(), part.get())) ++found;
        }
        state.counters["found"] = static_cast<double>(found);
    }
}

/// One keystroke's search among the loaded entries.
void searchTableView(benchmark::State& state, const char* text) {
    const auto recents = recentsOn(1'000'000);
    bench::loadMoreTo(recents, state.range(0));
    bench::type(text);
    const auto controller = objc::Object{phone::frontSearch()->self};
    for (auto _ : state) {
        const objc::AutoreleasePool pool;
        // Empties what was found and searches again; the reload waits on the main queue.
        objc::send<"searchDisplayController:shouldReloadTableForSearchString:", bool>(recents, controller, NSString{});
        state.PauseTiming();
        bench::drain();
        state.ResumeTiming();
    }
    bench::endSearch();
}

/// The next page of a list of which so many rows are shown. It grows a little while this goes on.
void loadMoreAtDepth(benchmark::State& state) {
    constexpr std::int64_t mostGrowth = 2'000;
    auto recents = recentsOn(1'000'000);
    bench::loadMoreTo(recents, state.range(0));
    for (auto _ : state) {
        const objc::AutoreleasePool pool;
        objc::send<"loadMoreRecordsAction">(recents);
        if (bench::loadedEntries() < state.range(0) + mostGrowth) continue;
        state.PauseTiming();
        recents = recentsOn(1'000'000);
        bench::loadMoreTo(recents, state.range(0));
        state.ResumeTiming();
    }
}

/// The screen as it is shown, drawn whole.
void drawRecents(benchmark::State& state) {
    recentsOn(1'000'000);
    const double scale = static_cast<double>(state.range(0));
    for (auto _ : state) {
        const objc::AutoreleasePool pool;
        benchmark::DoNotOptimize(phone::renderScreen(scale));
    }
}

/// Kilobytes of a line of the process's status.
std::int64_t kilobytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::stol(line.substr(name.size() + 1));
    return 0;
}

/// Loads so many rows; the counters are bytes for each: what stays, and the most that was there meanwhile.
template <class Load>
void memory(benchmark::State& state, Load load) {
    const auto recents = recentsOn(1'000'000);
    const auto rows = state.range(0);
    for (auto _ : state) {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        const auto heap = mallinfo2();
        const auto resident = kilobytes("VmRSS:");
        load(recents, rows);
        const auto now = mallinfo2();
        const auto bytes = [&](std::int64_t all) { return static_cast<double>(all) / static_cast<double>(rows); };
        state.counters["heap"] = bytes(static_cast<std::int64_t>(now.uordblks + now.hblkhd) -
                                       static_cast<std::int64_t>(heap.uordblks + heap.hblkhd));
        state.counters["peak"] = bytes((kilobytes("VmHWM:") - resident) * 1024);
    }
    if (bench::loadedEntries() < rows) state.SkipWithError("not all rows were loaded");
}

void memoryPageByPage(benchmark::State& state) {
    memory(state, [](UIViewController recents, std::int64_t rows) { bench::loadMoreTo(recents, rows); });
}
void memoryInOneRead(benchmark::State& state) {
    memory(state, [](UIViewController, std::int64_t rows) {
        const objc::AutoreleasePool pool;
        service().readCallsFromDB(rows - 50, 50, Filter::All);
    });
}

#define EACH_SIZE ->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond)
#define EACH_DEPTH ->Arg(50)->Arg(1000)->Unit(benchmark::kMicrosecond)

BENCHMARK(bareFirstPage) EACH_SIZE;
BENCHMARK(firstPage) EACH_SIZE;
BENCHMARK(firstPageWithItsCells) EACH_SIZE;
BENCHMARK_CAPTURE(bareScan, many, "person") EACH_DEPTH;
BENCHMARK_CAPTURE(searchTableView, many, "person") EACH_DEPTH;
BENCHMARK_CAPTURE(bareScan, some, "77") EACH_DEPTH;
BENCHMARK_CAPTURE(searchTableView, some, "77") EACH_DEPTH;
BENCHMARK_CAPTURE(bareScan, none, "nobody") EACH_DEPTH;
BENCHMARK_CAPTURE(searchTableView, none, "nobody") EACH_DEPTH;
BENCHMARK(loadMoreAtDepth)->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(drawRecents)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMillisecond);
BENCHMARK(memoryPageByPage)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(memoryInOneRead)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

int main(int count, char** arguments) {
    const objc::AutoreleasePool pool;
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

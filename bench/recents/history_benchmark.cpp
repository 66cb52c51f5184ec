// The history screen of a number with 100,000 calls: opened by the messages that open it, and scrolled frame by frame.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <vector>

#include "bench/recents/handset.h"
#include "desktop/phone/handset.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/uikit/text.h"

namespace {

constexpr std::int64_t historySize = 100'000;

/// Whose calls a log of that size holds, so that the number has as many as its history is to have.
bench::Callers callersOf(std::int64_t calls) {
    return calls == historySize ? bench::Callers::one : bench::Callers::oneInTen;
}

/// The argument is how many calls the log has. Fetches every column of the number's calls, newest first by the index of
/// parties, and makes nothing of them.
void bareHistory(benchmark::State& state) {
    sqlite3* database = nullptr;
    sqlite3_stmt* calls = nullptr;
    sqlite3_open(bench::logOf(state.range(0), callersOf(state.range(0))).c_str(), &database);
    sqlite3_prepare_v2(database,
                       "select ROWID, address, date, duration, flags, id, datetime, location from call indexed by "
                       "call_by_party where party = (select party from party where address = '+493012345678') "
                       "order by date desc, ROWID desc",
                       -1, &calls, nullptr);
    for (auto _ : state) {
        std::int64_t rows = 0;
        std::int64_t sum = 0;
        while (sqlite3_step(calls) == SQLITE_ROW) {
            for (const int column : {0, 2, 3, 4, 5}) sum += sqlite3_column_int64(calls, column);
            for (const int column : {1, 6, 7}) benchmark::DoNotOptimize(sqlite3_column_text(calls, column));
            ++rows;
        }
        sqlite3_reset(calls);
        benchmark::DoNotOptimize(sum);
        if (rows != historySize) state.SkipWithError("the statement does not find the calls");
    }
    sqlite3_finalize(calls);
    sqlite3_close(database);
}

UIViewController makeHistory(UIViewController recents) {
    const auto screen = objc::autorelease(objc::make<UIViewController>(objc::classNamed<"QVLogViewController">()));
    const auto calls = bench::service().callList();
    auto entry = calls.objectAtIndex<QVCallEntry>(0);
    for (NSUInteger i = 0; uikit::utf8(entry.phoneNumber()) != bench::theNumber; ++i) {
        if (i == calls.count()) throw std::runtime_error("the number has no call on the first page");
        entry = calls.objectAtIndex<QVCallEntry>(i);
    }
    objc::send<"setEntry:">(screen, entry);
    objc::send<"setDelegate:">(screen, recents);
    return screen;
}

/// From the pushed screen's appearing to the table's knowing its rows.
void openHistory(benchmark::State& state) {
    const auto recents = bench::recentsOn(state.range(0), callersOf(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        {
            const objc::AutoreleasePool pool;
            const auto screen = makeHistory(recents);
            const auto table = objc::send<"tableView", UITableView>(screen);
            state.ResumeTiming();
            objc::send<"viewWillAppear:">(screen, false);
            if (objc::send<"tableView:numberOfRowsInSection:", NSInteger>(screen, table, NSInteger{0}) != historySize)
                state.SkipWithError("the history is not whole");
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    bench::drain();
}

/// A frame of a scrolled history, laid out and drawn at scale 2. The counters are the slowest frame and the slowest of
/// a hundred, in milliseconds of processor time.
void scrollHistory(benchmark::State& state) {
    const auto recents = bench::recentsOn(historySize, bench::Callers::one);
    const auto navigation = recents.navigationController();
    {
        const objc::AutoreleasePool pool;
        navigation.pushViewController(makeHistory(recents), false);
    }
    if (const auto trouble = phone::settle()) throw std::runtime_error(*trouble);
    auto* table = phone::frontTable();
    constexpr double step = 61;
    constexpr double scale = 2;
    // What is there before the finger comes: the first frame ever loads fonts and pictures.
    benchmark::DoNotOptimize(phone::renderScreen(scale));
    std::vector<double> frames;
    double offset = 0;
    for (auto _ : state) {
        const objc::AutoreleasePool pool;
        const std::clock_t before = std::clock();
        offset = offset + step < table->greatestOffset() ? offset + step : 0;
        table->setContentOffset({0, offset});
        table->layoutIfNeeded();
        benchmark::DoNotOptimize(phone::renderScreen(scale));
        frames.push_back(static_cast<double>(std::clock() - before) * 1000.0 / CLOCKS_PER_SEC);
    }
    std::sort(frames.begin(), frames.end());
    state.counters["slowest"] = frames.back();
    state.counters["slowest hundredth"] = frames[frames.size() * 99 / 100];
    const objc::AutoreleasePool pool;
    objc::send<"popToRootViewControllerAnimated:", objc::Object>(navigation, false);
    if (const auto trouble = phone::settle()) throw std::runtime_error(*trouble);
}

BENCHMARK(bareHistory)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(openHistory)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollHistory)->Unit(benchmark::kMillisecond)->Iterations(2000);

}  // namespace

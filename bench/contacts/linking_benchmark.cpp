// Giving 10,000 of 1,000,000 stored calls to a new contact, and reading pages while that goes on.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "bench/store/sized_log.h"
#include "desktop/quorvel/store/import_session.h"

namespace {

using namespace quorvel::store;

constexpr std::int64_t logSize = 1'000'000;
const std::vector<std::string> addresses = {"+493055501", "+493055502", "newcomer@example.org"};

/// A log of its own, with 10,000 calls of somebody's three addresses spread over it.
CallStore& log() {
    static const Folder folder;
    static CallStore store = [] {
        CallStore made = valueOf(CallStore::open(folder.file("linked.db")));
        ImportSession session = valueOf(made.beginImport());
        std::size_t at = 0;
        for (NewCall& call : makeCalls(logSize)) {
            if (++at % 100 == 0) {
                call.address = addresses[at / 100 % addresses.size()];
                call.contactId = noContact;
                call.name.clear();
            }
            valueOf(session.add(call));
        }
        valueOf(session.finish());
        return made;
    }();
    return store;
}

std::vector<NamedAddress> linksTo(std::int32_t contact) {
    std::vector<NamedAddress> links;
    for (const auto& address : addresses) links.push_back({address, contact, "New Comer", "mobile"});
    return links;
}

void linkTenThousandCalls(benchmark::State& state) {
    CallStore& store = log();
    std::int32_t contact = 900000;
    for (auto _ : state) state.counters["calls"] = static_cast<double>(valueOf(store.link(linksTo(++contact))));
}

/// Pages read one after another; how long the slowest of a hundred took, and the slowest of all.
void readPages(benchmark::State& state) {
    const CallStore& store = log();
    std::vector<double> microseconds;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(store.page(Filter::all, {}, Cursor::top(), 50));
        const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - begin;
        microseconds.push_back(took.count());
    }
    std::sort(microseconds.begin(), microseconds.end());
    state.counters["p99_us"] = microseconds[microseconds.size() * 99 / 100];
    state.counters["worst_us"] = microseconds.back();
}

void readPagesWhileLinking(benchmark::State& state) {
    CallStore& store = log();
    std::atomic<bool> isOver{false};
    std::thread linking([&] {
        for (std::int32_t contact = 910000; !isOver; ++contact) valueOf(store.link(linksTo(contact)));
    });
    readPages(state);
    isOver = true;
    linking.join();
}

BENCHMARK(linkTenThousandCalls)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readPages)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(readPagesWhileLinking)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace

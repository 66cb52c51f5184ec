// The changes that a process makes until it is killed: the same in the process and in the test that looks at what it
// left.
#pragma once

#include <vector>

#include "log_model.h"

namespace quorvel::store {

constexpr std::size_t killedSteps = 12;

/// Carries out step `number`. Whether it was carried out.
inline bool takeStep(CallStore& store, std::size_t number) {
    const auto import = [&](int calls, unsigned seed) {
        auto session = store.beginImport();
        if (!session) return false;
        CallMaker maker(seed);
        for (int at = 0; at < calls; ++at) {
            if (!session->add(maker.call())) return false;
        }
        return session->finish().ok();
    };
    std::vector<std::int64_t> third;
    for (std::int64_t rowId = 1; rowId < 400; rowId += 3) third.push_back(rowId);
    switch (number) {
        case 0:
            return import(200, 1);
        case 1:
            return store.deleteAll(Filter::missed).ok();
        case 2:
            return store.undeleteAll().ok();
        case 3:
            return store.deleteCalls(third).ok();
        case 4:
            return import(60, 2);
        case 5:
            return store.undelete(third).ok();
        case 6:
            return store.deleteDay(Filter::all, "2023-11-15").ok();
        case 7:
            return store.link("5551234", 7, "Seven", "work").ok();
        case 8:
            return store.deleteHistory(Filter::all, 7, "").ok();
        case 9:
            return store.undelete(third).ok();
        case 10:
            return store.deleteAll(Filter::all).ok();
        default:
            return store.undeleteAll().ok();
    }
}

/// Deletions of one and the same moment, whenever the test runs.
inline OpenOptions killedOptions() {
    OpenOptions options;
    options.clock = [] { return std::int64_t{1'800'000'000}; };
    return options;
}

}  // namespace quorvel::store

// The calls are made with a fixed seed.
#include "bench/store/sized_log.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>

#include "desktop/quorvel/store/import_session.h"

namespace quorvel::store {

std::vector<NewCall> makeCalls(std::int64_t count) {
    std::mt19937_64 random(1);
    std::vector<NewCall> calls(static_cast<std::size_t>(count));
    const auto parties = static_cast<double>(std::max<std::int64_t>(10, count / 18));
    std::int64_t date = 1'000'000'000;
    for (NewCall& call : calls) {
        const double chance = static_cast<double>(random() % 1000000) / 1000000.0;
        const auto party = static_cast<std::int64_t>(chance * chance * chance * parties);
        call.address = "+4930" + std::to_string(1000000 + party);
        call.contactId = party % 3 == 0 ? noContact : static_cast<std::int32_t>(party);
        if (party % 3 != 0) call.name = "Person " + std::to_string(party);
        if (party % 5 == 0) call.location = "Berlin";
        date += static_cast<std::int64_t>(random() % 720);
        call.date = date;
        call.duration = random() % 3 == 0 ? 0 : static_cast<std::int32_t>(random() % 900);
        call.flags = random() % 2 == 0 ? 4 : 5;
    }
    return calls;
}

CallStore& storeOf(std::int64_t count) {
    static const Folder folder;
    static std::map<std::int64_t, CallStore> stores;
    const auto known = stores.find(count);
    if (known != stores.end()) return known->second;
    CallStore store = valueOf(CallStore::open(folder.file(std::to_string(count) + ".db")));
    ImportSession session = valueOf(store.beginImport());
    for (const NewCall& call : makeCalls(count)) valueOf(session.add(call));
    valueOf(session.finish());
    return stores.emplace(count, std::move(store)).first->second;
}

}  // namespace quorvel::store

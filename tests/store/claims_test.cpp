// Importing what the log holds already: each call of the log stands for one call of a source.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>

#include "desktop/quorvel/store/import_session.h"
#include "log_model.h"
#include "time_zone.h"

namespace quorvel::store {
namespace {

NewCall callOf(int number) {
    NewCall call;
    call.address = number % 2 == 0 ? "5550001" : "5550002";
    call.date = 1'700'000'000 + number % 3;
    call.duration = number % 5;
    call.flags = number % 7 == 0 ? flag::outgoing : 0;
    return call;
}

/// Adds those calls of the source that the log lacks; how many.
std::int64_t merge(CallStore& store, const std::vector<std::vector<int>>& sources) {
    ImportSession session = valueOf(store.beginImport());
    for (const auto& source : sources) {
        valueOf(session.beginSource());
        for (const int number : source) {
            if (!valueOf(session.claim(callOf(number)))) valueOf(session.add(callOf(number)));
        }
    }
    return valueOf(session.finish());
}

TEST(Claims, aSourceAddsNothingASecondTime) {
    Folder folder;
    CallStore store = openStore(folder.file());
    EXPECT_EQ(merge(store, {{1, 2, 3}}), 3);
    EXPECT_EQ(merge(store, {{3, 2, 1}}), 0);
    EXPECT_EQ(merge(store, {{2, 4, 3}, {4, 5}}), 2);
}

TEST(Claims, twoEqualCallsOfOneSourceAreTwoCalls) {
    Folder folder;
    CallStore store = openStore(folder.file());
    EXPECT_EQ(merge(store, {{1, 1}}), 2);
    EXPECT_EQ(merge(store, {{1}, {1, 1}}), 0);
    EXPECT_EQ(merge(store, {{1, 1, 1}}), 1);
}

TEST(Claims, aCallIsKnownAgainInAnotherTimeZone) {
    Folder folder;
    {
        const TimeZone zone("Pacific/Kiritimati");
        CallStore store = openStore(folder.file());
        EXPECT_EQ(merge(store, {{1, 2, 3}}), 3);
    }
    const TimeZone zone("Pacific/Pago_Pago");
    CallStore store = openStore(folder.file());
    EXPECT_EQ(merge(store, {{1, 2, 3}}), 0);
}

TEST(Claims, theLogHoldsEachCallAsOftenAsTheSourceThatHasItMostOften) {
    EXPECT_TRUE(rc::check([] {
        const auto sources = *rc::gen::container<std::vector<std::vector<int>>>(
            rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 12)));
        Folder folder;
        CallStore store = openStore(folder.file());
        std::map<std::tuple<std::string, std::int64_t, int, bool>, std::size_t> most;
        for (const auto& source : sources) {
            std::map<std::tuple<std::string, std::int64_t, int, bool>, std::size_t> here;
            for (const int number : source) {
                const NewCall call = callOf(number);
                ++here[{call.address, call.date, call.duration, isOutgoing(call.flags)}];
            }
            for (const auto& [call, count] : here) most[call] = std::max(most[call], count);
        }
        std::size_t expected = 0;
        for (const auto& [call, count] : most) expected += count;
        RC_ASSERT(merge(store, sources) == static_cast<std::int64_t>(expected));
        RC_ASSERT(merge(store, sources) == 0);
    }));
}

}  // namespace
}  // namespace quorvel::store

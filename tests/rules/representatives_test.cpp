// The four representatives of a history, against a plain search for each.
#include "plugin/detail/representatives.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <vector>

namespace {

using history::Kinds;
using history::nobody;
using history::Representatives;

struct Call {
    Kinds kinds;
    bool ofDay;
};

Representatives choose(const std::vector<Call>& calls) {
    return history::representativesOf(calls.size(), [&](std::size_t i) { return calls[i].kinds; });
}

std::size_t firstThat(const std::vector<Call>& calls, const std::function<bool(const Call&)>& qualifies) {
    for (std::size_t i = 0; i < calls.size(); ++i)
        if (qualifies(calls[i])) return i;
    return nobody;
}

TEST(RepresentativesOfAHistory, ofNoCallsAreNobody) { EXPECT_EQ(choose({}), Representatives{}); }

TEST(RepresentativesOfAHistory, ofAnotherDayAreDroppedWithoutALaterOneInTheirPlace) {
    const std::vector<Call> calls{{{true, false, false}, false}, {{true, false, false}, true}};
    const auto left = history::withinDay(choose(calls), [&](std::size_t i) { return calls[i].ofDay; });
    EXPECT_EQ(left, Representatives{});
}

RC_GTEST_PROP(RepresentativesOfAHistory, areTheFirstOfTheirKinds, ()) {
    const auto calls = *rc::gen::container<std::vector<Call>>(rc::gen::build<Call>(
        rc::gen::set(&Call::kinds, rc::gen::construct<Kinds>(rc::gen::arbitrary<bool>(), rc::gen::arbitrary<bool>(),
                                                             rc::gen::arbitrary<bool>())),
        rc::gen::set(&Call::ofDay)));
    const Representatives expected{
        firstThat(calls, [](const Call&) { return true; }),
        firstThat(calls, [](const Call& call) { return call.kinds.outgoing; }),
        firstThat(calls, [](const Call& call) { return call.kinds.received; }),
        firstThat(calls, [](const Call& call) { return call.kinds.missed; }),
    };
    const auto chosen = choose(calls);
    RC_ASSERT(chosen == expected);

    const auto left = history::withinDay(chosen, [&](std::size_t i) { return calls[i].ofDay; });
    for (auto field :
         {&Representatives::newest, &Representatives::dialled, &Representatives::received, &Representatives::missed}) {
        const std::size_t before = chosen.*field;
        const std::size_t after = left.*field;
        RC_ASSERT(after == (before != nobody && calls[before].ofDay ? before : nobody));
    }
}

}  // namespace

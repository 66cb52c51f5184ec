// The set of record numbers, against the library's.
#include "plugin/recents/record_set.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <set>

namespace {

using recents::RecordSet;

TEST(RecordSet, holdsNothingAtFirst) {
    const RecordSet records;
    EXPECT_FALSE(records.holds(0));
    EXPECT_FALSE(records.holds(-1));
}

TEST(RecordSet, takesEachRecordOnce) {
    RecordSet records;
    for (const std::int32_t record : {7, 0, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_TRUE(records.add(record)) << record;
        EXPECT_FALSE(records.add(record)) << record;
        EXPECT_TRUE(records.holds(record)) << record;
    }
    EXPECT_FALSE(records.holds(8));
}

TEST(RecordSet, agreesWithAPlainSetHoweverMuchItHolds) {
    EXPECT_TRUE(rc::check([] {
        const auto bound = *rc::gen::element(20, 3000, 1'000'000);
        const auto added =
            *rc::gen::container<std::vector<std::int32_t>>(*rc::gen::inRange(0, 2000), rc::gen::inRange(-bound, bound));
        RecordSet records;
        std::set<std::int32_t> plain;
        for (const std::int32_t record : added) {
            RC_ASSERT(records.holds(record) == plain.contains(record));
            RC_ASSERT(records.add(record) == plain.insert(record).second);
        }
        for (const std::int32_t record : added) RC_ASSERT(records.holds(record));
    }));
}

}  // namespace

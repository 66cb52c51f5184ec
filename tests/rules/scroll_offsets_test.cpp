// The remembered scroll offsets.
#include "plugin/recents/scroll_offsets.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>

namespace {

void expectOffsets(recents::ScrollOffsets offsets, float all, float dialled, float received, float missed) {
    EXPECT_EQ(offsets.all, all);
    EXPECT_EQ(offsets.dialled, dialled);
    EXPECT_EQ(offsets.received, received);
    EXPECT_EQ(offsets.missed, missed);
}

TEST(ScrollOffsets, ofTheSearchBarsHeightBecomeZeroWhileOneOfTheFourIsZero) {
    expectOffsets(recents::normalised({44, 10, 44, 0}), 0, 10, 0, 0);
}

TEST(ScrollOffsets, thatAllHoldSomethingKeepTheSearchBarsHeightOnPurpose) {
    expectOffsets(recents::normalised({44, 10, 44, 5}), 44, 10, 44, 5);
}

TEST(ScrollOffsets, nearTheSearchBarsHeightAreLeftAlone) {
    expectOffsets(recents::normalised({44.5F, 43.5F, -44, 0}), 44.5F, 43.5F, -44, 0);
}

TEST(ScrollOffsets, agreeWithTheStepsAsTheyAreStated) {
    EXPECT_TRUE(rc::check([] {
        std::array<float, 4> values{};
        for (auto& value : values) value = *rc::gen::element(0.0F, 44.0F, 10.0F, -3.0F, 44.25F);
        auto expected = values;
        bool isAnyZero = false;
        for (const float value : values) isAnyZero = isAnyZero || value == 0;
        for (auto& value : expected)
            if (isAnyZero && value == 44.0F) value = 0;
        const auto got = recents::normalised({values[0], values[1], values[2], values[3]});
        RC_ASSERT((std::array<float, 4>{got.all, got.dialled, got.received, got.missed} == expected));
    }));
}

TEST(ScrollOffsets, onceNormalisedStay) {
    EXPECT_TRUE(rc::check([] {
        const auto value = [] { return *rc::gen::element(0.0F, 44.0F, 10.0F); };
        const auto once = recents::normalised({value(), value(), value(), value()});
        const auto twice = recents::normalised(once);
        RC_ASSERT(once.all == twice.all && once.dialled == twice.dialled && once.received == twice.received &&
                  once.missed == twice.missed);
    }));
}

}  // namespace

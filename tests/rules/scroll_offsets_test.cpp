// The remembered scroll offsets.
#include "plugin/recents/scroll_offsets.h"

#include <gtest/gtest.h>

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

}  // namespace

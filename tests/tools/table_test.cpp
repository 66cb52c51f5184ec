// The lines of a table, in a pipe and on a terminal.
#include "tools/quorvelctl/table.h"

#include <gtest/gtest.h>

namespace {

using tools::alignedLine;
using tools::tabbedLine;

TEST(Table, inAPipeHasATabBetweenCells) {
    EXPECT_EQ(tabbedLine({"1", "", "Anna Berg"}), "1\t\tAnna Berg");
    EXPECT_EQ(tabbedLine({"1", "", ""}), "1\t\t");
}

TEST(Table, keepsARowOnOneLineWhateverItsCellsHold) {
    EXPECT_EQ(tabbedLine({"a\tb", "c\nd\r", "\x1B[2J\x7F"}), "a b\tc d \t [2J ");
    EXPECT_EQ(alignedLine({{"", 3}, {"", 0}}, {"a\n", "b\tc"}), "a    b c");
}

TEST(Table, onATerminalBeginsEachColumnAtItsPlace) {
    EXPECT_EQ(alignedLine({{"", 4}, {"", 6}, {"", 0}}, {"1", "Zoë", "x"}), "1     Zoë     x");
    EXPECT_EQ(alignedLine({{"", 4}, {"", 6}, {"", 0}}, {"1234", "", "x"}), "1234          x");
}

TEST(Table, onATerminalPushesWhatStandsBehindALongCellAndEndsInNoSpaces) {
    EXPECT_EQ(alignedLine({{"", 2}, {"", 2}, {"", 2}}, {"12345", "a", "b"}), "12345  a  b");
    EXPECT_EQ(alignedLine({{"", 2}, {"", 2}}, {"1", ""}), "1");
}

}  // namespace

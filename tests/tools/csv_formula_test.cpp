// What would be calculated is shown, and comes back as it was.
#include "tools/csv/csv_formula.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using tools::asCell;
using tools::textOfCell;

TEST(CsvFormula, whatBeginsAsAFormulaGetsAnApostrophe) {
    for (const std::string text : {"=1+1", "+1+1", "-1+1", "@SUM(A1)", "\t=1", "\r=1", "\n=1", "\uFF1D1", "\uFF0B1",
                                   "\uFF0D1", "\uFF20A", "+", "-", "=", "'=1", "''=1", "'+49"})
        EXPECT_EQ(asCell(text), '\'' + text);
}

TEST(CsvFormula, everythingElseStays) {
    for (const std::string text :
         {"", "Anna", "+4930100", "-1", "+0", "030 100", "'", "''", "'x", "a=1", " =1", "(+49)"})
        EXPECT_EQ(asCell(text), text);
}

TEST(CsvFormula, cellsOfOtherProgramsLoseOneApostropheAlone) {
    EXPECT_EQ(textOfCell("'+4930100"), "+4930100");
    EXPECT_EQ(textOfCell("''=1"), "'=1");
    EXPECT_EQ(textOfCell("'n Abend"), "'n Abend");
    EXPECT_EQ(textOfCell("=1"), "=1");
}

TEST(CsvFormula, everyTextComesBackAsItWas) {
    EXPECT_TRUE(rc::check([] {
        const auto pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
            "'", "=", "+", "-", "@", "1", "49", "a", "\t", "\r", "\n", "\uFF1D", " ", ",", "\""));
        std::string text;
        for (const auto& piece : pieces) text += piece;
        RC_ASSERT(textOfCell(asCell(text)) == text);
        const bool isNumber = text.size() > 1 && text.find_first_not_of("0123456789", 1) == std::string::npos;
        if (!text.empty() && std::string("=+-@\t\r\n").find(text[0]) != std::string::npos && !isNumber)
            RC_ASSERT(asCell(text)[0] == '\'');
    }));
}

}  // namespace

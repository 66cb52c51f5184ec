// The apostrophes in front of what begins a formula: one more on the way out, one less on the way in.
#include "tools/csv/csv_formula.h"

#include <algorithm>
#include <array>

namespace tools {
namespace {

// A line's end or a tab may be skipped by what reads the cell; the last four are the wide forms of the first ones.
constexpr std::array<std::string_view, 11> beginnings{"=",  "+",      "-",      "@",      "\t",    "\r",
                                                      "\n", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// "+4930100" is a telephone number, and "-1" a value: a sign before digits alone calculates nothing.
bool isSignedNumber(std::string_view text) {
    return text.size() > 1 && (text[0] == '+' || text[0] == '-') && std::ranges::all_of(text.substr(1), isDigit);
}

/// Whether behind any apostrophes the text begins as a formula does.
bool beginsFormula(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('\''), text.size()));
    return std::ranges::any_of(beginnings, [text](std::string_view each) { return text.starts_with(each); });
}

}  // namespace

std::string asCell(std::string_view text) {
    const bool isText = beginsFormula(text) && !isSignedNumber(text);
    return isText ? '\'' + std::string(text) : std::string(text);
}

std::string textOfCell(std::string_view cell) {
    if (cell.starts_with('\'') && beginsFormula(cell)) cell.remove_prefix(1);
    return std::string(cell);
}

}  // namespace tools

// Cells that a spreadsheet would calculate instead of showing them.
#pragma once

#include <string>
#include <string_view>

namespace tools {

/// The text as a cell: with an apostrophe in front, which spreadsheets take for "this is text", where the cell would be
/// a formula, or where it has such an apostrophe itself. A number, with a sign or without, stays as it is.
std::string asCell(std::string_view text);

/// The text of such a cell; any other cell is its text.
std::string textOfCell(std::string_view cell);

}  // namespace tools

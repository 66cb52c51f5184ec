// The English texts that are compiled in, shown where no table can be read.
#pragma once

#include <string_view>

namespace quorvel {

/// The content of the English Quorvel.strings and Quorvel.stringsdict.
std::string_view builtInStrings();
std::string_view builtInPlurals();

}  // namespace quorvel

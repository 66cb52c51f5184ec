// Text as JSON writes it.
#pragma once

#include <string>
#include <string_view>

namespace tools {

/// The text, which is UTF-8, between quotation marks.
std::string jsonText(std::string_view text);

}  // namespace tools

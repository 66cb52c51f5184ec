// Colours on a terminal, and plain text everywhere else.
#pragma once

#include <string>
#include <string_view>

namespace tools {

enum class Colour { red = 31, green = 32, yellow = 33 };

/// Whether standard output is a terminal that shows colours, and the user has not set NO_COLOR to anything.
bool showsColours();

/// The text in the colour, or as it is where no colours are shown.
std::string coloured(Colour colour, std::string_view text);

}  // namespace tools

// The terminal's own sixteen colours, which follow the user's theme.
#include "tools/quorvelctl/colour.h"

#include <unistd.h>

#include <cstdlib>

namespace tools {

bool showsColours() {
    const char* refusal = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal && std::string_view(terminal) == "dumb";
    return isatty(STDOUT_FILENO) != 0 && !isDumb && (!refusal || *refusal == '\0');
}

std::string coloured(Colour colour, std::string_view text) {
    if (!showsColours()) return std::string(text);
    return "\033[" + std::to_string(static_cast<int>(colour)) + 'm' + std::string(text) + "\033[0m";
}

}  // namespace tools

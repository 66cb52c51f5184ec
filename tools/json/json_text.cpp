// Quotation marks, backslashes and control characters are escaped; all else stands as it is.
#include "tools/json/json_text.h"

#include <array>
#include <cstdio>

namespace tools {

std::string jsonText(std::string_view text) {
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') {
            quoted += '\\';
            quoted += letter;
        } else if (letter == '\n') {
            quoted += "\\n";
        } else if (static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F) {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(letter));
            quoted += code.data();
        } else {
            quoted += letter;
        }
    }
    return quoted += '"';
}

}  // namespace tools

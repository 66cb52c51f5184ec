// Small things that are done with words on the way to a person and from one.
#pragma once

#include <string>
#include <string_view>

namespace tools {

/// The text with the capitals of ASCII in lower case.
inline std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 32);
    return lower;
}

/// The text between quotation marks, as it stands in a sentence.
inline std::string quoted(const std::string& text) { return '"' + text + '"'; }

}  // namespace tools

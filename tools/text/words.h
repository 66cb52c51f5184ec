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

/// The text between quotation marks, as it stands in a sentence: a long one cut, with an ellipsis.
inline std::string quoted(const std::string& text) {
    constexpr std::size_t longest = 200;
    if (text.size() <= longest) return '"' + text + '"';
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return '"' + text.substr(0, end) + "\u2026\"";
}

}  // namespace tools

// Names of a parameterised test's cases, made of words.
#pragma once

#include <cctype>
#include <string>
#include <string_view>

namespace tests {

/// The letters and digits of the text, as GoogleTest takes them, each word after the first with a capital:
/// "tap row x" is tapRowX.
inline std::string caseName(std::string_view text) {
    std::string name;
    bool isWordOver = false;
    for (const char each : text) {
        const auto letter = static_cast<unsigned char>(each);
        if (std::isalnum(letter) == 0) {
            isWordOver = true;
            continue;
        }
        name += isWordOver && !name.empty() ? static_cast<char>(std::toupper(letter)) : each;
        isWordOver = false;
    }
    return name;
}

}  // namespace tests

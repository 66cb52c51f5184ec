// A script's lines, taken apart into words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// One word of a line, and whether it stood in double quotes (`tap "left"` is a title, `tap left` a place).
struct Word {
    std::string text;
    bool quoted = false;
};

struct Words {
    std::vector<Word> words;
    /// What is wrong with the line; empty when nothing is.
    std::string error;
};

/// Splits at spaces and tabs. A word with spaces stands in double quotes, in which \" and \\ are escapes; `#` outside
/// quotes begins a comment.
Words splitLine(std::string_view line);

/// The whole word as a whole number; nothing when it is none.
std::optional<long> wholeNumber(std::string_view text);

}  // namespace phone

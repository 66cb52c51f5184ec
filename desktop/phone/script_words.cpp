// A script's lines, taken apart into words.
#include "desktop/phone/script_words.h"

#include <charconv>

namespace phone {
namespace {

/// Reads a quoted word; `at` stands behind the opening quote and ends behind the closing one.
bool readQuoted(std::string_view line, std::size_t& at, std::string& text) {
    for (; at < line.size(); ++at) {
        if (line[at] == '"') {
            ++at;
            return true;
        }
        if (line[at] == '\\' && at + 1 < line.size() && (line[at + 1] == '"' || line[at + 1] == '\\')) ++at;
        text += line[at];
    }
    return false;
}

bool isSpace(char letter) { return letter == ' ' || letter == '\t' || letter == '\r'; }

}  // namespace

Words splitLine(std::string_view line) {
    Words result;
    std::size_t at = 0;
    while (at < line.size()) {
        if (isSpace(line[at])) {
            ++at;
        } else if (line[at] == '#') {
            break;
        } else if (line[at] == '"') {
            Word word{{}, true};
            if (!readQuoted(line, ++at, word.text)) return {{}, "a quote is not closed"};
            result.words.push_back(std::move(word));
        } else {
            const std::size_t start = at;
            while (at < line.size() && !isSpace(line[at]) && line[at] != '"' && line[at] != '#') ++at;
            result.words.push_back({std::string(line.substr(start, at - start)), false});
        }
    }
    return result;
}

std::optional<long> wholeNumber(std::string_view text) {
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace phone

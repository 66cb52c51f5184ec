// JSON by RFC 8259, byte by byte. What is nested is counted rather than called.
#include "tools/json/json_reader.h"

#include <algorithm>
#include <charconv>

#include "tools/text/utf8.h"
#include "tools/text/words.h"

namespace tools {
namespace {

constexpr int ended = -1;
constexpr std::size_t chunk = std::size_t{1} << 16;
constexpr std::size_t longestText = std::size_t{1} << 20;
constexpr std::size_t deepest = 1000;
constexpr unsigned replacement = 0xFFFD;

bool isOfWord(int byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           byte == '-' || byte == '+' || byte == '.';
}

/// Whether the text is a number as JSON writes it.
bool isNumber(std::string_view text) {
    const auto digits = [&text] {
        const auto count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count;
    };
    const auto accept = [&text](std::string_view any) {
        const bool is = !text.empty() && any.find(text.front()) != std::string_view::npos;
        if (is) text.remove_prefix(1);
        return is;
    };
    accept("-");
    const bool beginsWithZero = text.starts_with('0');
    const auto count = digits();
    if (count == 0 || (beginsWithZero && count > 1)) return false;
    if (accept(".") && digits() == 0) return false;
    if (accept("eE")) {
        accept("+-");
        if (digits() == 0) return false;
    }
    return text.empty();
}

}  // namespace

int JsonReader::peek() {
    if (at_ == filled_) {
        buffer_.resize(chunk);
        filled_ = source_(buffer_);
        at_ = 0;
        if (filled_ == 0) return ended;
    }
    return static_cast<unsigned char>(buffer_[at_]);
}

char JsonReader::takeByte() {
    const char byte = buffer_[at_++];
    if (byte == '\n') {
        ++line_;
        column_ = 1;
    } else if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) {
        ++column_;
    }
    return byte;
}

bool JsonReader::fail(std::string what) {
    if (trouble_.empty()) trouble_ = std::move(what);
    return false;
}

char JsonReader::next() {
    if (!trouble_.empty()) return 0;
    while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r') takeByte();
    return peek() == ended ? '\0' : static_cast<char>(peek());
}

bool JsonReader::take(char mark) {
    if (next() != mark || mark == '\0') return false;
    takeByte();
    return true;
}

bool JsonReader::expect(char mark) {
    if (take(mark)) return true;
    if (next() == '\0') return fail("The file ends too early. It may have been cut off; export it again.");
    return fail(std::string("A '") + mark + "' has to stand here.");
}

std::optional<unsigned> JsonReader::readUnit() {
    unsigned unit = 0;
    for (int digit = 0; digit < 4; ++digit) {
        const int byte = peek();
        const int value = byte >= '0' && byte <= '9'   ? byte - '0'
                          : byte >= 'a' && byte <= 'f' ? byte - 'a' + 10
                          : byte >= 'A' && byte <= 'F' ? byte - 'A' + 10
                                                       : -1;
        if (value < 0) {
            fail("Four hexadecimal digits have to follow \\u.");
            return std::nullopt;
        }
        unit = unit << 4 | static_cast<unsigned>(value);
        takeByte();
    }
    return unit;
}

bool JsonReader::readEscape(std::string& text) {
    static constexpr std::string_view letters = "\"\\/bfnrt", meanings = "\"\\/\b\f\n\r\t";
    const int letter = peek();
    if (letter == ended) return fail("The file ends within a text. It may have been cut off; export it again.");
    takeByte();
    if (letter != 'u') {
        const auto found = letters.find(static_cast<char>(letter));
        if (found == std::string_view::npos) return fail("A backslash stands before a character that needs none.");
        text += meanings[found];
        return true;
    }
    auto unit = readUnit();
    while (unit && *unit >= 0xD800 && *unit <= 0xDBFF) {
        const unsigned first = *unit;
        // What follows is the second half, another first one, or something else.
        if (peek() != '\\') {
            unit = replacement;
            break;
        }
        takeByte();
        if (peek() != 'u') {
            appendUtf8(text, replacement);
            return readEscape(text);
        }
        takeByte();
        unit = readUnit();
        if (unit && *unit >= 0xDC00 && *unit <= 0xDFFF)
            unit = 0x10000 + ((first - 0xD800) << 10) + (*unit - 0xDC00);
        else
            appendUtf8(text, replacement);
    }
    if (!unit) return false;
    appendUtf8(text, *unit >= 0xDC00 && *unit <= 0xDFFF ? replacement : *unit);
    return true;
}

std::optional<std::string> JsonReader::text() {
    auto text = beginningOfText();
    return text && text->size() > longestText ? std::nullopt : std::move(text);
}

std::optional<std::string> JsonReader::beginningOfText() {
    if (!expect('"')) return std::nullopt;
    std::string text, ignored;
    for (;;) {
        const int byte = peek();
        if (byte == ended) {
            fail("The file ends within a text. It may have been cut off; export it again.");
            return std::nullopt;
        }
        if (byte < 0x20) {
            fail("A control character stands within a text.");
            return std::nullopt;
        }
        takeByte();
        if (byte == '"') return text;
        std::string& into = text.size() > longestText ? ignored : text;
        ignored.clear();
        if (byte != '\\')
            into += static_cast<char>(byte);
        else if (!readEscape(into))
            return std::nullopt;
    }
}

std::optional<std::string> JsonReader::name() {
    auto name = beginningOfText();
    if (!name || !expect(':')) return std::nullopt;
    return name;
}

std::string JsonReader::word() {
    std::string word;
    while (isOfWord(peek())) {
        const char byte = takeByte();
        if (word.size() <= longestText) word += byte;
    }
    return word;
}

std::optional<std::int64_t> JsonReader::integer() {
    const char first = next();
    if (first != '-' && (first < '0' || first > '9')) {
        pass();
        return std::nullopt;
    }
    const std::string digits = word();
    if (!isNumber(digits)) {
        fail(quoted(digits) + " is no number.");
        return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

bool JsonReader::passText() {
    takeByte();
    std::string ignored;
    for (;;) {
        const int byte = peek();
        if (byte == ended) return fail("The file ends within a text. It may have been cut off; export it again.");
        if (byte < 0x20) return fail("A control character stands within a text.");
        takeByte();
        if (byte == '"') return true;
        if (byte == '\\' && !readEscape(ignored)) return false;
        ignored.clear();
    }
}

bool JsonReader::pass() {
    std::string open;
    for (;;) {
        const char first = next();
        if (first == '{' || first == '[') {
            takeByte();
            open += first == '{' ? '}' : ']';
            if (open.size() > deepest) return fail("The values are nested more than a thousand times.");
            if (!take(open.back())) {
                if (first == '{' && !name()) return false;
                continue;
            }
            open.pop_back();
        } else if (first == '"') {
            if (!passText()) return false;
        } else {
            const std::string value = first == '\0' ? std::string() : word();
            if (value.empty() && next() == '\0') return expect(' ');
            if (value != "true" && value != "false" && value != "null" && !isNumber(value))
                return fail("A value has to stand here.");
        }
        // Behind a value: the next one, or the ends of those around it.
        for (;;) {
            if (!trouble_.empty()) return false;
            if (open.empty()) return true;
            if (take(',')) break;
            if (!expect(open.back())) return false;
            open.pop_back();
        }
        if (open.back() == '}' && !name()) return false;
    }
}

}  // namespace tools

// Line ends, byte orders and the three ways in which a value goes on in the next line.
#include "desktop/addressbook/vcard_lines.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <streambuf>

namespace vcard {
namespace {

constexpr int noByte = -1;

bool isBlank(char letter) { return letter == ' ' || letter == '\t'; }

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool isBase64(std::string_view text) {
    text = withoutBlanks(text);
    return !text.empty() && std::ranges::all_of(text, [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               (letter >= '0' && letter <= '9') || letter == '+' || letter == '/' || letter == '=';
    });
}

enum class Transfer { plain, quotedPrintable, base64 };

Transfer transferOf(std::string_view header) {
    const std::string capitals = upperCase(header);
    const auto says = [&capitals](std::string_view word) { return capitals.find(word) != std::string::npos; };
    if (says("QUOTED-PRINTABLE")) return Transfer::quotedPrintable;
    if (says(";BASE64") || says("ENCODING=BASE64") || says("ENCODING=\"BASE64")) return Transfer::base64;
    const auto b = capitals.find("ENCODING=B");
    const bool isB = b != std::string::npos && (b + 10 == capitals.size() || capitals[b + 10] == ';');
    return isB ? Transfer::base64 : Transfer::plain;
}

bool beginsOrEndsCard(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) return false;
    const auto name = withoutBlanks(line.substr(0, colon));
    return (equalsIgnoringCase(name, "END") || equalsIgnoringCase(name, "BEGIN")) &&
           equalsIgnoringCase(withoutBlanks(line.substr(colon + 1)), "VCARD");
}

/// Looks for the end of the header in a text that grows, each byte once.
class HeaderSearch {
  public:
    /// As endOfHeader() of the text so far.
    std::size_t look(std::string_view text) {
        for (; found_ == std::string::npos && at_ < text.size(); ++at_) {
            if (text[at_] == '"') isQuoted_ = !isQuoted_;
            if (text[at_] != ':') continue;
            if (firstColon_ == std::string::npos) firstColon_ = at_;
            if (!isQuoted_) found_ = at_;
        }
        return found_ != std::string::npos || !isQuoted_ ? found_ : firstColon_;
    }

  private:
    std::size_t at_ = 0;
    bool isQuoted_ = false;
    std::size_t found_ = std::string::npos;
    std::size_t firstColon_ = std::string::npos;
};

/// Puts the pieces of one content line together.
class Assembly {
  public:
    Assembly(PhysicalLines& lines, Version version, std::size_t longest)
        : lines_(lines), version_(version), longest_(longest) {}

    ContentLine run() {
        appendNext(0);
        Transfer transfer = Transfer::plain;
        HeaderSearch search;
        bool isFound = false;
        do {
            // A header may itself fold.
            const auto end = isFound ? std::string::npos : search.look(line_.text);
            if (end == std::string::npos) continue;
            isFound = true;
            transfer = transferOf(std::string_view(line_.text).substr(0, end));
        } while (appendFold(transfer));
        if (transfer == Transfer::base64) appendBase64();
        return std::move(line_);
    }

  private:
    void appendNext(std::size_t skipped) {
        const std::string* next = lines_.peek();
        if (!line_.isCut) line_.pieces.push_back({line_.text.size(), {lines_.number(), skipped + 1}});
        line_.isCut = line_.isCut || lines_.wasCut();
        std::string_view more = std::string_view(*next).substr(skipped);
        if (more.size() > longest_ - line_.text.size()) {
            more = more.substr(0, longest_ - line_.text.size());
            line_.isCut = true;
        }
        line_.text += more;
        lines_.take();
    }

    bool appendFold(Transfer transfer) {
        const std::string* next = lines_.peek();
        if (!next) return false;
        if (transfer == Transfer::quotedPrintable && endsSoftly() && !beginsOrEndsCard(*next)) {
            while (isBlank(line_.text.back())) line_.text.pop_back();
            line_.text.pop_back();
            // Some programs break a line both ways at once; a blank that stands on both sides is one blank.
            const bool isDouble = !next->empty() && isBlank(next->front()) && endsInBlank();
            appendNext(isDouble ? 1 : 0);
            return true;
        }
        if (next->empty() || !isBlank(next->front())) return false;
        const bool keepsBlank = version_ == Version::v21 && transfer == Transfer::plain;
        appendNext(keepsBlank ? 0 : 1);
        return true;
    }

    /// Pictures of version 2.1 go on until an empty line; many programs neither indent the lines nor end them so.
    void appendBase64() {
        while (const std::string* next = lines_.peek()) {
            if (withoutBlanks(*next).empty()) {
                lines_.take();
                if (line_.text.back() == ':') continue;
                return;
            }
            if (!isBase64(*next)) return;
            appendNext(0);
        }
    }

    bool endsSoftly() const {
        const auto last = line_.text.find_last_not_of(" \t");
        return last != std::string::npos && line_.text[last] == '=';
    }
    bool endsInBlank() const {
        return !line_.text.empty() && (isBlank(line_.text.back()) || line_.text.ends_with("=20"));
    }

    PhysicalLines& lines_;
    const Version version_;
    const std::size_t longest_;
    ContentLine line_;
};

}  // namespace

PhysicalLines::PhysicalLines(std::istream& stream, std::size_t longest) : stream_(*stream.rdbuf()), longest_(longest) {
    detectOrder();
}

int PhysicalLines::nextByte() {
    const auto byte = stream_.sbumpc();
    return byte == std::streambuf::traits_type::eof() ? noByte : byte;
}

void PhysicalLines::detectOrder() {
    const int first = nextByte();
    if (first == noByte) return;
    const int second = nextByte();
    if (first == 0xFF && second == 0xFE) {
        order_ = Order::littleEndian;
        return;
    }
    if (first == 0xFE && second == 0xFF) {
        order_ = Order::bigEndian;
        return;
    }
    const int third = first == 0xEF && second == 0xBB ? nextByte() : noByte;
    if (third == 0xBF) return;
    for (const int byte : {third, second, first})
        if (byte != noByte) pending_ += static_cast<char>(byte);
}

int PhysicalLines::unit() {
    const int first = nextByte();
    const int second = first == noByte ? noByte : nextByte();
    if (second == noByte) return noByte;
    return order_ == Order::littleEndian ? second << 8 | first : first << 8 | second;
}

int PhysicalLines::next() {
    if (!pending_.empty()) {
        const auto byte = static_cast<unsigned char>(pending_.back());
        pending_.pop_back();
        return byte;
    }
    if (order_ == Order::bytes) return nextByte();
    int character = unit();
    if (character == noByte) return noByte;
    if (character >= 0xD800 && character < 0xDC00) {
        const int low = unit();
        const bool isPair = low >= 0xDC00 && low < 0xE000;
        character = isPair ? 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00) : 0xFFFD;
    } else if (character >= 0xDC00 && character < 0xE000) {
        character = 0xFFFD;
    }
    std::uint8_t bytes[U8_MAX_LENGTH];
    int count = 0;
    U8_APPEND_UNSAFE(bytes, count, character);
    while (count > 1) pending_ += static_cast<char>(bytes[--count]);
    return bytes[0];
}

void PhysicalLines::append(int byte) {
    if (line_->size() < longest_)
        *line_ += static_cast<char>(byte);
    else
        wasCut_ = true;
}

bool PhysicalLines::read() {
    int byte = next();
    if (byte == noByte) return false;
    ++number_;
    wasCut_ = false;
    line_.emplace();
    for (; byte != noByte && byte != '\n' && byte != '\r'; byte = next()) append(byte);
    if (byte != '\r') return true;
    while (byte == '\r') byte = next();
    if (byte != '\n' && byte != noByte) pending_ += static_cast<char>(byte);
    return true;
}

const std::string* PhysicalLines::peek() {
    if (!line_ && !read()) return nullptr;
    return &*line_;
}

std::string PhysicalLines::take() {
    std::string taken = peek() ? std::move(*line_) : std::string();
    line_.reset();
    return taken;
}

Position ContentLine::position(std::size_t offset) const {
    Position position;
    for (const Piece& piece : pieces) {
        if (piece.offset > offset) break;
        position = {piece.position.line, piece.position.column + offset - piece.offset};
    }
    return position;
}

std::size_t endOfHeader(std::string_view line) { return HeaderSearch().look(line); }

std::optional<ContentLine> nextContentLine(PhysicalLines& lines, Version version, std::size_t longest) {
    while (const std::string* next = lines.peek()) {
        if (!withoutBlanks(*next).empty()) return Assembly(lines, version, longest).run();
        lines.take();
    }
    return std::nullopt;
}

}  // namespace vcard

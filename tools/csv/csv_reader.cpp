// Comma-separated values, character by character.
#include "tools/csv/csv_reader.h"

#include <utility>

namespace tools {
namespace {

constexpr std::size_t chunk = std::size_t{1} << 16;
constexpr std::size_t longestRecord = std::size_t{1} << 20;

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// How many bytes the character that begins so has; 0 for a byte that begins none.
std::size_t lengthOfCharacter(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

bool isCharacter(std::string_view bytes) {
    for (std::size_t i = 1; i < bytes.size(); ++i)
        if (!continuesCharacter(bytes[i])) return false;
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = bytes.size() > 1 ? static_cast<unsigned char>(bytes[1]) : 0U;
    // Longer forms than needed, halves of surrogate pairs, and what lies beyond the last character.
    return !(first == 0xE0 && second < 0xA0) && !(first == 0xED && second > 0x9F) &&
           !(first == 0xF0 && second < 0x90) && !(first == 0xF4 && second > 0x8F);
}

}  // namespace

char delimiterOf(std::string_view text) {
    std::size_t commas = 0, semicolons = 0, tabs = 0;
    bool isQuoted = false;
    for (const char letter : text) {
        if (letter == '"') isQuoted = !isQuoted;
        if (isQuoted) continue;
        if (letter == '\n') break;
        commas += letter == ',' ? 1 : 0;
        semicolons += letter == ';' ? 1 : 0;
        tabs += letter == '\t' ? 1 : 0;
    }
    if (semicolons > commas && semicolons >= tabs) return ';';
    return tabs > commas ? '\t' : ',';
}

int CsvReader::peek() {
    if (at_ == filled_) {
        buffer_.resize(chunk);
        filled_ = source_(buffer_);
        at_ = 0;
        bytesRead_ += filled_;
        if (filled_ == 0) return ended;
    }
    return static_cast<unsigned char>(buffer_[at_]);
}

char CsvReader::take() {
    const char byte = buffer_[at_++];
    ++recordBytes_;
    if (byte == '\n') {
        ++place_.line;
        place_.column = 1;
    } else if (!continuesCharacter(byte)) {
        ++place_.column;
    }
    return byte;
}

bool CsvReader::atLineEnd() {
    const int next = peek();
    return next == ended || next == '\n' || next == '\r';
}

void CsvReader::passLineEnd() {
    if (peek() == '\r') take();
    if (peek() == '\n') take();
}

void CsvReader::passLine() {
    while (peek() != ended && peek() != '\n') take();
    passLineEnd();
}

void CsvReader::beginText() {
    begun_ = true;
    if (peek() != 0xEF) return;
    take();
    if (peek() == 0xBB) take();
    if (peek() == 0xBF) take();
    place_ = {};
}

std::variant<CsvRecord, CsvComplaint, CsvReader::End> CsvReader::next() {
    if (!begun_) beginText();
    while (peek() != ended && atLineEnd()) passLineEnd();
    if (peek() == ended) return End{};
    recordBytes_ = 0;
    CsvRecord record;
    for (;;) {
        CsvField field;
        field.place = place_;
        std::string trouble = peek() == '"' ? readQuoted(field) : readField(field);
        if (trouble.empty()) trouble = check(field);
        if (!trouble.empty()) {
            const CsvComplaint complaint{wrong_, std::move(trouble)};
            passLine();
            return complaint;
        }
        record.fields.push_back(std::move(field));
        if (peek() != delimiter_) break;
        take();
    }
    record.end = place_;
    passLineEnd();
    return record;
}

std::string CsvReader::readField(CsvField& field) {
    while (!atLineEnd() && peek() != delimiter_) {
        if (peek() == '"') {
            wrong_ = place_;
            return "A quotation mark stands inside a field without any around it. Put the whole field into quotation "
                   "marks, and double those inside.";
        }
        field.text += take();
        if (recordBytes_ > longestRecord) {
            wrong_ = field.place;
            return "The line is longer than a mebibyte.";
        }
    }
    return {};
}

std::string CsvReader::readQuoted(CsvField& field) {
    take();
    for (;;) {
        if (peek() == ended || recordBytes_ > longestRecord) {
            wrong_ = field.place;
            return peek() == ended ? "The quotation mark is never closed." : "The record is longer than a mebibyte.";
        }
        const char byte = take();
        if (byte != '"') {
            field.text += byte;
        } else if (peek() == '"') {
            field.text += take();
        } else {
            break;
        }
    }
    if (peek() == delimiter_ || atLineEnd()) return {};
    wrong_ = place_;
    const char* what = delimiter_ == ',' ? "A comma" : delimiter_ == ';' ? "A semicolon" : "A tab";
    return std::string(what) + " or the end of the line has to follow the closing quotation mark.";
}

std::string CsvReader::check(const CsvField& field) {
    wrong_ = field.place;
    for (std::size_t i = 0; i < field.text.size();) {
        const std::size_t length = lengthOfCharacter(static_cast<unsigned char>(field.text[i]));
        if (length == 0 || i + length > field.text.size() ||
            !isCharacter(std::string_view(field.text).substr(i, length)))
            return "The text is not UTF-8. Save the file in that encoding.";
        if (field.text[i] == '\0') return "The text holds a null character.";
        i += length;
        ++wrong_.column;
    }
    return {};
}

}  // namespace tools

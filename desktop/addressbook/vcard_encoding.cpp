// Base64 and quoted-printable by hand, charsets by ICU.
#include "desktop/addressbook/vcard_encoding.h"

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace vcard {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view hexadecimal = "0123456789ABCDEF";

constexpr auto digitOfLetter = [] {
    std::array<std::int8_t, 256> digits{};
    digits.fill(-1);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        digits[static_cast<unsigned char>(alphabet[i])] = static_cast<std::int8_t>(i);
    return digits;
}();

int hexadecimalDigit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    return -1;
}

}  // namespace

std::optional<std::string> fromBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t kept = 0;
    int bits = 0;
    for (const char letter : text) {
        if (letter == '=' || letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n') continue;
        const int digit = digitOfLetter[static_cast<unsigned char>(letter)];
        if (digit < 0) return std::nullopt;
        kept = kept << 6 | static_cast<std::uint32_t>(digit);
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes += static_cast<char>(kept >> bits & 0xFF);
    }
    return bytes;
}

std::string toBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t three = 0;
        for (std::size_t k = 0; k < 3; ++k)
            three = three << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k) text += k <= count ? alphabet[three >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::string fromQuotedPrintable(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? hexadecimalDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexadecimalDigit(text[i + 2]) : -1;
        if (low >= 0) i += 2;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
    }
    return bytes;
}

std::string toQuotedPrintable(std::string_view bytes) {
    std::string text;
    for (const char letter : bytes) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte < 0x7F && letter != '=') {
            text += letter;
        } else {
            text += '=';
            text += hexadecimal[byte >> 4];
            text += hexadecimal[byte & 15];
        }
    }
    return text;
}

std::optional<std::string> fromCharset(std::string_view bytes, const std::string& charset) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, void (*)(UConverter*)> converter(ucnv_open(charset.c_str(), &status), ucnv_close);
    if (U_FAILURE(status) || charset.empty()) return std::nullopt;
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), converter.get(), status);
    if (U_FAILURE(status)) return std::nullopt;
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

}  // namespace vcard

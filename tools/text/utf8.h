// Characters as bytes of UTF-8.
#pragma once

#include <string>

namespace tools {

/// Appends the character of the code, which is at most 0x10FFFF.
inline void appendUtf8(std::string& text, unsigned code) {
    const auto put = [&text](unsigned byte) { text += static_cast<char>(byte); };
    const auto follow = [&put](unsigned bits) { put(0x80 | (bits & 0x3F)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        follow(code);
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        follow(code >> 6);
        follow(code);
    } else {
        put(0xF0 | code >> 18);
        follow(code >> 12);
        follow(code >> 6);
        follow(code);
    }
}

}  // namespace tools

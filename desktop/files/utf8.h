// Whether bytes are text in UTF-8.
#pragma once

#include <unicode/utf8.h>

#include <cstdint>
#include <string_view>

namespace files {

inline bool isUtf8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::int64_t i = 0, length = static_cast<std::int64_t>(text.size()); i < length;) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, length, character);
        if (character < 0) return false;
    }
    return true;
}

}  // namespace files

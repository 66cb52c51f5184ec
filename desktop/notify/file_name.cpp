// Percent-escaping of names, and the way back, which takes only what the way there makes.
#include "desktop/notify/file_name.h"

#include <charconv>

namespace notify {
namespace {

constexpr std::string_view suffix = ".post";

bool isPlain(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           letter == '-' || letter == '_' || letter == '.';
}

}  // namespace

std::string fileNameOf(std::string_view name) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string file;
    for (char letter : name) {
        if (isPlain(letter) && !(letter == '.' && file.empty())) {
            file += letter;
        } else {
            const auto byte = static_cast<unsigned char>(letter);
            file += '%';
            file += digits[byte >> 4];
            file += digits[byte & 15];
        }
    }
    return file.append(suffix);
}

std::optional<std::string> nameOfFile(std::string_view fileName) {
    if (!fileName.ends_with(suffix)) return std::nullopt;
    const std::string_view escaped = fileName.substr(0, fileName.size() - suffix.size());
    std::string name;
    for (std::size_t at = 0; at < escaped.size(); ++at) {
        if (escaped[at] != '%') {
            name += escaped[at];
            continue;
        }
        unsigned byte = 0;
        const std::string_view hex = escaped.substr(at + 1, 2);
        const auto parsed = std::from_chars(hex.data(), hex.data() + hex.size(), byte, 16);
        if (hex.size() != 2 || parsed.ptr != hex.data() + 2) return std::nullopt;
        name += static_cast<char>(byte);
        at += 2;
    }
    if (name.empty() || fileNameOf(name) != fileName) return std::nullopt;
    return name;
}

}  // namespace notify

// Schemes and what they ask for.
#include "desktop/phone/opened_address.h"

#include <algorithm>

namespace phone {
namespace {

using Kind = OpenedAddress::Kind;

struct Scheme {
    std::string_view name;
    Kind kind;
};
constexpr Scheme schemes[] = {{"tel", Kind::telephone},
                              {"facetime", Kind::faceTime},
                              {"facetime-audio", Kind::faceTimeAudio},
                              {"sms", Kind::message},
                              {"mailto", Kind::mail}};

int digitOf(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    return -1;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size();
        const int high = isEscape ? digitOf(text[i + 1]) : -1;
        const int low = isEscape ? digitOf(text[i + 2]) : -1;
        if (high < 0 || low < 0) {
            result += text[i];
        } else {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        }
    }
    return result;
}

}  // namespace

std::optional<OpenedAddress> readAddress(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::string name(address.substr(0, colon));
    std::ranges::transform(name, name.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    const auto* scheme = std::ranges::find(schemes, std::string_view(name), &Scheme::name);
    if (scheme == std::end(schemes)) return std::nullopt;
    std::string_view target = address.substr(colon + 1);
    if (target.starts_with("//")) target.remove_prefix(2);
    return OpenedAddress{scheme->kind, unescaped(target.substr(0, target.find('?')))};
}

bool reachesSomebody(std::string_view address) {
    constexpr std::string_view marks = " \t()-./+_";
    const auto read = readAddress(address);
    return !read || read->target.find_first_not_of(marks) != std::string::npos;
}

bool isCall(Kind kind) { return kind != Kind::message && kind != Kind::mail; }

}  // namespace phone

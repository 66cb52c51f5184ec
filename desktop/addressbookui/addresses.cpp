// Addresses by scheme, escaped.
#include "desktop/addressbookui/addresses.h"

#include <cstdio>

#include "desktop/addressbook/numbers.h"

namespace addressbookui {
namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

std::string escaped(std::string_view text) {
    constexpr std::string_view plain = "-._~@+";
    std::string result;
    for (const char letter : text) {
        const bool isLetter = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
        if (isLetter || isDigit(letter) || plain.find(letter) != std::string_view::npos) {
            result += letter;
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(letter));
            result += code;
        }
    }
    return result;
}

std::string dialled(std::string_view number) {
    std::string result;
    for (const char letter : number) {
        if (isDigit(letter) || letter == '*' || letter == ',' || letter == ';') result += letter;
        if (letter == '+' && result.empty()) result += letter;
        if (letter == '#') result += "%23";
    }
    return result;
}

/// Empty where nothing of it can be reached.
std::string withScheme(const char* scheme, std::string_view address) {
    const std::string target = contacts::isEmailAddress(address) ? escaped(address) : dialled(address);
    return target.empty() ? target : scheme + target;
}

}  // namespace

std::string callAddress(std::string_view number) {
    const std::string target = dialled(number);
    return target.empty() ? target : "tel://" + target;
}

std::string messageAddress(std::string_view address) { return withScheme("sms:", address); }

std::string mailAddress(std::string_view address) { return address.empty() ? "" : "mailto:" + escaped(address); }

std::string faceTimeAddress(std::string_view address, FaceTime kind) {
    return withScheme(kind == FaceTime::video ? "facetime://" : "facetime-audio://", address);
}

std::string mapAddress(std::string_view place) { return place.empty() ? "" : "geo:0,0?q=" + escaped(place); }

std::string pageAddress(std::string_view page) {
    if (page.empty()) return {};
    const bool hasScheme = page.find("://") != std::string_view::npos || page.starts_with("mailto:");
    std::string result = hasScheme ? "" : "http://";
    for (const char letter : page) result += letter == ' ' ? "%20" : std::string(1, letter);
    return result;
}

}  // namespace addressbookui

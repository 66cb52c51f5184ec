// NSString and UTF-8.
#include "desktop/uikit/text.h"

#include <array>

namespace uikit {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// The length of the well-formed character at the beginning, or 0.
std::size_t characterLength(std::string_view text) {
    auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead < 0xE0 ? 2
                               : lead < 0xC0               ? 0
                               : lead < 0xF0               ? 3
                               : lead < 0xF5               ? 4
                                                           : 0;
    if (length < 2 || lead < 0xC2 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    const unsigned second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool tooLarge = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || tooLarge ? 0 : length;
}

std::string wellFormed(std::string_view text) {
    std::string result;
    result.reserve(text.size() + replacement.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        result += length ? text.substr(0, length) : replacement;
        text.remove_prefix(length ? length : 1);
    }
    return result;
}

objc::Object makeString(std::string_view text) {
    constexpr unsigned long utf8Encoding = 4;
    auto empty = objc::sendClass<"NSString", "alloc", objc::Object>();
    return objc::send<"initWithBytes:length:encoding:", objc::Object>(
        empty, static_cast<const void*>(text.data()), static_cast<unsigned long>(text.size()), utf8Encoding);
}

}  // namespace

std::string utf8(objc::Object string) {
    if (!string) return {};
    const char* bytes = objc::send<"UTF8String", const char*>(string);
    return bytes ? bytes : "";
}

objc::Object nsString(std::string_view text) {
    auto made = makeString(text);
    if (!made) made = makeString(wellFormed(text));
    return objc::autorelease(objc::Strong<>::adopt(made));
}

std::string localized(std::string_view english) {
    const auto bundle = objc::sendClass<"NSBundle", "mainBundle", objc::Object>();
    const auto key = nsString(english);
    return utf8(objc::send<"localizedStringForKey:value:table:", objc::Object>(bundle, key, key, objc::Object{}));
}

}  // namespace uikit

// Properties and the texts in their values.
#include "desktop/addressbook/vcard.h"

#include <algorithm>

namespace vcard {
namespace {

char upper(char letter) { return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter; }

/// What stands for the character after a backslash; 0 where the two are no escape.
char meaningOf(char letter) {
    if (letter == 'n' || letter == 'N') return '\n';
    return letter == ',' || letter == ';' || letter == ':' || letter == '\\' ? letter : '\0';
}

}  // namespace

const std::vector<std::string>& Property::parameter(std::string_view wanted) const {
    static const std::vector<std::string> none;
    const auto found = std::ranges::find_if(parameters, [&](const Parameter& each) { return each.name == wanted; });
    return found == parameters.end() ? none : found->values;
}

bool Property::hasType(std::string_view type) const {
    return std::ranges::any_of(parameter("TYPE"),
                               [type](const std::string& each) { return equalsIgnoringCase(each, type); });
}

void Property::add(std::string_view parameterName, std::string_view parameterValue) {
    const auto found =
        std::ranges::find_if(parameters, [&](const Parameter& each) { return each.name == parameterName; });
    if (found != parameters.end())
        found->values.emplace_back(parameterValue);
    else
        parameters.push_back({std::string(parameterName), {std::string(parameterValue)}});
}

bool Property::operator==(const Property& other) const {
    return group == other.group && name == other.name && parameters == other.parameters && value == other.value &&
           isBinary == other.isBinary;
}

const Property* Card::find(std::string_view name) const {
    const auto found = std::ranges::find_if(properties, [&](const Property& each) { return each.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

std::string unescaped(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char meaning = text[i] == '\\' && i + 1 < text.size() ? meaningOf(text[i + 1]) : '\0';
        if (meaning != '\0') ++i;
        plain += meaning != '\0' ? meaning : text[i];
    }
    return plain;
}

std::string escaped(std::string_view text) {
    std::string safe;
    safe.reserve(text.size());
    for (const char letter : text) {
        if (letter == '\n') {
            safe += "\\n";
            continue;
        }
        if (letter == ',' || letter == ';' || letter == '\\') safe += '\\';
        safe += letter;
    }
    return safe;
}

std::vector<std::string> split(std::string_view value, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\') {
            ++i;
        } else if (value[i] == separator) {
            parts.push_back(unescaped(value.substr(begin, i - begin)));
            begin = i + 1;
        }
    }
    parts.push_back(unescaped(value.substr(begin)));
    return parts;
}

std::string upperCase(std::string_view text) {
    std::string capitals(text);
    std::ranges::transform(capitals, capitals.begin(), upper);
    return capitals;
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, [](char a, char b) { return upper(a) == upper(b); });
}

}  // namespace vcard

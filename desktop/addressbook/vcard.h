// vCards as lists of properties, one form for the versions 2.1, 3.0 and 4.0; and the texts in their values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vcard {

enum class Version { v21, v30, v40 };

/// Where something stands in a file; line and column count from 1, columns in bytes.
struct Position {
    std::size_t line = 1;
    std::size_t column = 1;
};

struct Parameter {
    std::string name;  ///< capitals
    std::vector<std::string> values;
    bool operator==(const Parameter&) const = default;
};

struct Property {
    std::string group;                  ///< "item1" of "item1.TEL", or empty
    std::string name;                   ///< capitals
    std::vector<Parameter> parameters;  ///< each name once; not those of the transfer (CHARSET, ENCODING)
    /// UTF-8 with the backslash escapes of version 3.0, whatever the version; of binary properties the bytes.
    std::string value;
    bool isBinary = false;
    Position position = {};

    /// The values of the parameter; none where it is missing.
    const std::vector<std::string>& parameter(std::string_view name) const;
    /// Whether TYPE names it, whatever the case.
    bool hasType(std::string_view type) const;
    void add(std::string_view parameterName, std::string_view parameterValue);

    /// The same content; where it stood does not count.
    bool operator==(const Property& other) const;
};

struct Card {
    Version version = Version::v30;
    std::vector<Property> properties;

    /// The first property of that name, or null.
    const Property* find(std::string_view name) const;
    bool operator==(const Card&) const = default;
};

/// The text without its escapes: "\n" is a new line, "\,", "\;", "\:" and "\\" the characters themselves; a backslash
/// before anything else stays.
std::string unescaped(std::string_view text);
std::string escaped(std::string_view text);
/// What stands between the separators that no backslash precedes, escapes undone. At least one part.
std::vector<std::string> split(std::string_view value, char separator);

/// Letters of ASCII alone, whatever the locale.
std::string upperCase(std::string_view text);
bool equalsIgnoringCase(std::string_view left, std::string_view right);

}  // namespace vcard

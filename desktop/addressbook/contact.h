// One contact as plain values: what the database keeps, vCards say and the address book's records show.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contacts {

/// What a contact has, under the numbers of the address book.
enum class Property : std::int32_t {
    firstName = 0,
    lastName = 1,
    phone = 3,
    email = 4,
    address = 5,
    middleName = 6,
    firstNamePhonetic = 7,
    middleNamePhonetic = 8,
    lastNamePhonetic = 9,
    organization = 10,
    department = 11,
    date = 12,
    instantMessage = 13,
    note = 14,
    creationDate = 15,
    modificationDate = 16,
    birthday = 17,
    jobTitle = 18,
    nickname = 19,
    prefix = 20,
    suffix = 21,
    url = 22,
    relatedNames = 23,
    socialProfile = 46,
};

/// Whether a contact has a list of values of it, and not one text.
bool isList(Property property);

/// The parts of a value that is a dictionary, by the names of its keys ("Street").
using Parts = std::map<std::string, std::string, std::less<>>;

struct LabelledValue {
    /// Unlike that of every other value of the list.
    int identifier = 0;
    /// "_$!<Home>!$_" and its like, an own text, or empty.
    std::string label;
    /// Texts; days are "2001-02-28", or "--02-28" without a year. Empty where there are parts.
    std::string text;
    Parts parts;

    bool operator==(const LabelledValue&) const = default;
};

struct Contact {
    /// 0 for one that is not in the book yet.
    int record = 0;
    /// Seconds since the start of 1970; written by the book.
    std::int64_t created = 0;
    std::int64_t modified = 0;
    /// Texts of one value; no empty ones. The birthday is a day as above.
    std::map<Property, std::string> texts;
    /// Lists of values; no empty ones.
    std::map<Property, std::vector<LabelledValue>> lists;
    /// Content lines of a vCard that no property stands for, unfolded: kept, and given back to vCards.
    std::vector<std::string> others;
    /// Bytes of an image file, when the picture changes: empty removes it. Nothing leaves it as it is.
    std::optional<std::string> picture;

    const std::string& text(Property property) const;
    const std::vector<LabelledValue>& list(Property property) const;
    /// Empty text removes the property.
    void setText(Property property, std::string_view text);

    bool operator==(const Contact&) const = default;
};

/// The name as it is shown: prefix, first, middle, last and suffix; else the organisation, the nickname, the first
/// e-mail address or number. Empty for none.
std::string compositeName(const Contact& contact);

}  // namespace contacts

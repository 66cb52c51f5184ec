// What a contact's card lists: each value with its label, as people read it.
#pragma once

#include <string>
#include <vector>

#include "desktop/addressbook/contact.h"

namespace addressbookui {

struct CardValue {
    contacts::Property property = contacts::Property::phone;
    /// Its place among the contact's values of the property, from 0.
    int index = 0;
    int identifier = 0;
    std::string label;
    /// May have several lines.
    std::string text;
    /// The value as the contact has it: what is called or written to.
    std::string address;

    bool operator==(const CardValue&) const = default;
};

/// The values in the order of the card, those of the displayed properties alone where there are any. An empty value, as
/// a withheld number has, is left out, and still counts for the index of those behind it. Labels and dates
/// are in contacts::language(), numbers as contacts::formattedNumber() writes them.
std::vector<CardValue> cardValues(const contacts::Contact& contact, const std::vector<contacts::Property>& displayed);

/// What a tap on the value opens; empty where nothing is to be opened.
std::string addressToOpen(const CardValue& value);

/// The name without what stands in for one: empty for a contact of numbers and e-mail addresses alone.
std::string ownName(const contacts::Contact& contact);

/// The others of the list that have the contact's own name, by record.
std::vector<contacts::Contact> linkedPeople(const contacts::Contact& contact,
                                            const std::vector<contacts::Contact>& everybody);

}  // namespace addressbookui

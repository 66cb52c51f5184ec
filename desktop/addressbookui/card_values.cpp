// A contact's values in the words of people.
#include "desktop/addressbookui/card_values.h"

#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/gregocal.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbookui/addresses.h"

namespace addressbookui {
namespace {

using contacts::Contact;
using contacts::LabelledValue;
using contacts::Property;

constexpr Property cardOrder[] = {Property::phone,        Property::email,          Property::url,
                                  Property::address,      Property::birthday,       Property::date,
                                  Property::relatedNames, Property::instantMessage, Property::socialProfile,
                                  Property::note};

/// "28 February 2001" of "2001-02-28", without the year of "--02-28"; what is no day stays as it is.
std::string dayInWords(const std::string& day) {
    int year = 0;
    int month = 0;
    int number = 0;
    const bool hasYear = std::sscanf(day.c_str(), "%4d-%2d-%2d", &year, &month, &number) == 3;
    if (!hasYear && std::sscanf(day.c_str(), "--%2d-%2d", &month, &number) != 2) return day;
    constexpr int leapYear = 2000;
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(hasYear ? year : leapYear, month - 1, number, 12, 0, status);
    const icu::Locale locale(contacts::language().c_str());
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createInstanceForSkeleton(hasYear ? "yMMMMd" : "MMMMd", locale, status));
    if (U_FAILURE(status)) return day;
    icu::UnicodeString text;
    format->format(calendar, text, nullptr, status);
    std::string result;
    return U_FAILURE(status) ? day : text.toUTF8String(result);
}

std::string part(const LabelledValue& value, const char* key) {
    const auto found = value.parts.find(key);
    return found == value.parts.end() ? std::string() : found->second;
}

std::string joined(const std::vector<std::string>& parts, const char* between) {
    std::string result;
    for (const auto& text : parts)
        if (!text.empty()) result += (result.empty() ? "" : between) + text;
    return result;
}

std::string postalAddress(const LabelledValue& value) {
    const std::string town = joined({part(value, "ZIP"), part(value, "City")}, " ");
    const std::string lines = joined({part(value, "Street"), town, part(value, "State"), part(value, "Country")}, "\n");
    return lines.empty() ? value.text : lines;
}

std::string account(const LabelledValue& value) {
    const std::string text = joined({part(value, "username"), part(value, "service")}, " · ");
    return text.empty() ? joined({part(value, "url"), value.text}, " · ") : text;
}

std::string textOf(const LabelledValue& value, Property property) {
    switch (property) {
        case Property::phone:
            return contacts::formattedNumber(value.text);
        case Property::address:
            return postalAddress(value);
        case Property::date:
            return dayInWords(value.text);
        case Property::instantMessage:
        case Property::socialProfile:
            return account(value);
        default:
            return value.text;
    }
}

}  // namespace

std::vector<CardValue> cardValues(const Contact& contact, const std::vector<Property>& displayed) {
    const std::string language = contacts::language();
    std::vector<CardValue> values;
    for (const Property property : cardOrder) {
        if (!displayed.empty() && std::ranges::find(displayed, property) == displayed.end()) continue;
        const std::string name = contacts::label::ofProperty(property, language);
        if (!contacts::isList(property)) {
            const std::string& text = contact.text(property);
            const std::string shown = property == Property::birthday ? dayInWords(text) : text;
            if (!text.empty()) values.push_back({property, 0, 0, name, shown, text});
            continue;
        }
        int index = 0;
        for (const auto& value : contact.list(property)) {
            const std::string label = contacts::label::forPeople(value.label, language);
            const std::string text = textOf(value, property);
            const int place = index++;
            if (text.empty()) continue;
            values.push_back({property, place, value.identifier, label.empty() ? name : label, text,
                              value.parts.empty() ? value.text : text});
        }
    }
    return values;
}

std::string addressToOpen(const CardValue& value) {
    switch (value.property) {
        case Property::phone:
            return contacts::isEmailAddress(value.address) ? faceTimeAddress(value.address, FaceTime::audio)
                                                           : callAddress(value.address);
        case Property::email:
            return mailAddress(value.address);
        case Property::url:
            return pageAddress(value.address);
        case Property::address: {
            std::string line = value.text;
            std::ranges::replace(line, '\n', ' ');
            return mapAddress(line);
        }
        default:
            return {};
    }
}

std::string ownName(const Contact& contact) {
    Contact named = contact;
    named.lists.clear();
    return contacts::compositeName(named);
}

std::vector<Contact> linkedPeople(const Contact& contact, const std::vector<Contact>& everybody) {
    std::vector<Contact> linked;
    const std::string name = ownName(contact);
    if (name.empty()) return linked;
    for (const auto& each : everybody)
        if (each.record != contact.record && ownName(each) == name) linked.push_back(each);
    return linked;
}

}  // namespace addressbookui

// From the properties of a card to those of a contact.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <set>
#include <span>

#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/vcard_writer.h"

namespace contacts {
namespace {

using CardProperty = vcard::Property;

constexpr const char* groupOfOthers = "other-";

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\r";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return std::string(text.substr(begin, text.find_last_not_of(blanks) - begin + 1));
}

std::string percentDecoded(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string digits(text[i] == '%' ? text.substr(i + 1, 2) : "");
        const bool isCode =
            digits.size() == 2 && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
        plain += isCode ? static_cast<char>(std::strtol(digits.c_str(), nullptr, 16)) : text[i];
        if (isCode) i += 2;
    }
    return plain;
}

/// The number of a "tel:" address, its extension as people write it.
std::string numberOf(const std::string& value) {
    if (!vcard::equalsIgnoringCase(std::string_view(value).substr(0, 4), "tel:")) return trimmed(value);
    const std::string address = value.substr(4);
    const auto end = std::min(address.find(';'), address.size());
    std::string number = percentDecoded(address.substr(0, end));
    const auto extension = address.find(";ext=");
    if (extension == std::string::npos) return number;
    const auto from = extension + 5;
    return number + " ext. " + percentDecoded(address.substr(from, address.find(';', from) - from));
}

/// The lower the earlier; the address book has an order and no preference.
int preferenceOf(const CardProperty& property) {
    constexpr int none = 1000;
    const auto& numbers = property.parameter("PREF");
    if (!numbers.empty()) {
        const int number = std::atoi(numbers.front().c_str());
        return number >= 1 && number <= 100 ? number : none;
    }
    return property.hasType("PREF") ? 1 : none;
}

struct ServiceProperty {
    std::string_view name;
    const char* service;
};
constexpr ServiceProperty messengers[] = {{"X-AIM", "AIM"},
                                          {"X-ICQ", "ICQ"},
                                          {"X-JABBER", "Jabber"},
                                          {"X-MSN", "MSN"},
                                          {"X-YAHOO", "Yahoo"},
                                          {"X-SKYPE", "Skype"},
                                          {"X-QQ", "QQ"},
                                          {"X-GTALK", "GoogleTalk"},
                                          {"X-GOOGLE-TALK", "GoogleTalk"},
                                          {"X-SKYPE-USERNAME", "Skype"}};

/// Says how a card was written, or what the contact's own values say again.
bool isTransient(std::string_view name) {
    static constexpr std::array<std::string_view, 6> names = {"FN", "VERSION", "PRODID", "REV", "PROFILE", "X-ABLABEL"};
    return std::ranges::find(names, name) != names.end();
}

class Conversion {
  public:
    explicit Conversion(const vcard::Card& card) : card_(card) {
        for (const CardProperty& each : card.properties)
            if (each.name == "X-ABLABEL" && !each.group.empty())
                labels_[each.group] = trimmed(vcard::unescaped(each.value));
    }

    Contact run() {
        for (const CardProperty& each : card_.properties)
            if (!take(each) && !isTransient(each.name)) keep(each);
        for (auto& [property, values] : found_) {
            std::ranges::stable_sort(values, {}, &Found::preference);
            auto& list = contact_.lists[property];
            for (Found& value : values) {
                value.value.identifier = static_cast<int>(list.size());
                list.push_back(std::move(value.value));
            }
        }
        contact_.setText(Property::note, note_);
        if (contact_.text(Property::firstName).empty() && contact_.text(Property::lastName).empty()) takeDisplayName();
        return std::move(contact_);
    }

  private:
    struct Found {
        int preference;
        LabelledValue value;
    };

    /// Whether the contact has it now.
    bool take(const CardProperty& from) {
        if (from.name == "PHOTO") return takePicture(from);
        if (from.isBinary) return false;
        if (from.name == "N") return takeName(from);
        if (from.name == "ORG") return takeOrganization(from);
        if (from.name == "NOTE") return takeNote(from);
        if (from.name == "BDAY") return takeBirthday(from);
        if (from.name == "ADR") return takeAddress(from);
        if (takeSingle(from) || takeDay(from) || takeService(from)) return true;
        return takeListed(from);
    }

    bool takeSingle(const CardProperty& from) {
        static const std::map<std::string_view, Property> singles = {
            {"NICKNAME", Property::nickname},
            {"TITLE", Property::jobTitle},
            {"X-PHONETIC-FIRST-NAME", Property::firstNamePhonetic},
            {"X-PHONETIC-MIDDLE-NAME", Property::middleNamePhonetic},
            {"X-PHONETIC-LAST-NAME", Property::lastNamePhonetic}};
        const auto found = singles.find(from.name);
        return found != singles.end() && set(found->second, vcard::unescaped(from.value));
    }

    bool set(Property property, std::string_view text) {
        if (!contact_.text(property).empty()) return trimmed(text).empty();
        contact_.setText(property, trimmed(text));
        return true;
    }

    bool takeName(const CardProperty& from) {
        static constexpr Property order[] = {Property::lastName, Property::firstName, Property::middleName,
                                             Property::prefix, Property::suffix};
        const auto parts = vcard::split(from.value, ';');
        for (std::size_t i = 0; i < std::size(order) && i < parts.size(); ++i) set(order[i], parts[i]);
        return true;
    }

    /// The name of a card that has no parts of one, unless it is that of the organisation.
    void takeDisplayName() {
        const CardProperty* shown = card_.find("FN");
        if (!shown) return;
        const std::string name = trimmed(vcard::unescaped(shown->value));
        const bool isOther = name == contact_.text(Property::organization) || name == compositeName(contact_);
        if (!isOther) contact_.setText(Property::firstName, name);
    }

    bool takeOrganization(const CardProperty& from) {
        auto parts = vcard::split(from.value, ';');
        if (!contact_.text(Property::organization).empty()) return false;
        set(Property::organization, parts.front());
        std::string department;
        for (std::size_t i = 1; i < parts.size(); ++i)
            if (!trimmed(parts[i]).empty()) department += (department.empty() ? "" : ", ") + trimmed(parts[i]);
        set(Property::department, department);
        return true;
    }

    bool takeNote(const CardProperty& from) {
        const std::string more = trimmed(vcard::unescaped(from.value));
        if (!note_.empty() && !more.empty()) note_ += '\n';
        note_ += more;
        return true;
    }

    bool takeBirthday(const CardProperty& from) {
        const std::string day = dayOf(trimmed(from.value));
        if (day.empty()) return false;
        const std::string& known = contact_.text(Property::birthday);
        if (!known.empty()) return known == day;
        contact_.setText(Property::birthday, day);
        return true;
    }

    std::string labelOf(const CardProperty& from) const {
        const auto own = from.group.empty() ? labels_.end() : labels_.find(from.group);
        if (own != labels_.end() && !own->second.empty()) return own->second;
        return label::ofTypes(from);
    }

    bool add(Property property, const CardProperty& from, LabelledValue value) {
        found_[property].push_back({preferenceOf(from), std::move(value)});
        return true;
    }

    bool takeListed(const CardProperty& from) {
        static const std::map<std::string_view, Property> lists = {{"TEL", Property::phone},
                                                                   {"EMAIL", Property::email},
                                                                   {"URL", Property::url},
                                                                   {"X-ABRELATEDNAMES", Property::relatedNames},
                                                                   {"X-SPOUSE", Property::relatedNames},
                                                                   {"X-EVOLUTION-SPOUSE", Property::relatedNames},
                                                                   {"X-MS-SPOUSE", Property::relatedNames}};
        const auto found = lists.find(from.name);
        if (found == lists.end()) return false;
        std::string text = vcard::unescaped(from.value);
        text = found->second == Property::phone ? numberOf(trimmed(text)) : trimmed(text);
        if (text.empty()) return true;
        const bool isSpouse = from.name.ends_with("-SPOUSE");
        return add(found->second, from, {0, isSpouse ? label::spouse : labelOf(from), text, {}});
    }

    bool takeDay(const CardProperty& from) {
        static constexpr std::string_view anniversaries[] = {"ANNIVERSARY", "X-ANNIVERSARY", "X-EVOLUTION-ANNIVERSARY",
                                                             "X-MS-ANNIVERSARY"};
        const bool isAnniversary = std::ranges::find(anniversaries, from.name) != std::end(anniversaries);
        if (!isAnniversary && from.name != "X-ABDATE") return false;
        const std::string day = dayOf(trimmed(from.value));
        if (day.empty()) return false;
        return add(Property::date, from, {0, isAnniversary ? label::anniversary : labelOf(from), day, {}});
    }

    bool takeAddress(const CardProperty& from) {
        auto parts = vcard::split(from.value, ';');
        parts.resize(std::max<std::size_t>(parts.size(), 7));
        LabelledValue value{0, labelOf(from), {}, {}};
        std::string street;
        for (const std::size_t i : {std::size_t{2}, std::size_t{1}, std::size_t{0}})
            if (!trimmed(parts[i]).empty()) street += (street.empty() ? "" : "\n") + trimmed(parts[i]);
        const auto put = [&value](const char* key, std::string text) {
            if (!text.empty()) value.parts[key] = std::move(text);
        };
        put("Street", street);
        put("City", trimmed(parts[3]));
        put("State", trimmed(parts[4]));
        put("ZIP", trimmed(parts[5]));
        put("Country", trimmed(parts[6]));
        if (const auto& code = from.parameter("CC"); !code.empty()) put("CountryCode", code.front());
        return value.parts.empty() || add(Property::address, from, std::move(value));
    }

    bool takeService(const CardProperty& from) {
        const std::string text = trimmed(vcard::unescaped(from.value));
        const auto* found = std::ranges::find(messengers, from.name, &ServiceProperty::name);
        if (found != std::end(messengers))
            return text.empty() || add(Property::instantMessage, from,
                                       {0, labelOf(from), {}, {{"service", found->service}, {"username", text}}});
        if (from.name == "IMPP") return takeMessenger(from, text);
        if (from.name != "X-SOCIALPROFILE" && from.name != "SOCIALPROFILE") return false;
        Parts parts;
        if (!text.empty()) parts["url"] = text;
        const auto put = [&](const char* key, std::string_view parameter) {
            const auto& values = from.parameter(parameter);
            if (!values.empty()) parts[key] = values.front();
        };
        put("service", "TYPE");
        put("service", "SERVICE-TYPE");
        put("username", "X-USER");
        put("username", "USERNAME");
        return parts.empty() || add(Property::socialProfile, from, {0, "", {}, parts});
    }

    bool takeMessenger(const CardProperty& from, const std::string& text) {
        const auto colon = text.find(':');
        if (colon == std::string::npos || colon + 1 == text.size()) return false;
        const auto& named = from.parameter("X-SERVICE-TYPE");
        const std::string service = named.empty() ? text.substr(0, colon) : named.front();
        Parts parts{{"username", percentDecoded(std::string_view(text).substr(colon + 1))}};
        if (service != "x") parts["service"] = service;
        return add(Property::instantMessage, from, {0, labelOf(from), {}, std::move(parts)});
    }

    bool takePicture(const CardProperty& from) {
        if (!from.isBinary || contact_.picture || !isPicture(from.value)) return false;
        contact_.picture = from.value;
        return true;
    }

    /// Under a group that no value of the contact will ever be given.
    void keep(CardProperty from) {
        if (!from.isBinary && trimmed(from.value).empty()) return;
        const auto own = from.group.empty() ? labels_.end() : labels_.find(from.group);
        if (!from.group.empty() && !from.group.starts_with(groupOfOthers)) from.group = groupOfOthers + from.group;
        contact_.others.push_back(vcard::contentLine(from));
        if (own == labels_.end()) return;
        const std::string label = vcard::contentLine({from.group, "X-ABLABEL", {}, vcard::escaped(own->second)});
        if (keptLabels_.insert(label).second) contact_.others.push_back(label);
    }

    const vcard::Card& card_;
    Contact contact_;
    std::string note_;
    std::map<std::string, std::string> labels_;
    std::set<std::string> keptLabels_;
    std::map<Property, std::vector<Found>> found_;
};

}  // namespace

Contact contactOf(const vcard::Card& card) { return Conversion(card).run(); }

bool isCallRecord(const vcard::Card& card) { return card.find("X-IRMC-CALL-DATETIME") != nullptr; }

bool isPicture(std::string_view bytes) {
    return bytes.starts_with("\x89PNG\r\n\x1A\n") || bytes.starts_with("\xFF\xD8\xFF");
}

std::string dayOf(std::string_view text) {
    if (const auto time = text.find_first_of("Tt "); time != std::string_view::npos) text = text.substr(0, time);
    const bool hasYear = !text.starts_with("--");
    std::string digits;
    for (const char letter : text) {
        if (letter >= '0' && letter <= '9')
            digits += letter;
        else if (letter != '-')
            return {};
    }
    if (digits.size() != (hasYear ? 8U : 4U)) return {};
    const std::string monthAndDay = digits.substr(digits.size() - 4);
    const int month = std::atoi(monthAndDay.substr(0, 2).c_str());
    const int day = std::atoi(monthAndDay.substr(2).c_str());
    static constexpr int longest[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12 || day < 1 || day > longest[month - 1]) return {};
    return (hasYear ? digits.substr(0, 4) : "-") + "-" + monthAndDay.substr(0, 2) + "-" + monthAndDay.substr(2);
}

}  // namespace contacts

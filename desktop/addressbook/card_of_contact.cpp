// From the properties of a contact to those of a card.
#include <array>

#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/vcard_reader.h"

namespace contacts {
namespace {

using CardProperty = vcard::Property;

/// What stands in an address is read with its codes undone.
std::string withCodedPercents(std::string_view text) {
    std::string coded;
    for (const char letter : text) coded += letter == '%' ? "%25" : std::string(1, letter);
    return coded;
}

class Conversion {
  public:
    explicit Conversion(const Contact& contact) : contact_(contact) {}

    vcard::Card run() {
        addName();
        addTexts();
        addLists();
        if (contact_.picture && !contact_.picture->empty()) addPicture();
        for (const std::string& line : contact_.others)
            if (auto other = vcard::propertyOf(line, vcard::Version::v30))
                card_.properties.push_back(*std::move(other));
        return std::move(card_);
    }

  private:
    CardProperty& add(const char* name, std::string value) {
        card_.properties.push_back({"", name, {}, std::move(value)});
        return card_.properties.back();
    }

    std::string partOf(Property property) const { return vcard::escaped(contact_.text(property)); }

    void addName() {
        std::string name;
        for (const Property part :
             {Property::lastName, Property::firstName, Property::middleName, Property::prefix, Property::suffix})
            name += (part == Property::lastName ? "" : ";") + partOf(part);
        add("N", name);
        add("FN", vcard::escaped(compositeName(contact_)));
    }

    void addTexts() {
        struct Single {
            Property property;
            const char* name;
        };
        static constexpr Single singles[] = {{Property::nickname, "NICKNAME"},
                                             {Property::firstNamePhonetic, "X-PHONETIC-FIRST-NAME"},
                                             {Property::middleNamePhonetic, "X-PHONETIC-MIDDLE-NAME"},
                                             {Property::lastNamePhonetic, "X-PHONETIC-LAST-NAME"},
                                             {Property::jobTitle, "TITLE"},
                                             {Property::note, "NOTE"},
                                             {Property::birthday, "BDAY"}};
        for (const Single& each : singles)
            if (!contact_.text(each.property).empty()) add(each.name, partOf(each.property));
        const std::string department = partOf(Property::department);
        if (!contact_.text(Property::organization).empty() || !department.empty())
            add("ORG", partOf(Property::organization) + (department.empty() ? "" : ";" + department));
    }

    /// Types where they say the label, else a group with the label beside the value.
    void setLabel(const std::string& label) {
        CardProperty& property = card_.properties.back();
        if (label::addTypes(property, label)) return;
        const std::string group = "item" + std::to_string(++groups_);
        property.group = group;
        add("X-ABLABEL", vcard::escaped(label)).group = group;
    }

    void addLists() {
        struct Listed {
            Property property;
            const char* name;
        };
        static constexpr Listed lists[] = {{Property::phone, "TEL"},
                                           {Property::email, "EMAIL"},
                                           {Property::url, "URL"},
                                           {Property::date, "X-ABDATE"},
                                           {Property::relatedNames, "X-ABRELATEDNAMES"}};
        for (const Listed& each : lists) {
            for (const LabelledValue& value : contact_.list(each.property)) {
                add(each.name, vcard::escaped(value.text));
                setLabel(value.label);
            }
        }
        for (const LabelledValue& value : contact_.list(Property::address)) addAddress(value);
        for (const LabelledValue& value : contact_.list(Property::instantMessage)) {
            CardProperty& property = add("IMPP", "x:" + vcard::escaped(withCodedPercents(partOf(value, "username"))));
            if (const auto service = partOf(value, "service"); !service.empty())
                property.add("X-SERVICE-TYPE", service);
            setLabel(value.label);
        }
        for (const LabelledValue& value : contact_.list(Property::socialProfile)) {
            CardProperty& property = add("X-SOCIALPROFILE", vcard::escaped(partOf(value, "url")));
            if (const auto service = partOf(value, "service"); !service.empty()) property.add("TYPE", service);
            if (const auto user = partOf(value, "username"); !user.empty()) property.add("X-USER", user);
        }
    }

    static std::string partOf(const LabelledValue& value, std::string_view key) {
        const auto found = value.parts.find(key);
        return found == value.parts.end() ? std::string() : found->second;
    }

    void addAddress(const LabelledValue& value) {
        std::string text = ";";
        for (const char* key : {"Street", "City", "State", "ZIP", "Country"})
            text += ";" + vcard::escaped(partOf(value, key));
        CardProperty& property = add("ADR", text);
        if (const auto code = partOf(value, "CountryCode"); !code.empty()) property.add("CC", code);
        setLabel(value.label);
    }

    void addPicture() {
        CardProperty& property = add("PHOTO", *contact_.picture);
        property.isBinary = true;
        property.add("TYPE", contact_.picture->starts_with("\x89PNG") ? "PNG" : "JPEG");
    }

    const Contact& contact_;
    vcard::Card card_;
    int groups_ = 0;
};

}  // namespace

vcard::Card cardOf(const Contact& contact) { return Conversion(contact).run(); }

}  // namespace contacts

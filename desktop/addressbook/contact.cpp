// What a contact has.
#include "desktop/addressbook/contact.h"

namespace contacts {

bool isList(Property property) {
    switch (property) {
        case Property::phone:
        case Property::email:
        case Property::address:
        case Property::date:
        case Property::instantMessage:
        case Property::url:
        case Property::relatedNames:
        case Property::socialProfile:
            return true;
        default:
            return false;
    }
}

const std::string& Contact::text(Property property) const {
    static const std::string none;
    const auto found = texts.find(property);
    return found == texts.end() ? none : found->second;
}

const std::vector<LabelledValue>& Contact::list(Property property) const {
    static const std::vector<LabelledValue> none;
    const auto found = lists.find(property);
    return found == lists.end() ? none : found->second;
}

void Contact::setText(Property property, std::string_view value) {
    if (value.empty())
        texts.erase(property);
    else
        texts[property] = value;
}

std::string compositeName(const Contact& contact) {
    std::string name;
    for (const Property part :
         {Property::prefix, Property::firstName, Property::middleName, Property::lastName, Property::suffix}) {
        const std::string& text = contact.text(part);
        if (!text.empty()) name += (name.empty() ? "" : " ") + text;
    }
    if (!name.empty()) return name;
    for (const Property other : {Property::organization, Property::nickname})
        if (!contact.text(other).empty()) return contact.text(other);
    for (const Property other : {Property::email, Property::phone})
        if (!contact.list(other).empty()) return contact.list(other).front().text;
    return {};
}

}  // namespace contacts

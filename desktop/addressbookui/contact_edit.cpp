// Changes to a contact.
#include "desktop/addressbookui/contact_edit.h"

#include <algorithm>

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/numbers.h"

namespace addressbookui {
namespace {

using contacts::Contact;
using contacts::LabelledValue;
using contacts::Property;
namespace label = contacts::label;

std::vector<std::string> usualLabels(Property property) {
    if (property == Property::phone)
        return {label::mobile, label::iPhone, label::home, label::work, label::mainNumber, label::other};
    return {label::home, label::work, label::other};
}

bool hasLabel(const std::vector<LabelledValue>& values, const std::string& label) {
    return std::ranges::find(values, label, &LabelledValue::label) != values.end();
}

bool isBlank(const LabelledValue& value) {
    return value.parts.empty() && value.text.find_first_not_of(" \t") == std::string::npos;
}

int nextIdentifier(const std::vector<LabelledValue>& before, const std::vector<LabelledValue>& now) {
    int next = 0;
    for (const auto* values : {&before, &now})
        for (const auto& value : *values) next = std::max(next, value.identifier + 1);
    return next;
}

bool isSameValue(const LabelledValue& left, const LabelledValue& right, Property property) {
    if (left.text == right.text && left.parts == right.parts) return true;
    if (property != Property::phone && property != Property::email) return false;
    return contacts::keyOf(left.text).isSame(contacts::keyOf(right.text));
}

}  // namespace

ContactEdit::ContactEdit(Contact contact) : original_(std::move(contact)), edited_(original_) {}
ContactEdit::ContactEdit(Contact original, Contact edited)
    : original_(std::move(original)), edited_(std::move(edited)) {}

const std::vector<LabelledValue>& ContactEdit::values(Property property) const { return edited_.list(property); }

std::size_t ContactEdit::addValue(Property property, std::string_view text, std::string_view chosen) {
    auto& values = edited_.lists[property];
    const auto usual = usualLabels(property);
    const auto free = std::ranges::find_if(usual, [&](const auto& each) { return !hasLabel(values, each); });
    const std::string& name = free == usual.end() ? usual.back() : *free;
    values.push_back({nextIdentifier(original_.list(property), values),
                      chosen.empty() ? name : std::string(chosen),
                      std::string(text),
                      {}});
    return values.size() - 1;
}

void ContactEdit::removeValue(Property property, std::size_t index) {
    auto& values = edited_.lists[property];
    if (index < values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(index));
}

void ContactEdit::setValue(Property property, std::size_t index, std::string_view text) {
    auto& values = edited_.lists[property];
    if (index < values.size()) values[index].text = text;
}

void ContactEdit::setLabel(Property property, std::size_t index, std::string_view label) {
    auto& values = edited_.lists[property];
    if (index < values.size()) values[index].label = label;
}

std::vector<std::string> ContactEdit::labels(Property property, std::size_t index) const {
    auto labels = usualLabels(property);
    const auto& values = edited_.list(property);
    if (index >= values.size() || values[index].label.empty()) return labels;
    if (std::ranges::find(labels, values[index].label) == labels.end()) labels.push_back(values[index].label);
    return labels;
}

Contact ContactEdit::result() const {
    Contact contact = edited_;
    for (auto& [property, values] : contact.lists) std::erase_if(values, isBlank);
    std::erase_if(contact.lists, [](const auto& each) { return each.second.empty(); });
    return contact;
}

bool ContactEdit::isEmpty() const {
    const Contact contact = result();
    return contact.texts.empty() && contact.lists.empty();
}

Contact withValuesOf(const Contact& contact, const Contact& other) {
    Contact result = contact;
    for (const auto& [property, values] : other.lists) {
        for (const auto& value : values) {
            auto& own = result.lists[property];
            const auto isKnown = [&, key = property](const auto& each) { return isSameValue(each, value, key); };
            if (std::ranges::any_of(own, isKnown)) continue;
            LabelledValue added = value;
            added.identifier = nextIdentifier(own, own);
            own.push_back(std::move(added));
        }
    }
    return result;
}

}  // namespace addressbookui

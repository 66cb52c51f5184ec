// Records as objects, and the calls that read and change them.
#include "desktop/addressbook/objects.h"
#include "platform/foundation.h"

namespace addressbook {

using contacts::Contact;
using contacts::Property;

objc::Ref<Record> Record::of(Contact contact) {
    auto made = objc::Ref<Record>::make();
    made->contact_ = std::move(contact);
    return made;
}

Contact Record::contact() const {
    const std::lock_guard lock(mutex_);
    return contact_;
}

int Record::identifier() const {
    const std::lock_guard lock(mutex_);
    return contact_.record > 0 ? contact_.record : kABRecordInvalidID;
}

bool Record::isChanged() const {
    const std::lock_guard lock(mutex_);
    return changed_;
}

void Record::takeSaved(const Contact& saved) {
    const std::lock_guard lock(mutex_);
    if (!changed_) contact_ = saved;
}

void Record::revert(const Contact& saved) {
    const std::lock_guard lock(mutex_);
    contact_ = saved;
    changed_ = false;
}

namespace {

objc::Strong<> copyOf(const Contact& contact, int number) {
    const auto type = typeOf(number);
    if (!type) return {};
    const auto property = static_cast<Property>(number);
    if (type->isList) {
        const auto& list = contact.list(property);
        return list.empty() ? objc::Strong<>() : MultiValue::of(type->kind, list).takeOwner();
    }
    if (type->kind == Kind::moment) {
        if (contact.record <= 0) return {};
        return dateOfSeconds(property == Property::creationDate ? contact.created : contact.modified);
    }
    const std::string& text = contact.text(property);
    if (text.empty()) return {};
    return objectOf({0, {}, text, {}}, type->kind);
}

bool setList(Record& record, int number, Kind kind, const void* value, const void** error) {
    const auto* values = peerFrom<MultiValue>(value);
    if (value && (!values || values->kind != kind))
        return fail(error, "The value is no list of the property's type; nothing was changed.");
    record.change([&](Contact& contact) {
        const auto property = static_cast<Property>(number);
        if (!values || values->values.empty())
            contact.lists.erase(property);
        else
            contact.lists[property] = values->values;
    });
    return true;
}

bool setValue(Record& record, int number, const void* value, const void** error) {
    const auto type = typeOf(number);
    if (!type) return fail(error, "Contacts have no property of that number; nothing was changed.");
    if (type->kind == Kind::moment) return fail(error, "The address book alone writes this date; nothing was changed.");
    if (type->isList) return setList(record, number, type->kind, value, error);
    contacts::LabelledValue made;
    if (value) {
        auto given = valueOf(objectFrom(value), type->kind);
        if (!given) return fail(error, "The value is not of the property's type; nothing was changed.");
        made = *std::move(given);
    }
    record.change([&](Contact& contact) { contact.setText(static_cast<Property>(number), made.text); });
    return true;
}

}  // namespace
}  // namespace addressbook

using addressbook::fail;
using addressbook::given;
using addressbook::peerFrom;
using addressbook::Record;

ABRecordID ABRecordGetRecordID(ABRecordRef record) {
    const auto* from = peerFrom<Record>(record);
    return from ? from->identifier() : kABRecordInvalidID;
}

ABRecordType ABRecordGetRecordType(ABRecordRef) { return kABPersonType; }

const void* ABRecordCopyValue(ABRecordRef record, ABPropertyID property) {
    const auto* from = peerFrom<Record>(record);
    return from ? given(addressbook::copyOf(from->contact(), property)) : nullptr;
}

bool ABRecordSetValue(ABRecordRef record, ABPropertyID property, const void* value, const void** error) {
    auto* to = peerFrom<Record>(record);
    return to ? addressbook::setValue(*to, property, value, error)
              : fail(error, "There is no record to change; nothing was changed.");
}

bool ABRecordRemoveValue(ABRecordRef record, ABPropertyID property, const void** error) {
    return ABRecordSetValue(record, property, nullptr, error);
}

const void* ABRecordCopyCompositeName(ABRecordRef record) {
    const auto* from = peerFrom<Record>(record);
    const std::string name = from ? contacts::compositeName(from->contact()) : std::string();
    return name.empty() ? nullptr : given(addressbook::stringOf(name));
}

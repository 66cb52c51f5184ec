// The calls about persons: types, pictures, order, vCards.
#include <sstream>

#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/objects.h"
#include "desktop/addressbook/vcard_reader.h"
#include "desktop/addressbook/vcard_writer.h"
#include "platform/foundation.h"

using addressbook::fail;
using addressbook::given;
using addressbook::Kind;
using addressbook::objectFrom;
using addressbook::peerFrom;
using addressbook::Record;
using contacts::Contact;

namespace {

/// The picture that the person has with its unsaved changes; empty for none.
std::string pictureOf(const Contact& contact) {
    if (contact.picture) return *contact.picture;
    return contact.record > 0 ? contacts::Book::shared().picture(contact.record).value_or("") : std::string();
}

}  // namespace

ABRecordRef ABPersonCreate() { return given(Record::of({}).takeOwner()); }

ABPropertyType ABPersonGetTypeOfProperty(ABPropertyID property) {
    const auto type = addressbook::typeOf(property);
    if (!type) return kABInvalidPropertyType;
    ABPropertyType number = kABStringPropertyType;
    if (type->kind == Kind::day || type->kind == Kind::moment) number = kABDateTimePropertyType;
    if (type->kind == Kind::parts) number = kABDictionaryPropertyType;
    return type->isList ? number | 256U : number;
}

const void* ABPersonCopyLocalizedPropertyName(ABPropertyID property) {
    const auto word = contacts::label::ofProperty(static_cast<contacts::Property>(property), contacts::language());
    return word.empty() ? nullptr : given(addressbook::stringOf(word));
}

bool ABPersonSetImageData(ABRecordRef person, const void* data, const void** error) {
    auto* to = peerFrom<Record>(person);
    const bool isData = isKindOf(objectFrom(data), objc::classNamed<"NSData">());
    std::string bytes = isData ? addressbook::bytesOf(objectFrom(data)) : std::string();
    if (!to || !contacts::isPicture(bytes))
        return fail(error, "The data is no picture in PNG or JPEG; nothing was changed.");
    to->change([&bytes](Contact& contact) { contact.picture = std::move(bytes); });
    return true;
}

const void* ABPersonCopyImageData(ABRecordRef person) {
    const auto* from = peerFrom<Record>(person);
    const std::string bytes = from ? pictureOf(from->contact()) : std::string();
    return bytes.empty() ? nullptr : given(addressbook::dataOf(bytes));
}

const void* ABPersonCopyImageDataWithFormat(ABRecordRef person, ABPersonImageFormat) {
    return ABPersonCopyImageData(person);
}

bool ABPersonHasImageData(ABRecordRef person) {
    const auto* from = peerFrom<Record>(person);
    return from && !pictureOf(from->contact()).empty();
}

bool ABPersonRemoveImageData(ABRecordRef person, const void** error) {
    auto* to = peerFrom<Record>(person);
    if (!to) return fail(error, "There is no person to change; nothing was changed.");
    to->change([](Contact& contact) { contact.picture = std::string(); });
    return true;
}

long ABPersonComparePeopleByName(ABRecordRef left, ABRecordRef right, std::uint32_t ordering) {
    const auto* first = peerFrom<Record>(left);
    const auto* second = peerFrom<Record>(right);
    const auto order =
        ordering == kABPersonSortByFirstName ? contacts::NameOrder::firstName : contacts::NameOrder::lastName;
    const int compared =
        contacts::compareNames(first ? first->contact() : Contact(), second ? second->contact() : Contact(), order);
    return compared < 0 ? -1 : compared > 0 ? 1 : 0;
}

const void* ABPersonCreateVCardRepresentationWithPeople(const void* people) {
    const auto list = objc::as<NSArray>(objectFrom(people));
    std::string cards;
    for (unsigned long i = 0; i < list.count(); ++i) {
        const auto* person = peerFrom<Record>(list.objectAtIndex(i).self);
        if (!person) continue;
        Contact contact = person->contact();
        contact.picture = pictureOf(contact);
        cards += vcard::write(contacts::cardOf(contact), vcard::Version::v30);
    }
    return given(addressbook::dataOf(cards));
}

const void* ABPersonCreatePeopleInSourceWithVCardRepresentation(ABRecordRef, const void* vCards) {
    auto people = NSMutableArray::make();
    std::istringstream stream(addressbook::bytesOf(objectFrom(vCards)));
    vcard::Reader reader(stream, [](const vcard::Problem&) {});
    while (const auto card = reader.next()) {
        auto person = Record::of({});
        person->change([&card](Contact& contact) { contact = contacts::contactOf(*card); });
        people->addObject(objc::Object{person.self()});
    }
    return given(std::move(people));
}

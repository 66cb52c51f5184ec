// The calls about books.
#include "desktop/addressbook/address_book.h"

#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/objects.h"
#include "platform/foundation.h"

using addressbook::AddressBook;
using addressbook::fail;
using addressbook::given;
using addressbook::objectFrom;
using addressbook::peerFrom;
using addressbook::Record;
using contacts::Book;

namespace {

/// The persons of the contacts, in that order.
const void* arrayOf(AddressBook& book, const std::vector<contacts::Contact>& contacts) {
    auto people = NSMutableArray::make();
    for (const auto& contact : contacts) people->addObject(objc::Object{book.personOf(contact).self()});
    return given(std::move(people));
}

}  // namespace

ABAddressBookRef ABAddressBookCreateWithOptions(const void*, const void** error) {
    Book& book = Book::shared();
    if (!book.isOpen()) {
        fail(error, "No contacts are open: there is no data directory that can be used.");
        return nullptr;
    }
    if (!book.isAllowed()) {
        fail(error, "Access to contacts is denied. Allow it with: quorvelctl contacts allow");
        return nullptr;
    }
    return given(objc::Ref<AddressBook>::make().takeOwner());
}

ABAddressBookRef ABAddressBookCreate() { return ABAddressBookCreateWithOptions(nullptr, nullptr); }

long ABAddressBookGetAuthorizationStatus() {
    return Book::shared().isAllowed() ? kABAuthorizationStatusAuthorized : kABAuthorizationStatusDenied;
}

bool ABAddressBookAddRecord(ABAddressBookRef book, ABRecordRef record, const void** error) {
    auto* to = peerFrom<AddressBook>(book);
    auto* added = peerFrom<Record>(record);
    if (to && added && to->add(added)) return true;
    return fail(error, "Only a new person can be added, and only once; nothing was changed.");
}

bool ABAddressBookRemoveRecord(ABAddressBookRef book, ABRecordRef record, const void** error) {
    auto* from = peerFrom<AddressBook>(book);
    auto* removed = peerFrom<Record>(record);
    if (from && removed && from->remove(removed)) return true;
    return fail(error, "Only a person of the book can be removed; nothing was changed.");
}

bool ABAddressBookSave(ABAddressBookRef book, const void** error) {
    auto* saved = peerFrom<AddressBook>(book);
    if (!saved) return fail(error, "There is no book to save.");
    const auto trouble = saved->save();
    return trouble ? fail(error, *trouble) : true;
}

bool ABAddressBookHasUnsavedChanges(ABAddressBookRef book) {
    auto* asked = peerFrom<AddressBook>(book);
    return asked && asked->hasUnsavedChanges();
}

void ABAddressBookRevert(ABAddressBookRef book) {
    if (auto* reverted = peerFrom<AddressBook>(book)) reverted->revert();
}

void ABAddressBookRegisterExternalChangeCallback(ABAddressBookRef book, ABExternalChangeCallback callback,
                                                 void* context) {
    auto* to = peerFrom<AddressBook>(book);
    if (to && callback) to->addCallback({callback, context});
}

void ABAddressBookUnregisterExternalChangeCallback(ABAddressBookRef book, ABExternalChangeCallback callback,
                                                   void* context) {
    if (auto* from = peerFrom<AddressBook>(book)) from->removeCallback({callback, context});
}

long ABAddressBookGetPersonCount(ABAddressBookRef book) {
    return peerFrom<AddressBook>(book) ? static_cast<long>(Book::shared().all()->size()) : 0;
}

ABRecordRef ABAddressBookGetPersonWithRecordID(ABAddressBookRef book, ABRecordID record) {
    auto* in = peerFrom<AddressBook>(book);
    auto* found = in ? in->person(record) : nullptr;
    return found ? found->self : nullptr;
}

const void* ABAddressBookCopyArrayOfAllPeople(ABAddressBookRef book) {
    auto* from = peerFrom<AddressBook>(book);
    if (!from) return nullptr;
    auto all = *Book::shared().all();
    contacts::sortByName(all, contacts::NameOrder::lastName);
    return arrayOf(*from, all);
}

const void* ABAddressBookCopyPeopleWithName(ABAddressBookRef book, const void* name) {
    auto* from = peerFrom<AddressBook>(book);
    if (!from) return nullptr;
    const std::string text = addressbook::textOf(objectFrom(name));
    std::vector<contacts::Contact> found;
    for (const auto& contact : *Book::shared().all())
        if (contacts::hasWordFrom(contacts::compositeName(contact), text)) found.push_back(contact);
    contacts::sortByName(found, contacts::NameOrder::lastName);
    return arrayOf(*from, found);
}

const void* ABAddressBookCopyLocalizedLabel(const void* label) {
    if (!label) return nullptr;
    const auto text = contacts::label::forPeople(addressbook::textOf(objectFrom(label)), contacts::language());
    return given(addressbook::stringOf(text));
}

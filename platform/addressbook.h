// The address book: persons and their labelled values, through its C interface.
#pragma once

#include "platform/foundation.h"

extern "C" {
using ABAddressBookRef = const void*;
using ABRecordRef = const void*;
using ABMultiValueRef = const void*;
using ABMutableMultiValueRef = const void*;
using ABRecordID = std::int32_t;
using ABPropertyID = std::int32_t;
using ABMultiValueIdentifier = std::int32_t;
using ABPropertyType = std::uint32_t;

extern const ABPropertyID kABPersonPhoneProperty;
extern const ABPropertyID kABPersonEmailProperty;
extern const void* const kABHomeLabel;
extern const void* const kABPersonPhoneMobileLabel;

ABRecordRef ABAddressBookGetPersonWithRecordID(ABAddressBookRef book, ABRecordID record);
ABRecordRef ABPersonCreate();
ABRecordID ABRecordGetRecordID(ABRecordRef record);
const void* ABRecordCopyCompositeName(ABRecordRef record);
bool ABRecordSetValue(ABRecordRef record, ABPropertyID property, const void* value, const void** error);
ABMutableMultiValueRef ABMultiValueCreateMutable(ABPropertyType type);
bool ABMultiValueAddValueAndLabel(ABMutableMultiValueRef values, const void* value, const void* label,
                                  ABMultiValueIdentifier* identifier);
}

namespace addressbook {

/// The handle of what the C interface answers; nothing is checked.
template <objc::Handle T>
inline T handleOf(const void* record) {
    return objc::as<T>(static_cast<id>(const_cast<void*>(record)));
}

inline NSString homeLabel() { return handleOf<NSString>(kABHomeLabel); }
inline NSString mobileLabel() { return handleOf<NSString>(kABPersonPhoneMobileLabel); }

}  // namespace addressbook

/// Labelled values of one property, in an order.
struct ABMultiValue : NSObject {
    static constexpr ABPropertyType textsType = 257;

    static objc::Strong<ABMultiValue> makeOfTexts() {
        return objc::Strong<ABMultiValue>::adopt(
            addressbook::handleOf<ABMultiValue>(ABMultiValueCreateMutable(textsType)));
    }
    /// False where there is nothing to add.
    bool add(NSString value, NSString label) const {
        return value && ABMultiValueAddValueAndLabel(self, value.self, label.self, nullptr);
    }
};

/// A person's record.
struct ABPerson : NSObject {
    /// A new person, in no address book yet.
    static objc::Strong<ABPerson> make() {
        return objc::Strong<ABPerson>::adopt(addressbook::handleOf<ABPerson>(ABPersonCreate()));
    }
    int recordID() const { return ABRecordGetRecordID(self); }
    /// The name as it is shown; null for a person without any.
    objc::Strong<NSString> compositeName() const {
        return objc::Strong<NSString>::adopt(addressbook::handleOf<NSString>(ABRecordCopyCompositeName(self)));
    }
    bool setValue(ABPropertyID property, ABMultiValue values) const {
        return ABRecordSetValue(self, property, values.self, nullptr);
    }
};

/// The address book itself.
struct ABAddressBook : NSObject {
    /// Null where the book has no such person, and without a book. The book keeps the person.
    ABPerson personWithRecordID(int record) const {
        if (!self) return {};
        return addressbook::handleOf<ABPerson>(ABAddressBookGetPersonWithRecordID(self, record));
    }
};

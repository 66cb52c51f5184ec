// The address book's C interface, as the handset's programs call it. Books, records and multi-values are objects: they
// are retained and released by messages, travel as handles, and are NSObjects; texts are NSStrings, dates NSDates,
// lists NSArrays, pictures and vCards NSData, addresses NSDictionaries.
//
// What Create and Copy answer, and an error, belongs to the caller; everything else is borrowed. Null arguments are
// allowed: reading answers null, 0 or an invalid identifier, changing answers false. Any thread; one record or
// multi-value is used by one thread at a time.
#pragma once

#include <cstdint>

extern "C" {

using ABAddressBookRef = const void*;
using ABRecordRef = const void*;
using ABMultiValueRef = const void*;
using ABMutableMultiValueRef = const void*;

using ABRecordID = std::int32_t;
using ABPropertyID = std::int32_t;
using ABMultiValueIdentifier = std::int32_t;
using ABPropertyType = std::uint32_t;
using ABRecordType = std::uint32_t;
using ABPersonImageFormat = std::uint32_t;

// A record that was not saved yet has the invalid identifier.
constexpr ABRecordID kABRecordInvalidID = -1;
constexpr ABPropertyID kABPropertyInvalidID = -1;
constexpr ABMultiValueIdentifier kABMultiValueInvalidIdentifier = -1;

constexpr ABRecordType kABPersonType = 0;

constexpr ABPropertyType kABInvalidPropertyType = 0;
constexpr ABPropertyType kABStringPropertyType = 1;
constexpr ABPropertyType kABIntegerPropertyType = 2;
constexpr ABPropertyType kABDateTimePropertyType = 4;
constexpr ABPropertyType kABDictionaryPropertyType = 5;
constexpr ABPropertyType kABMultiStringPropertyType = 257;
constexpr ABPropertyType kABMultiDateTimePropertyType = 260;
constexpr ABPropertyType kABMultiDictionaryPropertyType = 261;

constexpr long kABAuthorizationStatusDenied = 2;
constexpr long kABAuthorizationStatusAuthorized = 3;

constexpr ABPersonImageFormat kABPersonImageFormatThumbnail = 0;
constexpr ABPersonImageFormat kABPersonImageFormatOriginalSize = 2;

constexpr std::uint32_t kABPersonSortByFirstName = 0;
constexpr std::uint32_t kABPersonSortByLastName = 1;

// Texts.
extern const ABPropertyID kABPersonFirstNameProperty;
extern const ABPropertyID kABPersonLastNameProperty;
extern const ABPropertyID kABPersonMiddleNameProperty;
extern const ABPropertyID kABPersonPrefixProperty;
extern const ABPropertyID kABPersonSuffixProperty;
extern const ABPropertyID kABPersonNicknameProperty;
extern const ABPropertyID kABPersonFirstNamePhoneticProperty;
extern const ABPropertyID kABPersonMiddleNamePhoneticProperty;
extern const ABPropertyID kABPersonLastNamePhoneticProperty;
extern const ABPropertyID kABPersonOrganizationProperty;
extern const ABPropertyID kABPersonDepartmentProperty;
extern const ABPropertyID kABPersonJobTitleProperty;
extern const ABPropertyID kABPersonNoteProperty;
// Dates. A birthday without a year is in 1604.
extern const ABPropertyID kABPersonBirthdayProperty;
extern const ABPropertyID kABPersonCreationDateProperty;
extern const ABPropertyID kABPersonModificationDateProperty;
// Multi-values of texts.
extern const ABPropertyID kABPersonPhoneProperty;
extern const ABPropertyID kABPersonEmailProperty;
extern const ABPropertyID kABPersonURLProperty;
extern const ABPropertyID kABPersonRelatedNamesProperty;
// Multi-values of dates.
extern const ABPropertyID kABPersonDateProperty;
// Multi-values of dictionaries.
extern const ABPropertyID kABPersonAddressProperty;
extern const ABPropertyID kABPersonInstantMessageProperty;
extern const ABPropertyID kABPersonSocialProfileProperty;

// Labels, NSStrings of the form "_$!<Home>!$_"; what a user typed as a label is that text itself.
extern const void* const kABHomeLabel;
extern const void* const kABWorkLabel;
extern const void* const kABOtherLabel;
extern const void* const kABPersonPhoneMobileLabel;
extern const void* const kABPersonPhoneIPhoneLabel;
extern const void* const kABPersonPhoneMainLabel;
extern const void* const kABPersonPhoneHomeFAXLabel;
extern const void* const kABPersonPhoneWorkFAXLabel;
extern const void* const kABPersonPhoneOtherFAXLabel;
extern const void* const kABPersonPhonePagerLabel;
extern const void* const kABPersonHomePageLabel;
extern const void* const kABPersonAnniversaryLabel;

// Keys of dictionaries, NSStrings.
extern const void* const kABPersonAddressStreetKey;
extern const void* const kABPersonAddressCityKey;
extern const void* const kABPersonAddressStateKey;
extern const void* const kABPersonAddressZIPKey;
extern const void* const kABPersonAddressCountryKey;
extern const void* const kABPersonAddressCountryCodeKey;
extern const void* const kABPersonInstantMessageServiceKey;
extern const void* const kABPersonInstantMessageUsernameKey;
extern const void* const kABPersonSocialProfileServiceKey;
extern const void* const kABPersonSocialProfileUsernameKey;
extern const void* const kABPersonSocialProfileURLKey;

// The book.

/// A book over the contacts of the open data directory (see book.h), or null, with an NSError in `error` where that is
/// not null, when the user denies access or no data directory is open. Several books see each other's saved changes.
ABAddressBookRef ABAddressBookCreateWithOptions(const void* options, const void** error);
ABAddressBookRef ABAddressBookCreate();
/// kABAuthorizationStatusDenied or kABAuthorizationStatusAuthorized.
long ABAddressBookGetAuthorizationStatus();

/// Adds a new person, removes a saved one: done by the next save. A record that is in a book already is not added
/// again. False for a record that is not new, or not in the book.
bool ABAddressBookAddRecord(ABAddressBookRef book, ABRecordRef record, const void** error);
bool ABAddressBookRemoveRecord(ABAddressBookRef book, ABRecordRef record, const void** error);
/// Writes what was added, changed and removed, all or nothing; new records have an identifier after it. Other processes
/// hear "__ABDataBaseChangedByOtherProcessNotification". False, with an NSError that says what to do, where it could
/// not be written.
bool ABAddressBookSave(ABAddressBookRef book, const void** error);
bool ABAddressBookHasUnsavedChanges(ABAddressBookRef book);
/// Forgets what was added, changed and removed since the last save.
void ABAddressBookRevert(ABAddressBookRef book);

/// Called on the main thread after somebody else (another book or process) has changed contacts. `info` is null.
using ABExternalChangeCallback = void (*)(ABAddressBookRef book, const void* info, void* context);
void ABAddressBookRegisterExternalChangeCallback(ABAddressBookRef book, ABExternalChangeCallback callback,
                                                 void* context);
void ABAddressBookUnregisterExternalChangeCallback(ABAddressBookRef book, ABExternalChangeCallback callback,
                                                   void* context);

long ABAddressBookGetPersonCount(ABAddressBookRef book);
/// The person of that identifier, the same object each time as long as the book lives, or null. The book keeps it.
ABRecordRef ABAddressBookGetPersonWithRecordID(ABAddressBookRef book, ABRecordID record);
/// Everybody, sorted by name as the user's language sorts.
const void* ABAddressBookCopyArrayOfAllPeople(ABAddressBookRef book);
/// Those whose composite name has a word that begins with the text, whatever the case and the accents.
const void* ABAddressBookCopyPeopleWithName(ABAddressBookRef book, const void* name);
/// The label for people: "mobile" for "_$!<Mobile>!$_"; an own label as it is.
const void* ABAddressBookCopyLocalizedLabel(const void* label);

// Records.

ABRecordID ABRecordGetRecordID(ABRecordRef record);
ABRecordType ABRecordGetRecordType(ABRecordRef record);
/// An NSString, an NSDate or a multi-value (a copy), or null where the person has none.
const void* ABRecordCopyValue(ABRecordRef record, ABPropertyID property);
/// Takes over a copy of the value; null removes it. False, with an NSError, for a value of another type than the
/// property's, an unknown property, and the two dates that the book itself writes.
bool ABRecordSetValue(ABRecordRef record, ABPropertyID property, const void* value, const void** error);
bool ABRecordRemoveValue(ABRecordRef record, ABPropertyID property, const void** error);
/// The name as it is shown: prefix, first, middle, last and suffix; else the organisation, the nickname, the first
/// e-mail address or number. Null for a record without any.
const void* ABRecordCopyCompositeName(ABRecordRef record);

// Persons.

/// A new person, in no book yet.
ABRecordRef ABPersonCreate();
ABPropertyType ABPersonGetTypeOfProperty(ABPropertyID property);
/// The property's name for people, "Phone".
const void* ABPersonCopyLocalizedPropertyName(ABPropertyID property);
/// Takes over a copy of an image file's bytes (PNG or JPEG). False, with an NSError, for anything else.
bool ABPersonSetImageData(ABRecordRef person, const void* data, const void** error);
/// The bytes; the same in every format.
const void* ABPersonCopyImageData(ABRecordRef person);
const void* ABPersonCopyImageDataWithFormat(ABRecordRef person, ABPersonImageFormat format);
bool ABPersonHasImageData(ABRecordRef person);
bool ABPersonRemoveImageData(ABRecordRef person, const void** error);
/// -1, 0 or 1, as the user's language sorts the names.
long ABPersonComparePeopleByName(ABRecordRef left, ABRecordRef right, std::uint32_t ordering);
/// vCard 3.0 of an NSArray of persons, with their pictures.
const void* ABPersonCreateVCardRepresentationWithPeople(const void* people);
/// New persons, in no book yet, of an NSData with vCards. The source is ignored.
const void* ABPersonCreatePeopleInSourceWithVCardRepresentation(ABRecordRef source, const void* vCards);

// Multi-values: labelled values in an order. Each value has an identifier, unlike that of every other, which it keeps.

/// An empty one of a multi type (kABMultiStringPropertyType and the others); null for another type.
ABMutableMultiValueRef ABMultiValueCreateMutable(ABPropertyType type);
ABMutableMultiValueRef ABMultiValueCreateMutableCopy(ABMultiValueRef values);
/// The type of the values, without the multi bit: kABStringPropertyType for texts.
ABPropertyType ABMultiValueGetPropertyType(ABMultiValueRef values);
long ABMultiValueGetCount(ABMultiValueRef values);
const void* ABMultiValueCopyValueAtIndex(ABMultiValueRef values, long index);
const void* ABMultiValueCopyLabelAtIndex(ABMultiValueRef values, long index);
const void* ABMultiValueCopyArrayOfAllValues(ABMultiValueRef values);
ABMultiValueIdentifier ABMultiValueGetIdentifierAtIndex(ABMultiValueRef values, long index);
/// -1 where there is none.
long ABMultiValueGetIndexForIdentifier(ABMultiValueRef values, ABMultiValueIdentifier identifier);
long ABMultiValueGetFirstIndexOfValue(ABMultiValueRef values, const void* value);
/// The label may be null. The identifier is written where the pointer is not null. False for a value of another type.
bool ABMultiValueAddValueAndLabel(ABMutableMultiValueRef values, const void* value, const void* label,
                                  ABMultiValueIdentifier* identifier);
bool ABMultiValueInsertValueAndLabelAtIndex(ABMutableMultiValueRef values, const void* value, const void* label,
                                            long index, ABMultiValueIdentifier* identifier);
bool ABMultiValueRemoveValueAndLabelAtIndex(ABMutableMultiValueRef values, long index);
bool ABMultiValueReplaceValueAtIndex(ABMutableMultiValueRef values, const void* value, long index);
bool ABMultiValueReplaceLabelAtIndex(ABMutableMultiValueRef values, const void* label, long index);
}

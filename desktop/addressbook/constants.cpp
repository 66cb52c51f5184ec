// The address book's constants.
#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/values.h"

namespace {

constexpr ABPropertyID number(contacts::Property property) { return static_cast<ABPropertyID>(property); }

/// A string for the life of the process.
const void* constant(const char* text) {
    const objc::AutoreleasePool pool;
    return addressbook::stringOf(text).take().self;
}

}  // namespace

const ABPropertyID kABPersonFirstNameProperty = number(contacts::Property::firstName);
const ABPropertyID kABPersonLastNameProperty = number(contacts::Property::lastName);
const ABPropertyID kABPersonMiddleNameProperty = number(contacts::Property::middleName);
const ABPropertyID kABPersonPrefixProperty = number(contacts::Property::prefix);
const ABPropertyID kABPersonSuffixProperty = number(contacts::Property::suffix);
const ABPropertyID kABPersonNicknameProperty = number(contacts::Property::nickname);
const ABPropertyID kABPersonFirstNamePhoneticProperty = number(contacts::Property::firstNamePhonetic);
const ABPropertyID kABPersonMiddleNamePhoneticProperty = number(contacts::Property::middleNamePhonetic);
const ABPropertyID kABPersonLastNamePhoneticProperty = number(contacts::Property::lastNamePhonetic);
const ABPropertyID kABPersonOrganizationProperty = number(contacts::Property::organization);
const ABPropertyID kABPersonDepartmentProperty = number(contacts::Property::department);
const ABPropertyID kABPersonJobTitleProperty = number(contacts::Property::jobTitle);
const ABPropertyID kABPersonNoteProperty = number(contacts::Property::note);
const ABPropertyID kABPersonBirthdayProperty = number(contacts::Property::birthday);
const ABPropertyID kABPersonCreationDateProperty = number(contacts::Property::creationDate);
const ABPropertyID kABPersonModificationDateProperty = number(contacts::Property::modificationDate);
const ABPropertyID kABPersonPhoneProperty = number(contacts::Property::phone);
const ABPropertyID kABPersonEmailProperty = number(contacts::Property::email);
const ABPropertyID kABPersonURLProperty = number(contacts::Property::url);
const ABPropertyID kABPersonRelatedNamesProperty = number(contacts::Property::relatedNames);
const ABPropertyID kABPersonDateProperty = number(contacts::Property::date);
const ABPropertyID kABPersonAddressProperty = number(contacts::Property::address);
const ABPropertyID kABPersonInstantMessageProperty = number(contacts::Property::instantMessage);
const ABPropertyID kABPersonSocialProfileProperty = number(contacts::Property::socialProfile);

const void* const kABHomeLabel = constant(contacts::label::home);
const void* const kABWorkLabel = constant(contacts::label::work);
const void* const kABOtherLabel = constant(contacts::label::other);
const void* const kABPersonPhoneMobileLabel = constant(contacts::label::mobile);
const void* const kABPersonPhoneIPhoneLabel = constant(contacts::label::iPhone);
const void* const kABPersonPhoneMainLabel = constant(contacts::label::mainNumber);
const void* const kABPersonPhoneHomeFAXLabel = constant(contacts::label::homeFax);
const void* const kABPersonPhoneWorkFAXLabel = constant(contacts::label::workFax);
const void* const kABPersonPhoneOtherFAXLabel = constant(contacts::label::otherFax);
const void* const kABPersonPhonePagerLabel = constant(contacts::label::pager);
const void* const kABPersonHomePageLabel = constant(contacts::label::homePage);
const void* const kABPersonAnniversaryLabel = constant(contacts::label::anniversary);

const void* const kABPersonAddressStreetKey = constant("Street");
const void* const kABPersonAddressCityKey = constant("City");
const void* const kABPersonAddressStateKey = constant("State");
const void* const kABPersonAddressZIPKey = constant("ZIP");
const void* const kABPersonAddressCountryKey = constant("Country");
const void* const kABPersonAddressCountryCodeKey = constant("CountryCode");
const void* const kABPersonInstantMessageServiceKey = constant("service");
const void* const kABPersonInstantMessageUsernameKey = constant("username");
const void* const kABPersonSocialProfileServiceKey = constant("service");
const void* const kABPersonSocialProfileUsernameKey = constant("username");
const void* const kABPersonSocialProfileURLKey = constant("url");

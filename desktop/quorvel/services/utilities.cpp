// QuorvelUtils.
#include "desktop/quorvel/services/utilities.h"

#include <cstdio>

#include "desktop/addressbook/number_index.h"
#include "desktop/quorvel/services/contact_pictures.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/list_texts.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

objc::Strong<> localizedString(Class, objc::Object key) { return textForList(key); }
objc::Strong<> pictureFromCache(Class, int record) { return ContactPictures::shared().inMemory(record); }
objc::Strong<> picture(Class, int record) { return ContactPictures::shared().load(record); }

objc::Object dateFormatter(Class) {
    static const auto one = objc::make<objc::Object>(objc::classNamed<"NSDateFormatter">());
    return one;
}

bool emailAddress(Class, objc::Object text) { return isEmailAddress(uikit::utf8(text)); }
/// Of a withheld number, what a row says of it.
objc::Strong<> formattedPhoneNumber(Class, objc::Object number) {
    const std::string text = uikit::utf8(number);
    if (text.empty()) return Texts::shared().text(uikit::nsString("UNKNOWN"));
    return uikit::nsString(formattedNumber(text));
}
bool canAccessAddressBook(Class) { return canSeeContacts(); }
const void* person(Class, int record) { return personOf(record); }
const void* addressBook(Class) { return sharedAddressBook(); }

std::string addressOf(const CallEntry* entry) { return entry ? uikit::utf8(entry->phoneNumber()) : std::string(); }

long numberIndex(Class, const void* person, CallEntry* entry) {
    return contacts::indexOfAddress(numbersOf(person), addressOf(entry));
}
long emailIndex(Class, const void* person, CallEntry* entry) {
    return contacts::indexOfAddress(emailsOf(person), addressOf(entry));
}

/// Gives the calls of the person's addresses to the contact.
void updateHistory(Class, const void* person, int record) {
    store::CallStore* calls = DataService::shared()->store();
    if (!calls || !person || record <= 0) return;
    if (const auto trouble = linkCallsOf(*calls, record)) std::fprintf(stderr, "libQuorvel: %s\n", trouble->c_str());
}

bool isPreIOS4(Class) { return false; }
bool isIOS7(Class) { return true; }

}  // namespace

void Utilities::define(objc::ClassDefinition<Utilities>& definition) {
    definition.classMethod<"getLocalizedString:", &localizedString>()
        .classMethod<"getContactImageFromCache:", &pictureFromCache>()
        .classMethod<"getContactImage:", &picture>()
        .classMethod<"dateFormatter", &dateFormatter>()
        .classMethod<"isEmailAddress:", &emailAddress>()
        .classMethod<"getFormattedPhoneNumber:", &formattedPhoneNumber>()
        .classMethod<"canAccessAddressBook", &canAccessAddressBook>()
        .classMethod<"getPersonRecordFromDB:", &person>()
        .classMethod<"getAddressBook", &addressBook>()
        .classMethod<"getHighlitedPhoneNumberPropertyIndex:entry:", &numberIndex>()
        .classMethod<"getHighlitedEmailPropertyIndex:entry:", &emailIndex>()
        .classMethod<"updateQuorvelCallsHistory:rowID:", &updateHistory>()
        .classMethod<"isPreIOS_4", &isPreIOS4>()
        .classMethod<"isIOS_7_0", &isIOS7>();
}

}  // namespace quorvel

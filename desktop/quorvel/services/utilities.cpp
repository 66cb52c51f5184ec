// QuorvelUtils.
#include "desktop/quorvel/services/utilities.h"

#include <cstdio>
#include <set>

#include "desktop/quorvel/services/contact_pictures.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/uikit/text.h"

namespace quorvel {
namespace {

objc::Strong<> localizedString(Class, objc::Object key) { return Texts::shared().text(key); }
objc::Strong<> pictureFromCache(Class, int record) { return ContactPictures::shared().inMemory(record); }
objc::Strong<> picture(Class, int record) { return ContactPictures::shared().load(record); }

objc::Object dateFormatter(Class) {
    static const auto one = objc::make<objc::Object>(objc::classNamed<"NSDateFormatter">());
    return one;
}

bool emailAddress(Class, objc::Object text) { return isEmailAddress(uikit::utf8(text)); }
objc::Strong<> formattedPhoneNumber(Class, objc::Object number) {
    return uikit::nsString(formattedNumber(uikit::utf8(number)));
}
std::filesystem::path& contactsFolder() {
    static auto* const one = new std::filesystem::path();
    return *one;
}

bool canAccessAddressBook(Class) {
    std::error_code error;
    if (std::filesystem::exists(contactsFolder() / "denied", error)) return false;
    return !contactSource().isAllowed || contactSource().isAllowed();
}

const void* personOf(Class, int record) {
    return contactSource().person && record > 0 ? contactSource().person(record) : nullptr;
}
const void* addressBook(Class) { return contactSource().book ? contactSource().book() : nullptr; }

std::string addressOf(const CallEntry* entry) { return entry ? uikit::utf8(entry->phoneNumber.load()) : std::string(); }

long numberIndex(Class, const void* person, CallEntry* entry) {
    if (!person || !contactSource().numbers) return -1;
    return indexOfAddress(contactSource().numbers(person), addressOf(entry));
}
long emailIndex(Class, const void* person, CallEntry* entry) {
    if (!person || !contactSource().emails) return -1;
    return indexOfAddress(contactSource().emails(person), addressOf(entry));
}

/// Gives the calls of the person's numbers that belong to nobody yet to the contact.
void updateHistory(Class, const void* person, int record) {
    store::CallStore* calls = DataService::shared()->store();
    if (!calls || !person || record <= 0) return;
    const auto& source = contactSource();
    std::set<std::string> own;
    for (const auto* values : {&source.numbers, &source.emails}) {
        if (!*values) continue;
        for (const auto& value : (*values)(person)) own.insert(canonicalAddress(value));
    }
    const std::string name = source.name ? source.name(person) : std::string();
    for (const auto& unknown : calls->query("select address from call where id = -1 group by address")) {
        if (unknown.address.empty() || !own.contains(canonicalAddress(unknown.address))) continue;
        const auto linked = calls->link(unknown.address, record, name, {});
        if (!linked) std::fprintf(stderr, "libQuorvel: %s\n", linked.error().message.c_str());
    }
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
        .classMethod<"getPersonRecordFromDB:", &personOf>()
        .classMethod<"getAddressBook", &addressBook>()
        .classMethod<"getHighlitedPhoneNumberPropertyIndex:entry:", &numberIndex>()
        .classMethod<"getHighlitedEmailPropertyIndex:entry:", &emailIndex>()
        .classMethod<"updateQuorvelCallsHistory:rowID:", &updateHistory>()
        .classMethod<"isPreIOS_4", &isPreIOS4>()
        .classMethod<"isIOS_7_0", &isIOS7>();
}

void setContactsFolder(std::filesystem::path folder) {
    ContactPictures::shared().setFolder(folder);
    contactsFolder() = std::move(folder);
}

}  // namespace quorvel

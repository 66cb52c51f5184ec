// Whose calls belong together, by the address book's way of comparing numbers.
#include "desktop/quorvel/services/counterpart.h"

#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/uikit/text.h"

namespace quorvel {

Counterpart::Counterpart(const CallEntry& entry) : contact_(entry.contact) {
    if (contact_ == store::noContact) {
        take(uikit::utf8(entry.phoneNumber()));
        return;
    }
    const void* person = canSeeContacts() ? personOf(contact_) : nullptr;
    for (const auto& number : numbersOf(person)) take(number);
    for (const auto& address : emailsOf(person)) take(address);
}

void Counterpart::take(const std::string& address) {
    spellings_.insert(address);
    // Withheld numbers have no key: each spelling of them is compared as it stands.
    const auto key = keyOf(address);
    if (key.text.empty()) return;
    keys_.insert(key.text);
    if (const auto end = lastDigitsOf(key.text)) keyEnds_.insert(*end);
}

bool Counterpart::hasKeyOf(const std::string& address) const {
    if (keys_.empty()) return false;
    // A log has many numbers, and to work out the key of each takes far longer than to read them all.
    if (const auto end = lastDigitsOf(address); end && !keyEnds_.contains(*end)) return false;
    return keys_.contains(keyOf(address).text);
}

bool Counterpart::isOn(std::int32_t contact, const std::string& address) const {
    if (contact != store::noContact) return contact == contact_;
    return spellings_.contains(address) || hasKeyOf(address);
}

bool Counterpart::isOn(const CallEntry& call) const { return isOn(call.contact, uikit::utf8(call.phoneNumber())); }

store::Result<store::Correspondent> Counterpart::in(const store::CallStore& calls) const {
    const auto known = calls.addresses();
    if (!known) return known.error();
    store::Correspondent with{contact_, {}};
    for (const auto& each : *known) {
        if (each.contactId == store::noContact && isOn(store::noContact, each.address))
            with.addresses.push_back(each.address);
    }
    return with;
}

}  // namespace quorvel

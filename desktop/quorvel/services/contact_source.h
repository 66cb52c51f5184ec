// Whom the companion knows calls from: the address book, as far as the user lets programs see it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "desktop/quorvel/store/call_store.h"

namespace quorvel {

/// Opens the contacts of the folder and says on standard error what had to be put right. From then on the calls of the
/// log follow the contacts (see followContacts()). Main thread, before the plug-in is loaded.
void openContacts(const std::filesystem::path& folder);
/// Waits for what is being linked; after it no call is touched. Main thread.
void closeContacts();

bool canSeeContacts();
/// The book of the process, or null while access is denied. Any thread.
const void* sharedAddressBook();
/// The person of the record, or null: there is none, or access is denied. Borrowed. Any thread.
const void* personOf(int record);
/// The person's telephone numbers and e-mail addresses, in the order of the card.
std::vector<std::string> numbersOf(const void* person);
std::vector<std::string> emailsOf(const void* person);

/// What calls with an address say of the contact that it belongs to.
struct Caller {
    int record = store::noContact;
    std::string name;
    std::string label;  ///< as people read it
};
/// Nothing where the address is nobody's, or access is denied. Any thread; off the main thread where contacts may have
/// just changed, because then all their numbers are looked at.
std::optional<Caller> callerOf(const std::string& address);

/// Gives the calls of the log the contact, name and label of today: those of a contact that has gone or has lost the
/// number become nobody's. Calls whose contact the book never had are left. Answers what could not be written. Any
/// thread but the main one.
std::optional<std::string> linkCalls(store::CallStore& calls);
/// The same for the calls of one person's addresses.
std::optional<std::string> linkCallsOf(store::CallStore& calls, const void* person);

/// Links the calls in the background, now and whenever contacts change; then the lists are to be loaded again. Any
/// thread.
void followContacts();

}  // namespace quorvel

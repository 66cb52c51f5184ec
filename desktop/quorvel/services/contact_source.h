// Whom the companion knows calls from: the address book, as far as the user lets programs see it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/addressbook/call_links.h"

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

using contacts::callerOf;
using contacts::linkCalls;
using contacts::linkCallsOf;

/// Links the calls in the background, now and whenever contacts change; then the lists are to be loaded again. Any
/// thread.
void followContacts();

}  // namespace quorvel

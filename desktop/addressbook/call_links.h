// The calls of a log and the contacts that they belong to.
#pragma once

#include <optional>
#include <string>

#include "desktop/quorvel/store/call_store.h"

namespace contacts {

/// What calls with an address say of the contact that it belongs to.
struct Caller {
    int record = quorvel::store::noContact;
    std::string name;
    std::string label;  ///< as the log holds it: label::inLog()
};
/// By the open book. Nothing where the address is nobody's, or access is denied. Any thread; off the main thread where
/// contacts may have just changed, because then all their numbers are looked at.
std::optional<Caller> callerOf(const std::string& address);

/// Gives the calls of the log the contact, name and label of today: those of a contact that has gone or has lost the
/// number become nobody's. Calls whose contact the book never had are left, and so are all while access is denied.
/// All of them in one transaction, for which no reader waits. Answers what could not be written. Any thread but the
/// main one, because another program's change is waited for.
std::optional<std::string> linkCalls(quorvel::store::CallStore& calls);
/// The same for the calls that belong to one contact now.
std::optional<std::string> linkCallsOf(quorvel::store::CallStore& calls, int record);

}  // namespace contacts

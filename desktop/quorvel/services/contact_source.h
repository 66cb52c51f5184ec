// The address book as the companion uses it: an outside library fills it in. Without one nobody is a contact.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quorvel {

/// Person records and the book are the address book's own, passed through unseen. Each function may be called on any
/// thread and may be empty: then there is no person, no value and no name.
struct ContactSource {
    /// The person of the record, or null. The caller does not own it.
    std::function<const void*(int record)> person;
    /// The book itself, or null.
    std::function<const void*()> book;
    /// The person's telephone numbers and e-mail addresses, in the order of the card.
    std::function<std::vector<std::string>(const void* person)> numbers;
    std::function<std::vector<std::string>(const void* person)> emails;
    /// The person's name as it is shown; empty for none.
    std::function<std::string(const void* person)> name;
    /// Whether the user lets the program see the book.
    std::function<bool()> isAllowed;
};

/// Once, before the plug-in is loaded.
void setContactSource(ContactSource source);
const ContactSource& contactSource();

/// Which of the values is the address, in whatever spelling; -1 for none.
int indexOfAddress(const std::vector<std::string>& values, const std::string& address);

}  // namespace quorvel

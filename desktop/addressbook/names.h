// Sorting and finding contacts by name, as the user's language does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/addressbook/contact.h"

namespace contacts {

/// The language for sorting and for labels, "de"; that of the process's locale until one is set. Any thread.
void setLanguage(std::string language);
std::string language();
/// The name of the process's locale, "de_AT".
std::string localeName();

enum class NameOrder { firstName, lastName };

/// Less than, equal to or greater than 0. Contacts without the name of the order are sorted by the name they show.
int compareNames(const Contact& left, const Contact& right, NameOrder order);
void sortByName(std::vector<Contact>& contacts, NameOrder order);

/// Whether a word of the name begins with the text, whatever the case and the accents. An empty text begins none.
bool hasWordFrom(std::string_view name, std::string_view text);

}  // namespace contacts

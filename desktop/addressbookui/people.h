// The book behind the screens: persons as their records, saved and removed.
#pragma once

#include <optional>
#include <string>

#include "desktop/addressbook/objects.h"
#include "desktop/graphics/image.h"

namespace addressbookui {

/// What the person is now: as saved where the record has no changes of its own. Empty for null.
contacts::Contact contactOf(const void* person);

/// Writes the contact into the book, and into the record, which has an identifier after it. Answers, in the user's
/// language where it is the user's to mend, why it could not be written; nothing has changed then.
std::optional<std::string> savePerson(addressbook::Record& record, const contacts::Contact& contact);
std::optional<std::string> deletePerson(int record);

/// The person's picture, made small enough for a card; empty for none or a bad one.
graphics::Image pictureOf(const contacts::Contact& contact);

/// The addresses that others call from or write from: numbers, then e-mail addresses.
std::vector<std::string> callersAddresses(const contacts::Contact& contact);
/// Whether calls from all of these are blocked; false for none.
bool areBlocked(const std::vector<std::string>& addresses);
std::optional<std::string> setBlocked(const std::vector<std::string>& addresses, bool blocked);

bool isFavourite(int record);
std::optional<std::string> addFavourite(int record, const std::string& address);
/// Takes every favourite of the person out of the list.
std::optional<std::string> removeFavourites(int record);

}  // namespace addressbookui

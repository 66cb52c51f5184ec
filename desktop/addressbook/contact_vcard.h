// Contacts of vCards and vCards of contacts.
#pragma once

#include <string>

#include "desktop/addressbook/contact.h"
#include "desktop/addressbook/vcard.h"

namespace contacts {

/// The contact that the card describes. What no property of a contact stands for is kept among its `others`; only what
/// says how the card was written (PRODID, REV and the like) and a display name beside the parts of the name go.
Contact contactOf(const vcard::Card& card);

/// Whether the card is an entry of a telephone's list of calls and not a contact.
bool isCallRecord(const vcard::Card& card);

/// The card of the contact, its picture included where the contact carries it, in the properties of version 3.0.
vcard::Card cardOf(const Contact& contact);

/// A day as contacts keep it, "2001-02-28" or "--02-28", of a date in any form that vCards have; empty for none.
std::string dayOf(std::string_view text);

/// Whether the bytes begin as those of a PNG or JPEG file do.
bool isPicture(std::string_view bytes);

}  // namespace contacts

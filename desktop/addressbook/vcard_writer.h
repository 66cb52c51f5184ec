// Writes vCards.
#pragma once

#include <string>

#include "desktop/addressbook/vcard.h"

namespace vcard {

/// The card in that version, whatever its own: lines of at most 75 bytes that end in CR LF, UTF-8. Reading it gives the
/// same properties, with three exceptions: version 2.1 knows no quotes in parameters, which become apostrophes; its
/// backslashes cannot stand before a semicolon, so a blank is put between; and control characters are left out of
/// parameters. Nothing for a property without a usable name.
std::string write(const Card& card, Version version);

/// One property as one line without folds, which propertyOf() reads in version 3.0.
std::string contentLine(const Property& property);

}  // namespace vcard

// Telephone numbers as the companion's services speak of them; see the address book's numbers.h.
#pragma once

#include "desktop/addressbook/numbers.h"

namespace quorvel {

using contacts::formattedNumber;
using contacts::homeRegion;
using contacts::homeRevision;
using contacts::isEmailAddress;
using contacts::keyOf;
using contacts::lastDigitsOf;
using contacts::placeOf;
using contacts::regionOf;
using contacts::setHomeRegion;

}  // namespace quorvel

// Telephone numbers and addresses as people write them.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// Where numbers without a country code are from: an ISO country code such as "DE". Main thread, before the first
/// number is formatted.
void setHomeRegion(std::string region);
/// The country of a locale, "AT" for "de_AT"; the likely one where the locale names none ("DE" for "de").
std::string regionOf(const std::string& locale);

/// The number in the usual form of its country: national at home, international from elsewhere. What is not a valid
/// number (a short code, an e-mail address, nothing at all) comes back as it is. Any thread.
std::string formattedNumber(const std::string& number);

/// One form for all spellings of an address: the international number in digits, the e-mail address in small letters,
/// else the text without blanks. Two addresses are the same when these are equal. Any thread.
std::string canonicalAddress(const std::string& address);

/// Whether the text is an e-mail address: one "@", something before it, and a domain with a dot behind it.
bool isEmailAddress(std::string_view text);

}  // namespace quorvel

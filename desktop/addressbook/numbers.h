// Telephone numbers and addresses as people write them: how they are shown, compared and placed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace contacts {

/// Where numbers without a country code are from: an ISO code such as "DE". "US" until it is set. Any thread.
void setHomeRegion(std::string region);
std::string homeRegion();
/// Another value once the home region is another. Any thread.
std::uint64_t homeRevision();
/// The country of a locale, "AT" for "de_AT"; the likely one where the locale names none ("DE" for "de").
std::string regionOf(const std::string& locale);

/// The number in the usual form of its country: national at home, international from elsewhere. What is not a valid
/// number (a short code, an e-mail address, nothing at all, more than 250 bytes) comes back as it is. Each distinct
/// number is worked out once. Any thread.
std::string formattedNumber(const std::string& number);

/// Whether the text is an e-mail address: one "@", something before it, and a domain with a dot behind it.
bool isEmailAddress(std::string_view text);

/// Where the number was given out ("Berlin", "California"), in that language where the place is known in it; empty for
/// no place. Coarse, and nothing about where the caller is. Each distinct number is worked out once. Any thread.
std::string placeOf(const std::string& number, const std::string& language);

/// How often a form, a key or a place had to be worked out, because it was not remembered. Texts that are far too long
/// for a number do not count: nothing is worked out for them.
std::size_t numbersWorkedOut();

/// An address in the form in which addresses are compared.
struct AddressKey {
    /// The international number ("+493012345"), the digits of a number that has no known country, the small letters of
    /// an e-mail address. Empty for an address that belongs to nobody: none, or a withheld one.
    std::string text;
    /// What is dialled after the number to reach one of several people; does not make it another number.
    std::string extension;
    /// Whether it is a number whose country is known: it names it, or it is valid at home.
    bool isWhole = false;
    /// The digits of a number that nothing says the country of, without leading zeros; empty for all else.
    std::string partialDigits;

    bool isSame(const AddressKey& other) const { return !text.empty() && text == other.text; }
    /// Whether one of the two has no country, and stands at the end of the other. Fewer than seven digits never do.
    bool isLooselySame(const AddressKey& other) const;
};

/// Each distinct address is worked out once. Any thread.
AddressKey keyOf(const std::string& address);

/// The last four digits of an address that is written with digits and the usual marks between them alone, which are the
/// last of its key's text too: who looks for a key among many addresses need not work out those that end otherwise.
/// Nothing for every other address, and for one with fewer digits. Any thread.
std::optional<int> lastDigitsOf(std::string_view address);

}  // namespace contacts

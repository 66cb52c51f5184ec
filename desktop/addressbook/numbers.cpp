// Numbers through libphonenumber, each distinct one once.
#include "desktop/addressbook/numbers.h"

#include <phonenumbers/geocoding/phonenumber_offline_geocoder.h>
#include <phonenumbers/phonenumberutil.h>
#include <unicode/locid.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <unordered_map>

namespace contacts {
namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberOfflineGeocoder;
using i18n::phonenumbers::PhoneNumberUtil;

constexpr std::size_t mostRemembered = 100000;
constexpr std::size_t fewestDigitsInCommon = 7;
/// In bytes, with marks, an extension and what is dialled later. The library's patterns take time that grows with the
/// square of the length, so that nothing longer gets there.
constexpr std::size_t longestNumber = 250;
/// Beyond this no text is remembered: what is remembered is bounded by the number of texts.
constexpr std::size_t longestRemembered = 1000;

/// Results by text, for one region. Cleared when full: what is still in use comes back soon.
template <class Value>
using Memory = std::unordered_map<std::string, Value>;

struct Remembered {
    std::mutex mutex;
    std::string region = "US";
    std::atomic<std::uint64_t> revision{0};
    Memory<std::string> formatted;
    Memory<AddressKey> keys;
    Memory<std::string> places;  // by language and number
    std::atomic<std::size_t> workedOut{0};
};
Remembered& remembered() {
    static auto* const one = new Remembered();
    return *one;
}

template <class Value, class Work>
Value once(Memory<Value> Remembered::*memory, const std::string& text, const Work& work) {
    Remembered& all = remembered();
    if (text.size() > longestRemembered) return work(text, homeRegion());
    std::string region;
    {
        const std::lock_guard lock(all.mutex);
        if (const auto known = (all.*memory).find(text); known != (all.*memory).end()) return known->second;
        region = all.region;
    }
    ++all.workedOut;
    Value value = work(text, region);
    const std::lock_guard lock(all.mutex);
    if (region != all.region) return value;
    if ((all.*memory).size() >= mostRemembered) (all.*memory).clear();
    (all.*memory).insert_or_assign(text, value);
    return value;
}

const PhoneNumberUtil& rules() { return *PhoneNumberUtil::GetInstance(); }

/// The one way into the library for a text. Nothing for what is no number, or longer than one can be.
std::optional<PhoneNumber> parsedNumber(const std::string& text, const std::string& region) {
    if (text.size() > longestNumber) return std::nullopt;
    PhoneNumber parsed;
    if (rules().Parse(text, region, &parsed) != PhoneNumberUtil::NO_PARSING_ERROR) return std::nullopt;
    return parsed;
}

std::string format(const std::string& number, const std::string& region) {
    const auto parsed = parsedNumber(number, region);
    if (!parsed || !rules().IsValidNumber(*parsed)) return number;
    const bool isHome = parsed->country_code() == rules().GetCountryCodeForRegion(region);
    std::string text;
    rules().Format(*parsed, isHome ? PhoneNumberUtil::NATIONAL : PhoneNumberUtil::INTERNATIONAL, &text);
    return text;
}

/// The geocoder keeps tables that it reads when they are asked for, and orders nothing itself.
std::string placeOfParsed(const PhoneNumber& number, const std::string& language) {
    static auto* const mutex = new std::mutex();
    const std::lock_guard lock(*mutex);
    static const auto* const geocoder = new PhoneNumberOfflineGeocoder();
    return geocoder->GetDescriptionForNumber(number, icu::Locale(language.c_str()));
}

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

std::string inSmallLettersWithoutBlanks(std::string_view text) {
    std::string kept;
    for (const char letter : text) {
        if (letter == ' ' || letter == '\t' || letter == '\n') continue;
        kept += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return kept;
}

/// Without what is dialled once the call stands: "1234p5678w9", "1234,5678".
std::string withoutLaterDigits(const std::string& number) {
    const auto last = number.find_last_not_of("0123456789*#pPwW,; -");
    const auto pause = number.find_first_of("pPwW,;", last == std::string::npos ? 0 : last + 1);
    const bool hasNumber = std::ranges::any_of(number.substr(0, pause), isDigit);
    return hasNumber ? number.substr(0, pause) : number;
}

/// The key of a number that is not valid as it stands: a short code, one that lacks its country or area, or none.
AddressKey keyOfPartial(const std::string& number) {
    AddressKey key;
    std::string digits;
    bool isNumber = true;
    for (const char letter : number) {
        if (isDigit(letter)) digits += letter;
        const bool isFiller = std::string_view(" ()-./\t").find(letter) != std::string_view::npos;
        isNumber = isNumber && (isDigit(letter) || isFiller);
    }
    // "-1" and its like stand for withheld numbers.
    if (digits.empty() || (digits.size() < 2 && number.find_first_of("*#@") == std::string::npos)) return key;
    key.text = isNumber ? digits : inSmallLettersWithoutBlanks(number);
    if (isNumber) key.partialDigits = digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
    return key;
}

AddressKey makeKey(const std::string& address, const std::string& region) {
    AddressKey key;
    if (address.find('@') != std::string::npos) {
        key.text = inSmallLettersWithoutBlanks(address);
        return key;
    }
    const std::string number = withoutLaterDigits(address);
    const auto parsed = parsedNumber(number, region);
    const bool namesCountry = number.find('+') != std::string::npos;
    if (!parsed || (!rules().IsValidNumber(*parsed) && !namesCountry)) return keyOfPartial(number);
    rules().Format(*parsed, PhoneNumberUtil::E164, &key.text);
    key.extension = parsed->extension();
    key.isWhole = true;
    return key;
}

}  // namespace

void setHomeRegion(std::string region) {
    Remembered& all = remembered();
    const std::lock_guard lock(all.mutex);
    if (region == all.region) return;
    all.region = std::move(region);
    ++all.revision;
    all.formatted.clear();
    all.keys.clear();
    all.places.clear();
}

std::string homeRegion() {
    Remembered& all = remembered();
    const std::lock_guard lock(all.mutex);
    return all.region;
}

std::uint64_t homeRevision() { return remembered().revision; }

std::string regionOf(const std::string& locale) {
    icu::Locale full(locale.c_str());
    if (*full.getCountry() == '\0') {
        UErrorCode status = U_ZERO_ERROR;
        full.addLikelySubtags(status);
    }
    const std::string region = full.getCountry();
    return region.empty() ? "US" : region;
}

std::string formattedNumber(const std::string& number) { return once(&Remembered::formatted, number, format); }

bool isEmailAddress(std::string_view text) {
    const auto at = text.find('@');
    if (at == std::string_view::npos || at == 0 || text.find('@', at + 1) != std::string_view::npos) return false;
    if (text.find_first_of(" \t\r\n") != std::string_view::npos) return false;
    const std::string_view domain = text.substr(at + 1);
    const auto dot = domain.rfind('.');
    return dot != std::string_view::npos && dot > 0 && dot + 1 < domain.size() && domain.front() != '.';
}

std::string placeOf(const std::string& number, const std::string& language) {
    return once(&Remembered::places, language + '\n' + number, [&](const std::string&, const std::string& region) {
        const auto parsed = parsedNumber(number, region);
        return parsed ? placeOfParsed(*parsed, language) : std::string();
    });
}

std::size_t numbersWorkedOut() { return remembered().workedOut; }

bool AddressKey::isLooselySame(const AddressKey& other) const {
    if (isWhole == other.isWhole) return false;
    const AddressKey& whole = isWhole ? *this : other;
    const AddressKey& partial = isWhole ? other : *this;
    return partial.partialDigits.size() >= fewestDigitsInCommon && whole.text.ends_with(partial.partialDigits);
}

std::optional<int> lastDigitsOf(std::string_view address) {
    constexpr int wanted = 4;
    int digits = 0, last = 0, place = 1;
    for (std::size_t at = address.size(); at-- > 0;) {
        const char letter = address[at];
        if (isDigit(letter)) {
            if (digits++ < wanted) {
                last += (letter - '0') * place;
                place *= 10;
            }
        } else if (std::string_view(" +()-./").find(letter) == std::string_view::npos) {
            return std::nullopt;
        }
    }
    return digits >= wanted ? std::optional(last) : std::nullopt;
}

AddressKey keyOf(const std::string& address) { return once(&Remembered::keys, address, makeKey); }

}  // namespace contacts

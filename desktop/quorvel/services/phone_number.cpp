// Numbers through libphonenumber, each distinct one once.
#include "desktop/quorvel/services/phone_number.h"

#include <phonenumbers/phonenumberutil.h>
#include <unicode/locid.h>

#include <mutex>
#include <unordered_map>

namespace quorvel {
namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

constexpr std::size_t mostRemembered = 20000;

struct Remembered {
    std::mutex mutex;
    std::string region = "US";
    std::unordered_map<std::string, std::string> formatted;
};
Remembered& remembered() {
    static auto* const one = new Remembered();
    return *one;
}

std::string format(const std::string& number, const std::string& region) {
    const auto& rules = *PhoneNumberUtil::GetInstance();
    PhoneNumber parsed;
    if (rules.Parse(number, region, &parsed) != PhoneNumberUtil::NO_PARSING_ERROR) return number;
    if (!rules.IsValidNumber(parsed)) return number;
    const bool isHome = parsed.country_code() == rules.GetCountryCodeForRegion(region);
    std::string text;
    rules.Format(parsed, isHome ? PhoneNumberUtil::NATIONAL : PhoneNumberUtil::INTERNATIONAL, &text);
    return text;
}

std::string lettersWithoutBlanks(std::string_view text) {
    std::string kept;
    for (const char letter : text)
        if (letter != ' ') kept += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    return kept;
}

}  // namespace

void setHomeRegion(std::string region) {
    Remembered& all = remembered();
    const std::lock_guard lock(all.mutex);
    all.region = std::move(region);
    all.formatted.clear();
}

std::string regionOf(const std::string& locale) {
    icu::Locale full(locale.c_str());
    if (*full.getCountry() == '\0') {
        UErrorCode status = U_ZERO_ERROR;
        full.addLikelySubtags(status);
    }
    const std::string region = full.getCountry();
    return region.empty() ? "US" : region;
}

std::string formattedNumber(const std::string& number) {
    Remembered& all = remembered();
    const std::lock_guard lock(all.mutex);
    if (const auto known = all.formatted.find(number); known != all.formatted.end()) return known->second;
    if (all.formatted.size() >= mostRemembered) all.formatted.clear();
    return all.formatted.emplace(number, format(number, all.region)).first->second;
}

std::string canonicalAddress(const std::string& address) {
    if (isEmailAddress(address)) return lettersWithoutBlanks(address);
    std::string region;
    {
        Remembered& all = remembered();
        const std::lock_guard lock(all.mutex);
        region = all.region;
    }
    const auto& rules = *PhoneNumberUtil::GetInstance();
    PhoneNumber parsed;
    const bool isNumber =
        rules.Parse(address, region, &parsed) == PhoneNumberUtil::NO_PARSING_ERROR && rules.IsValidNumber(parsed);
    if (!isNumber) return lettersWithoutBlanks(address);
    std::string text;
    rules.Format(parsed, PhoneNumberUtil::E164, &text);
    return text;
}

bool isEmailAddress(std::string_view text) {
    const auto at = text.find('@');
    if (at == std::string_view::npos || at == 0 || text.find('@', at + 1) != std::string_view::npos) return false;
    if (text.find_first_of(" \t\r\n") != std::string_view::npos) return false;
    const std::string_view domain = text.substr(at + 1);
    const auto dot = domain.rfind('.');
    return dot != std::string_view::npos && dot > 0 && dot + 1 < domain.size() && domain.front() != '.';
}

}  // namespace quorvel

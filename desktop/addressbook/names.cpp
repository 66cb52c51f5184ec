// Names by ICU's collation and normal forms.
#include "desktop/addressbook/names.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace contacts {
namespace {

struct Language {
    std::mutex mutex;
    std::string name;
    std::shared_ptr<const icu::Collator> collator;
};
Language& current() {
    static auto* const one = new Language();
    return *one;
}

/// Null where ICU has no data; then names are compared by their bytes.
std::shared_ptr<const icu::Collator> collator() {
    Language& all = current();
    const std::lock_guard lock(all.mutex);
    if (!all.collator) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale locale = all.name.empty() ? icu::Locale::getDefault() : icu::Locale(all.name.c_str());
        all.collator.reset(icu::Collator::createInstance(locale, status));
    }
    return all.collator;
}

std::string keyOfName(const Contact& contact, NameOrder order) {
    const bool isByLast = order == NameOrder::lastName;
    const std::string& first = contact.text(isByLast ? Property::lastName : Property::firstName);
    const std::string& second = contact.text(isByLast ? Property::firstName : Property::lastName);
    if (first.empty()) return second.empty() ? compositeName(contact) : second;
    return second.empty() ? first : first + " " + second;
}

int compareTexts(const icu::Collator* collator, const std::string& left, const std::string& right) {
    if (!collator) return left.compare(right);
    UErrorCode status = U_ZERO_ERROR;
    return collator->compareUTF8(left, right, status);
}

icu::UnicodeString folded(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* forms = icu::Normalizer2::getNFKDInstance(status);
    const auto given =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    const icu::UnicodeString taken = forms ? forms->normalize(given, status) : given;
    icu::UnicodeString plain;
    for (std::int32_t i = 0; i < taken.length(); i = taken.moveIndex32(i, 1)) {
        const UChar32 character = taken.char32At(i);
        if (u_charType(character) != U_NON_SPACING_MARK) plain.append(character);
    }
    return plain.foldCase();
}

}  // namespace

void setLanguage(std::string language) {
    Language& all = current();
    const std::lock_guard lock(all.mutex);
    all.name = std::move(language);
    all.collator.reset();
}

std::string language() {
    Language& all = current();
    const std::lock_guard lock(all.mutex);
    return all.name.empty() ? icu::Locale::getDefault().getLanguage() : all.name;
}

std::string localeName() { return icu::Locale::getDefault().getName(); }

int compareNames(const Contact& left, const Contact& right, NameOrder order) {
    return compareTexts(collator().get(), keyOfName(left, order), keyOfName(right, order));
}

void sortByName(std::vector<Contact>& contacts, NameOrder order) {
    struct Keyed {
        std::string key;
        std::size_t index;
    };
    std::vector<Keyed> keys;
    for (std::size_t i = 0; i < contacts.size(); ++i) keys.push_back({keyOfName(contacts[i], order), i});
    const auto comparison = collator();
    std::ranges::stable_sort(keys, [&comparison](const Keyed& left, const Keyed& right) {
        return compareTexts(comparison.get(), left.key, right.key) < 0;
    });
    std::vector<Contact> sorted;
    for (const Keyed& each : keys) sorted.push_back(std::move(contacts[each.index]));
    contacts = std::move(sorted);
}

bool hasWordFrom(std::string_view name, std::string_view text) {
    // Comparing costs the product of both lengths.
    constexpr std::int32_t lettersCompared = 1000;
    const icu::UnicodeString in = folded(name);
    icu::UnicodeString wanted = folded(text);
    wanted.truncate(lettersCompared);
    if (wanted.isEmpty()) return false;
    for (std::int32_t at = in.indexOf(wanted); at >= 0; at = in.indexOf(wanted, at + 1))
        if (at == 0 || !u_isalnum(in.char32At(at - 1))) return true;
    return false;
}

}  // namespace contacts

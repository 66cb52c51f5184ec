// Two tables: by the whole form of an address, and by the last digits of numbers.
#include "desktop/addressbook/number_index.h"

namespace contacts {
namespace {

constexpr std::size_t digitsOfEnd = 7;

/// The last digits; empty for an address that has no seven of them.
std::string endOf(const AddressKey& key) {
    const std::string& digits = key.isWhole ? key.text : key.partialDigits;
    return digits.size() < digitsOfEnd ? std::string() : digits.substr(digits.size() - digitsOfEnd);
}

}  // namespace

NumberIndex::NumberIndex(const std::vector<Contact>& contacts, std::string region) : region_(std::move(region)) {
    for (const Contact& contact : contacts) {
        for (const Property property : {Property::phone, Property::email}) {
            const auto& values = contact.list(property);
            for (std::size_t i = 0; i < values.size(); ++i)
                add(values[i].text, {contact.record, property, static_cast<int>(i)});
        }
    }
}

void NumberIndex::add(const std::string& address, const Match& match) {
    AddressKey key = keyOf(address);
    if (key.text.empty()) return;
    byText_[key.text].push_back(entries_.size());
    if (const std::string end = endOf(key); !end.empty()) byEnd_[end].push_back(entries_.size());
    entries_.push_back({std::move(key), match});
}

std::optional<Match> NumberIndex::match(const std::string& address) const {
    const AddressKey key = keyOf(address);
    if (key.text.empty()) return std::nullopt;
    const auto same = byText_.find(key.text);
    if (same == byText_.end()) return looseMatch(key);
    const Entry* best = nullptr;
    const auto isBetter = [&key](const Entry& entry, const Entry& than) {
        const bool hasExtension = entry.key.extension == key.extension;
        if (hasExtension != (than.key.extension == key.extension)) return hasExtension;
        return entry.match.record < than.match.record;
    };
    for (const std::size_t each : same->second)
        if (!best || isBetter(entries_[each], *best)) best = &entries_[each];
    return best->match;
}

std::optional<Match> NumberIndex::looseMatch(const AddressKey& key) const {
    const auto alike = byEnd_.find(endOf(key));
    if (alike == byEnd_.end()) return std::nullopt;
    std::optional<Match> found;
    for (const std::size_t each : alike->second) {
        const Entry& entry = entries_[each];
        if (!entry.key.isLooselySame(key)) continue;
        if (found && found->record != entry.match.record) return std::nullopt;
        if (!found) found = entry.match;
    }
    return found;
}

int indexOfAddress(const std::vector<std::string>& values, const std::string& address) {
    const AddressKey wanted = keyOf(address);
    if (wanted.text.empty()) return -1;
    int same = -1;
    int loose = -1;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const AddressKey key = keyOf(values[i]);
        const int index = static_cast<int>(i);
        if (key.isSame(wanted)) {
            if (key.extension == wanted.extension) return index;
            if (same < 0) same = index;
        }
        if (loose < 0 && key.isLooselySame(wanted)) loose = index;
    }
    return same >= 0 ? same : loose;
}

}  // namespace contacts

// The block is a zero, the folded name, a zero, the folded number, party after party; memmem runs over all of it.
#include "desktop/quorvel/store/search_index.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>
#include <cstring>

#include <algorithm>

namespace quorvel::store {

std::string foldCase(std::string_view text) {
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char letter) { return (letter & 0x80) == 0; });
    std::string folded;
    if (isPlain) {
        folded.reserve(text.size());
        for (const char letter : text) {
            folded += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
        }
        return folded;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* composed = icu::Normalizer2::getNFCInstance(status);
    icu::UnicodeString letters =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    // Composing first lets a letter and its separate mark fold as the composed letter does.
    if (U_SUCCESS(status)) letters = composed->normalize(letters, status);
    letters.foldCase();
    if (U_SUCCESS(status)) letters = composed->normalize(letters, status);
    letters.toUTF8String(folded);
    return folded;
}

void SearchIndex::update(Connection& connection, std::int64_t revision) {
    if (revision != revision_) {
        block_.clear();
        entries_.clear();
    }
    Statement& parties =
        connection.statement("select party, address, name, calls from party where party > ?1 order by party");
    const ResetLater later(parties);
    parties.bind(1, entries_.empty() ? INT64_MIN : entries_.back().party);
    while (parties.step()) {
        entries_.push_back({parties.integer(0), parties.integer(3), block_.size()});
        block_.append(1, '\0').append(foldCase(parties.text(2)));
        block_.append(1, '\0').append(foldCase(parties.text(1)));
    }
    revision_ = revision;
}

FoundParties SearchIndex::find(std::string_view text) const {
    FoundParties found;
    const std::string term = foldCase(text);
    if (term.empty() || term.find('\0') != std::string::npos) return found;
    auto entry = entries_.begin();
    for (std::size_t from = 0; from < block_.size();) {
        const auto* place =
            static_cast<const char*>(memmem(block_.data() + from, block_.size() - from, term.data(), term.size()));
        if (!place) break;
        const auto at = static_cast<std::size_t>(place - block_.data());
        // The owner is rarely far ahead, so the steps grow from one.
        auto beyond = entry;
        for (std::ptrdiff_t step = 1; beyond != entries_.end() && beyond->begin <= at; step *= 2) {
            entry = beyond;
            beyond += std::min(step, entries_.end() - beyond);
        }
        entry = std::upper_bound(entry, beyond, at,
                                 [](std::size_t offset, const Entry& later) { return offset < later.begin; });
        const Entry& owner = *(entry - 1);
        found.parties.push_back(owner.party);
        found.calls += std::max<std::int64_t>(owner.calls, 1);
        if (entry == entries_.end()) break;
        from = entry->begin;
    }
    return found;
}

}  // namespace quorvel::store

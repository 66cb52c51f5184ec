// The block is a zero, the folded name, a zero, the folded number, party after party; memmem runs over all of it.
#include "desktop/quorvel/store/search_index.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>
#include <cstring>

#include <algorithm>

#include "desktop/quorvel/store/call_row.h"

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

namespace {

std::size_t placeOfTriple(const char* bytes) {
    const auto byte = [&](int at) { return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])); };
    // An odd multiplier; the high bits of the product are the well mixed ones.
    return ((byte(0) << 16U | byte(1) << 8U | byte(2)) * 2654435769U) >> 14U;
}

}  // namespace

void SearchIndex::noteTriples(std::size_t from) {
    for (std::size_t at = from; at + 3 <= block_.size(); ++at) triples_.set(placeOfTriple(block_.data() + at));
}

bool SearchIndex::mayHold(std::string_view term) const {
    for (std::size_t at = 0; at + 3 <= term.size(); ++at) {
        if (!triples_.test(placeOfTriple(term.data() + at))) return false;
    }
    return true;
}

void SearchIndex::update(Connection& connection, std::int64_t revision) {
    if (revision != revision_) {
        block_.clear();
        entries_.clear();
        triples_.reset();
    }
    const std::size_t known = block_.size();
    Statement& parties =
        connection.statement("select party, address, name, calls from party where party > ?1 order by party");
    const ResetLater later(parties);
    parties.bind(1, entries_.empty() ? INT64_MIN : entries_.back().party);
    Rising order;
    while (parties.step()) {
        order.expect(parties, 0);
        entries_.push_back({parties.within(0, 1, greatestNumber, "a party"), parties.count(3), block_.size()});
        block_.append(1, '\0').append(foldCase(parties.text(2)));
        block_.append(1, '\0').append(foldCase(parties.text(1)));
    }
    // No term spans two names: the zeros between them are in none.
    noteTriples(known);
    revision_ = revision;
}

FoundParties SearchIndex::find(std::string_view text) const {
    FoundParties found;
    const std::string term = foldCase(text);
    if (term.empty() || term.find('\0') != std::string::npos || !mayHold(term)) return found;
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

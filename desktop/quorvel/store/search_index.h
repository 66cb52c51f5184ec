// Finds parties by a part of their name or number whatever the case: all names and numbers, folded once, in one block
// of memory.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// The text without distinctions of case, and with one spelling of composed letters: full case folding, then NFC.
std::string foldCase(std::string_view text);

struct FoundParties {
    std::vector<std::int64_t> parties;  ///< Rising.
    std::int64_t calls = 0;             ///< Their calls when the index met them; a guide, not a count.
};

class SearchIndex {
  public:
    /// Takes up parties that are new, or all of them where `revision` is not the one of the last time.
    void update(Connection& connection, std::int64_t revision);
    FoundParties find(std::string_view text) const;

  private:
    struct Entry {
        std::int64_t party = 0;
        std::int64_t calls = 0;
        std::size_t begin = 0;
    };

    /// Whether the block may hold these three bytes in a row: what it surely lacks need not be looked for.
    bool mayHold(std::string_view term) const;
    void noteTriples(std::size_t from);

    std::string block_;
    std::bitset<1U << 18U> triples_;
    std::vector<Entry> entries_;
    std::int64_t revision_ = -1;
};

}  // namespace quorvel::store

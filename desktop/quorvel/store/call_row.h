// A call as the covering indices hold it, and the texts that read it.
#pragma once

#include <string_view>

#include "desktop/quorvel/store/call.h"
#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

struct CallRow {
    std::int64_t date = 0;
    std::int64_t rowId = 0;
    std::int64_t kind = 0;  ///< The value of the filter besides "all".
    std::int64_t duration = 0;
    std::int64_t flags = 0;
    std::int64_t party = 0;
    std::int64_t contact = noContact;
    std::int64_t day = 0;
};

/// The columns of a CallRow in their order, with the location behind them.
#define QUORVEL_CALL_COLUMNS "date, ROWID, kind, duration, flags, party, id, day, location"
constexpr int partyColumn = 5;
constexpr int locationColumn = 8;

inline CallRow callRowOf(const Statement& row) {
    return {row.integer(0), row.integer(1), row.integer(2), row.integer(3),
            row.integer(4), row.integer(5), row.integer(6), row.integer(7)};
}

/// Whether neighbours in a list are one run: calls of one contact, or of one address without a contact.
inline bool isSameRun(const CallRow& one, const CallRow& other) {
    return one.contact == other.contact && (one.contact != noContact || one.party == other.party);
}

constexpr std::int64_t secondsASpan = 86400;

/// The span of a moment: days of UTC, which follow the order of the dates in every time zone.
constexpr std::int64_t spanOf(std::int64_t date) {
    return date >= 0 ? date / secondsASpan : -((-date + secondsASpan - 1) / secondsASpan);
}

constexpr bool isKind(std::int64_t kind) { return kind >= 2 && kind <= 4; }

}  // namespace quorvel::store

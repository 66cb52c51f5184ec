// A call as the covering indices hold it, and the texts that read it.
#pragma once

#include <algorithm>
#include <string_view>

#include "desktop/quorvel/store/call_rules.h"
#include "desktop/quorvel/store/database.h"
#include "desktop/quorvel/store/local_days.h"

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

constexpr std::int64_t asNumber(std::int64_t value) { return std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX); }

/// The row; throws damaged where what it is found, counted and named by cannot be.
inline CallRow callRowOf(const Statement& row) {
    return {row.integer(0),
            row.within(1, 1, greatestNumber, "a row identifier"),
            row.within(2, 2, 4, "a kind of call"),
            asNumber(row.integer(3)),
            asNumber(row.integer(4)),
            row.within(partyColumn, 1, greatestNumber, "a party"),
            asNumber(row.integer(6)),
            row.within(7, firstDay, lastDay, "a day")};
}

/// Sees that rows come newest first by their first two columns, a time and a row identifier: the tree of a damaged file
/// may lead to the same rows again and again.
class NewestFirst {
  public:
    NewestFirst() = default;
    /// All of them are older than that.
    NewestFirst(std::int64_t date, std::int64_t rowId) : isFirst_(false), date_(date), rowId_(rowId) {}

    void expect(const Statement& row) {
        const std::int64_t date = row.integer(0);
        if (!isFirst_ && date >= date_) {
            // The identifier matters, and is read, within one second only.
            const std::int64_t rowId = row.integer(1);
            if (date > date_ || rowId >= rowId_) row.failDamaged("its rows are out of order");
            rowId_ = rowId;
            return;
        }
        isFirst_ = false;
        date_ = date;
        rowId_ = INT64_MAX;
    }

  private:
    bool isFirst_ = true;
    std::int64_t date_ = 0, rowId_ = 0;
};

/// The same for rows by their number in a column.
class Rising {
  public:
    std::int64_t expect(const Statement& row, int column) {
        const std::int64_t number = row.integer(column);
        if (!isFirst_ && number <= last_) row.failDamaged("its rows are out of order");
        isFirst_ = false;
        return last_ = number;
    }

  private:
    bool isFirst_ = true;
    std::int64_t last_ = 0;
};

/// Whether neighbours in a list are one run: calls of one contact, or of one address without a contact.
inline bool isSameRun(const CallRow& one, const CallRow& other) {
    return one.contact == other.contact && (one.contact != noContact || one.party == other.party);
}

constexpr std::int64_t secondsASpan = 86400;

/// The span of a moment: days of UTC, which follow the order of the dates in every time zone.
constexpr std::int64_t spanOf(std::int64_t date) { return date / secondsASpan - (date % secondsASpan < 0 ? 1 : 0); }

/// A span of a file's, as far as there are moments in it.
inline std::int64_t spanAt(const Statement& row, int column) {
    return row.within(column, spanOf(INT64_MIN) + 1, spanOf(INT64_MAX) - 1, "a span of time");
}

}  // namespace quorvel::store

// How many rows the table has, and which of them is the load-more row: arithmetic alone.
#pragma once

#include <cstdint>

namespace rows {

struct RowSituation {
    std::int64_t rowCount;
    std::int64_t totalCount;
    std::int64_t found;  ///< entries that the search has found so far
    bool searching;
    bool isAllRecsLoaded;
};

/// The call rows and at most one load-more row. A search that has found nothing yet has the load-more row alone.
constexpr std::int64_t numberOfRows(const RowSituation& now) {
    const bool searchGoesOn = now.searching && !now.isAllRecsLoaded;
    bool loadMore = false;
    if (now.rowCount < 1)
        loadMore = searchGoesOn;
    else if (now.rowCount < now.totalCount)
        loadMore = !(now.searching && now.isAllRecsLoaded);
    else
        loadMore = searchGoesOn && now.found < now.totalCount;
    return now.rowCount + (loadMore ? 1 : 0);
}

/// Whether the row stands after the call rows. While the count is negative (a deletion of everything that was found),
/// no row does.
constexpr bool isLoadMoreRow(std::int64_t row, std::int64_t rowCount) { return rowCount >= 0 && row >= rowCount; }

/// Whether the user may swipe the row away: every row but the load-more row.
constexpr bool canEditRow(std::int64_t row, std::int64_t rowCount) { return rowCount < 0 || row < rowCount; }

/// What deleting one shown row leaves. The total is lowered only while every row of the list is shown.
struct Counts {
    std::int64_t rowCount;
    std::int64_t totalCount;
};
constexpr Counts afterDeletingRow(Counts before) {
    return {before.rowCount - 1, before.rowCount == before.totalCount ? before.rowCount - 1 : before.totalCount};
}

}  // namespace rows

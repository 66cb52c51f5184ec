// The load-more arithmetic.
#pragma once

#include <algorithm>
#include <cstdint>

namespace recents {

struct PagingSituation {
    std::int64_t rowCount;
    std::int64_t pageSize;
    std::int64_t loaded;  ///< entries in the list
    std::int64_t total;   ///< rows that the list has in the database
};

struct PagingPlan {
    bool read;              ///< a page must be read from the database, from rowCount on
    std::int64_t rowCount;  ///< the rows to show where nothing is read
};

/// One page more: from memory where it is there, from the database otherwise.
constexpr PagingPlan planNextPage(const PagingSituation& now) {
    if (now.loaded >= now.total) {
        const std::int64_t grown = now.loaded > now.pageSize ? now.rowCount + now.pageSize : now.rowCount;
        return {false, std::min(grown, now.loaded)};
    }
    const std::int64_t next = now.rowCount + now.pageSize;
    return {next > now.loaded, next > now.loaded ? now.rowCount : next};
}

/// Whether the page that was read proves that the total may be wrong: nothing came, or less than was due.
constexpr bool isShortPage(std::int64_t before, std::int64_t after, std::int64_t pageSize, std::int64_t total) {
    return before >= after || after < std::min(before + pageSize, total);
}

}  // namespace recents

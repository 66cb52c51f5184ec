// How far a search of the loaded list looks.
#pragma once

#include <algorithm>
#include <cstdint>

namespace recents {

struct PagingCounts {
    std::int64_t all;
    std::int64_t dialled;
    std::int64_t received;
    std::int64_t missed;
};

/// The row count that the user reached in the filter where any filter was paged, else one page.
constexpr std::int64_t scanLimit(std::int64_t pageSize, const PagingCounts& reached, std::int64_t filterCode) {
    if (reached.all <= 0 && reached.dialled <= 0 && reached.received <= 0 && reached.missed <= 0) return pageSize;
    switch (filterCode) {
        case 1:
            return reached.all;
        case 2:
            return reached.dialled;
        case 3:
            return reached.received;
        case 4:
            return reached.missed;
        default:
            return pageSize;
    }
}

/// How many entries of the list are looked at, at most, whatever they are: a page and the limit, whichever is more.
constexpr std::int64_t entriesToScan(std::int64_t pageSize, std::int64_t limit) {
    return std::max({pageSize, limit, std::int64_t{0}});
}

}  // namespace recents

// How many rows the list of one day shows. Arithmetic alone.
#pragma once

#include <cstdint>

namespace datelog {

/// `loaded` entries are in the list, `saved` rows were reached in the filter by paging (0 for none). One page, on
/// purpose also where more was reached: all of it only where it is shorter than a page, or than what was reached.
constexpr std::int64_t dayRowCount(std::int64_t loaded, std::int64_t pageSize, std::int64_t saved) {
    if (loaded < pageSize) return loaded;
    if (saved < 1 || pageSize >= saved) return pageSize;
    if (saved <= loaded) return saved >= pageSize ? pageSize : saved;
    return loaded;
}

}  // namespace datelog

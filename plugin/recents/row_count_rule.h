// The row count rule: how many rows a list shows, and how many further calls must be read for it. Arithmetic alone.
#pragma once

#include <cstdint>

namespace recents {

struct RowCountSituation {
    std::int64_t pageSize;
    std::int64_t saved;         ///< the filter's paging memory; 0 for none
    std::int64_t loaded;        ///< entries in the list
    std::int64_t total;         ///< rows that the list has in the database
    std::int64_t lastPageSize;  ///< the page size when the list was initialised
    bool searching;
};

/// What to do before the list is looked at again.
struct RowCountPlan {
    std::int64_t rowCount;
    bool load;
    std::int64_t read;  ///< how many further calls to read, from `loaded` on; only where `load`
};

namespace detail {
// Page size, memory, loaded and total are compared as unsigned; loaded and total with each other as signed.
constexpr bool greater(std::int64_t left, std::int64_t right) {
    return static_cast<std::uint64_t>(left) > static_cast<std::uint64_t>(right);
}
constexpr bool atMost(std::int64_t left, std::int64_t right) { return !greater(left, right); }

constexpr RowCountPlan planPartlyLoaded(const RowCountSituation& now) {
    const auto [page, saved, loaded, total, lastPage, searching] = now;
    if (atMost(page, loaded) && atMost(saved, loaded)) {
        const bool remembered = saved != 0 && greater(saved, page) && greater(total, saved);
        return {remembered ? saved : page, false, 0};
    }
    if (greater(saved, loaded)) return {loaded, true, saved - loaded};
    if (greater(loaded, saved)) return {loaded, true, page - loaded};
    // Everything that the memory asks for is there, and the page has grown: a whole page more, on purpose.
    return {loaded, true, page};
}

constexpr RowCountPlan planFullyLoaded(const RowCountSituation& now) {
    const auto [page, saved, loaded, total, lastPage, searching] = now;
    if (loaded > total || lastPage == page || loaded < 1) return {loaded, false, 0};
    if (atMost(page, total) && saved == 0) return {page, false, 0};
    if (greater(saved, page) && atMost(saved, total)) return {saved, false, 0};
    if (atMost(page, total)) return {page, false, 0};
    return {loaded, false, 0};
}
}  // namespace detail

/// The rows to show as things stand, or the read that must come first.
constexpr RowCountPlan planRowCount(const RowCountSituation& now) {
    if (now.searching && now.loaded >= 1) return {0, false, 0};
    if (now.loaded < now.total) return detail::planPartlyLoaded(now);
    if (now.searching) return {0, false, 0};
    return detail::planFullyLoaded(now);
}

/// One page at most is shown, unless the user has loaded more in this filter; never more than the total.
constexpr std::int64_t clampRowCount(std::int64_t rowCount, std::int64_t pageSize, std::int64_t saved,
                                     std::int64_t total) {
    using detail::atMost;
    using detail::greater;
    if (atMost(rowCount, pageSize)) return rowCount;
    if (greater(saved, pageSize) && saved != 0 && atMost(saved, total)) return saved;
    return greater(saved, total) ? total : pageSize;
}

}  // namespace recents

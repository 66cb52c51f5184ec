// Running sums of row heights.
#include "desktop/uikit/table_layout.h"

#include <algorithm>

namespace uikit {

SectionLayout::SectionLayout(double top, double headerHeight, const std::vector<double>& rowHeights,
                             double footerHeight)
    : top_(top), headerHeight_(headerHeight), rowsTop_(top + headerHeight), footerHeight_(footerHeight) {
    ends_.reserve(rowHeights.size() + 1);
    ends_.push_back(0);
    for (const double height : rowHeights) ends_.push_back(ends_.back() + height);
}

long SectionLayout::firstRowBelow(double y) const {
    const auto found = std::upper_bound(ends_.begin() + 1, ends_.end(), y - rowsTop_);
    return std::min(found - ends_.begin() - 1, static_cast<std::ptrdiff_t>(rowCount()));
}

long SectionLayout::firstRowFrom(double y) const {
    const auto found = std::lower_bound(ends_.begin(), ends_.end() - 1, y - rowsTop_);
    return found - ends_.begin();
}

}  // namespace uikit

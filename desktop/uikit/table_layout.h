// Where the rows of a table lie: heights summed once, so that what is visible is found by bisection.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace uikit {

/// One section's rows, header and footer, from the content's top on, in points.
class SectionLayout {
  public:
    /// Rows of these heights below a header that begins at `top`.
    SectionLayout(double top, double headerHeight, const std::vector<double>& rowHeights, double footerHeight);

    double top() const { return top_; }
    double bottom() const { return rowsTop_ + ends_.back() + footerHeight_; }
    double headerHeight() const { return headerHeight_; }
    double footerTop() const { return rowsTop_ + ends_.back(); }
    double footerHeight() const { return footerHeight_; }
    long rowCount() const { return static_cast<long>(ends_.size()) - 1; }
    double rowTop(long row) const { return rowsTop_ + ends_[static_cast<std::size_t>(row)]; }
    double rowHeight(long row) const {
        return ends_[static_cast<std::size_t>(row) + 1] - ends_[static_cast<std::size_t>(row)];
    }
    /// The first row that ends below y, and the first one that begins at or below y: between them lies what a window
    /// that begins or ends at y shows.
    long firstRowBelow(double y) const;
    long firstRowFrom(double y) const;

  private:
    double top_;
    double headerHeight_;
    double rowsTop_;
    double footerHeight_;
    std::vector<double> ends_;  // running sums, from 0
};

}  // namespace uikit

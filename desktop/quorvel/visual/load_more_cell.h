// QVLoadMoreRecordsCell: the last row of a list that goes on, a text with an indicator.
#pragma once

#include "desktop/uikit/table_view_cell.h"

namespace quorvel {

/// Whoever shows it puts a label with tag 1 into the content view; it is kept in the middle of the row.
class LoadMoreCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVLoadMoreRecordsCell"};
    static void define(objc::ClassDefinition<LoadMoreCell>&) {}

    objc::Object initWithFrame(uikit::Rect frame) override;
    void layoutSubviews() override;
};

}  // namespace quorvel

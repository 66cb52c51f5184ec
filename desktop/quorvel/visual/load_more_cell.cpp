// QVLoadMoreRecordsCell.
#include "desktop/quorvel/visual/load_more_cell.h"

namespace quorvel {

objc::Object LoadMoreCell::initWithFrame(uikit::Rect frame) {
    const auto made = TableViewCell::initWithFrame(frame);
    setSelectionStyle(0);
    return made;
}

void LoadMoreCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    constexpr long labelTag = 1;
    uikit::View* label = contentView()->viewWithTag(labelTag);
    if (!label || label == contentView()) return;
    // In the middle of the row rather than of what the indicator leaves; both margins are as wide as the indicator.
    const uikit::Rect content = contentView()->frame();
    const double right = accessoryWidth();
    label->setFrame({{right, 0}, {std::max(0.0, content.width() - right), content.height()}});
}

}  // namespace quorvel

// QVUITableViewCell: a call, a run of calls or a day as a row; and the cell of the load-more row.
#pragma once

#include <functional>
#include <string>

#include "desktop/uikit/table_view_cell.h"

namespace quorvel {

/// The texts that a row draws, made once when the entry is set.
struct CallCellTexts {
    std::string title;
    std::string below;
    std::string right;
};

class CallCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVUITableViewCell"};
    static void define(objc::ClassDefinition<CallCell>& definition);

    // Messages of the same names.
    objc::Object callEntry() const { return entry_; }
    void setCallEntry(objc::Object entry);
    void setShowGroupByDateCell(bool show);
    void setShowGroupCount(bool show);
    void setShowLogCell(bool show);

    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;
    void prepareForReuse() override;

  private:
    void refresh();
    void drawCall(graphics::Canvas& canvas);
    void drawDay(graphics::Canvas& canvas);
    double drawPicture(graphics::Canvas& canvas, double x);

    objc::Strong<> entry_;
    bool showsDay_ = false;
    bool showsCount_ = false;
    bool showsLog_ = false;
    bool outgoing_ = false;
    bool missed_ = false;
    int contact_ = -1;
    CallCellTexts texts_;
    std::vector<std::string> dayLines_;
};

/// QVLoadMoreRecordsCell.
class LoadMoreCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVLoadMoreRecordsCell"};
    static void define(objc::ClassDefinition<LoadMoreCell>&) {}
};

/// When a call was, as a row says it: the time today, "Yesterday", the weekday within a week, else the date; local
/// time.
std::string rowTime(std::int64_t call, std::int64_t now);

}  // namespace quorvel

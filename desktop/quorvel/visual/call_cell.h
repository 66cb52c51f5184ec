// QVUITableViewCell: the row of a call, of a day with its counts, or of one call in a history.
#pragma once

#include <optional>

#include "desktop/quorvel/visual/row_text.h"
#include "desktop/uikit/table_view_cell.h"

namespace quorvel {

/// The entry is read when it is set and not asked again, so drawing sends no messages to it.
class CallCell : public uikit::TableViewCell {
  public:
    using Super = uikit::TableViewCell;
    static constexpr objc::Name className{"QVUITableViewCell"};
    static void define(objc::ClassDefinition<CallCell>& definition);

    // Messages of the same names. The entry is retained.
    objc::Object callEntry() const { return entry_; }
    void setCallEntry(objc::Object entry);
    bool showGroupByDateCell() const { return showsDay_; }
    void setShowGroupByDateCell(bool shows);
    bool showGroupCount() const { return showsCount_; }
    void setShowGroupCount(bool shows);
    bool showLogCell() const { return showsHistory_; }
    void setShowLogCell(bool shows);
    /// `setNeedsDisplay`: asks the picture cache again before it draws, since that is how one learns of a new picture.
    void pictureMayHaveCome();

    void prepareForReuse() override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    void refresh();
    void lookUpPicture();
    const RowText& row() const;
    double textEdge(uikit::Size size) const;
    void drawCall(graphics::Canvas& canvas, uikit::Size size) const;
    void drawDay(graphics::Canvas& canvas, uikit::Size size) const;
    void drawHistory(graphics::Canvas& canvas, uikit::Size size) const;

    objc::Strong<> entry_;
    CallFacts facts_;
    mutable std::optional<RowText> row_;  // made when first asked for after a change
    graphics::Image picture_;
    unsigned tone_ = 0;  // of a named caller
    bool showsPictures_ = false;
    bool showsDay_ = false;
    bool showsCount_ = false;
    bool showsHistory_ = false;
};

}  // namespace quorvel

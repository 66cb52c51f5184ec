// UITableViewCell: a row of a table.
#pragma once

#include "desktop/uikit/animation.h"
#include "desktop/uikit/image_view.h"
#include "desktop/uikit/label.h"

namespace uikit {

class TableViewCell : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UITableViewCell"};
    static void define(objc::ClassDefinition<TableViewCell>& definition);
    ~TableViewCell() override;

    enum Accessory : long { none = 0, disclosureIndicator = 1, detailDisclosure = 2, checkmark = 3, detailButton = 4 };
    enum Style : long { plain = 0, value1 = 1, value2 = 2, subtitle = 3 };

    // Messages of the same names.
    objc::Object initWithStyleReuseIdentifier(long style, objc::Object identifier);
    objc::Object reuseIdentifier() const { return identifier_; }
    virtual void prepareForReuse();
    View* contentView() const { return contentView_; }
    Label* textLabel();
    Label* detailTextLabel();
    ImageView* imageView();
    long accessoryType() const { return accessory_; }
    void setAccessoryType(long type);
    View* accessoryView() const { return accessoryView_; }
    void setAccessoryView(View* view);
    long selectionStyle() const { return selectionStyle_; }
    void setSelectionStyle(long style) { selectionStyle_ = style; }
    bool isHighlighted() const { return highlighted_; }
    void setHighlightedAnimated(bool highlighted, bool animated);
    bool isEditing() const { return editing_; }
    void setEditing(bool editing);

    objc::Object initWithFrame(Rect frame) override;
    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;

    // For the table. In edit mode the accessory is away and leaves its room to the texts.
    /// The width that stays free on the right for the accessory.
    double accessoryWidth() const;
    /// Where a touch opens the details; empty without a detail button.
    Rect detailRect() const;
    /// Where a touch on the minus of edit mode lands; empty outside edit mode.
    Rect minusRect() const;
    /// How far the content has moved to the left to show the delete button.
    double revealed() const { return revealed_; }
    void setRevealed(double points);
    /// Moves there from where it is now; until then, reuse or setRevealed() ends the movement.
    void slideToRevealed(double points);
    /// A finger is on the detail button.
    void setDetailPressed(bool pressed);
    void setIdentifier(objc::Object identifier);
    void setShowsMinus(bool shows);

    static constexpr double minusWidth = 38;

  private:
    double leftInset() const { return editing_ && showsMinus_ ? minusWidth : 0; }
    void drawAccessory(graphics::Canvas& canvas) const;

    long style_ = plain;
    long accessory_ = none;
    long selectionStyle_ = 3;
    bool highlighted_ = false;
    bool editing_ = false;
    bool showsMinus_ = true;
    double revealed_ = 0;
    double highlight_ = 0;
    bool detailPressed_ = false;
    AnimationToken fade_ = 0;
    AnimationToken slide_ = 0;
    objc::Strong<> identifier_;
    objc::Ref<View> contentView_;
    objc::Ref<View> accessoryView_;
    objc::Ref<Label> text_;
    objc::Ref<Label> detail_;
    objc::Ref<ImageView> image_;
};

}  // namespace uikit

// UISegmentedControl: texts or images side by side, of which one is selected.
#pragma once

#include "desktop/uikit/color.h"
#include "desktop/uikit/control.h"

namespace uikit {

class SegmentedControl : public Control {
  public:
    using Super = Control;
    static constexpr objc::Name className{"UISegmentedControl"};
    static void define(objc::ClassDefinition<SegmentedControl>& definition);

    /// What `selectedSegmentIndex` is while none is selected.
    static constexpr long noSegment = -1;
    static constexpr double height = 29;

    // Messages of the same names. Items are NSStrings and UIImages; an index out of range changes nothing, and answers
    // nil.
    objc::Object initWithItems(objc::Object items);
    objc::Object initWithFrame(Rect frame) override;
    unsigned long numberOfSegments() const { return segments_.size(); }
    void insertTitleAtIndexAnimated(objc::Object title, unsigned long index, bool animated);
    void insertImageAtIndexAnimated(objc::Object image, unsigned long index, bool animated);
    void removeAtIndexAnimated(unsigned long index, bool animated);
    void removeAllSegments();
    void setTitleForSegment(objc::Object title, unsigned long index);
    objc::Object titleForSegment(unsigned long index) const;
    void setImageForSegment(objc::Object image, unsigned long index);
    objc::Object imageForSegment(unsigned long index) const;
    void setEnabledForSegment(bool enabled, unsigned long index);
    bool isEnabledForSegment(unsigned long index) const;
    void setWidthForSegment(double width, unsigned long index);  // 0: its share of what is left
    double widthForSegment(unsigned long index) const;
    long selectedSegmentIndex() const { return selected_; }
    /// Sends no action; a touch does.
    void setSelectedSegmentIndex(long index);
    bool isMomentary() const { return momentary_; }
    void setMomentary(bool momentary) { momentary_ = momentary; }

    Size sizeThatFits(Size size) override;
    void draw(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

    /// Where the segment lies, in the control's bounds.
    Rect segmentRect(unsigned long index) const;
    /// The segment at the point, or noSegment.
    long segmentAt(Point point) const;

  protected:
    void trackingBegan(Point point) override;
    void trackingMoved(Point point, bool inside) override;
    void trackingEnded(Point point, bool inside) override;
    void trackingCancelled() override;

  private:
    struct Segment {
        objc::Strong<> title;
        objc::Strong<> image;
        double width = 0;
        bool enabled = true;
    };
    void insert(Segment segment, unsigned long index);
    void drawContent(graphics::Canvas& canvas, const Segment& segment, const Rect& rect, const Color& color,
                     const graphics::TextStyle& style) const;
    graphics::TextStyle fittedStyle() const;
    Color selectedContentColor() const;
    void drawSegments(graphics::Canvas& canvas, const Rect& whole, const Color& color) const;
    void setPressed(long index);

    std::vector<Segment> segments_;
    long selected_ = noSegment;
    long pressed_ = noSegment;
    bool momentary_ = false;
};

}  // namespace uikit

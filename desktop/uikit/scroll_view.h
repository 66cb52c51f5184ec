// UIScrollView: a view on something larger than itself, moved by finger, wheel or message.
#pragma once

#include "desktop/uikit/animation.h"
#include "desktop/uikit/view.h"
#include "desktop/weak/weak.h"

namespace uikit {

/// Scrolls vertically. What its subviews' frames mean moves with `contentOffset`, which is its bounds' origin.
class ScrollView : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UIScrollView"};
    static void define(objc::ClassDefinition<ScrollView>& definition);
    ~ScrollView() override;

    // Messages of the same names. The delegate is not retained; it is sent `scrollViewDidScroll:`,
    // `scrollViewWillBeginDragging:`, `scrollViewDidEndDragging:willDecelerate:` and `scrollViewDidEndDecelerating:`
    // where it answers them; the last also when a finger stops the content.
    objc::Object initWithFrame(Rect frame) override;
    Size contentSize() const { return contentSize_; }
    void setContentSize(Size size);
    Point contentOffset() const { return boundsOrigin_; }
    void setContentOffset(Point offset) { setContentOffsetAnimated(offset, false); }
    void setContentOffsetAnimated(Point offset, bool animated);
    EdgeInsets contentInset() const { return inset_; }
    /// Room around the content that scrolling reaches, in points. What stood at the top stays at the top.
    void setContentInset(EdgeInsets inset);
    objc::Strong<> delegate() const { return delegate_.load(); }
    virtual void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    bool isScrollEnabled() const { return scrollEnabled_; }
    void setScrollEnabled(bool enabled);
    bool isDragging() const { return dragging_; }
    bool isDecelerating() const { return motion_ != 0; }

    bool interceptsTouch(const Touch& touch) override;
    bool touch(const Touch& touch) override;
    bool scrollWheel(Point delta) override;
    void drawAbove(graphics::Canvas& canvas) override;

    /// The offset of the content's top, with the inset above it.
    double leastOffset() const { return 0 - inset_.top; }
    /// The greatest offset at which content and insets still fill the view; leastOffset() where they are shorter.
    virtual double greatestOffset() const;

  protected:
    /// Told after each change of the offset.
    virtual void didScroll() {}

  private:
    void moveTo(double y);
    void stop();
    void beginDrag(const Touch& touch);
    void drag(const Touch& touch);
    void endDrag(const Touch& touch);
    void coastOn();
    bool coast(double seconds);
    void comeToRest();
    void tell(SEL message);
    void tellDragEnded(bool decelerates);
    double rubberBanded(double y) const;

    double withinContent(double y) const;

    Size contentSize_;
    EdgeInsets inset_;
    weak::Object delegate_;
    bool scrollEnabled_ = true;
    bool tracking_ = false;
    bool dragging_ = false;
    bool stopped_ = false;  // the finger came down on moving content
    Touch began_;
    Touch last_;
    double offsetAtBegin_ = 0;
    double velocity_ = 0;  // points a second
    AnimationToken motion_ = 0;
    AnimationToken animation_ = 0;
    double target_ = 0;  // where the animation goes
    double indicatorAlpha_ = 0;
    AnimationToken indicatorFade_ = 0;
};

}  // namespace uikit

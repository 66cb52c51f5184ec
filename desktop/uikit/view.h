// UIView: a rectangle of the screen that draws itself, lays out its subviews and takes touches.
#pragma once

#include <string>
#include <vector>

#include "desktop/graphics/canvas.h"
#include "desktop/uikit/responder.h"
#include "desktop/uikit/text.h"
#include "desktop/uikit/touch.h"

namespace uikit {

class Window;
class ViewController;

/// UIViewAutoresizing, as bits.
enum Autoresizing : unsigned long {
    flexibleLeft = 1,
    flexibleWidth = 2,
    flexibleRight = 4,
    flexibleTop = 8,
    flexibleHeight = 16,
    flexibleBottom = 32
};

class View : public Responder {
  public:
    using Super = Responder;
    static constexpr objc::Name className{"UIView"};
    static void define(objc::ClassDefinition<View>& definition);
    ~View() override;

    // Messages of the same names.
    objc::Object initWithFrame(Rect frame);
    Rect frame() const { return frame_; }
    void setFrame(Rect frame);
    Rect bounds() const { return {boundsOrigin_, frame_.size}; }
    void setBounds(Rect bounds);
    Point center() const { return frame_.centre(); }
    void setCenter(Point center);
    View* superview() const { return superview_; }
    objc::Object subviewsArray() const;  // `subviews`: an NSArray, back to front
    void addSubview(View* view);
    void insertSubviewAtIndex(View* view, long index);
    void bringSubviewToFront(View* view);
    void removeFromSuperview();
    View* viewWithTag(long tag);
    long tag() const { return tag_; }
    void setTag(long tag) { tag_ = tag; }
    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    double alpha() const { return alpha_; }
    void setAlpha(double alpha);
    bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }
    objc::Object backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(objc::Object color);  // a UIColor or nil
    objc::Object tintColor() const;               // its own or the nearest ancestor's
    void setTintColor(objc::Object color);
    unsigned long autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(unsigned long mask) { autoresizingMask_ = mask; }
    bool clipsToBounds() const { return clipsToBounds_; }
    void setClipsToBounds(bool clips) { clipsToBounds_ = clips; }
    void setNeedsLayout();
    void layoutIfNeeded();  // sends `layoutSubviews` where layout is needed, top down
    virtual void layoutSubviews() {}
    void setNeedsDisplay();
    virtual Size sizeThatFits(Size size);
    void sizeToFit();
    Point convertPointToView(Point point, View* view);
    Rect convertRectToView(Rect rect, View* view);
    Window* window() const;

    // For the toolkit's own C++.
    const std::vector<objc::Ref<View>>& subviews() const { return subviews_; }
    Color tint() const;
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius) { cornerRadius_ = radius; }
    bool isDescendantOf(const View* view) const;

    /// Where the view is drawn while something moves it, besides its frame: points added to its place.
    Point displacement() const { return displacement_; }
    void setDisplacement(Point points);

    /// Draws the view itself, in its own bounds; the background is there already, subviews come after.
    virtual void draw(graphics::Canvas&) {}
    /// Draws what belongs above the subviews (scroll indicators, hairlines).
    virtual void drawAbove(graphics::Canvas&) {}
    /// One pass over the view and all below it.
    void render(graphics::Canvas& canvas);

    /// The front-most view under the point (in this view's bounds) that takes touches, or null. Hidden views, views
    /// with an alpha below 0.01 and views without user interaction, with all below them, take none.
    virtual View* hitTest(Point point);
    /// A touch that began in this view, point in window coordinates. The view that answers true to Began gets the rest.
    virtual bool touch(const Touch&) { return false; }
    /// Before a touch reaches a descendant: a scroll view takes it over once it is a drag; the descendant then gets
    /// Cancelled.
    virtual bool interceptsTouch(const Touch&) { return false; }
    /// The wheel, in points. Answers whether it was used; else the superview is asked.
    virtual bool scrollWheel(Point /*delta*/) { return false; }
    Point pointFromWindow(Point point) const;
    Point pointToWindow(Point point) const;

    /// The texts that the view draws now, in reading order, for `show` and for tests. Subviews are not included.
    virtual std::vector<std::string> drawnTexts() const { return {}; }

    /// Told after the view came to a window or left it (null).
    virtual void didMoveToWindow(Window*) {}
    /// Told when the size changed; the standard answer applies the subviews' autoresizing masks and asks for layout.
    virtual void sizeChanged(Size before);

    ViewController* controller() const { return controller_; }
    void setController(ViewController* controller) { controller_ = controller; }

  protected:
    Point boundsOrigin_;

  private:
    void tellWindow(Window* window);

    Rect frame_;
    Point displacement_;
    View* superview_ = nullptr;
    std::vector<objc::Ref<View>> subviews_;
    long tag_ = 0;
    double alpha_ = 1;
    double cornerRadius_ = 0;
    unsigned long autoresizingMask_ = 0;
    bool hidden_ = false;
    bool userInteractionEnabled_ = true;
    bool clipsToBounds_ = false;
    bool needsLayout_ = true;
    objc::Strong<> backgroundColor_;
    objc::Strong<> tintColor_;
    ViewController* controller_ = nullptr;
};

}  // namespace uikit

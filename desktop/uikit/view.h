// UIView: a rectangle of the screen that draws itself, lays out its subviews and takes touches.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desktop/graphics/canvas.h"
#include "desktop/uikit/animation.h"
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

/// UIViewContentMode, as far as it is drawn.
enum class ContentMode : long { ScaleToFill, AspectFit, AspectFill, Redraw, Center };

/// A view's place, alpha and background as they are drawn while an animation of blocks moves them.
struct ShownState {
    Rect frame;
    double alpha = 1;
    Color background;
};

class View : public Responder {
  public:
    using Super = Responder;
    static constexpr objc::Name className{"UIView"};
    static void define(objc::ClassDefinition<View>& definition);
    ~View() override;

    View();

    // Messages of the same names. `init` sends `initWithFrame:`, so that a subclass overrides one of them alone.
    objc::Object init();
    virtual objc::Object initWithFrame(Rect frame);
    Rect frame() const { return frame_; }
    void setFrame(Rect frame);
    Rect bounds() const { return {boundsOrigin_, frame_.size}; }
    void setBounds(Rect bounds);
    void setBoundsOrigin(Point origin);
    Point center() const { return frame_.centre(); }
    void setCenter(Point center);
    View* superview() const { return superview_; }
    objc::Object subviewsArray() const;  // `subviews`: an NSArray, back to front
    void addSubview(View* view);
    void insertSubviewAtIndex(View* view, long index);
    void insertSubviewAbove(View* view, View* sibling);  // `insertSubview:aboveSubview:`
    void insertSubviewBelow(View* view, View* sibling);
    void bringSubviewToFront(View* view);
    void sendSubviewToBack(View* view);
    void removeFromSuperview();
    virtual void didMoveToSuperview() {}
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
    ContentMode contentMode() const { return contentMode_; }
    void setContentMode(ContentMode mode);
    bool clipsToBounds() const { return clipsToBounds_; }
    void setClipsToBounds(bool clips) { clipsToBounds_ = clips; }
    void setNeedsLayout();
    void layoutIfNeeded();  // sends `layoutSubviews` where layout is needed, top down
    virtual void layoutSubviews() {}
    void setNeedsDisplay();
    virtual Size sizeThatFits(Size size);
    void sizeToFit();
    Point convertPointToView(Point point, View* view);  // a null view stands for the window
    Point convertPointFromView(Point point, View* view);
    Rect convertRectToView(Rect rect, View* view);
    Rect convertRectFromView(Rect rect, View* view);
    virtual bool pointInside(Point point) { return bounds().contains(point); }
    bool isDescendantOf(const View* view) const;  // `isDescendantOfView:`
    Window* window() const { return window_; }

    // For the toolkit's own C++.
    const std::vector<objc::Ref<View>>& subviews() const { return subviews_; }
    Color tint() const;
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius);

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
    /// Before a touch reaches a descendant, in every phase, the innermost ancestor first: a scroll view takes it over
    /// once it is a drag. The descendant then gets Cancelled; this touch and all that follow go to touch() of the view
    /// that answered true, and nobody else is asked any more.
    virtual bool interceptsTouch(const Touch&) { return false; }
    /// The wheel, in points. Answers whether it was used; else the superview is asked.
    virtual bool scrollWheel(Point /*delta*/) { return false; }
    Point pointFromWindow(Point point) const;
    Point pointToWindow(Point point) const;

    /// The texts that the view draws now, in reading order, for `show` and for tests. Subviews are not included.
    virtual std::vector<std::string> drawnTexts() const { return {}; }

    /// Told after the view came to a window or left it (null). `didMoveToWindow` is sent, too.
    virtual void windowChanged(Window*) {}
    /// Told when the size changed; the standard answer applies the subviews' autoresizing masks and asks for layout.
    virtual void sizeChanged(Size before);

    ViewController* controller() const { return controller_; }
    void setController(ViewController* controller) { controller_ = controller; }

  protected:
    Point boundsOrigin_;
    /// Told after the tint changed, here or at an ancestor.
    virtual void tintColorDidChange() { setNeedsDisplay(); }
    /// Only a window says that it is its own.
    void setOwnWindow(Window* window) { window_ = window; }

  private:
    friend class AnimationContext;

    void tellWindow(Window* window);
    void tellTint();
    void detach();
    void insert(View* view, std::size_t index);
    std::size_t indexOf(const View* view) const;
    void didMoveToWindow() {}
    Rect shownFrame() const { return shown_ ? shown_->frame : frame_; }
    double shownAlpha() const { return shown_ ? shown_->alpha : alpha_; }
    Color shownBackground() const { return shown_ ? shown_->background : colorOfBackground(); }
    Color colorOfBackground() const;
    void renderContents(graphics::Canvas& canvas);
    void renderOwn(graphics::Canvas& canvas, Size shown, void (View::*part)(graphics::Canvas&));
    View* hitTestMessage(Point point, objc::Object event);
    bool pointInsideMessage(Point point, objc::Object event);

    Rect frame_;
    Point displacement_;
    View* superview_ = nullptr;  // cleared when it goes
    Window* window_ = nullptr;   // cleared when it goes
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
    ViewController* controller_ = nullptr;  // cleared when it goes
    ContentMode contentMode_ = ContentMode::ScaleToFill;
    std::unique_ptr<ShownState> shown_;
    AnimationToken animation_ = 0;
};

}  // namespace uikit

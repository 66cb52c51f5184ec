// UIActivityIndicatorView: turning spokes that say that work is under way.
#pragma once

#include "desktop/uikit/color.h"
#include "desktop/uikit/view.h"

namespace uikit {

/// What `+appearance` answers: it remembers settings for every indicator that comes to a window later.
class IndicatorAppearance : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIActivityIndicatorAppearance"};
    static void define(objc::ClassDefinition<IndicatorAppearance>& definition);

    objc::Object color() const { return color_; }
    /// Nil: indicators keep the colour of their style.
    void setColor(objc::Object color) { color_ = objc::Strong<>(color); }

  private:
    objc::Strong<> color_;
};

class ActivityIndicator : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UIActivityIndicatorView"};
    static void define(objc::ClassDefinition<ActivityIndicator>& definition);
    ActivityIndicator();
    ~ActivityIndicator() override;

    enum class Style : long { WhiteLarge, White, Gray };

    // Messages of the same names. Stopped indicators hide themselves unless told otherwise.
    objc::Object initWithActivityIndicatorStyle(Style style);
    objc::Object initWithFrame(Rect frame) override;
    Style activityIndicatorViewStyle() const { return style_; }
    void setActivityIndicatorViewStyle(Style style);
    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return animating_; }
    bool hidesWhenStopped() const { return hidesWhenStopped_; }
    void setHidesWhenStopped(bool hides);
    /// A UIColor: its own, else the appearance's once it came to a window, else the style's.
    objc::Object color() const;
    void setColor(objc::Object color);

    Size sizeThatFits(Size size) override;
    void draw(graphics::Canvas& canvas) override;
    void windowChanged(Window* window) override;

    /// `+appearance`: one for the class, kept.
    static objc::Object appearance(Class cls);

  private:
    void turn();

    Style style_ = Style::White;
    bool animating_ = false;
    bool hidesWhenStopped_ = true;
    double turned_ = 0;
    AnimationToken motion_ = 0;
    objc::Strong<> color_;
    objc::Strong<> appearanceColor_;
};

}  // namespace uikit

// MBProgressHUD: the panel that covers a view while work runs.
#pragma once

#include <string>
#include <vector>

#include "desktop/uikit/activity_indicator.h"
#include "desktop/uikit/animation.h"
#include "desktop/uikit/label.h"
#include "desktop/weak/weak.h"

namespace quorvel {

class ProgressHud : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"MBProgressHUD"};
    static void define(objc::ClassDefinition<ProgressHud>& definition);
    ~ProgressHud() override;

    /// `showHUDAddedTo:animated:`: a new one over the view, shown. The view owns it.
    static ProgressHud* showAddedTo(Class cls, uikit::View* view, bool animated);

    // Messages of the same names. The delegate is not retained; it is sent `hudWasHidden:` once the panel has faded,
    // where it answers that.
    objc::Object initWithFrame(uikit::Rect frame) override;
    void setColor(objc::Object color);
    void setLabelColor(objc::Object color) { label_->setTextColor(color); }
    void setDetailsLabelColor(objc::Object color) { details_->setTextColor(color); }
    objc::Object labelText() const { return label_->text(); }
    void setLabelText(objc::Object text);
    objc::Object detailsLabelText() const { return details_->text(); }
    void setDetailsLabelText(objc::Object text);
    objc::Strong<> delegate() const { return delegate_.load(); }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    int mode() const { return mode_; }
    /// 0 turns an activity indicator; any other mode shows the texts alone.
    void setMode(int mode);
    float opacity() const { return opacity_; }
    void setOpacity(float opacity);
    void setActivityIndicatorTintColor(objc::Object color);
    void show(bool animated);
    void hide(bool animated);
    void hideAfterDelay(bool animated, double seconds);
    /// Shows, sends the selector with the object to the target on a thread of its own, and hides when that returned.
    /// Target and object are kept until then.
    void showWhileExecuting(SEL selector, objc::Object target, objc::Object object, bool animated);

    void layoutSubviews() override;
    void draw(graphics::Canvas& canvas) override;
    bool touch(const uikit::Touch&) override { return true; }

    bool isLeaving() const { return leaving_; }

  private:
    void fade(double to, bool animated, std::function<void()> ended);
    void ended();

    objc::Ref<uikit::Label> label_;
    objc::Ref<uikit::Label> details_;
    objc::Ref<uikit::ActivityIndicator> indicator_;
    uikit::Rect panel_;
    uikit::Color color_ = uikit::Color::gray(0);
    float opacity_ = 0.8F;
    int mode_ = 0;
    bool leaving_ = false;
    weak::Object delegate_;
    uikit::AnimationToken animation_ = 0;
};

/// The panels that are on the screen and not leaving, the oldest first.
std::vector<ProgressHud*> visibleIndicators();

}  // namespace quorvel

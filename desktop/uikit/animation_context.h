// The block of changes that is being animated, if any: views tell it before they change.
#pragma once

#include "desktop/uikit/view.h"

namespace uikit {

class AnimationContext {
  public:
    /// Makes this the present context until it goes.
    AnimationContext();
    ~AnimationContext();
    AnimationContext(const AnimationContext&) = delete;
    AnimationContext& operator=(const AnimationContext&) = delete;

    /// The view is about to change its frame, alpha or background. Without a context nothing happens.
    static void note(View& view);
    const std::vector<objc::Ref<View>>& views() const { return views_; }

    /// Moves views that were noted from what was shown to what they say now.
    static void run(const std::vector<objc::Ref<View>>& views, double seconds, double delay, Curve curve,
                    std::function<void(bool)> completion);

  private:
    static void show(View& view, const ShownState& from, double amount);
    static ShownState shownState(const View& view);

    AnimationContext* outer_;  // outlives this one
    std::vector<objc::Ref<View>> views_;
};

}  // namespace uikit

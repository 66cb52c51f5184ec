// Blocks of changes that are drawn as movements: the views have their new values at once, and are shown on the way.
#include <algorithm>

#include "desktop/uikit/animation_context.h"
#include "desktop/uikit/color.h"

namespace uikit {
namespace {

AnimationContext* current = nullptr;

double between(double from, double to, double amount) { return from + (to - from) * amount; }

Rect between(const Rect& from, const Rect& to, double amount) {
    return {{between(from.left(), to.left(), amount), between(from.top(), to.top(), amount)},
            {between(from.width(), to.width(), amount), between(from.height(), to.height(), amount)}};
}

}  // namespace

AnimationContext::AnimationContext() : outer_(std::exchange(current, this)) {}

AnimationContext::~AnimationContext() { current = outer_; }

ShownState AnimationContext::shownState(const View& view) {
    return {view.shownFrame(), view.shownAlpha(), view.shownBackground()};
}

void AnimationContext::note(View& view) {
    // A view that is not on the screen has nothing to move from, and one that is being made none to keep it.
    if (!current || !view.window_) return;
    for (const auto& each : current->views_) {
        if (each == &view) return;
    }
    current->views_.emplace_back(&view);
    view.shown_ = std::make_unique<ShownState>(shownState(view));
}

void AnimationContext::show(View& view, const ShownState& from, double amount) {
    view.shown_ = std::make_unique<ShownState>(ShownState{between(from.frame, view.frame_, amount),
                                                          between(from.alpha, view.alpha_, amount),
                                                          from.background.mixed(view.colorOfBackground(), amount)});
    view.setNeedsDisplay();
}

void AnimationContext::run(const std::vector<objc::Ref<View>>& views, double seconds, double delay, Curve curve,
                           std::function<void(bool)> completion) {
    struct Movement {
        objc::Ref<View> view;
        ShownState from;
    };
    std::vector<Movement> movements;
    for (const auto& each : views) movements.push_back({each, *each->shown_});
    // A view follows the last animation that noted it; what moved it before leaves it alone from now on.
    auto token = std::make_shared<AnimationToken>(0);
    const double whole = seconds + delay;
    auto step = [movements, whole, delay, seconds, curve, token](double progress) {
        const double share = seconds > 0 ? (progress * whole - delay) / seconds : progress;
        const double amount = progress < 1 ? curveValue(curve, std::clamp(share, 0.0, 1.0)) : 1;
        for (const auto& each : movements) {
            if (each.view->animation_ == *token) show(*each.view, each.from, amount);
        }
    };
    auto end = [movements, token, completion = std::move(completion)](bool finished) {
        for (const auto& each : movements) {
            if (each.view->animation_ != *token) continue;
            each.view->animation_ = 0;
            each.view->shown_.reset();
            each.view->setNeedsDisplay();
        }
        if (completion) completion(finished);
    };
    if (whole > 0) *token = animate(whole, Curve::Linear, std::move(step), end);
    for (const auto& each : movements) each.view->animation_ = *token;
    if (whole <= 0) end(true);
}

void animateChanges(double seconds, double delay, Curve curve, const std::function<void()>& changes,
                    std::function<void(bool)> completion) {
    std::vector<objc::Ref<View>> changed;
    {
        AnimationContext context;
        changes();
        changed = context.views();
    }
    AnimationContext::run(changed, seconds, delay, curve, std::move(completion));
}

}  // namespace uikit

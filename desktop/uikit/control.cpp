// UIControl.
#include "desktop/uikit/control.h"

#include <algorithm>
#include <cstring>

#include "desktop/uikit/text.h"

namespace uikit {
namespace {

/// How far a finger may stray from a control that it pressed.
constexpr double touchMargin = 70;

}  // namespace

void Control::define(objc::ClassDefinition<Control>& definition) {
    definition.method<"addTarget:action:forControlEvents:", &Control::addTargetActionForControlEvents>()
        .method<"removeTarget:action:forControlEvents:", &Control::removeTargetActionForControlEvents>()
        .method<"sendActionsForControlEvents:", &Control::sendActionsForControlEvents>()
        .method<"allTargets", &Control::allTargets>()
        .method<"allControlEvents", &Control::allControlEvents>()
        .method<"actionsForTarget:forControlEvent:", &Control::actionsForTargetForControlEvent>()
        .method<"isEnabled", &Control::isEnabled>()
        .method<"setEnabled:", &Control::setEnabled>()
        .method<"isSelected", &Control::isSelected>()
        .method<"setSelected:", &Control::setSelected>()
        .method<"isHighlighted", &Control::isHighlighted>()
        .method<"setHighlighted:", &Control::setHighlighted>()
        .method<"state", &Control::state>()
        .method<"isTracking", &Control::isTracking>()
        .method<"isTouchInside", &Control::isTouchInside>();
}

void Control::addTargetActionForControlEvents(objc::Object target, SEL action, unsigned long events) {
    if (!action || !events) return;
    for (auto& each : actions_) {
        if (each.target.load().get() != target || !sel_isEqual(each.selector, action)) continue;
        each.events |= events;
        return;
    }
    actions_.push_back({target, action, events});
}

void Control::removeTargetActionForControlEvents(objc::Object target, SEL action, unsigned long events) {
    for (auto& each : actions_) {
        const bool wanted =
            (!target || each.target.load().get() == target) && (!action || sel_isEqual(each.selector, action));
        if (wanted) each.events &= ~events;
    }
    std::erase_if(actions_, [](const Action& each) { return each.events == 0; });
}

void Control::sendActionsForControlEvents(unsigned long events) {
    const objc::Ref<Control> kept(this);
    // The order of adding holds; an action may add and remove others.
    const auto actions = actions_;
    for (const auto& each : actions) {
        if (!(each.events & events)) continue;
        const auto target = each.target.load();
        if (!target) continue;
        const auto isSame = [&](const Action& other) {
            return sel_isEqual(other.selector, each.selector) && (other.events & events) &&
                   other.target.load() == target;
        };
        if (std::none_of(actions_.begin(), actions_.end(), isSame)) continue;
        const char* name = sel_getName(each.selector);
        switch (std::count(name, name + std::strlen(name), ':')) {
            case 0:
                objc::sendSelector(target, each.selector);
                break;
            case 1:
                objc::sendSelector(target, each.selector, object());
                break;
            default:
                objc::sendSelector(target, each.selector, object(), objc::Object{});
        }
    }
}

objc::Object Control::allTargets() const {
    auto set = objc::sendClass<"NSMutableSet", "set", objc::Object>();
    for (const auto& each : actions_) {
        if (const auto target = each.target.load()) objc::send<"addObject:">(set, target.get());
    }
    return set;
}

unsigned long Control::allControlEvents() const {
    unsigned long events = 0;
    for (const auto& each : actions_) events |= each.events;
    return events;
}

objc::Object Control::actionsForTargetForControlEvent(objc::Object target, unsigned long event) const {
    objc::Object names;
    for (const auto& each : actions_) {
        if (!(each.events & event) || each.target.load().get() != target) continue;
        if (!names) names = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        objc::send<"addObject:">(names, nsString(sel_getName(each.selector)));
    }
    return names;
}

void Control::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    stateChanged();
}

void Control::setSelected(bool selected) {
    if (selected == selected_) return;
    selected_ = selected;
    stateChanged();
}

void Control::setHighlighted(bool highlighted) {
    if (highlighted == highlighted_) return;
    highlighted_ = highlighted;
    stateChanged();
}

unsigned long Control::state() const {
    return (highlighted_ ? highlightedState : 0UL) | (enabled_ ? 0UL : disabledState) |
           (selected_ ? selectedState : 0UL);
}

void Control::follow(Point point) {
    const bool inside = bounds().inset(-touchMargin, -touchMargin).contains(point);
    const bool before = std::exchange(inside_, inside);
    if (inside != before) objc::send<"setHighlighted:">(object(), inside);
    trackingMoved(point, inside);
    if (inside != before) sendActionsForControlEvents(inside ? touchDragEnter : touchDragExit);
    sendActionsForControlEvents(inside ? touchDragInside : touchDragOutside);
}

bool Control::touch(const Touch& touch) {
    const objc::Ref<Control> kept(this);
    const Point point = pointFromWindow(touch.point);
    if (touch.phase == TouchPhase::Began) {
        // A disabled control swallows the touch, so that nothing behind it answers.
        if (!enabled_) return true;
        tracking_ = inside_ = true;
        objc::send<"setHighlighted:">(object(), true);
        trackingBegan(point);
        sendActionsForControlEvents(touchDown);
        return true;
    }
    if (!tracking_) return false;
    if (touch.phase == TouchPhase::Moved) {
        follow(point);
        return true;
    }
    tracking_ = false;
    const bool inside = touch.phase == TouchPhase::Ended && bounds().inset(-touchMargin, -touchMargin).contains(point);
    inside_ = false;
    objc::send<"setHighlighted:">(object(), false);
    if (!enabled_ || touch.phase == TouchPhase::Cancelled) {
        trackingCancelled();
        sendActionsForControlEvents(touchCancel);
        return true;
    }
    trackingEnded(point, inside);
    sendActionsForControlEvents(inside ? touchUpInside : touchUpOutside);
    return true;
}

}  // namespace uikit

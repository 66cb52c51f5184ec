// UIControl: a view that turns touches into actions for its targets.
#pragma once

#include "desktop/uikit/view.h"
#include "desktop/weak/weak.h"

namespace uikit {

/// UIControlEvents, as bits.
enum ControlEvent : unsigned long {
    touchDown = 1,
    touchDownRepeat = 2,
    touchDragInside = 4,
    touchDragOutside = 8,
    touchDragEnter = 16,
    touchDragExit = 32,
    touchUpInside = 64,
    touchUpOutside = 128,
    touchCancel = 256,
    valueChanged = 4096,
    allEvents = 0xFFFFFFFF
};

/// UIControlState, as bits.
enum ControlState : unsigned long { normalState = 0, highlightedState = 1, disabledState = 2, selectedState = 4 };

class Control : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UIControl"};
    static void define(objc::ClassDefinition<Control>& definition);

    // Messages of the same names. Targets are not retained; an action without a target goes nowhere. The action is sent
    // with nothing, the control, or the control and nil for the event, by the number of its colons.
    void addTargetActionForControlEvents(objc::Object target, SEL action, unsigned long events);
    /// A null action stands for all actions of the target, a null target for all targets.
    void removeTargetActionForControlEvents(objc::Object target, SEL action, unsigned long events);
    void sendActionsForControlEvents(unsigned long events);
    objc::Object allTargets() const;  // an NSSet
    unsigned long allControlEvents() const;
    objc::Object actionsForTargetForControlEvent(objc::Object target, unsigned long event) const;  // nil for none
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);
    bool isSelected() const { return selected_; }
    void setSelected(bool selected);
    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);
    unsigned long state() const;
    bool isTracking() const { return tracking_; }
    bool isTouchInside() const { return inside_; }

    bool touch(const Touch& touch) override;

  protected:
    /// A touch as the control follows it, in its own bounds. `inside` counts a margin of some points around them.
    virtual void trackingBegan(Point) {}
    virtual void trackingMoved(Point, bool /*inside*/) {}
    virtual void trackingEnded(Point, bool /*inside*/) {}
    virtual void trackingCancelled() {}
    /// Told after enabled, selected or highlighted changed.
    virtual void stateChanged() { setNeedsDisplay(); }

  private:
    struct Action {
        weak::Object target;
        SEL selector;
        unsigned long events;
    };
    void follow(Point point);

    std::vector<Action> actions_;
    bool enabled_ = true;
    bool selected_ = false;
    bool highlighted_ = false;
    bool tracking_ = false;
    bool inside_ = false;
};

}  // namespace uikit

// UIView: the messages that it answers.
#include "desktop/uikit/animation_context.h"
#include "desktop/uikit/application.h"

namespace uikit {
namespace {

/// UIViewAnimationOptions: the curve in bits 16 to 19.
Curve curveOf(unsigned long options) {
    constexpr Curve curves[] = {Curve::EaseInOut, Curve::EaseIn, Curve::EaseOut, Curve::Linear};
    const unsigned long index = options >> 16 & 0xF;
    return index < std::size(curves) ? curves[index] : Curve::EaseInOut;
}

void animateBlocks(double seconds, double delay, Curve curve, objc::Object changes, objc::Object completion) {
    const auto change = objc::Block<void()>::copyOf(changes.self);
    const auto complete = objc::Block<void(BOOL)>::copyOf(completion.self);
    std::function<void(bool)> end;
    if (complete) end = [complete](bool finished) { complete(finished ? 1 : 0); };
    animateChanges(
        seconds, delay, curve,
        [&] {
            if (change) change();
        },
        std::move(end));
}

void animateChangesAlone(Class, double seconds, objc::Object changes) {
    animateBlocks(seconds, 0, Curve::EaseInOut, changes, {});
}
void animateWithCompletion(Class, double seconds, objc::Object changes, objc::Object completion) {
    animateBlocks(seconds, 0, Curve::EaseInOut, changes, completion);
}
void animateWithOptions(Class, double seconds, double delay, unsigned long options, objc::Object changes,
                        objc::Object completion) {
    animateBlocks(seconds, delay, curveOf(options), changes, completion);
}

bool endEditing(View* view, bool) {
    auto* first = dynamic_cast<View*>(firstResponder());
    if (!first || !first->isDescendantOf(view)) return true;
    return objc::send<"resignFirstResponder", bool>(first->object());
}

}  // namespace

void View::define(objc::ClassDefinition<View>& definition) {
    definition.method<"init", &View::init>()
        .method<"initWithFrame:", &View::initWithFrame>()
        .method<"frame", &View::frame>()
        .method<"setFrame:", &View::setFrame>()
        .method<"bounds", &View::bounds>()
        .method<"setBounds:", &View::setBounds>()
        .method<"center", &View::center>()
        .method<"setCenter:", &View::setCenter>()
        .method<"autoresizingMask", &View::autoresizingMask>()
        .method<"setAutoresizingMask:", &View::setAutoresizingMask>()
        .method<"setNeedsLayout", &View::setNeedsLayout>()
        .method<"layoutIfNeeded", &View::layoutIfNeeded>()
        .method<"layoutSubviews", &View::layoutSubviews>()
        .method<"sizeThatFits:", &View::sizeThatFits>()
        .method<"sizeToFit", &View::sizeToFit>()
        .method<"convertPoint:toView:", &View::convertPointToView>()
        .method<"convertPoint:fromView:", &View::convertPointFromView>()
        .method<"convertRect:toView:", &View::convertRectToView>()
        .method<"convertRect:fromView:", &View::convertRectFromView>();
    definition.method<"superview", &View::superview>()
        .method<"subviews", &View::subviewsArray>()
        .method<"addSubview:", &View::addSubview>()
        .method<"insertSubview:atIndex:", &View::insertSubviewAtIndex>()
        .method<"insertSubview:aboveSubview:", &View::insertSubviewAbove>()
        .method<"insertSubview:belowSubview:", &View::insertSubviewBelow>()
        .method<"bringSubviewToFront:", &View::bringSubviewToFront>()
        .method<"sendSubviewToBack:", &View::sendSubviewToBack>()
        .method<"removeFromSuperview", &View::removeFromSuperview>()
        .method<"didMoveToSuperview", &View::didMoveToSuperview>()
        .method<"didMoveToWindow", &View::didMoveToWindow>()
        .method<"isDescendantOfView:", &View::isDescendantOf>()
        .method<"window", &View::window>()
        .method<"viewWithTag:", &View::viewWithTag>()
        .method<"tag", &View::tag>()
        .method<"setTag:", &View::setTag>();
    definition.method<"isHidden", &View::isHidden>()
        .method<"setHidden:", &View::setHidden>()
        .method<"alpha", &View::alpha>()
        .method<"setAlpha:", &View::setAlpha>()
        .method<"backgroundColor", &View::backgroundColor>()
        .method<"setBackgroundColor:", &View::setBackgroundColor>()
        .method<"tintColor", &View::tintColor>()
        .method<"setTintColor:", &View::setTintColor>()
        .method<"contentMode", &View::contentMode>()
        .method<"setContentMode:", &View::setContentMode>()
        .method<"clipsToBounds", &View::clipsToBounds>()
        .method<"setClipsToBounds:", &View::setClipsToBounds>()
        .method<"setNeedsDisplay", &View::setNeedsDisplay>()
        .method<"isUserInteractionEnabled", &View::isUserInteractionEnabled>()
        .method<"setUserInteractionEnabled:", &View::setUserInteractionEnabled>()
        .method<"hitTest:withEvent:", &View::hitTestMessage>()
        .method<"pointInside:withEvent:", &View::pointInsideMessage>();
    definition.classMethod<"animateWithDuration:animations:", &animateChangesAlone>()
        .classMethod<"animateWithDuration:animations:completion:", &animateWithCompletion>()
        .classMethod<"animateWithDuration:delay:options:animations:completion:", &animateWithOptions>();
    objc::addMethod<"endEditing:", &endEditing>(objc::classOf<View>());
}

}  // namespace uikit

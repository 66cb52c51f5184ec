// UIActivityIndicatorView and its appearance.
#include "desktop/uikit/activity_indicator.h"

#include <cmath>

#include "desktop/graphics/icons.h"

namespace uikit {
namespace {

/// Never destroyed: the process may end while objects of the runtime are no longer to be touched.
IndicatorAppearance& sharedAppearance() {
    static auto* appearance = new objc::Ref<IndicatorAppearance>(objc::Ref<IndicatorAppearance>::make());
    return **appearance;
}

}  // namespace

void IndicatorAppearance::define(objc::ClassDefinition<IndicatorAppearance>& definition) {
    definition.method<"color", &IndicatorAppearance::color>().method<"setColor:", &IndicatorAppearance::setColor>();
}

ActivityIndicator::ActivityIndicator() = default;

ActivityIndicator::~ActivityIndicator() { cancelAnimation(motion_); }

void ActivityIndicator::define(objc::ClassDefinition<ActivityIndicator>& definition) {
    definition.classMethod<"appearance", &ActivityIndicator::appearance>();
    definition.method<"initWithActivityIndicatorStyle:", &ActivityIndicator::initWithActivityIndicatorStyle>()
        .method<"activityIndicatorViewStyle", &ActivityIndicator::activityIndicatorViewStyle>()
        .method<"setActivityIndicatorViewStyle:", &ActivityIndicator::setActivityIndicatorViewStyle>()
        .method<"startAnimating", &ActivityIndicator::startAnimating>()
        .method<"stopAnimating", &ActivityIndicator::stopAnimating>()
        .method<"isAnimating", &ActivityIndicator::isAnimating>()
        .method<"hidesWhenStopped", &ActivityIndicator::hidesWhenStopped>()
        .method<"setHidesWhenStopped:", &ActivityIndicator::setHidesWhenStopped>()
        .method<"color", &ActivityIndicator::color>()
        .method<"setColor:", &ActivityIndicator::setColor>();
}

objc::Object ActivityIndicator::appearance(Class) { return objc::Object{sharedAppearance().self}; }

objc::Object ActivityIndicator::initWithActivityIndicatorStyle(Style style) {
    style_ = style;
    return objc::send<"initWithFrame:", objc::Object>(object(), Rect{{}, sizeThatFits({})});
}

objc::Object ActivityIndicator::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setUserInteractionEnabled(false);
    setHidden(true);
    return made;
}

void ActivityIndicator::setActivityIndicatorViewStyle(Style style) {
    style_ = style;
    setFrame({frame().origin, sizeThatFits({})});
    setNeedsDisplay();
}

void ActivityIndicator::startAnimating() {
    if (animating_) return;
    animating_ = true;
    setHidden(false);
    turn();
}

void ActivityIndicator::stopAnimating() {
    animating_ = false;
    cancelAnimation(std::exchange(motion_, 0));
    if (hidesWhenStopped_) setHidden(true);
    setNeedsDisplay();
}

/// Keeps the spokes turning while they can be seen.
void ActivityIndicator::turn() {
    cancelAnimation(std::exchange(motion_, 0));
    if (!animating_ || !window()) return;
    motion_ = everyFrame(Motion::Endless, [this](double seconds) {
        turned_ = std::fmod(turned_ + seconds, 1.0);
        setNeedsDisplay();
        return true;
    });
}

void ActivityIndicator::setHidesWhenStopped(bool hides) {
    hidesWhenStopped_ = hides;
    if (!animating_) setHidden(hides);
}

objc::Object ActivityIndicator::color() const {
    if (color_) return color_;
    if (appearanceColor_) return appearanceColor_;
    return uiColor(style_ == Style::Gray ? Color::gray(0.5) : Color::white());
}

void ActivityIndicator::setColor(objc::Object color) {
    color_ = objc::Strong<>(color);
    setNeedsDisplay();
}

Size ActivityIndicator::sizeThatFits(Size) {
    const double side = style_ == Style::WhiteLarge ? 37 : 20;
    return {side, side};
}

void ActivityIndicator::draw(graphics::Canvas& canvas) {
    const Size size = sizeThatFits({});
    graphics::drawSpinner(canvas, centred(size, bounds()), colorOf(color()), turned_);
}

void ActivityIndicator::windowChanged(Window* window) {
    if (window) appearanceColor_ = objc::Strong<>(sharedAppearance().color());
    turn();
}

}  // namespace uikit

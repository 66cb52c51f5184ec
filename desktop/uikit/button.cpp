// UIButton.
#include "desktop/uikit/button.h"

namespace uikit {
namespace {

constexpr double pressedAlpha = 0.25;
constexpr double disabledAlpha = 0.35;
constexpr double releaseSeconds = 0.25;

objc::Object buttonWithType(Class cls, long type) { return Button::withType(cls, type); }

}  // namespace

void Button::define(objc::ClassDefinition<Button>& definition) {
    definition.classMethod<"buttonWithType:", &buttonWithType>();
    definition.method<"buttonType", &Button::buttonType>()
        .method<"titleForState:", &Button::titleForState>()
        .method<"setTitle:forState:", &Button::setTitleForState>()
        .method<"titleColorForState:", &Button::titleColorForState>()
        .method<"setTitleColor:forState:", &Button::setTitleColorForState>()
        .method<"imageForState:", &Button::imageForState>()
        .method<"setImage:forState:", &Button::setImageForState>()
        .method<"backgroundImageForState:", &Button::backgroundImageForState>()
        .method<"setBackgroundImage:forState:", &Button::setBackgroundImageForState>()
        .method<"currentTitle", &Button::currentTitle>()
        .method<"currentTitleColor", &Button::currentTitleColor>()
        .method<"currentImage", &Button::currentImage>();
    definition.method<"titleLabel", &Button::titleLabel>()
        .method<"imageView", &Button::imageView>()
        .method<"contentEdgeInsets", &Button::contentEdgeInsets>()
        .method<"setContentEdgeInsets:", &Button::setContentEdgeInsets>()
        .method<"titleEdgeInsets", &Button::titleEdgeInsets>()
        .method<"setTitleEdgeInsets:", &Button::setTitleEdgeInsets>()
        .method<"imageEdgeInsets", &Button::imageEdgeInsets>()
        .method<"setImageEdgeInsets:", &Button::setImageEdgeInsets>()
        .method<"contentHorizontalAlignment", &Button::contentHorizontalAlignment>()
        .method<"setContentHorizontalAlignment:", &Button::setContentHorizontalAlignment>();
}

Button::~Button() = default;

objc::Object Button::withType(Class cls, long type) {
    auto made = objc::make<objc::Object>(cls);
    auto* button = objc::peerOf<Button>(made.self());
    button->type_ = type;
    if (type == 1) button->titleLabel()->setFontValue(graphics::Font::system(15));
    button->refresh();
    return objc::autorelease(std::move(made));
}

objc::Object Button::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    imageView_ = objc::Ref<ImageView>::make();
    imageView_->setContentMode(ContentMode::AspectFit);
    titleLabel_ = objc::Ref<Label>::make();
    titleLabel_->setFontValue(graphics::Font::system(18));
    titleLabel_->setLineBreakMode(5);
    addSubview(imageView_);
    addSubview(titleLabel_);
    refresh();
    return made;
}

Label* Button::titleLabel() { return titleLabel_; }

ImageView* Button::imageView() { return imageView_; }

objc::Object Button::lookUp(const ByState& values, unsigned long state) {
    auto found = values.find(state);
    if (found == values.end()) found = values.find(normalState);
    return found == values.end() ? objc::Object{} : found->second.get();
}

void Button::set(ByState& values, objc::Object value, unsigned long state) {
    if (value)
        values[state] = objc::Strong<>(value);
    else
        values.erase(state);
    refresh();
}

objc::Object Button::titleForState(unsigned long state) const { return lookUp(titles_, state); }

void Button::setTitleForState(objc::Object title, unsigned long state) {
    const auto copy = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(title));
    set(titles_, copy, state);
}

objc::Object Button::titleColorForState(unsigned long state) const { return lookUp(titleColors_, state); }

void Button::setTitleColorForState(objc::Object color, unsigned long state) { set(titleColors_, color, state); }

objc::Object Button::imageForState(unsigned long state) const { return lookUp(images_, state); }

void Button::setImageForState(objc::Object image, unsigned long state) { set(images_, image, state); }

objc::Object Button::backgroundImageForState(unsigned long state) const { return lookUp(backgroundImages_, state); }

void Button::setBackgroundImageForState(objc::Object image, unsigned long state) {
    set(backgroundImages_, image, state);
}

objc::Object Button::currentTitleColor() const { return uiColor(titleColor()); }

Color Button::titleColor() const {
    if (const auto color = lookUp(titleColors_, state())) return colorOf(color);
    return type_ == 1 ? tint() : Color::white();
}

std::optional<Color> Button::stencil() const {
    if (imageTint_) return imageTint_;
    return type_ == 1 ? std::optional(tint()) : std::nullopt;
}

void Button::setContentEdgeInsets(EdgeInsets insets) {
    contentInsets_ = insets;
    setNeedsLayout();
}

void Button::setTitleEdgeInsets(EdgeInsets insets) {
    titleInsets_ = insets;
    setNeedsLayout();
}

void Button::setImageEdgeInsets(EdgeInsets insets) {
    imageInsets_ = insets;
    setNeedsLayout();
}

void Button::setContentHorizontalAlignment(long alignment) {
    horizontal_ = alignment;
    setNeedsLayout();
}

void Button::setImageTint(Color color) {
    imageTint_ = color;
    refresh();
}

/// Brings the label and the image view in line with the present state.
void Button::refresh() {
    if (!titleLabel_) return;
    titleLabel_->setText(currentTitle());
    titleLabel_->setColorValue(titleColor());
    imageView_->setImage(currentImage());
    imageView_->setStencil(stencil());
    press();
    setNeedsLayout();
}

/// A pressed button fades at once, and comes back softly; a state with a look of its own does not fade.
void Button::press() {
    const unsigned long now = state();
    auto hasOwnLook = [&](const ByState& values) { return values.contains(now); };
    const bool ownLook = hasOwnLook(images_) || hasOwnLook(titleColors_) || hasOwnLook(backgroundImages_);
    const bool pressed = isHighlighted() && !ownLook;
    const double rest = isEnabled() || ownLook ? 1 : disabledAlpha;
    auto apply = [this](double alpha) {
        titleLabel_->setAlpha(alpha);
        imageView_->setAlpha(alpha);
    };
    if (pressed) {
        apply(pressedAlpha);
    } else if (wasPressed_ && window()) {
        animateChanges(releaseSeconds, 0, Curve::EaseOut, [&] { apply(rest); });
    } else {
        apply(rest);
    }
    wasPressed_ = pressed;
}

void Button::stateChanged() { refresh(); }

void Button::tintColorDidChange() { refresh(); }

Size Button::sizeThatFits(Size) {
    const Size image = imageOf(currentImage()).size();
    const Size title = titleLabel_->sizeThatFits({});
    const Size background = imageOf(backgroundImageForState(state())).size();
    const double width = image.width + title.width + contentInsets_.left + contentInsets_.right;
    const double height = std::max(image.height, title.height) + contentInsets_.top + contentInsets_.bottom;
    // The handset's padding above and below a title that stands alone.
    const double padding = contentInsets_ == EdgeInsets{} && image.isEmpty() ? 12 : 0;
    return {std::max(width, background.width), std::max(height + padding, background.height)};
}

void Button::layoutSubviews() {
    const Rect content = bounds().inset(contentInsets_);
    Size image = imageOf(currentImage()).size();
    if (!image.isEmpty()) {
        // An image that is too large is fitted, never cut.
        const double factor = std::min({1.0, content.width() / image.width, content.height() / image.height});
        image = {image.width * factor, image.height * factor};
    }
    Size title = titleLabel_->sizeThatFits({});
    title.width = std::max(0.0, std::min(title.width, content.width() - image.width));
    title.height = std::min(title.height, content.height());
    const double spare = content.width() - image.width - title.width;
    const double left = content.left() + (horizontal_ == 1 ? 0 : horizontal_ == 2 ? spare : spare / 2);
    const Rect imagePlace{{left, content.centre().y - image.height / 2}, image};
    const Rect titlePlace{{left + image.width, content.centre().y - title.height / 2}, title};
    imageView_->setFrame(imagePlace.translated((imageInsets_.left - imageInsets_.right) / 2,
                                               (imageInsets_.top - imageInsets_.bottom) / 2));
    titleLabel_->setFrame(titlePlace.translated((titleInsets_.left - titleInsets_.right) / 2,
                                                (titleInsets_.top - titleInsets_.bottom) / 2));
}

void Button::draw(graphics::Canvas& canvas) {
    if (const auto image = imageOf(backgroundImageForState(state()))) canvas.draw(image, bounds());
}

}  // namespace uikit

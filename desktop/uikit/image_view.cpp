// UIImageView.
#include "desktop/uikit/image_view.h"

namespace uikit {

ImageView::ImageView() { setUserInteractionEnabled(false); }

void ImageView::define(objc::ClassDefinition<ImageView>& definition) {
    definition.method<"initWithImage:", &ImageView::initWithImage>()
        .method<"image", &ImageView::image>()
        .method<"setImage:", &ImageView::setImage>()
        .method<"highlightedImage", &ImageView::highlightedImage>()
        .method<"setHighlightedImage:", &ImageView::setHighlightedImage>()
        .method<"isHighlighted", &ImageView::isHighlighted>()
        .method<"setHighlighted:", &ImageView::setHighlighted>();
}

objc::Object ImageView::initWithImage(objc::Object image) {
    const auto made = objc::send<"initWithFrame:", objc::Object>(object(), Rect{{}, imageOf(image).size()});
    setImage(image);
    return made;
}

void ImageView::setImage(objc::Object image) {
    image_ = objc::Strong<>(image);
    setNeedsDisplay();
}

void ImageView::setHighlightedImage(objc::Object image) {
    highlightedImage_ = objc::Strong<>(image);
    setNeedsDisplay();
}

void ImageView::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void ImageView::setStencil(std::optional<Color> color) {
    if (stencil_ == color) return;
    stencil_ = color;
    setNeedsDisplay();
}

objc::Object ImageView::shownImage() const { return highlighted_ && highlightedImage_ ? highlightedImage_ : image_; }

Size ImageView::sizeThatFits(Size) { return imageOf(image_).size(); }

Rect imageRect(Size image, const Rect& bounds, ContentMode mode) {
    if (image.isEmpty()) return {bounds.origin, {}};
    const double across = bounds.width() / image.width;
    const double down = bounds.height() / image.height;
    double factor = 1;
    switch (mode) {
        case ContentMode::AspectFit:
            factor = std::min(across, down);
            break;
        case ContentMode::AspectFill:
            factor = std::max(across, down);
            break;
        case ContentMode::Center:
            break;
        default:
            return bounds;
    }
    return centred({image.width * factor, image.height * factor}, bounds);
}

void ImageView::draw(graphics::Canvas& canvas) {
    const objc::Object shown = shownImage();
    const graphics::Image image = imageOf(shown);
    if (!image) return;
    const Rect place = canvas.snapped(imageRect(image.size(), bounds(), contentMode()));
    if (stencil_ || isTemplateImage(shown))
        canvas.drawTinted(image, place, stencil_.value_or(tint()));
    else
        canvas.draw(image, place);
}

}  // namespace uikit

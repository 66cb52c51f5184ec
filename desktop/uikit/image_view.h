// UIImageView: a picture, stretched, fitted or centred; a template picture takes the tint.
#pragma once

#include <optional>

#include "desktop/uikit/color.h"
#include "desktop/uikit/view.h"

namespace uikit {

class ImageView : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UIImageView"};
    static void define(objc::ClassDefinition<ImageView>& definition);
    ImageView();

    // Messages of the same names. `initWithImage:` makes the view as large as the image.
    objc::Object initWithImage(objc::Object image);
    objc::Object image() const { return image_; }
    void setImage(objc::Object image);
    objc::Object highlightedImage() const { return highlightedImage_; }
    void setHighlightedImage(objc::Object image);
    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);

    Size sizeThatFits(Size size) override;
    void draw(graphics::Canvas& canvas) override;

    /// Fills every image's shape with this colour, whether it is a template or not. Nothing: as the image says.
    void setStencil(std::optional<Color> color);

  private:
    objc::Object shownImage() const;

    objc::Strong<> image_;
    objc::Strong<> highlightedImage_;
    bool highlighted_ = false;
    std::optional<Color> stencil_;
};

/// Where an image of that size lies in the bounds.
Rect imageRect(Size image, const Rect& bounds, ContentMode mode);

}  // namespace uikit

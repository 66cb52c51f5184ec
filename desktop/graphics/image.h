// Pictures in memory: an image of some points at some pixels a point, read from and written to PNG files.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "desktop/graphics/color.h"
#include "desktop/graphics/geometry.h"
#include "desktop/graphics/result.h"

namespace graphics {

/// A shared handle on pixels (ARGB32, premultiplied): copies are cheap and see the same pixels. A default-made image is
/// empty, has no size and draws nothing.
class Image {
  public:
    Image() = default;

    /// A transparent image of `size` points, at least one pixel each way. Draw on it with Canvas.
    Image(Size size, double scale);

    /// Reads a PNG file for a display of `scale` pixels a point. Of "name.png", "name@2x.png" and "name@3x.png" the
    /// smallest that is sharp enough is taken, else the largest that exists. The failure names the file and the reason.
    static Result<Image> load(const std::string& path, double scale = 1);

    /// Writes the pixels as PNG, over an existing file only once the new one is complete. Answers an empty text, or
    /// what went wrong.
    std::string writePng(const std::string& path) const;

    explicit operator bool() const { return surface_ != nullptr; }
    /// In points.
    Size size() const { return size_; }
    /// Pixels a point.
    double scale() const { return scale_; }
    int pixelWidth() const;
    int pixelHeight() const;

    /// A new image: this one's alpha, filled with the colour.
    Image tinted(const Color& color) const;

    /// The premultiplied pixel as 0xAARRGGBB; 0 outside.
    std::uint32_t pixel(int x, int y) const;

    /// Borrowed; null for an empty image.
    cairo_surface_t* surface() const { return surface_.get(); }

  private:
    Image(std::shared_ptr<cairo_surface_t> surface, double scale);

    std::shared_ptr<cairo_surface_t> surface_;
    Size size_;
    double scale_ = 1;
};

}  // namespace graphics

// What the drawing tests ask of a picture.
#pragma once

#include "desktop/graphics/canvas.h"

namespace graphics::testing {

inline unsigned alphaAt(const Image& image, int x, int y) { return image.pixel(x, y) >> 24; }

/// Pixels that are neither transparent nor the ground's colour.
inline int pixelsOtherThan(const Image& image, std::uint32_t ground) {
    int count = 0;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) count += image.pixel(x, y) != ground;
    }
    return count;
}

/// The smallest rectangle of pixels outside of which all are transparent.
inline Rect inkBounds(const Image& image) {
    Rect bounds;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) {
            if (alphaAt(image, x, y) > 16) bounds = bounds.united({{double(x), double(y)}, {1, 1}});
        }
    }
    return bounds;
}

}  // namespace graphics::testing

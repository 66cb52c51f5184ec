// Pictures out of the bytes of a file: what cameras and address books have.
#pragma once

#include <string_view>

#include "desktop/graphics/image.h"

namespace graphics {

/// The picture of a PNG or JPEG file's bytes, upright as its camera says, at one pixel a point, made smaller until
/// neither side has more pixels than `longestSide`. The failure says what is wrong with the bytes; more than 100
/// million pixels are refused.
Result<Image> decodeImage(std::string_view bytes, int longestSide);

}  // namespace graphics

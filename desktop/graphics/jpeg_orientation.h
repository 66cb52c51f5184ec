// How a camera was held, as the JPEG file it made says it.
#pragma once

#include <string_view>

namespace graphics {

/// The numbers of Exif, named by what the first row and the first column of the pixels show.
enum class Orientation {
    topLeft = 1,
    topRight,
    bottomRight,
    bottomLeft,
    leftTop,
    rightTop,
    rightBottom,
    leftBottom,
};

/// What the file's Exif block says; topLeft where it says nothing or nonsense. Reads no byte beyond the text.
Orientation orientationOf(std::string_view jpeg);

/// Whether width and height change places when the picture is put upright.
constexpr bool isTurned(Orientation orientation) { return orientation >= Orientation::leftTop; }

}  // namespace graphics

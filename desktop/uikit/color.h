// UIColor, UIFont and UIImage: values that views are given.
#pragma once

#include "desktop/graphics/image.h"
#include "desktop/graphics/text.h"
#include "desktop/uikit/geometry.h"

namespace uikit {

/// UIColor. The companion adds `colorWithHex:` to it.
class ColorObject : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIColor"};
    static void define(objc::ClassDefinition<ColorObject>& definition);

    Color value;
};
/// A new autoreleased UIColor, and the colour of one (clear for null).
objc::Object uiColor(Color color);
Color colorOf(objc::Object color);

/// UIFont: `systemFontOfSize:`, `boldSystemFontOfSize:`.
class FontObject : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIFont"};
    static void define(objc::ClassDefinition<FontObject>& definition);

    graphics::Font value;
};
objc::Object uiFont(graphics::Font font);
/// The font of a UIFont; the system font of 17 points for null.
graphics::Font fontOf(objc::Object font);

/// UIImage. `imageWithContentsOfFile:` looks under the handset's root (see setHandsetRoot), takes the file for the
/// screen's scale (@2x, @3x) where there is one, and answers nil for a missing or bad file.
class ImageObject : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIImage"};
    static void define(objc::ClassDefinition<ImageObject>& definition);

    graphics::Image value;
    bool isTemplate = false;  // drawn in the tint, with its alpha as a stencil (`imageWithRenderingMode:` 2)
    std::string name;         // the file's name without folder and ending; empty for an image that was drawn
};
objc::Object uiImage(graphics::Image image, std::string name = {});
/// The image of a UIImage; empty for null.
graphics::Image imageOf(objc::Object image);
bool isTemplateImage(objc::Object image);
std::string imageName(objc::Object image);

/// The folder that stands for "/" of the handset: "/Applications/..." is looked for below it.
void setHandsetRoot(std::string folder);
const std::string& handsetRoot();

/// The toolkit's own colours.
namespace palette {
inline const Color brand = Color::fromHex(0x03445F);
inline const Color separator = Color::fromHex(0xC8C7CC);
inline const Color groupedBackground = Color::fromHex(0xEFEFF4);
inline const Color secondaryText = Color::fromHex(0x8E8E93);
inline const Color destructive = Color::fromHex(0xFF3B30);
}  // namespace palette

}  // namespace uikit

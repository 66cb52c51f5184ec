// Methods added to UIColor and UIButton.
#include "desktop/quorvel/visual/categories.h"

#include "desktop/uikit/button.h"
#include "desktop/uikit/color.h"

namespace quorvel {
namespace {

objc::Object colorWithHex(Class, long hex) {
    constexpr long colourBits = 0xFFFFFF;
    return uikit::uiColor(uikit::Color::fromHex(static_cast<std::uint32_t>(hex & colourBits)));
}

void setImageTintColor(uikit::Button* button, objc::Object color) { button->setImageTint(uikit::colorOf(color)); }

}  // namespace

void addCategories() {
    objc::addMethod<"colorWithHex:", &colorWithHex>(object_getClass(objc::raw(objc::classOf<uikit::ColorObject>())));
    objc::addMethod<"setImageTintColor:", &setImageTintColor>(objc::classOf<uikit::Button>());
}

}  // namespace quorvel

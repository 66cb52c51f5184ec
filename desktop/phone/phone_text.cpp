// Texts from the main bundle.
#include "desktop/phone/phone_text.h"

#include "desktop/uikit/text.h"

namespace phone {

std::string phoneText(std::string_view key) {
    const auto bundle = objc::sendClass<"NSBundle", "mainBundle", objc::Object>();
    return uikit::utf8(objc::send<"localizedStringForKey:value:table:", objc::Object>(bundle, uikit::nsString(key),
                                                                                      objc::Object{}, objc::Object{}));
}

}  // namespace phone

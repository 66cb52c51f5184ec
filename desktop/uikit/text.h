// Strings between the toolkit's C++ and the messages: NSString on the wire, UTF-8 inside.
#pragma once

#include <string>
#include <string_view>

#include "objc/layer.h"

namespace uikit {

/// The UTF-8 text of an NSString; empty for null.
std::string utf8(objc::Object string);
/// A new autoreleased NSString. Invalid UTF-8 is replaced, never refused.
objc::Object nsString(std::string_view text);
/// A word of the toolkit ("Cancel") in the user's language, which the main bundle's texts have under the English one;
/// the English one where they lack it.
std::string localized(std::string_view english);

}  // namespace uikit

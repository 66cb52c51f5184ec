// A dictionary as a property list in bytes, and back.
#pragma once

#include <string>

#include "objc/layer.h"

namespace quorvel {

/// The dictionary in the bytes, in whatever form of property list; autoreleased. Null where they hold none.
objc::Object dictionaryInPropertyList(const std::string& bytes);

/// The dictionary as an XML property list. Empty where it holds what no property list can.
std::string xmlPropertyList(objc::Object dictionary);

/// The text as an NSString; autoreleased. The text is UTF-8.
objc::Object propertyText(std::string_view text);

}  // namespace quorvel

// Property lists through Foundation: the one place where what Foundation throws while it reads is caught.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

#include "objc/layer.h"

namespace foundation {

/// The dictionary in the bytes, which are XML or the older form with braces; autoreleased. Its texts can be had as
/// UTF-8 and its keys are texts. Null where the bytes hold no such list: whatever they are, nothing is thrown.
objc::Object dictionaryInPropertyList(std::string_view bytes);

/// The dictionary in the text of a string table, which is one without its braces; as dictionaryInPropertyList.
objc::Object dictionaryInStringTable(std::string_view bytes);

/// The dictionary as an XML property list. Empty where it holds what no property list can.
std::string xmlPropertyList(objc::Object dictionary);

/// The text as an NSString; autoreleased. The text is UTF-8.
objc::Object propertyText(std::string_view text);

/// More than any settings, texts or filters need.
constexpr std::size_t longestPropertyList = std::size_t{1} << 20;

}  // namespace foundation

// Contacts' values as Foundation objects, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "desktop/addressbook/contact.h"
#include "objc/layer.h"

namespace addressbook {

/// What a property's values are.
enum class Kind { text, day, moment, parts };
struct PropertyType {
    Kind kind = Kind::text;
    bool isList = false;
};
/// Nothing for a property that contacts do not have.
std::optional<PropertyType> typeOf(int property);

/// The UTF-8 text of an NSString; empty for null.
std::string textOf(objc::Object string);
objc::Strong<> stringOf(std::string_view text);
/// The bytes of an NSData.
std::string bytesOf(objc::Object data);
objc::Strong<> dataOf(std::string_view bytes);
/// Noon of the day in Greenwich; a day without a year is in 1604. Null where the text is no day.
objc::Strong<> dateOfDay(const std::string& day);
std::string dayOfDate(objc::Object date);
objc::Strong<> dateOfSeconds(std::int64_t secondsSince1970);

/// The value as an object.
objc::Strong<> objectOf(const contacts::LabelledValue& value, Kind kind);
/// The value, without a label, of an object; nothing where it is of another class than the kind's.
std::optional<contacts::LabelledValue> valueOf(objc::Object object, Kind kind);

/// Gives the caller a new NSError with that sentence where there is a place for it; answers false.
bool fail(const void** error, const std::string& sentence);

}  // namespace addressbook

// Property lists through Foundation.
#include "desktop/quorvel/settings/property_list.h"

namespace quorvel {

objc::Object dictionaryInPropertyList(const std::string& bytes) {
    const auto data = objc::sendClass<"NSData", "dataWithBytes:length:", objc::Object>(
        static_cast<const void*>(bytes.data()), bytes.size());
    const auto list =
        objc::sendClass<"NSPropertyListSerialization", "propertyListWithData:options:format:error:", objc::Object>(
            data, 0UL, static_cast<void*>(nullptr), static_cast<void*>(nullptr));
    return objc::isKindOf(list, objc::classNamed<"NSDictionary">()) ? list : objc::Object{};
}

std::string xmlPropertyList(objc::Object dictionary) {
    constexpr unsigned long xmlFormat = 100;
    const auto data =
        objc::sendClass<"NSPropertyListSerialization", "dataWithPropertyList:format:options:error:", objc::Object>(
            dictionary, xmlFormat, 0UL, static_cast<void*>(nullptr));
    if (!data) return {};
    return {objc::send<"bytes", const char*>(data), objc::send<"length", unsigned long>(data)};
}

objc::Object propertyText(std::string_view text) {
    return objc::sendClass<"NSString", "stringWithUTF8String:", objc::Object>(std::string(text).c_str());
}

}  // namespace quorvel

// Property lists through Foundation, which raises on some malformed lists, answers nil on others, and reads past its
// bounds or its stack on a few: those are told before it sees them.
#include "desktop/foundation/property_list.h"

#include <expat.h>

#include <algorithm>
#include <memory>

#include "desktop/files/utf8.h"

namespace foundation {
namespace {

/// Foundation's reader calls itself for each level.
constexpr int deepest = 128;

/// Whether the bytes are well-formed XML in UTF-8 without entities of its own, of bounded depth.
class XmlCheck {
  public:
    static bool passes(std::string_view bytes) {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                                  XML_ParserFree);
        if (!parser) return false;
        XmlCheck check{parser.get()};
        XML_SetUserData(parser.get(), &check);
        XML_SetElementHandler(parser.get(), began, ended);
        XML_SetXmlDeclHandler(parser.get(), declared);
        XML_SetEntityDeclHandler(parser.get(), entity);
        return XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) == XML_STATUS_OK;
    }

  private:
    explicit XmlCheck(XML_Parser parser) : parser_(parser) {}
    static XmlCheck& of(void* data) { return *static_cast<XmlCheck*>(data); }
    void refuse() const { XML_StopParser(parser_, XML_FALSE); }

    static void began(void* data, const XML_Char*, const XML_Char**) {
        if (++of(data).depth_ > deepest) of(data).refuse();
    }
    static void ended(void* data, const XML_Char*) { --of(data).depth_; }
    static void declared(void* data, const XML_Char*, const XML_Char* encoding, int) {
        if (!encoding) return;
        std::string name(encoding);
        std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
        if (name != "utf-8") of(data).refuse();
    }
    static void entity(void* data, const XML_Char*, int, const XML_Char*, int, const XML_Char*, const XML_Char*,
                       const XML_Char*, const XML_Char*) {
        of(data).refuse();
    }

    XML_Parser parser_;
    int depth_ = 0;
};

/// Whether brackets nest no deeper than Foundation may follow; those in texts count as well.
bool isShallow(std::string_view bytes) {
    int depth = 0;
    for (const char letter : bytes) {
        if (letter == '{' || letter == '(') ++depth;
        if ((letter == '}' || letter == ')') && depth > 0) --depth;
        if (depth > deepest) return false;
    }
    return true;
}

bool mayBeRead(std::string_view bytes) {
    if (bytes.size() > longestPropertyList || !files::isUtf8(bytes)) return false;
    // Binary forms begin so, or hold such a byte; nobody writes settings, texts or filters in them.
    if (bytes.starts_with("bplist") || bytes.find('\0') != std::string_view::npos || bytes.starts_with('\1'))
        return false;
    const auto first = bytes.find_first_not_of(" \t\r\n\v\f");
    if (first == std::string_view::npos) return false;
    return bytes[first] == '<' ? XmlCheck::passes(bytes.substr(first)) : isShallow(bytes);
}

/// Whether the text can be had as UTF-8 and stand in XML. Foundation takes half a character and any control character
/// written as \U: it raises when it is asked for the text, or writes a list that nobody can read.
bool isPlain(objc::Object text) {
    constexpr unsigned long utf8Encoding = 4;
    if (!objc::send<"canBeConvertedToEncoding:", bool>(text, utf8Encoding)) return false;
    const char* bytes = objc::send<"UTF8String", const char*>(text);
    const std::string_view utf8(bytes ? bytes : "");
    if (utf8.size() != objc::send<"lengthOfBytesUsingEncoding:", unsigned long>(text, utf8Encoding)) return false;
    const auto isControl = [](char letter) {
        return static_cast<unsigned char>(letter) < ' ' && letter != '\t' && letter != '\n' && letter != '\r';
    };
    return std::ranges::none_of(utf8, isControl) && utf8.find("\xEF\xBF\xBE") == utf8.npos &&
           utf8.find("\xEF\xBF\xBF") == utf8.npos;
}

/// Whether every text in the list is plain, and every key is a text.
bool isReadable(objc::Object item) {
    if (objc::isKindOf(item, objc::classNamed<"NSString">())) return isPlain(item);
    const bool isDictionary = objc::isKindOf(item, objc::classNamed<"NSDictionary">());
    if (!isDictionary && !objc::isKindOf(item, objc::classNamed<"NSArray">())) return true;
    const auto members = isDictionary ? objc::send<"allKeys", objc::Object>(item) : item;
    const auto count = objc::send<"count", unsigned long>(members);
    for (unsigned long i = 0; i < count; ++i) {
        const auto member = objc::send<"objectAtIndex:", objc::Object>(members, i);
        if (!isReadable(member)) return false;
        if (!isDictionary) continue;
        if (!objc::isKindOf(member, objc::classNamed<"NSString">())) return false;
        if (!isReadable(objc::send<"objectForKey:", objc::Object>(item, member))) return false;
    }
    return true;
}

}  // namespace

objc::Object dictionaryInPropertyList(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (!mayBeRead(bytes)) return {};
    const auto data = objc::sendClass<"NSData", "dataWithBytes:length:", objc::Object>(
        static_cast<const void*>(bytes.data()), static_cast<unsigned long>(bytes.size()));
    try {
        const auto list =
            objc::sendClass<"NSPropertyListSerialization", "propertyListWithData:options:format:error:", objc::Object>(
                data, 0UL, static_cast<void*>(nullptr), static_cast<void*>(nullptr));
        if (objc::isKindOf(list, objc::classNamed<"NSDictionary">()) && isReadable(list)) return list;
    } catch (...) {
        // Damage, as a list that Foundation answers nil for.
    }
    return {};
}

objc::Object dictionaryInStringTable(std::string_view bytes) {
    return dictionaryInPropertyList('{' + std::string(bytes) + '}');
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

}  // namespace foundation

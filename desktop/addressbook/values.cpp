// Strings, dates, data and dictionaries.
#include "desktop/addressbook/values.h"

#include <chrono>
#include <cmath>
#include <cstdio>

#include "desktop/addressbook/contact_vcard.h"
#include "platform/foundation.h"

extern "C" {
// Foundation's own key of an error's sentence.
extern id NSLocalizedDescriptionKey;
}

namespace addressbook {
namespace {

using contacts::LabelledValue;
using contacts::Property;

constexpr int yearOfNone = 1604;
constexpr double noon = 12 * 3600;

objc::Strong<> dictionaryOf(const contacts::Parts& parts) {
    auto dictionary = NSMutableDictionary::make();
    for (const auto& [key, text] : parts) dictionary->setObject(stringOf(text), stringOf(key));
    return objc::Strong<>(dictionary.get());
}

std::optional<contacts::Parts> partsOf(objc::Object dictionary) {
    contacts::Parts parts;
    const auto keys = objc::send<"allKeys", NSArray>(dictionary);
    for (unsigned long i = 0; i < keys.count(); ++i) {
        const auto key = keys.objectAtIndex(i);
        const auto text = objc::send<"objectForKey:", objc::Object>(dictionary, key);
        if (!isKindOf(key, objc::classNamed<"NSString">()) || !isKindOf(text, objc::classNamed<"NSString">()))
            return std::nullopt;
        if (const std::string value = textOf(text); !value.empty()) parts.emplace(textOf(key), value);
    }
    return parts;
}

}  // namespace

std::optional<PropertyType> typeOf(int property) {
    switch (static_cast<Property>(property)) {
        case Property::firstName:
        case Property::lastName:
        case Property::middleName:
        case Property::firstNamePhonetic:
        case Property::middleNamePhonetic:
        case Property::lastNamePhonetic:
        case Property::organization:
        case Property::department:
        case Property::note:
        case Property::jobTitle:
        case Property::nickname:
        case Property::prefix:
        case Property::suffix:
            return PropertyType{Kind::text, false};
        case Property::birthday:
            return PropertyType{Kind::day, false};
        case Property::creationDate:
        case Property::modificationDate:
            return PropertyType{Kind::moment, false};
        case Property::phone:
        case Property::email:
        case Property::url:
        case Property::relatedNames:
            return PropertyType{Kind::text, true};
        case Property::date:
            return PropertyType{Kind::day, true};
        case Property::address:
        case Property::instantMessage:
        case Property::socialProfile:
            return PropertyType{Kind::parts, true};
    }
    return std::nullopt;
}

std::string textOf(objc::Object string) {
    const char* bytes = objc::send<"UTF8String", const char*>(string);
    return bytes ? bytes : "";
}

objc::Strong<> stringOf(std::string_view text) {
    constexpr unsigned long utf8 = 4;
    constexpr unsigned long latin1 = 5;
    const auto make = [text](unsigned long encoding) {
        auto empty = objc::sendClass<"NSString", "alloc", objc::Object>();
        return objc::Strong<>::adopt(objc::send<"initWithBytes:length:encoding:", objc::Object>(
            empty, static_cast<const void*>(text.data()), static_cast<unsigned long>(text.size()), encoding));
    };
    auto string = make(utf8);
    // A file that somebody else has written into may hold anything.
    return string ? string : make(latin1);
}

std::string bytesOf(objc::Object data) {
    const auto* bytes = static_cast<const char*>(objc::send<"bytes", const void*>(data));
    return bytes ? std::string(bytes, objc::send<"length", unsigned long>(data)) : std::string();
}

objc::Strong<> dataOf(std::string_view bytes) {
    auto empty = objc::sendClass<"NSData", "alloc", objc::Object>();
    return objc::Strong<>::adopt(objc::send<"initWithBytes:length:", objc::Object>(
        empty, static_cast<const void*>(bytes.data()), static_cast<unsigned long>(bytes.size())));
}

objc::Strong<> dateOfSeconds(std::int64_t secondsSince1970) {
    return objc::sendClass<"NSDate", "dateWithTimeIntervalSince1970:", objc::Object>(
        static_cast<double>(secondsSince1970));
}

objc::Strong<> dateOfDay(const std::string& day) {
    int year = yearOfNone;
    unsigned month = 0;
    unsigned number = 0;
    const bool hasYear = std::sscanf(day.c_str(), "%4d-%2u-%2u", &year, &month, &number) == 3;
    if (!hasYear) year = yearOfNone;
    if (!hasYear && std::sscanf(day.c_str(), "--%2u-%2u", &month, &number) != 2) return {};
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                                           std::chrono::day{number}};
    if (!date.ok()) return {};
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    return objc::sendClass<"NSDate", "dateWithTimeIntervalSince1970:", objc::Object>(days * 86400.0 + noon);
}

std::string dayOfDate(objc::Object date) {
    const double seconds = objc::send<"timeIntervalSince1970", double>(date);
    constexpr double farthest = 250'000'000'000;  // seconds of the four-digit years
    if (!(std::abs(seconds) < farthest)) return {};
    const std::chrono::sys_days days{std::chrono::days{static_cast<std::int64_t>(std::floor(seconds / 86400))}};
    const std::chrono::year_month_day day{days};
    const int year = static_cast<int>(day.year());
    if (year < 1 || year > 9999) return {};
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", year, static_cast<unsigned>(day.month()),
                  static_cast<unsigned>(day.day()));
    return year == yearOfNone ? "-" + std::string(text + 4) : text;
}

objc::Strong<> objectOf(const LabelledValue& value, Kind kind) {
    if (kind == Kind::parts) return dictionaryOf(value.parts);
    return kind == Kind::day ? dateOfDay(value.text) : stringOf(value.text);
}

std::optional<LabelledValue> valueOf(objc::Object object, Kind kind) {
    LabelledValue value;
    if (kind == Kind::parts) {
        if (!isKindOf(object, objc::classNamed<"NSDictionary">())) return std::nullopt;
        auto parts = partsOf(object);
        if (!parts) return std::nullopt;
        value.parts = *std::move(parts);
        return value;
    }
    const bool isDay = kind == Kind::day;
    if (!isKindOf(object, isDay ? objc::classNamed<"NSDate">() : objc::classNamed<"NSString">())) return std::nullopt;
    value.text = isDay ? dayOfDate(object) : textOf(object);
    if (isDay && value.text.empty()) return std::nullopt;
    return value;
}

bool fail(const void** error, const std::string& sentence) {
    if (!error) return false;
    auto information = NSMutableDictionary::make();
    information->setObject(stringOf(sentence), objc::Object{NSLocalizedDescriptionKey});
    auto empty = objc::sendClass<"NSError", "alloc", objc::Object>();
    *error = objc::send<"initWithDomain:code:userInfo:", objc::Object>(
                 empty, stringOf("ABAddressBookErrorDomain").get(), 1L, information.get())
                 .self;
    return false;
}

}  // namespace addressbook

// Foundation: strings, numbers, arrays, dates, notifications, the main bundle.
#pragma once

#include "objc/layer.h"

using NSInteger = long;
using NSUInteger = unsigned long;

struct NSRange {
    NSUInteger location;
    NSUInteger length;
};
template <>
struct objc::Encoding<NSRange> {
    static constexpr Name text{"{_NSRange=QQ}"};
};

/// The class object of a handle's class: cls<NSString>().
template <objc::Handle T>
inline objc::Object cls() {
    return objc::Object{objc::raw(objc::classNamed<T::className>())};
}

struct NSObject : objc::Object {
    static constexpr objc::Name className{"NSObject"};

    bool isEqual(Object other) const { return objc::send<"isEqual:", bool>(*this, other); }
    bool respondsToSelector(SEL name) const { return objc::respondsTo(*this, name); }
    /// Sends it later on the main thread, without an argument; does not wait for it.
    void performOnMainThread(SEL name) const {
        objc::send<"performSelectorOnMainThread:withObject:waitUntilDone:">(*this, name, objc::Object{}, false);
    }
};

struct NSString : NSObject {
    static constexpr objc::Name className{"NSString"};

    NSUInteger length() const { return objc::send<"length", NSUInteger>(*this); }
    int intValue() const { return objc::send<"intValue", int>(*this); }
    bool isEqualToString(NSString other) const { return objc::send<"isEqualToString:", bool>(*this, other); }
    const char* UTF8String() const { return objc::send<"UTF8String", const char*>(*this); }
    const char* fileSystemRepresentation() const { return objc::send<"fileSystemRepresentation", const char*>(*this); }
    /// Option 1 searches without regard to case. Nothing found, or null: length 0.
    NSRange rangeOfString(NSString text, NSUInteger options) const {
        return objc::send<"rangeOfString:options:", NSRange>(*this, text, options);
    }

    static NSString stringWithUTF8String(const char* text) {
        return objc::send<"stringWithUTF8String:", NSString>(cls<NSString>(), text);
    }
    static NSString stringWithString(NSString other) {
        return objc::send<"stringWithString:", NSString>(cls<NSString>(), other);
    }
    template <class... Arguments>
    static NSString stringWithFormat(NSString format, Arguments... arguments) {
        return objc::sendVariadic<"stringWithFormat:", NSString>(cls<NSString>(), format, arguments...);
    }
};

/// A constant string, made at its first use and kept for the life of the process. Any thread.
template <objc::Name literal>
inline NSString text() {
    static std::atomic<id> slot{nullptr};
    id known = slot.load(std::memory_order_acquire);
    if (!known) {
        auto made = objc::make<NSString, "initWithUTF8String:">(objc::classNamed<"NSString">(),
                                                                static_cast<const char*>(literal.text));
        if (slot.compare_exchange_strong(known, made.self(), std::memory_order_acq_rel)) known = made.take().self;
    }
    return objc::as<NSString>(known);
}

struct NSNumber : NSObject {
    static constexpr objc::Name className{"NSNumber"};

    int intValue() const { return objc::send<"intValue", int>(*this); }
    static NSNumber numberWithInt(int value) { return objc::send<"numberWithInt:", NSNumber>(cls<NSNumber>(), value); }
};

struct NSDate : NSObject {
    static constexpr objc::Name className{"NSDate"};

    static NSDate dateWithTimeIntervalSince1970(double seconds) {
        return objc::send<"dateWithTimeIntervalSince1970:", NSDate>(cls<NSDate>(), seconds);
    }
};

struct NSDateFormatter : NSObject {
    static constexpr objc::Name className{"NSDateFormatter"};

    void setDateFormat(NSString format) const { objc::send<"setDateFormat:">(*this, format); }
    NSString stringFromDate(NSDate date) const { return objc::send<"stringFromDate:", NSString>(*this, date); }
};

struct NSURL : NSObject {
    static constexpr objc::Name className{"NSURL"};

    /// Null when the text is no address.
    static NSURL URLWithString(NSString text) { return objc::send<"URLWithString:", NSURL>(cls<NSURL>(), text); }
};

struct NSMutableArray;

struct NSArray : NSObject {
    static constexpr objc::Name className{"NSArray"};

    static NSArray arrayWithObject(Object object) {
        return objc::send<"arrayWithObject:", NSArray>(cls<NSArray>(), object);
    }
    NSUInteger count() const { return objc::send<"count", NSUInteger>(*this); }
    template <objc::Handle T = objc::Object>
    T objectAtIndex(NSUInteger index) const {
        return objc::send<"objectAtIndex:", T>(*this, index);
    }
    objc::Strong<NSArray> copy() const { return objc::Strong<NSArray>::adopt(objc::send<"copy", NSArray>(*this)); }
    objc::Strong<NSMutableArray> mutableCopy() const;
};

struct NSMutableArray : NSArray {
    static constexpr objc::Name className{"NSMutableArray"};

    static objc::Strong<NSMutableArray> make() {
        return objc::make<NSMutableArray>(objc::classNamed<"NSMutableArray">());
    }
    void addObject(Object object) const { objc::send<"addObject:">(*this, object); }
    void addObjectsFromArray(NSArray array) const { objc::send<"addObjectsFromArray:">(*this, array); }
    void insertObject(Object object, NSUInteger index) const {
        objc::send<"insertObject:atIndex:">(*this, object, index);
    }
    void removeObject(Object object) const { objc::send<"removeObject:">(*this, object); }
    void removeObjectAtIndex(NSUInteger index) const { objc::send<"removeObjectAtIndex:">(*this, index); }
    void removeObjectsInArray(NSArray objects) const { objc::send<"removeObjectsInArray:">(*this, objects); }
    void removeAllObjects() const { objc::send<"removeAllObjects">(*this); }
};

inline objc::Strong<NSMutableArray> NSArray::mutableCopy() const {
    return objc::Strong<NSMutableArray>::adopt(objc::send<"mutableCopy", NSMutableArray>(*this));
}

struct NSMutableDictionary : NSObject {
    static constexpr objc::Name className{"NSMutableDictionary"};

    static objc::Strong<NSMutableDictionary> make() {
        return objc::make<NSMutableDictionary>(objc::classNamed<"NSMutableDictionary">());
    }
    static objc::Strong<NSMutableDictionary> makeWithCapacity(NSUInteger capacity) {
        return objc::make<NSMutableDictionary, "initWithCapacity:">(objc::classNamed<"NSMutableDictionary">(),
                                                                    capacity);
    }
    /// Null where the key has no value, and for a null key.
    template <objc::Handle T = objc::Object>
    T objectForKey(Object key) const {
        return objc::send<"objectForKey:", T>(*this, key);
    }
    /// Neither may be null.
    void setObject(Object value, Object key) const { objc::send<"setObject:forKey:">(*this, value, key); }
};

struct NSMutableSet : NSObject {
    static constexpr objc::Name className{"NSMutableSet"};

    static objc::Strong<NSMutableSet> make() { return objc::make<NSMutableSet>(objc::classNamed<"NSMutableSet">()); }
    void addObject(Object object) const { objc::send<"addObject:">(*this, object); }
    bool containsObject(Object object) const { return objc::send<"containsObject:", bool>(*this, object); }
};

struct NSBundle : NSObject {
    static constexpr objc::Name className{"NSBundle"};

    static NSBundle mainBundle() { return objc::send<"mainBundle", NSBundle>(cls<NSBundle>()); }
    NSString localizedString(NSString key, NSString defaultValue, NSString table) const {
        return objc::send<"localizedStringForKey:value:table:", NSString>(*this, key, defaultValue, table);
    }
    NSString bundleIdentifier() const { return objc::send<"bundleIdentifier", NSString>(*this); }
};

struct NSNotificationCenter : NSObject {
    static constexpr objc::Name className{"NSNotificationCenter"};

    static NSNotificationCenter defaultCenter() {
        return objc::send<"defaultCenter", NSNotificationCenter>(cls<NSNotificationCenter>());
    }
    /// The observer is not retained. The selector takes the notification.
    void addObserver(Object observer, SEL selector, NSString name, Object sender) const {
        objc::send<"addObserver:selector:name:object:">(*this, observer, selector, name, sender);
    }
};

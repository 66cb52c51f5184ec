// Handles of objects: one pointer wide and trivially copyable, so that they travel in a register as an `id` does. A
// handle borrows; Strong owns.
#pragma once

#include <concepts>
#include <type_traits>
#include <utility>

#include "objc/name.h"

namespace objc {

/// The root of all handles. Null is a valid value: a message to it does nothing.
struct Object {
    id self = nullptr;

    explicit operator bool() const { return self != nullptr; }
    friend bool operator==(Object left, Object right) { return left.self == right.self; }
};

template <class T>
concept Handle = std::derived_from<T, Object> && sizeof(T) == sizeof(id) && std::is_trivially_copyable_v<T>;

/// The handle of type T for that object. Nothing is checked: the caller knows what the object is.
template <Handle T>
inline T as(id object) {
    T handle;
    handle.self = object;
    return handle;
}
template <Handle T>
inline T as(Object object) {
    return as<T>(object.self);
}

inline id raw(Object object) { return object.self; }
inline id raw(Class cls) { return reinterpret_cast<id>(cls); }

}  // namespace objc

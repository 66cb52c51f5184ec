// Ownership: Strong<T> holds one reference of an object and gives it back when it goes.
#pragma once

#include "objc/send.h"
#include "objc/thread_sanitizer.h"

namespace objc {

inline void retain(Object object) { send<"retain", Object>(object); }
inline void release(Object object) {
    // Most owners that go have given their object away.
    if (!object) return;
    // The runtime's own counting is not instrumented.
    sanitizer::release(object.self);
    send<"release">(object);
}

/// One reference of an object. Thread-safe as a plain pointer is: not shared without a scheme of its own.
template <class T = Object>
class Strong {
  public:
    Strong() = default;
    /// Retains a borrowed object.
    Strong(T borrowed) : handle_(borrowed) { retain(handle_); }  // NOLINT: borrowing into owning is always right
    Strong(const Strong& other) : handle_(other.handle_) { retain(handle_); }
    Strong(Strong&& other) noexcept : handle_(std::exchange(other.handle_, T{})) {}
    Strong& operator=(Strong other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Strong() { release(handle_); }

    /// Takes over a reference that the caller owns (the result of alloc, copy or mutableCopy).
    static Strong adopt(T owned) {
        Strong strong;
        strong.handle_ = owned;
        return strong;
    }

    T get() const { return handle_; }
    operator T() const { return handle_; }  // NOLINT: an owner lends its handle
    const T* operator->() const { return &handle_; }
    explicit operator bool() const { return handle_.self != nullptr; }
    id self() const { return handle_.self; }

    /// Gives the reference away: the caller owns it now.
    T take() { return std::exchange(handle_, T{}); }

    friend bool operator==(const Strong& left, const Strong& right) { return left.self() == right.self(); }

  private:
    T handle_{};
};

template <class T>
struct Wire<Strong<T>> {
    using Type = id;
    static Type to(const Strong<T>& value) { return value.self(); }
};

/// The object, kept alive until the surrounding autorelease pool ends: the way to answer a new object from a method.
template <Handle T>
inline T autorelease(Strong<T> owned) {
    return as<T>(send<"autorelease", Object>(owned.take()));
}

/// A new object of a class, `alloc` and the given initialiser, owned by the caller.
template <Handle T, Name initialiser, class... Arguments>
inline Strong<T> make(Class cls, Arguments... arguments) {
    return Strong<T>::adopt(as<T>(send<initialiser, Object>(send<"alloc", Object>(cls), arguments...)));
}
template <Handle T>
inline Strong<T> make(Class cls) {
    return make<T, "init">(cls);
}

/// A pool for the objects that are autoreleased while it lives.
class AutoreleasePool {
  public:
    AutoreleasePool() : pool_(send<"init", Object>(sendClass<"NSAutoreleasePool", "alloc", Object>())) {}
    ~AutoreleasePool() { send<"release">(pool_); }
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

  private:
    Object pool_;
};

}  // namespace objc

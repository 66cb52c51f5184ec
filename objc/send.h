// Messages: send<"selector">(receiver, arguments...) and its two relatives. All casting of the runtime's message
// function stands here and nowhere else.
#pragma once

#include "objc/wire.h"

namespace objc {
namespace detail {

/// The runtime's untyped function, seen as the one that the message calls for.
template <class Function, class Untyped>
inline Function typed(Untyped* untyped) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(untyped));
}

#if defined(__APPLE__)
#if defined(__x86_64__)
/// Whether the caller gives the place of the result: the message function has a form of its own for that.
template <class R>
inline constexpr bool returnedInMemory = false;
template <class R>
requires std::is_class_v<R>
inline constexpr bool returnedInMemory<R> = sizeof(R) > 16;
#endif

template <class R, class... Wires>
inline R call(id receiver, SEL name, Wires... arguments) {
    using Function = R (*)(id, SEL, Wires...);
#if defined(__x86_64__)
    if constexpr (returnedInMemory<R>) return typed<Function>(&objc_msgSend_stret)(receiver, name, arguments...);
#endif
    return typed<Function>(&objc_msgSend)(receiver, name, arguments...);
}

template <class R, class... Wires>
inline R callSuper(objc_super* super, SEL name, Wires... arguments) {
    using Function = R (*)(objc_super*, SEL, Wires...);
#if defined(__x86_64__)
    if constexpr (returnedInMemory<R>) return typed<Function>(&objc_msgSendSuper_stret)(super, name, arguments...);
#endif
    return typed<Function>(&objc_msgSendSuper)(super, name, arguments...);
}
#else
template <class R, class... Wires>
inline R call(id receiver, SEL name, Wires... arguments) {
    using Function = R (*)(id, SEL, Wires...);
    return typed<Function>(objc_msg_lookup(receiver, name))(receiver, name, arguments...);
}

template <class R, class... Wires>
inline R callSuper(objc_super* super, SEL name, Wires... arguments) {
    using Function = R (*)(id, SEL, Wires...);
    return typed<Function>(objc_msg_lookup_super(super, name))(super->self, name, arguments...);
}
#endif

/// An integer narrower than a register is widened by its own sign, so that a receiver that declares a wider type never
/// reads an unset half.
template <class T>
inline auto onWire(T value) {
    using Type = typename Wire<T>::Type;
    if constexpr (std::is_integral_v<Type> && sizeof(Type) < sizeof(std::int64_t)) {
        using Wide = std::conditional_t<std::is_signed_v<Type>, std::int64_t, std::uint64_t>;
        return static_cast<Wide>(Wire<T>::to(value));
    } else {
        return Wire<T>::to(value);
    }
}

template <class T>
struct Borrowed {
    using Type = T;
};

}  // namespace detail

/// Sends the message whose selector is not known before run time. To null: nothing happens, the answer is R's zero.
template <class R = void, class... Arguments>
inline R sendSelector(id receiver, SEL name, Arguments... arguments) {
    if constexpr (std::is_void_v<R>) {
        if (receiver) detail::call<void>(receiver, name, detail::onWire(arguments)...);
    } else {
        if (!receiver) return R{};
        return Wire<R>::from(detail::call<typename Wire<R>::Type>(receiver, name, detail::onWire(arguments)...));
    }
}
template <class R = void, class... Arguments>
inline R sendSelector(Object receiver, SEL name, Arguments... arguments) {
    return sendSelector<R>(receiver.self, name, arguments...);
}

/// Sends the message. To null: nothing happens, the answer is R's zero. The number of arguments is checked against the
/// selector's colons when the code is compiled.
template <Name name, class R = void, class... Arguments>
inline R send(Object receiver, Arguments... arguments) {
    static_assert(name.colons() == sizeof...(Arguments), "a selector has one colon for each argument");
    return sendSelector<R>(receiver.self, selector<name>(), arguments...);
}
template <Name name, class R = void, class... Arguments>
inline R send(id receiver, Arguments... arguments) {
    return send<name, R>(Object{receiver}, arguments...);
}
template <Name name, class R = void, class... Arguments>
inline R send(Class receiver, Arguments... arguments) {
    return send<name, R>(Object{raw(receiver)}, arguments...);
}

/// Sends the message to the class of that name: sendClass<"NSDate", "date", NSDate>().
template <Name className, Name name, class R = void, class... Arguments>
inline R sendClass(Arguments... arguments) {
    return send<name, R>(classNamed<className>(), arguments...);
}

/// Sends the message to the receiver's inherited implementation, seen from the class that declares the calling method
/// (never from the receiver's own class, which may be a subclass).
template <Name name, class R = void, class... Arguments>
inline R sendSuper(Object receiver, Class declaringClass, Arguments... arguments) {
    static_assert(name.colons() == sizeof...(Arguments), "a selector has one colon for each argument");
    objc_super super{receiver.self, class_getSuperclass(declaringClass)};
    if constexpr (std::is_void_v<R>) {
        detail::callSuper<void>(&super, selector<name>(), detail::onWire(arguments)...);
    } else {
        return Wire<R>::from(
            detail::callSuper<typename Wire<R>::Type>(&super, selector<name>(), detail::onWire(arguments)...));
    }
}

/// Sends a message with a variable tail, through a variadic function type, as the callee expects it. `fixed` is the one
/// declared argument.
template <Name name, class R, class Fixed, class... Tail>
inline R sendVariadic(Object receiver, Fixed fixed, Tail... tail) {
    static_assert(name.colons() == 1, "one declared argument, then the tail");
    if (!receiver) return R{};
    using Function = typename Wire<R>::Type (*)(id, SEL, typename Wire<Fixed>::Type, ...);
#if defined(__APPLE__)
    auto function = detail::typed<Function>(&objc_msgSend);
#else
    auto function = detail::typed<Function>(objc_msg_lookup(receiver.self, selector<name>()));
#endif
    return Wire<R>::from(function(receiver.self, selector<name>(), Wire<Fixed>::to(fixed), Wire<Tail>::to(tail)...));
}

inline bool respondsTo(Object object, SEL name) { return send<"respondsToSelector:", bool>(object, name); }

/// Whether the object is of that class or of one below it; false for null.
inline bool isKindOf(Object object, Class cls) { return send<"isKindOfClass:", bool>(object, cls); }

}  // namespace objc

// How a C++ value travels in a message: what type it has on the wire, and how the runtime's type strings spell it.
#pragma once

#include "objc/object.h"

namespace objc {

/// What every peer carries: the object that it belongs to (see class.h).
struct PeerBase {
    id self = nullptr;
};
template <class T>
concept PeerPointer = std::is_pointer_v<T> && std::is_class_v<std::remove_pointer_t<T>> && requires {
    sizeof(std::remove_pointer_t<T>);
} && std::derived_from<std::remove_pointer_t<T>, PeerBase>;

/// The wire form of T. Handles travel as `id`, booleans as BOOL, all else as it is.
template <class T>
struct Wire {
    using Type = T;
    static Type to(T value) { return value; }
    static T from(Type value) { return value; }
};
template <>
struct Wire<void> {
    using Type = void;
};
template <>
struct Wire<bool> {
    using Type = BOOL;
    static Type to(bool value) { return value ? 1 : 0; }
    static bool from(Type value) { return value != 0; }
};
template <Handle T>
struct Wire<T> {
    using Type = id;
    static Type to(T value) { return value.self; }
    static T from(Type value) { return as<T>(value); }
};
template <class T>
requires std::is_enum_v<T>
struct Wire<T> {
    using Type = std::underlying_type_t<T>;
    static Type to(T value) { return static_cast<Type>(value); }
    static T from(Type value) { return static_cast<T>(value); }
};

/// The runtime's spelling of T. A struct that travels in messages adds its own specialisation beside its definition.
template <class T>
struct Encoding;

template <std::size_t size>
struct EncodingText {
    char text[size];
};

template <class T>
requires std::is_integral_v<T>
struct Encoding<T> {
    static constexpr char letter() {
        if constexpr (std::is_same_v<T, bool>) return sizeof(BOOL) == 1 && std::is_same_v<BOOL, bool> ? 'B' : 'C';
        constexpr bool isSigned = std::is_signed_v<T>;
        switch (sizeof(T)) {
            case 1:
                return isSigned ? 'c' : 'C';
            case 2:
                return isSigned ? 's' : 'S';
            case 4:
                return isSigned ? 'i' : 'I';
            default:
                return isSigned ? 'q' : 'Q';
        }
    }
    static constexpr Name<2> text{{letter(), '\0'}};
};
template <class T>
requires std::is_enum_v<T>
struct Encoding<T> : Encoding<std::underlying_type_t<T>> {
};
template <Handle T>
struct Encoding<T> {
    static constexpr Name text{"@"};
};
template <>
struct Encoding<id> {
    static constexpr Name text{"@"};
};
template <>
struct Encoding<Class> {
    static constexpr Name text{"#"};
};
template <>
struct Encoding<SEL> {
    static constexpr Name text{":"};
};
template <>
struct Encoding<void> {
    static constexpr Name text{"v"};
};
template <>
struct Encoding<float> {
    static constexpr Name text{"f"};
};
template <>
struct Encoding<double> {
    static constexpr Name text{"d"};
};
template <>
struct Encoding<const char*> {
    static constexpr Name text{"r*"};
};
template <class T>
requires(std::is_pointer_v<T> && !PeerPointer<T>) struct Encoding<T> {
    static constexpr Name text{"^v"};
};

namespace detail {
template <std::size_t... sizes>
constexpr auto join(const Name<sizes>&... parts) {
    char joined[(1 + ... + (sizes - 1))] = {};
    std::size_t at = 0;
    auto append = [&](const auto& part) {
        for (std::size_t i = 0; part.text[i] != '\0'; ++i) joined[at++] = part.text[i];
    };
    (append(parts), ...);
    joined[at] = '\0';
    return Name<(1 + ... + (sizes - 1))>(joined);
}
}  // namespace detail

/// The type string of a method with this result and these arguments, the receiver and the selector included.
template <class R, class... Arguments>
inline constexpr auto methodEncoding = detail::join(Encoding<R>::text, Name{"@:"},
                                                    Encoding<std::remove_cvref_t<Arguments>>::text...);

}  // namespace objc

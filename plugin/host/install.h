// How a method of ours gets into a class of the host: rows that add, rows that replace, and what a replaced method does
// with the host's implementation.
#pragma once

#include "platform/substrate.h"
#include "plugin/companion/settings.h"

namespace host {

/// Adds a method whose body is `function`, a function that takes the receiver first. The class's own method of that
/// name stays, a superclass's is overridden. The type string is the product's own form, for the runtime's description
/// alone.
template <objc::Name name, auto function>
inline void add(Class cls, const char* types) {
    class_addMethod(cls, objc::selector<name>(), objc::implementation(&objc::detail::FreeThunk<function>::call), types);
}

/// What a replaced method does with the host's implementation.
enum class Replacement {
    /// The host's alone while Replace-Recents is off, ours alone while it is on.
    InsteadWhileOn,
    /// The host's first, always; then ours while Replace-Recents is on.
    AfterWhileOn,
    /// The host's first, then ours, on or off.
    AfterAlways,
};

/// One replaced method: it owns the slot of the host's implementation, filled once at installation.
template <objc::Name name, Replacement kind, auto function>
struct Replaced;

template <objc::Name name, Replacement kind, class R, class Receiver, class... Arguments,
          R (*function)(Receiver, Arguments...)>
struct Replaced<name, kind, function> {
    using Result = typename objc::Wire<R>::Type;
    using HostFunction = Result (*)(id, SEL, typename objc::Wire<Arguments>::Type...);

    static inline IMP hostImplementation = nullptr;

    static Result callHost(id self, SEL selector, typename objc::Wire<Arguments>::Type... arguments) {
        return objc::detail::typed<HostFunction>(hostImplementation)(self, selector, arguments...);
    }

    static Result call(id self, SEL selector, typename objc::Wire<Arguments>::Type... arguments) {
        if constexpr (kind == Replacement::InsteadWhileOn) {
            if (!isReplaceRecentsOn()) return callHost(self, selector, arguments...);
        } else {
            callHost(self, selector, arguments...);
            if (kind == Replacement::AfterWhileOn && !isReplaceRecentsOn()) return;
        }
        return objc::detail::FreeThunk<function>::call(self, selector, arguments...);
    }

    static void install(Class cls) {
        MSHookMessageEx(cls, objc::selector<name>(), objc::implementation(&call), &hostImplementation);
    }
};

template <objc::Name name, auto function>
inline void replace(Class cls) {
    Replaced<name, Replacement::InsteadWhileOn, function>::install(cls);
}
template <objc::Name name, auto function>
inline void follow(Class cls) {
    Replaced<name, Replacement::AfterWhileOn, function>::install(cls);
}
template <objc::Name name, auto function>
inline void followAlways(Class cls) {
    Replaced<name, Replacement::AfterAlways, function>::install(cls);
}

}  // namespace host

// Methods that the plug-in calls: its code has no exceptions, so that none may pass through it.
#pragma once

#include <cstdio>
#include <exception>

#include "desktop/quorvel/services/call_array.h"

namespace quorvel {

namespace detail {

/// What a method answers that could not do its work: nothing, false, 0, or an empty array.
template <class R>
R failedResult() {
    if constexpr (std::is_same_v<R, objc::Strong<>>)
        return objc::Strong<>(objc::Object{objc::Ref<CallArray>::make().self()});
    else
        return R();
}

template <class R, class Work>
R withoutExceptions(Work&& work) {
    try {
        return work();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "libQuorvel: an operation failed: %s\n", exception.what());
    } catch (...) {
        std::fprintf(stderr, "libQuorvel: an operation failed.\n");
    }
    return failedResult<R>();
}

template <auto member>
struct Guarded;

template <class T, class R, class... Arguments, R (T::*member)(Arguments...)>
struct Guarded<member> {
    static R call(T* service, Arguments... arguments) {
        return withoutExceptions<R>([&] { return (service->*member)(arguments...); });
    }
};

template <class T, class R, class... Arguments, R (T::*member)(Arguments...) const>
struct Guarded<member> {
    static R call(T* service, Arguments... arguments) {
        return withoutExceptions<R>([&] { return (service->*member)(arguments...); });
    }
};

}  // namespace detail

/// The method as a function of its service that throws nothing: what it throws becomes a line on standard error and the
/// answer of an operation that failed.
template <auto member>
constexpr auto guarded = &detail::Guarded<member>::call;

}  // namespace quorvel

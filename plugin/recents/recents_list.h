// The Recents screen's call list: one state for the process, because the host's class has no fields of ours.
#pragma once

#include "plugin/rows/call_list.h"

namespace recents {

/// The state of the Recents screen.
rows::CallListState& recentsState();

/// A function of a call list as a method of the Recents screen.
template <auto function>
struct OnRecents;
template <class R, class... Arguments, R (*function)(rows::CallList, Arguments...)>
struct OnRecents<function> {
    static R call(CallListScreen self, Arguments... arguments) {
        return function({self, recentsState()}, arguments...);
    }
};
template <auto function>
inline constexpr auto onRecents = &OnRecents<function>::call;

}  // namespace recents

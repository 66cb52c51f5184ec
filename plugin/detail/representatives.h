// Which calls of a history are reported when its screen goes away. A choice alone.
#pragma once

#include <cstddef>

namespace history {

/// What one call of a history counts as.
struct Kinds {
    bool outgoing;
    bool received;
    bool missed;
};

inline constexpr std::size_t nobody = static_cast<std::size_t>(-1);

/// Positions in the history; `nobody` where no call qualifies.
struct Representatives {
    std::size_t newest = nobody;
    std::size_t dialled = nobody;
    std::size_t received = nobody;
    std::size_t missed = nobody;

    friend bool operator==(const Representatives&, const Representatives&) = default;
};

/// The first call, and the first that is dialled, received and missed. `kindsAt(i)` answers the Kinds of a call; it is
/// asked from the first call on, no further than needed.
template <class KindsAt>
constexpr Representatives representativesOf(std::size_t count, KindsAt kindsAt) {
    Representatives found;
    for (std::size_t i = 0; i < count; ++i) {
        if (found.newest == nobody) found.newest = i;
        const Kinds kinds = kindsAt(i);
        if (kinds.outgoing && found.dialled == nobody) found.dialled = i;
        if (kinds.received && found.received == nobody) found.received = i;
        if (kinds.missed && found.missed == nobody) found.missed = i;
        if (found.dialled != nobody && found.received != nobody && found.missed != nobody) break;
    }
    return found;
}

/// The same without those that are of another day: each is dropped, none is replaced by a later call.
template <class IsOfDay>
constexpr Representatives withinDay(Representatives chosen, IsOfDay isOfDay) {
    for (std::size_t* each : {&chosen.newest, &chosen.dialled, &chosen.received, &chosen.missed})
        if (*each != nobody && !isOfDay(*each)) *each = nobody;
    return chosen;
}

}  // namespace history

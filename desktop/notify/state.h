// The process's one notify centre, which the C interface and the main loop's interface share.
#pragma once

#include <mutex>
#include <optional>

#include "desktop/notify/center.h"
#include "desktop/notify/rendezvous.h"

namespace notify {

struct State {
    std::mutex mutex;
    Center center;
    std::optional<Rendezvous> rendezvous;
    int poll = -1;   // an epoll descriptor over the two that follow
    int local = -1;  // an eventfd: something arrived other than by the rendezvous
    void signal();   // makes `local` readable
};

/// Made at the first use, never destroyed: threads may still post while the process exits.
State& state();

}  // namespace notify

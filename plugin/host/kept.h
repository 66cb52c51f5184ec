// Process-wide state that is never destroyed.
#pragma once

namespace host {

/// A T that lives until the process is gone: queues may still use it while the process ends, so no destructor runs.
template <class T>
union Kept {
    constexpr Kept() : value{} {}
    ~Kept() {}
    T value;
};

}  // namespace host

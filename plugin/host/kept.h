// Process-wide state that is never destroyed.
#pragma once

#include <new>

namespace host {

/// A T that lives until the process is gone: queues may still use it while the process ends, so no destructor runs. T's
/// initial state must be all zero bytes, as that of atomics and strong slots is.
template <class T>
struct Kept {
    T* operator->() { return std::launder(reinterpret_cast<T*>(bytes)); }
    T& operator*() { return *operator->(); }

    alignas(T) unsigned char bytes[sizeof(T)];
};

}  // namespace host

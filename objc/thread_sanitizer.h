// Tells the thread sanitizer, GCC's or clang's, of an order made by code that it does not see; nothing in other builds.
#pragma once

// GCC defines the first where it instruments for threads, clang answers the second.
#if defined(__SANITIZE_THREAD__)
#define OBJC_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define OBJC_THREAD_SANITIZER 1
#endif
#endif

#if defined(OBJC_THREAD_SANITIZER)
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
#endif

namespace objc::sanitizer {

/// What this thread has done so far comes before what a thread does that acquires the same address later.
inline void release([[maybe_unused]] const void* address) {
#if defined(OBJC_THREAD_SANITIZER)
    if (address) __tsan_release(const_cast<void*>(address));
#endif
}

/// What threads did before they released this address comes before what this thread does from here on.
inline void acquire([[maybe_unused]] const void* address) {
#if defined(OBJC_THREAD_SANITIZER)
    __tsan_acquire(const_cast<void*>(address));
#endif
}

}  // namespace objc::sanitizer

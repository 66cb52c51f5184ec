// Under the thread sanitizer alone: tells it of the order that the reference count makes. The runtime and Foundation
// are not instrumented, so an object released by an autorelease pool on one thread and freed on another would look like
// a race although the count, which they change atomically, puts one after the other.
#include "desktop/substrate/substrate.h"
#include "objc/thread_sanitizer.h"

#if defined(OBJC_THREAD_SANITIZER)

namespace {

IMP plainRelease;
IMP plainDealloc;

void annotatedRelease(id self, SEL name) {
    objc::sanitizer::release(self);
    reinterpret_cast<void (*)(id, SEL)>(reinterpret_cast<void (*)()>(plainRelease))(self, name);
}
void annotatedDealloc(id self, SEL name) {
    objc::sanitizer::acquire(self);
    reinterpret_cast<void (*)(id, SEL)>(reinterpret_cast<void (*)()>(plainDealloc))(self, name);
}

__attribute__((constructor)) void annotate() {
    Class root = reinterpret_cast<Class>(objc_getClass("NSObject"));
    MSHookMessageEx(root, sel_registerName("release"), objc::implementation(&annotatedRelease), &plainRelease);
    MSHookMessageEx(root, sel_registerName("dealloc"), objc::implementation(&annotatedDealloc), &plainDealloc);
}

}  // namespace
#endif

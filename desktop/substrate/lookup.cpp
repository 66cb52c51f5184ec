// The two functions of the runtime that find a method for a message, put before the runtime's own. While nothing is
// traced they cost one relaxed test and a jump.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "desktop/substrate/trace_state.h"

namespace {

using namespace substrate;

using MessageLookup = IMP (*)(id, SEL);
using ClassLookup = IMP (*)(Class, SEL);

IMP firstMessageLookup(id receiver, SEL name);
IMP firstClassLookup(Class cls, SEL name);

// (Messages are sent before this library's initialisers run, so the first one finds the runtime's functions.)
std::atomic<MessageLookup> nextMessageLookup{&firstMessageLookup};
std::atomic<ClassLookup> nextClassLookup{&firstClassLookup};

template <class Function>
Function runtimeFunction(const char* symbol) {
    void* found = dlsym(RTLD_NEXT, symbol);
    if (!found) {
        std::fprintf(stderr, "the object runtime's %s is not there; link the substrate before the runtime\n", symbol);
        std::abort();
    }
    return reinterpret_cast<Function>(found);
}

IMP firstMessageLookup(id receiver, SEL name) {
    auto next = runtimeFunction<MessageLookup>("objc_msg_lookup");
    nextMessageLookup.store(next, std::memory_order_relaxed);
    return next(receiver, name);
}

IMP firstClassLookup(Class cls, SEL name) {
    auto next = runtimeFunction<ClassLookup>("get_imp");
    nextClassLookup.store(next, std::memory_order_relaxed);
    return next(cls, name);
}

/// The function to call in the place of a method that was found.
IMP observed(Class cls, SEL name, IMP found) {
    if (!cls || trace::traceIsAtWork()) return found;
    trace::traceIsAtWork() = true;
    IMP answer = found;
    if (trace::isTraced(cls)) {
        Method method = class_getInstanceMethod(cls, name);
        const char* types = method ? method_getTypeEncoding(method) : nullptr;
        bool inMemory = trace::readSignature(sel_getName(name), types).result.inMemory();
        answer = trace::trampolineFor({found, inMemory, types});
    }
    trace::traceIsAtWork() = false;
    return answer;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) IMP objc_msg_lookup(id receiver, SEL name) {
    IMP found = nextMessageLookup.load(std::memory_order_relaxed)(receiver, name);
    if (!substrate::trace::active.load(std::memory_order_relaxed) || !receiver) return found;
    return observed(object_getClass(receiver), name, found);
}

/// What performSelector: and methodForSelector: look methods up with.
__attribute__((visibility("default"))) IMP get_imp(Class cls, SEL name) {
    IMP found = nextClassLookup.load(std::memory_order_relaxed)(cls, name);
    if (!substrate::trace::active.load(std::memory_order_relaxed)) return found;
    return observed(cls, name, found);
}
}

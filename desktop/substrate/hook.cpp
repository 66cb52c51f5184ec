// Method replacement over the runtime's own calls.
#include <cstdlib>

#include "desktop/substrate/substrate.h"

namespace {

/// The method that the class itself has under that name, or null.
Method ownMethod(Class cls, SEL name) {
    unsigned count = 0;
    Method* methods = class_copyMethodList(cls, &count);
    Method found = nullptr;
    for (unsigned i = 0; i < count && !found; ++i) {
        if (sel_isEqual(method_getName(methods[i]), name)) found = methods[i];
    }
    std::free(methods);
    return found;
}

}  // namespace

void MSHookMessageEx(Class cls, SEL name, IMP replacement, IMP* previous) {
    if (!cls || !name || !replacement) return;
    Method method = class_getInstanceMethod(cls, name);
    if (!method) return;
    if (previous) *previous = method_getImplementation(method);
    // (The runtime's class_replaceMethod would rewrite the superclass's method where the class has none of its own.)
    if (Method own = ownMethod(cls, name))
        method_setImplementation(own, replacement);
    else
        class_addMethod(cls, name, replacement, method_getTypeEncoding(method));
}

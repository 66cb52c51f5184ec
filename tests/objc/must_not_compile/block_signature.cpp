// A block takes only functions that can be called with its arguments.
#include "objc/layer.h"

void make() {
#if defined(GUARD_WRONG)
    objc::Block<void(int)> block = [](const char*) {};
#else
    objc::Block<void(int)> block = [](int) {};
#endif
    block(1);
}

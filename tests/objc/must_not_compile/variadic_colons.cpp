// A variadic message has one declared argument.
#include "objc/layer.h"

void message(objc::Object object) {
#if defined(GUARD_WRONG)
    objc::sendVariadic<"initWithFormat:locale:", objc::Object>(object, object, 1);
#else
    objc::sendVariadic<"initWithFormat:", objc::Object>(object, object, 1);
#endif
}

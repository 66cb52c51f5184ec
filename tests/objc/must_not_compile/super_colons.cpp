// A super send needs as many arguments as its selector has colons.
#include "objc/layer.h"

void message(objc::Object object, Class declaringClass) {
#if defined(GUARD_WRONG)
    objc::sendSuper<"viewDidAppear:">(object, declaringClass);
#else
    objc::sendSuper<"viewDidAppear:">(object, declaringClass, true);
#endif
}

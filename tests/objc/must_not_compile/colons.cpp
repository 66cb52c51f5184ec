// A message needs as many arguments as its selector has colons.
#include "objc/layer.h"

void message(objc::Object object) {
#if defined(GUARD_WRONG)
    objc::send<"setObject:forKey:">(object, object);
#else
    objc::send<"setObject:forKey:">(object, object, object);
#endif
}

// CoreFoundation's Darwin notify centre: names that travel between processes.
#pragma once

#include "platform/foundation.h"

extern "C" {
using CFNotificationCallback = void (*)(void* center, void* observer, const void* name, const void* object,
                                        const void* userInfo);
void* CFNotificationCenterGetDarwinNotifyCenter();
void CFNotificationCenterAddObserver(void* center, const void* observer, CFNotificationCallback callback,
                                     const void* name, const void* object, long suspensionBehavior);
void CFNotificationCenterPostNotification(void* center, const void* name, const void* object, const void* userInfo,
                                          unsigned char deliverImmediately);
}

namespace darwin {

enum class Suspension : long { Hold = 3, DeliverImmediately = 4 };

/// Calls back on the main thread for each post of that name, by any process. Never removed.
inline void observe(NSString name, CFNotificationCallback callback, Suspension suspension) {
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), nullptr, callback, name.self, nullptr,
                                    static_cast<long>(suspension));
}
/// Posts the name to every process, this one included, immediately.
inline void post(NSString name) {
    CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name.self, nullptr, nullptr, 1);
}

}  // namespace darwin

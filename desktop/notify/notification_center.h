// CoreFoundation's C interface of the Darwin notify centre, as the handset's programs call it. Names are NSStrings.
#pragma once

extern "C" {

using CFNotificationCallback = void (*)(void* center, void* observer, const void* name, const void* object,
                                        const void* userInfo);

/// The one centre of the process.
void* CFNotificationCenterGetDarwinNotifyCenter();

/// Calls back on the main thread, from notify::deliverPending(), for each delivery of that name, with `observer`, the
/// name, and null for object and user info, which do not travel between processes. The name is retained. While the
/// program is suspended the behaviour decides: 1 drops, 2 and 3 hold one delivery a name until it resumes, 4 delivers
/// at once. A null name, callback or a foreign centre registers nothing and is reported on standard error. Any thread.
void CFNotificationCenterAddObserver(void* center, const void* observer, CFNotificationCallback callback,
                                     const void* name, const void* object, long suspensionBehavior);

/// Removes what was registered with that observer for that name, or for every name when it is null. What was
/// registered with a null observer stays for the life of the process. Any thread.
void CFNotificationCenterRemoveObserver(void* center, const void* observer, const void* name, const void* object);
void CFNotificationCenterRemoveEveryObserver(void* center, const void* observer);

/// Posts the name to every process of the rendezvous, this one included (see notify::post()). Object and user info are
/// ignored, as is deliverImmediately: each observer's own behaviour decides. A failure is reported on standard error.
/// Any thread.
void CFNotificationCenterPostNotification(void* center, const void* name, const void* object, const void* userInfo,
                                          unsigned char deliverImmediately);
}

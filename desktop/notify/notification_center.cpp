// The C interface: NSStrings in, the process's one centre behind it.
#include "desktop/notify/notification_center.h"

#include <cstdio>

#include "desktop/notify/notify.h"
#include "desktop/notify/state.h"
#include "objc/strong.h"

namespace {

/// The centre as programs hold it; only its address matters.
char darwinCenter;

bool isDarwinCenter(const void* center, const char* call) {
    if (center == &darwinCenter) return true;
    std::fprintf(stderr, "%s: only the Darwin notify centre is here; the call does nothing.\n", call);
    return false;
}

/// The text of an NSString; empty for null.
std::string textOf(const void* name) {
    const auto* text = objc::send<"UTF8String", const char*>(static_cast<id>(const_cast<void*>(name)));
    return text ? text : "";
}

objc::Object nameObject(const void* name) { return {static_cast<id>(const_cast<void*>(name))}; }

void removeObservers(const void* observer, const std::string* name) {
    std::vector<notify::Observer> removed;
    {
        const std::lock_guard lock(notify::state().mutex);
        removed = notify::state().center.remove(observer, name);
    }
    for (const notify::Observer& each : removed) objc::release(nameObject(each.nameObject));
}

}  // namespace

void* CFNotificationCenterGetDarwinNotifyCenter() { return &darwinCenter; }

void CFNotificationCenterAddObserver(void* center, const void* observer, CFNotificationCallback callback,
                                     const void* name, const void* /*object*/, long suspensionBehavior) {
    if (!isDarwinCenter(center, "CFNotificationCenterAddObserver")) return;
    if (!callback || textOf(name).empty()) {
        std::fprintf(stderr, "CFNotificationCenterAddObserver: an observer needs a callback and a name.\n");
        return;
    }
    if (suspensionBehavior < 1 || suspensionBehavior > 4) {
        std::fprintf(stderr, "CFNotificationCenterAddObserver: no suspension behaviour is %ld; \"%s\" is held.\n",
                     suspensionBehavior, textOf(name).c_str());
        suspensionBehavior = static_cast<long>(notify::Suspension::Hold);
    }
    // A copy: a mutable string may change afterwards, and its owner may give it back.
    const id copy = objc::send<"copy", objc::Object>(nameObject(name)).self;
    const std::lock_guard lock(notify::state().mutex);
    notify::state().center.add({0, const_cast<void*>(observer), callback, textOf(name), copy,
                                static_cast<notify::Suspension>(suspensionBehavior)});
}

void CFNotificationCenterRemoveObserver(void* center, const void* observer, const void* name, const void* /*object*/) {
    if (!isDarwinCenter(center, "CFNotificationCenterRemoveObserver")) return;
    const std::string text = textOf(name);
    removeObservers(observer, name ? &text : nullptr);
}

void CFNotificationCenterRemoveEveryObserver(void* center, const void* observer) {
    if (!isDarwinCenter(center, "CFNotificationCenterRemoveEveryObserver")) return;
    removeObservers(observer, nullptr);
}

void CFNotificationCenterPostNotification(void* center, const void* name, const void* /*object*/,
                                          const void* /*userInfo*/, unsigned char /*deliverImmediately*/) {
    if (!isDarwinCenter(center, "CFNotificationCenterPostNotification")) return;
    if (const auto failure = notify::post(textOf(name))) std::fprintf(stderr, "%s\n", failure->text.c_str());
}

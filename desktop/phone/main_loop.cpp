// The Phone's main loop.
#include "desktop/phone/main_loop.h"

#include <poll.h>

#include <algorithm>

#include "desktop/dispatch/clock.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/notify/notify.h"
#include "desktop/uikit/animation.h"
#include "desktop/uikit/application.h"

namespace phone {
namespace {

constexpr double frameSeconds = 1.0 / 60;
// How long a turn of settle() sleeps while a worker runs; the work's end wakes it earlier.
constexpr double nap = 0.05;

void layOutWindow() {
    if (auto* window = uikit::Application::shared()->keyWindow()) window->layoutIfNeeded();
}

/// Lets the clock go to what waits for it: the next frame or the next timer. Answers whether something waited.
bool advanceVirtualClock() {
    const auto timer = dispatch::nextTimer();
    if (!uikit::animationsRunning() && !timer) return false;
    if (!dispatch::Clock::isVirtual()) {
        waitForEvents(-1, frameSeconds);
        return true;
    }
    const double frame = dispatch::Clock::now() + frameSeconds;
    dispatch::Clock::advanceTo(uikit::animationsRunning() ? std::min(frame, timer.value_or(frame)) : *timer);
    return true;
}

std::string whatGoesOn() {
    if (!dispatch::idle()) return "work is still on a queue or a worker";
    if (notify::pending()) return "a notification is still to be delivered";
    if (uikit::animationsRunning()) return "something still moves";
    return "the screen still asks for work";
}

}  // namespace

bool turnMainLoop() {
    const dispatch::AutoreleaseScope scope;
    std::size_t done = dispatch::fireTimersDue();
    done += dispatch::drainMainQueue();
    if (notify::pending()) done += notify::deliverPending();
    uikit::stepAnimations();
    layOutWindow();
    return done > 0;
}

std::optional<std::string> settle(double boundSeconds) {
    const double end = dispatch::steadyNow() + boundSeconds;
    for (;;) {
        const bool worked = turnMainLoop();
        if (dispatch::steadyNow() > end) return whatGoesOn() + " after " + std::to_string(int(boundSeconds)) + " s";
        if (worked || notify::pending()) continue;
        if (!dispatch::idle()) {
            dispatch::waitForWork(std::min(end, dispatch::steadyNow() + nap));
            continue;
        }
        if (advanceVirtualClock()) continue;
        // Laying out may have asked for more; the queues have the last word.
        if (!turnMainLoop() && dispatch::idle() && !notify::pending()) return std::nullopt;
    }
}

bool waitForEvents(int descriptor, double seconds) {
    pollfd waited[] = {
        {dispatch::mainQueueWakeUp(), POLLIN, 0}, {notify::descriptor(), POLLIN, 0}, {descriptor, POLLIN, 0}};
    constexpr double milliseconds = 1000;
    ::poll(waited, std::size(waited), static_cast<int>(seconds * milliseconds));
    return (waited[2].revents & (POLLIN | POLLHUP)) != 0;
}

}  // namespace phone

// What moves in time: one list of animations and one of motions, stepped by the main loop.
#include "desktop/uikit/animation.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "desktop/dispatch/clock.h"

namespace uikit {
namespace {

struct Running {
    AnimationToken token = 0;
    double begun = 0;
    double seconds = 0;
    Curve curve = Curve::Linear;
    std::function<void(double)> step;
    std::function<void(bool)> completion;
};

struct Moving {
    AnimationToken token = 0;
    double last = 0;
    Motion motion = Motion::Ends;
    std::function<bool(double)> step;
};

// Lists may change while they are stepped: a step works on tokens, and finds what is left of them.
std::vector<Running> running;
std::vector<Moving> moving;
AnimationToken lastToken = 0;

template <class List>
auto find(List& list, AnimationToken token) {
    return std::find_if(list.begin(), list.end(), [&](const auto& each) { return each.token == token; });
}

template <class List>
std::vector<AnimationToken> tokens(const List& list) {
    std::vector<AnimationToken> result;
    for (const auto& each : list) result.push_back(each.token);
    return result;
}

void stepOne(AnimationToken token, double now) {
    auto found = find(running, token);
    if (found == running.end()) return;
    const double progress = std::clamp((now - found->begun) / found->seconds, 0.0, 1.0);
    if (progress < 1) {
        const auto step = found->step;
        step(curveValue(found->curve, progress));
        return;
    }
    const Running over = std::move(*found);
    running.erase(found);
    over.step(1);
    if (over.completion) over.completion(true);
}

void moveOne(AnimationToken token, double now) {
    auto found = find(moving, token);
    if (found == moving.end()) return;
    const auto step = found->step;
    const double passed = now - std::exchange(found->last, now);
    if (step(passed)) return;
    found = find(moving, token);
    if (found != moving.end()) moving.erase(found);
}

}  // namespace

double curveValue(Curve curve, double progress) {
    const double left = 1 - progress;
    switch (curve) {
        case Curve::Linear:
            return progress;
        case Curve::EaseIn:
            return progress * progress * progress;
        case Curve::EaseOut:
            return 1 - left * left * left;
        case Curve::EaseInOut:
            return progress < 0.5 ? 4 * progress * progress * progress : 1 - 4 * left * left * left;
        case Curve::Spring: {
            // A damped swing that has died away at the end; the straight part makes the end exact.
            const double swing = std::exp(-7 * progress) * std::cos(2.2 * std::numbers::pi * progress * 0.5);
            return 1 - swing + progress * std::exp(-7) * std::cos(2.2 * std::numbers::pi * 0.5);
        }
    }
    return progress;
}

AnimationToken animate(double seconds, Curve curve, std::function<void(double)> step,
                       std::function<void(bool)> completion) {
    const AnimationToken token = ++lastToken;
    if (seconds <= 0) {
        step(1);
        if (completion) completion(true);
        return token;
    }
    running.push_back({token, dispatch::Clock::now(), seconds, curve, std::move(step), std::move(completion)});
    return token;
}

void cancelAnimation(AnimationToken token) {
    if (auto found = find(running, token); found != running.end()) {
        const Running stopped = std::move(*found);
        running.erase(found);
        if (stopped.completion) stopped.completion(false);
    } else if (auto motion = find(moving, token); motion != moving.end()) {
        moving.erase(motion);
    }
}

AnimationToken everyFrame(Motion motion, std::function<bool(double)> step) {
    moving.push_back({++lastToken, dispatch::Clock::now(), motion, std::move(step)});
    return lastToken;
}

void stepAnimations() {
    const double now = dispatch::Clock::now();
    for (AnimationToken token : tokens(running)) stepOne(token, now);
    for (AnimationToken token : tokens(moving)) moveOne(token, now);
}

bool animationsRunning() {
    return !running.empty() ||
           std::any_of(moving.begin(), moving.end(), [](const Moving& each) { return each.motion == Motion::Ends; });
}

bool framesWanted() { return !running.empty() || !moving.empty(); }

}  // namespace uikit

// Animations: values that move in time on the main thread, on the clock that scripts and tests can turn by hand.
#pragma once

#include <cstdint>
#include <functional>

namespace uikit {

enum class Curve { Linear, EaseIn, EaseOut, EaseInOut, Spring };

/// How far along the curve a movement is at that share of its time; 0 at 0 and 1 at 1.
double curveValue(Curve curve, double progress);

/// Names a running animation.
using AnimationToken = std::uint64_t;

/// Runs `step` with the progress along the curve, 0 to 1, each frame for that many seconds, then `completion` with
/// whether it ran to its end. The last step is always 1. A duration of 0 does both at once. Main thread.
AnimationToken animate(double seconds, Curve curve, std::function<void(double)> step,
                       std::function<void(bool finished)> completion = {});
/// Stops it where it is; its completion is called with false. Nothing happens when it is over already.
void cancelAnimation(AnimationToken token);

/// Calls `step` with the seconds since the last call, each frame, until it answers false: momentum, turning spokes.
/// An endless motion (a spinner) does not keep the Phone from settling.
enum class Motion { Ends, Endless };
AnimationToken everyFrame(Motion motion, std::function<bool(double seconds)> step);

/// `animateWithDuration:...`: what `changes` does to frames, alphas and backgrounds of views is drawn as a movement
/// from what is shown now; the views' own properties have their new values at once.
void animateChanges(double seconds, double delay, Curve curve, const std::function<void()>& changes,
                    std::function<void(bool finished)> completion = {});

/// Advances everything to the clock's present time. Called by the main loop before each frame.
void stepAnimations();
/// Whether something moves that will end by itself.
bool animationsRunning();
/// Whether anything moves at all, so that frames are wanted.
bool framesWanted();

}  // namespace uikit

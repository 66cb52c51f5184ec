// Touches: what a finger, a mouse or a script does to the screen.
#pragma once

#include "desktop/uikit/geometry.h"

namespace uikit {

enum class TouchPhase { Began, Moved, Ended, Cancelled };

/// One finger's contact. Points are in the window's coordinates, time in seconds of the toolkit's clock.
struct Touch {
    TouchPhase phase = TouchPhase::Began;
    Point point;
    double time = 0;
};

}  // namespace uikit

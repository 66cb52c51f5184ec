// The bar over the screen's top: signal, clock and battery.
#pragma once

#include "desktop/graphics/canvas.h"
#include "desktop/uikit/geometry.h"

namespace uikit {

struct NetworkActivity {
    bool visible = false;
    double turn = 0;
};

/// Draws the bar's signs in that colour; the ground is whatever the screen has there.
void drawStatusBar(graphics::Canvas& canvas, const Rect& rect, const Color& color, const NetworkActivity& network);

}  // namespace uikit

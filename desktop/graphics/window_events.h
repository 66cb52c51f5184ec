// Turning SDL's events into the window's own.
#pragma once

#include <SDL.h>

#include <vector>

#include "desktop/graphics/window.h"

namespace graphics {

/// Where the screen lies in the window.
struct Placement {
    /// Pixels a point.
    double scale = 1;
    /// The screen's left upper corner, in pixels of the window.
    Point corner;
    /// SDL counts the mouse in units of the window, of which displays of high density have fewer than pixels.
    double pixelsPerUnit = 1;

    /// From the window's units to the screen's points.
    Point toScreen(Point inWindow) const {
        return {(inWindow.x * pixelsPerUnit - corner.x) / scale, (inWindow.y * pixelsPerUnit - corner.y) / scale};
    }
};

/// Remembers which fingers are down, so that each touch has one end.
class EventTranslator {
  public:
    /// Delivers what the event means, if anything. `window` is its size in the window's units.
    void translate(const SDL_Event& event, const Placement& placement, Size window, Size screen,
                   const Window::Handler& handler);

  private:
    struct Finger {
        std::int64_t number;
        Point point;
    };

    void touch(TouchPhase phase, std::int64_t finger, Point point, double time, Size screen,
               const Window::Handler& handler);
    void windowChanged(const SDL_WindowEvent& event, const Placement& placement, const Window::Handler& handler);
    void cancelTouches(double time, const Window::Handler& handler);

    std::vector<Finger> down_;
};

}  // namespace graphics

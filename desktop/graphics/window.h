// The window on the desktop that shows the handset's screen, and the person's doings in it as plain values.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "desktop/graphics/geometry.h"
#include "desktop/graphics/image.h"
#include "desktop/graphics/result.h"

namespace graphics {

enum class TouchPhase { Began, Moved, Ended, Cancelled };

/// One finger, or the left mouse button. Every Began is followed by exactly one Ended or Cancelled of the same finger.
struct Touch {
    TouchPhase phase = TouchPhase::Began;
    std::int64_t finger = 0;
    /// In points of the screen; may lie outside of it while a finger drags out.
    Point point;
    /// Seconds on a clock that only goes forward.
    double time = 0;
};

/// A wheel or touchpad: how far the content moves, in points, positive when it moves right or down.
struct Scroll {
    Point point;
    Point distance;
    double time = 0;
};

enum class KeyCode {
    Character,
    Return,
    Escape,
    Backspace,
    Delete,
    Tab,
    Left,
    Right,
    Up,
    Down,
    Home,
    End,
    PageUp,
    PageDown
};

/// A key went down, or repeats. What it types comes separately, as Text.
struct Key {
    KeyCode code = KeyCode::Character;
    /// The unshifted character in lower case, for KeyCode::Character; else 0.
    char32_t character = 0;
    bool shift = false;
    bool control = false;
    bool alt = false;
    bool repeats = false;
    double time = 0;
};

/// Typed text, UTF-8. Comes only while text input is on.
struct Text {
    std::string text;
};

/// The window has another size or lies on another display: draw at the new scale and present.
struct Resized {
    double scale = 1;
};

/// What the window showed is lost: present again.
struct Exposed {};

struct FocusChanged {
    bool focused = false;
};

/// The person closes the window, or the desktop ends the session.
struct Quit {};

using Event = std::variant<Touch, Scroll, Key, Text, Resized, Exposed, FocusChanged, Quit>;

struct WindowOptions {
    std::string title;
    /// The screen's size in points, which it keeps.
    Size screen{320, 568};
    /// Pixels a point to begin with; 0 takes what suits the display: its density, in quarters, as long as the window
    /// fits.
    double scale = 0;
};

/// A resizable window. The screen keeps its points: a larger window shows it at a larger scale, centred. All of it
/// belongs to the thread that opened it, but for wake(). One at a time in a process.
class Window {
  public:
    using Handler = std::function<void(const Event&)>;

    /// Fails with a sentence where there is no display.
    static Result<std::unique_ptr<Window>> open(const WindowOptions& options);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Pixels a point now. An image of screenSize() at this scale fits pixel by pixel.
    double scale() const;
    Size screenSize() const;

    /// Shows the image, which is opaque; the ground around it is filled with black. One of another size is scaled.
    /// Answers an empty text, or what went wrong.
    std::string present(const Image& image);

    /// Waits until something happens, and delivers all events that there are. Returns when there were events, when one
    /// of the descriptors can be read, when wake() was called or the timeout is over; without a timeout it waits for as
    /// long as it takes. Answers the descriptors that can be read.
    std::vector<int> wait(const Handler& handler, std::optional<std::chrono::milliseconds> timeout,
                          std::span<const int> descriptors = {});

    /// Ends the present wait, or the next one at once. From any thread.
    void wake();

    /// Turns typing on (Text events, the desktop's input methods near `area`, in points) and off.
    void beginTextInput(const Rect& area);
    void endTextInput();

  private:
    class Implementation;
    explicit Window(std::unique_ptr<Implementation> implementation);

    std::unique_ptr<Implementation> implementation_;
};

}  // namespace graphics

// The Phone in a window: events in, frames out.
#include "desktop/phone/window_mode.h"

#include <chrono>
#include <optional>

#include "desktop/dispatch/clock.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/graphics/window.h"
#include "desktop/notify/notify.h"
#include "desktop/phone/handset.h"
#include "desktop/phone/keyboard.h"
#include "desktop/phone/main_loop.h"
#include "desktop/uikit/animation.h"
#include "desktop/uikit/application.h"

namespace phone {
namespace {

class Events {
  public:
    bool quit() const { return quit_; }
    bool exposed() { return std::exchange(exposed_, false); }

    void operator()(const graphics::Touch& touch) {
        // One finger at a time: the first one down.
        if (touch.phase == graphics::TouchPhase::Began && !finger_) finger_ = touch.finger;
        if (finger_ != touch.finger) return;
        if (touch.phase == graphics::TouchPhase::Ended || touch.phase == graphics::TouchPhase::Cancelled)
            finger_.reset();
        key().deliver({static_cast<uikit::TouchPhase>(touch.phase), touch.point, dispatch::Clock::now()});
    }
    void operator()(const graphics::Scroll& scroll) {
        key().deliverWheel(scroll.point, {-scroll.distance.x, -scroll.distance.y});
    }
    void operator()(const graphics::Key& pressed) { pressKey(pressed.code); }
    void operator()(const graphics::Text& typed) { typeText(typed.text); }
    void operator()(const graphics::Resized&) { exposed_ = true; }
    void operator()(const graphics::Exposed&) { exposed_ = true; }
    void operator()(const graphics::FocusChanged&) {}
    void operator()(const graphics::Quit&) { quit_ = true; }

  private:
    static uikit::Window& key() { return *uikit::Application::shared()->keyWindow(); }

    bool quit_ = false;
    bool exposed_ = true;
    std::optional<std::int64_t> finger_;
};

/// Has the desktop send typed text while there is somewhere to put it.
class TextInput {
  public:
    void follow(graphics::Window& window) {
        const auto area = typingArea();
        if (area == std::exchange(area_, area)) return;
        if (area)
            window.beginTextInput(*area);
        else
            window.endTextInput();
    }

  private:
    std::optional<uikit::Rect> area_;
};

}  // namespace

std::string runInWindow(graphics::Window& window) {
    Events events;
    TextInput textInput;
    const int descriptors[] = {dispatch::mainQueueWakeUp(), notify::descriptor()};
    while (!events.quit()) {
        turnMainLoop();
        textInput.follow(window);
        if (events.exposed() || uikit::displayNeeded() || uikit::framesWanted())
            if (auto trouble = window.present(renderScreen(window.scale())); !trouble.empty()) return trouble;
        constexpr std::chrono::milliseconds frame(16);
        constexpr std::chrono::milliseconds rest(1000);
        window.wait([&](const graphics::Event& event) { std::visit(events, event); },
                    uikit::framesWanted() || dispatch::nextTimer() ? frame : rest, descriptors);
    }
    return {};
}

}  // namespace phone

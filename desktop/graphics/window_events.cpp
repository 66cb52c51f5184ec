// Turning SDL's events into the window's own.
#include "desktop/graphics/window_events.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace graphics {

namespace {

constexpr std::int64_t mouseFinger = 0;
constexpr double pointsPerWheelStep = 40;

/// SDL's time stamps wrap after 49 days; seconds do not.
double seconds(Uint32 timestamp) {
    const Uint64 now = SDL_GetTicks64();
    const Uint32 age = static_cast<Uint32>(now) - timestamp;
    return static_cast<double>(now - std::min<Uint64>(age, now)) / 1000.0;
}

KeyCode keyCode(SDL_Keycode code) {
    switch (code) {
        case SDLK_RETURN:
        case SDLK_KP_ENTER:
            return KeyCode::Return;
        case SDLK_ESCAPE:
            return KeyCode::Escape;
        case SDLK_BACKSPACE:
            return KeyCode::Backspace;
        case SDLK_DELETE:
            return KeyCode::Delete;
        case SDLK_TAB:
            return KeyCode::Tab;
        case SDLK_LEFT:
            return KeyCode::Left;
        case SDLK_RIGHT:
            return KeyCode::Right;
        case SDLK_UP:
            return KeyCode::Up;
        case SDLK_DOWN:
            return KeyCode::Down;
        case SDLK_HOME:
            return KeyCode::Home;
        case SDLK_END:
            return KeyCode::End;
        case SDLK_PAGEUP:
            return KeyCode::PageUp;
        case SDLK_PAGEDOWN:
            return KeyCode::PageDown;
        default:
            return KeyCode::Character;
    }
}

std::optional<Key> keyPressed(const SDL_KeyboardEvent& event) {
    const SDL_Keycode code = event.keysym.sym;
    Key key;
    key.code = keyCode(code);
    if (key.code == KeyCode::Character) {
        // Keys that type nothing, such as Shift, have this bit.
        if (code <= 0 || (code & SDLK_SCANCODE_MASK) != 0) return std::nullopt;
        key.character = static_cast<char32_t>(code);
    }
    key.shift = (event.keysym.mod & KMOD_SHIFT) != 0;
    key.control = (event.keysym.mod & KMOD_CTRL) != 0;
    key.alt = (event.keysym.mod & KMOD_ALT) != 0;
    key.repeats = event.repeat != 0;
    key.time = seconds(event.timestamp);
    return key;
}

TouchPhase fingerPhase(Uint32 type) {
    if (type == SDL_FINGERDOWN) return TouchPhase::Began;
    return type == SDL_FINGERUP ? TouchPhase::Ended : TouchPhase::Moved;
}

/// SDL's wheel is positive away from the person and to the right; content goes down and left then.
Scroll scrolled(const SDL_MouseWheelEvent& event, const Placement& placement) {
    const Point at{static_cast<double>(event.mouseX), static_cast<double>(event.mouseY)};
    const Point distance{-event.preciseX * pointsPerWheelStep, event.preciseY * pointsPerWheelStep};
    return {placement.toScreen(at), distance, seconds(event.timestamp)};
}

}  // namespace

void EventTranslator::translate(const SDL_Event& event, const Placement& placement, Size window, Size screen,
                                const Window::Handler& handler) {
    const auto mouse = [&](TouchPhase phase, int x, int y) {
        const Point point = placement.toScreen({static_cast<double>(x), static_cast<double>(y)});
        touch(phase, mouseFinger, point, seconds(event.common.timestamp), screen, handler);
    };
    switch (event.type) {
        case SDL_MOUSEBUTTONDOWN:
            if (event.button.button == SDL_BUTTON_LEFT) mouse(TouchPhase::Began, event.button.x, event.button.y);
            break;
        case SDL_MOUSEBUTTONUP:
            if (event.button.button == SDL_BUTTON_LEFT) mouse(TouchPhase::Ended, event.button.x, event.button.y);
            break;
        case SDL_MOUSEMOTION:
            mouse(TouchPhase::Moved, event.motion.x, event.motion.y);
            break;
        case SDL_FINGERDOWN:
        case SDL_FINGERMOTION:
        case SDL_FINGERUP: {
            const Point at{event.tfinger.x * window.width, event.tfinger.y * window.height};
            const std::int64_t finger = event.tfinger.fingerId + mouseFinger + 1;
            touch(fingerPhase(event.type), finger, placement.toScreen(at), seconds(event.common.timestamp), screen,
                  handler);
            break;
        }
        case SDL_MOUSEWHEEL:
            handler(scrolled(event.wheel, placement));
            break;
        case SDL_KEYDOWN:
            if (const auto key = keyPressed(event.key)) handler(*key);
            break;
        case SDL_TEXTINPUT:
            handler(Text{event.text.text});
            break;
        case SDL_WINDOWEVENT:
            windowChanged(event.window, placement, handler);
            break;
        case SDL_QUIT:
            handler(Quit{});
            break;
        default:
            break;
    }
}

void EventTranslator::touch(TouchPhase phase, std::int64_t finger, Point point, double time, Size screen,
                            const Window::Handler& handler) {
    const auto known =
        std::find_if(down_.begin(), down_.end(), [&](const Finger& each) { return each.number == finger; });
    if (phase == TouchPhase::Began) {
        if (known != down_.end() || !Rect{{}, screen}.contains(point)) return;
        down_.push_back({finger, point});
    } else {
        if (known == down_.end()) return;
        known->point = point;
        if (phase != TouchPhase::Moved) down_.erase(known);
    }
    handler(Touch{phase, finger, point, time});
}

void EventTranslator::windowChanged(const SDL_WindowEvent& event, const Placement& placement,
                                    const Window::Handler& handler) {
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_DISPLAY_CHANGED:
            handler(Resized{placement.scale});
            break;
        case SDL_WINDOWEVENT_EXPOSED:
            handler(Exposed{});
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            handler(FocusChanged{true});
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            cancelTouches(seconds(event.timestamp), handler);
            handler(FocusChanged{false});
            break;
        default:
            break;
    }
}

void EventTranslator::cancelTouches(double time, const Window::Handler& handler) {
    const std::vector<Finger> cancelled = std::exchange(down_, {});
    for (const Finger& finger : cancelled) handler(Touch{TouchPhase::Cancelled, finger.number, finger.point, time});
}

}  // namespace graphics

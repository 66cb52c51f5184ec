// The window, on SDL2.
#include "desktop/graphics/window.h"

#include <SDL.h>

#include <atomic>
#include <string_view>

#include "desktop/graphics/descriptor_watcher.h"
#include "desktop/graphics/window_events.h"

namespace graphics {

namespace {

constexpr double ordinaryDensity = 96;
constexpr double scaleStep = 0.25;
constexpr double largestScale = 4;
constexpr double smallestScale = 0.5;
/// What a window may take of the display's usable height, as it has a title bar too.
constexpr double usablePart = 0.92;

std::string sdlError(const char* what) { return std::string(what) + ": " + SDL_GetError() + "."; }

double inSteps(double scale) { return std::floor(scale / scaleStep) * scaleStep; }

double scaleForDisplay(Size screen) {
    float density = 0;
    double scale = 1;
    if (SDL_GetDisplayDPI(0, nullptr, &density, nullptr) == 0) {
        scale = std::clamp(inSteps(density / ordinaryDensity + scaleStep / 2), 1.0, largestScale);
    }
    SDL_Rect usable;
    if (SDL_GetDisplayUsableBounds(0, &usable) == 0) {
        const double fits = std::min(usable.w / screen.width, usable.h * usablePart / screen.height);
        if (fits < scale) scale = std::max(inSteps(fits), smallestScale);
    }
    return scale;
}

/// SDL falls back to drivers that show nothing. They are for those who name them.
bool showsNothing() {
    const char* driver = SDL_GetCurrentVideoDriver();
    const std::string_view name = driver == nullptr ? "" : driver;
    const char* named = SDL_getenv("SDL_VIDEODRIVER");
    return (named == nullptr || *named == 0) && (name == "offscreen" || name == "dummy" || name == "evdev");
}

void setHints() {
    SDL_SetMainReady();
    // Fingers and the mouse each speak for themselves.
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
}

}  // namespace

class Window::Implementation {
  public:
    Implementation(SDL_Window* window, Size screen, Uint32 wakeType)
        : window_(window), screen_(screen), wakeType_(wakeType), watcher_([this] { wake(); }) {}

    ~Implementation() {
        SDL_DestroyWindow(window_);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }

    Size screen() const { return screen_; }
    bool isUsable() const { return watcher_.isUsable(); }

    Size sizeInUnits() const {
        int width = 0, height = 0;
        SDL_GetWindowSize(window_, &width, &height);
        return {static_cast<double>(width), static_cast<double>(height)};
    }

    Placement placement() const {
        int width = 0, height = 0;
        SDL_GetWindowSizeInPixels(window_, &width, &height);
        Placement result;
        result.pixelsPerUnit = width / std::max(1.0, sizeInUnits().width);
        result.scale = std::max(0.01, std::min(width / screen_.width, height / screen_.height));
        result.corner = {std::floor((width - std::round(screen_.width * result.scale)) / 2),
                         std::floor((height - std::round(screen_.height * result.scale)) / 2)};
        return result;
    }

    std::string present(const Image& image);
    std::vector<int> wait(const Handler& handler, std::optional<std::chrono::milliseconds> timeout,
                          std::span<const int> descriptors);

    void wake() {
        if (wakePending_.exchange(true)) return;
        SDL_Event event{};
        event.type = wakeType_;
        SDL_PushEvent(&event);
    }

  private:
    void deliver(const SDL_Event& event, const Handler& handler) {
        if (event.type == wakeType_) {
            wakePending_ = false;
        } else {
            translator_.translate(event, placement(), sizeInUnits(), screen_, handler);
        }
    }

    SDL_Window* window_;
    Size screen_;
    Uint32 wakeType_;
    std::atomic<bool> wakePending_ = false;
    EventTranslator translator_;
    DescriptorWatcher watcher_;
};

std::string Window::Implementation::present(const Image& image) {
    if (!image) return "There is no picture to show.";
    SDL_Surface* target = SDL_GetWindowSurface(window_);
    if (target == nullptr) return sdlError("The window cannot be drawn on");
    cairo_surface_flush(image.surface());
    SDL_Surface* source = SDL_CreateRGBSurfaceWithFormatFrom(
        cairo_image_surface_get_data(image.surface()), image.pixelWidth(), image.pixelHeight(), 32,
        cairo_image_surface_get_stride(image.surface()), SDL_PIXELFORMAT_ARGB8888);
    if (source == nullptr) return sdlError("The picture cannot be shown");
    SDL_SetSurfaceBlendMode(source, SDL_BLENDMODE_NONE);
    const Placement placed = placement();
    SDL_Rect area{static_cast<int>(placed.corner.x), static_cast<int>(placed.corner.y),
                  static_cast<int>(std::lround(screen_.width * placed.scale)),
                  static_cast<int>(std::lround(screen_.height * placed.scale))};
    SDL_FillRect(target, nullptr, SDL_MapRGB(target->format, 0, 0, 0));
    const bool fits = area.w == image.pixelWidth() && area.h == image.pixelHeight();
    const bool drawn = (fits ? SDL_BlitSurface(source, nullptr, target, &area)
                             : SDL_BlitScaled(source, nullptr, target, &area)) == 0 &&
                       SDL_UpdateWindowSurface(window_) == 0;
    SDL_FreeSurface(source);
    return drawn ? std::string() : sdlError("The picture cannot be shown");
}

std::vector<int> Window::Implementation::wait(const Handler& handler, std::optional<std::chrono::milliseconds> timeout,
                                              std::span<const int> descriptors) {
    std::vector<int> readable = readableNow(descriptors);
    SDL_Event event;
    if (readable.empty()) {
        if (!descriptors.empty()) watcher_.watch(descriptors);
        const int limit = timeout ? static_cast<int>(std::clamp<std::int64_t>(timeout->count(), 0, 1 << 30)) : -1;
        const bool happened = SDL_WaitEventTimeout(&event, limit) == 1;
        if (!descriptors.empty()) watcher_.stop();
        if (happened) deliver(event, handler);
        readable = readableNow(descriptors);
    }
    while (SDL_PollEvent(&event) == 1) deliver(event, handler);
    return readable;
}

Window::Window(std::unique_ptr<Implementation> implementation) : implementation_(std::move(implementation)) {}
Window::~Window() = default;

Result<std::unique_ptr<Window>> Window::open(const WindowOptions& options) {
    if (options.screen.isEmpty()) return Failure{"A window needs a screen of at least one point each way."};
    setHints();
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return Failure{sdlError("There is no display to open a window on")};
    if (showsNothing()) {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        return Failure{"There is no display to open a window on: neither DISPLAY nor WAYLAND_DISPLAY leads to one."};
    }
    SDL_StopTextInput();
    const double scale = options.scale > 0 ? options.scale : scaleForDisplay(options.screen);
    const int width = static_cast<int>(std::lround(options.screen.width * scale));
    const int height = static_cast<int>(std::lround(options.screen.height * scale));
    SDL_Window* window = SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width,
                                          height, SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
    const Uint32 wakeType = SDL_RegisterEvents(1);
    if (window == nullptr || wakeType == static_cast<Uint32>(-1)) {
        const Failure failure{sdlError("The window cannot be opened")};
        if (window != nullptr) SDL_DestroyWindow(window);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        return failure;
    }
    auto implementation = std::make_unique<Implementation>(window, options.screen, wakeType);
    if (!implementation->isUsable()) return Failure{"The window cannot be opened: the process has no descriptor left."};
    // Where the window's units are larger than pixels, the wanted scale is reached with fewer of them.
    if (const double ratio = implementation->placement().pixelsPerUnit; ratio > 1.01) {
        SDL_SetWindowSize(window, static_cast<int>(width / ratio), static_cast<int>(height / ratio));
    }
    SDL_SetWindowMinimumSize(window, width / 4, height / 4);
    return std::unique_ptr<Window>(new Window(std::move(implementation)));
}

double Window::scale() const { return implementation_->placement().scale; }
Size Window::screenSize() const { return implementation_->screen(); }
std::string Window::present(const Image& image) { return implementation_->present(image); }
void Window::wake() { implementation_->wake(); }

std::vector<int> Window::wait(const Handler& handler, std::optional<std::chrono::milliseconds> timeout,
                              std::span<const int> descriptors) {
    return implementation_->wait(handler, timeout, descriptors);
}

void Window::beginTextInput(const Rect& area) {
    const Placement placed = implementation_->placement();
    const double units = placed.scale / placed.pixelsPerUnit;
    const SDL_Rect where{static_cast<int>(placed.corner.x / placed.pixelsPerUnit + area.left() * units),
                         static_cast<int>(placed.corner.y / placed.pixelsPerUnit + area.top() * units),
                         static_cast<int>(area.width() * units), static_cast<int>(area.height() * units)};
    SDL_SetTextInputRect(&where);
    SDL_StartTextInput();
}

void Window::endTextInput() { SDL_StopTextInput(); }

}  // namespace graphics

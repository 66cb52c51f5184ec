// The window, on SDL's driver without a display.
#include "desktop/graphics/window.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <thread>

#include "tests/graphics/pixels.h"

namespace graphics {
namespace {

using namespace std::chrono_literals;

constexpr auto bound = 10s;

class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        Result<std::unique_ptr<Window>> opened = Window::open({.title = "Test", .screen = {320, 568}, .scale = 1});
        ASSERT_TRUE(opened) << opened.error();
        window_ = std::move(*opened);
        drain();
    }

    void drain() {
        window_->wait([](const Event&) {}, 0ms);
        events_.clear();
    }

    /// Everything that is waiting.
    void collect() {
        window_->wait([this](const Event& event) { events_.push_back(event); }, 0ms);
    }

    template <class Kind>
    std::vector<Kind> all() const {
        std::vector<Kind> result;
        for (const Event& event : events_) {
            if (const auto* found = std::get_if<Kind>(&event)) result.push_back(*found);
        }
        return result;
    }

    static void pushMouse(Uint32 type, int x, int y, Uint8 button = SDL_BUTTON_LEFT) {
        SDL_Event event{};
        event.type = type;
        if (type == SDL_MOUSEMOTION) {
            event.motion.x = x;
            event.motion.y = y;
        } else {
            event.button.button = button;
            event.button.x = x;
            event.button.y = y;
        }
        SDL_PushEvent(&event);
    }

    static void pushWindowEvent(SDL_WindowEventID what) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = static_cast<Uint8>(what);
        SDL_PushEvent(&event);
    }

    /// SDL counts its windows up over the life of the process.
    static SDL_Window* openWindow() {
        SDL_Window* window = nullptr;
        for (Uint32 id = 1; window == nullptr && id < 1000; ++id) window = SDL_GetWindowFromID(id);
        return window;
    }

    std::unique_ptr<Window> window_;
    std::vector<Event> events_;
};

TEST_F(WindowTest, theMouseIsAFinger) {
    pushMouse(SDL_MOUSEMOTION, 5, 5);
    pushMouse(SDL_MOUSEBUTTONDOWN, 10, 20);
    pushMouse(SDL_MOUSEMOTION, 12, 24);
    pushMouse(SDL_MOUSEBUTTONUP, 12, 25);
    collect();
    const auto touches = all<Touch>();
    ASSERT_EQ(touches.size(), 3u) << "moving without a press is no touch";
    EXPECT_EQ(touches[0].phase, TouchPhase::Began);
    EXPECT_EQ(touches[0].point, (Point{10, 20}));
    EXPECT_EQ(touches[1].phase, TouchPhase::Moved);
    EXPECT_EQ(touches[2].phase, TouchPhase::Ended);
    EXPECT_EQ(touches[2].point, (Point{12, 25}));
    EXPECT_LE(touches[0].time, touches[2].time);
}

TEST_F(WindowTest, theRightButtonIsNoFinger) {
    pushMouse(SDL_MOUSEBUTTONDOWN, 10, 20, SDL_BUTTON_RIGHT);
    pushMouse(SDL_MOUSEBUTTONUP, 10, 20, SDL_BUTTON_RIGHT);
    collect();
    EXPECT_TRUE(all<Touch>().empty());
}

TEST_F(WindowTest, losingTheFocusCancelsTheTouch) {
    pushMouse(SDL_MOUSEBUTTONDOWN, 10, 20);
    pushWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    pushMouse(SDL_MOUSEBUTTONUP, 10, 20);
    collect();
    const auto touches = all<Touch>();
    ASSERT_EQ(touches.size(), 2u) << "a cancelled touch does not end once more";
    EXPECT_EQ(touches[1].phase, TouchPhase::Cancelled);
    ASSERT_EQ(all<FocusChanged>().size(), 1u);
    EXPECT_FALSE(all<FocusChanged>()[0].focused);
}

TEST_F(WindowTest, fingersAreToldApart) {
    for (const SDL_FingerID finger : {7, 8}) {
        SDL_Event event{};
        event.type = SDL_FINGERDOWN;
        event.tfinger.fingerId = finger;
        event.tfinger.x = 0.5f;
        event.tfinger.y = 0.25f;
        SDL_PushEvent(&event);
    }
    collect();
    const auto touches = all<Touch>();
    ASSERT_EQ(touches.size(), 2u);
    EXPECT_NE(touches[0].finger, touches[1].finger);
    EXPECT_EQ(touches[0].point, (Point{160, 142}));
}

TEST_F(WindowTest, aWheelTurnedTowardsThePersonMovesTheContentUp) {
    SDL_Event event{};
    event.type = SDL_MOUSEWHEEL;
    event.wheel.preciseY = -1;
    event.wheel.mouseX = 30;
    event.wheel.mouseY = 40;
    SDL_PushEvent(&event);
    collect();
    const auto scrolls = all<Scroll>();
    ASSERT_EQ(scrolls.size(), 1u);
    EXPECT_LT(scrolls[0].distance.y, 0);
    EXPECT_EQ(scrolls[0].point, (Point{30, 40}));
}

TEST_F(WindowTest, keysAndTextComeSeparately) {
    SDL_Event key{};
    key.type = SDL_KEYDOWN;
    key.key.keysym.sym = SDLK_f;
    key.key.keysym.mod = KMOD_LCTRL;
    SDL_PushEvent(&key);
    key.key.keysym.sym = SDLK_ESCAPE;
    key.key.keysym.mod = KMOD_NONE;
    SDL_PushEvent(&key);
    key.key.keysym.sym = SDLK_LSHIFT;
    SDL_PushEvent(&key);
    SDL_Event text{};
    text.type = SDL_TEXTINPUT;
    SDL_strlcpy(text.text.text, "ñ", sizeof text.text.text);
    SDL_PushEvent(&text);
    window_->beginTextInput({{0, 0}, {100, 20}});
    collect();
    const auto keys = all<Key>();
    ASSERT_EQ(keys.size(), 2u) << "Shift alone is no key";
    EXPECT_EQ(keys[0].character, U'f');
    EXPECT_TRUE(keys[0].control);
    EXPECT_EQ(keys[1].code, KeyCode::Escape);
    ASSERT_EQ(all<Text>().size(), 1u);
    EXPECT_EQ(all<Text>()[0].text, "ñ");
}

TEST_F(WindowTest, closingIsAQuit) {
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
    collect();
    EXPECT_EQ(all<Quit>().size(), 1u);
}

TEST_F(WindowTest, aLargerWindowShowsTheScreenLargerAndCentred) {
    SDL_Window* window = openWindow();
    ASSERT_NE(window, nullptr);
    SDL_SetWindowSize(window, 1000, 1136);
    EXPECT_EQ(window_->scale(), 2);
    pushMouse(SDL_MOUSEBUTTONDOWN, 180 + 20, 40);
    pushMouse(SDL_MOUSEBUTTONUP, 180 + 20, 40);
    pushMouse(SDL_MOUSEBUTTONDOWN, 100, 40);  // beside the screen
    collect();
    ASSERT_FALSE(all<Resized>().empty());
    EXPECT_EQ(all<Resized>().back().scale, 2);
    ASSERT_EQ(all<Touch>().size(), 2u);
    EXPECT_EQ(all<Touch>()[0].point, (Point{10, 20}));
}

TEST_F(WindowTest, aPresentedPictureIsInTheWindowPixelByPixel) {
    const Image image({320, 568}, 1);
    Canvas canvas(image);
    canvas.fill(Rect{{}, image.size()}, Color::white());
    canvas.fill(Rect{{10, 10}, {1, 1}}, Color::fromHex(0x03445F));
    ASSERT_EQ(window_->present(image), "");
    const SDL_Surface* surface = SDL_GetWindowSurface(openWindow());
    ASSERT_NE(surface, nullptr);
    ASSERT_EQ(surface->format->BytesPerPixel, 4);
    const auto pixel = [&](int x, int y) {
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + y * surface->pitch;
        Uint8 red = 0, green = 0, blue = 0;
        SDL_GetRGB(reinterpret_cast<const Uint32*>(row)[x], surface->format, &red, &green, &blue);
        return (red << 16) | (green << 8) | blue;
    };
    EXPECT_EQ(pixel(10, 10), 0x03445F);
    EXPECT_EQ(pixel(11, 10), 0xFFFFFF);
}

TEST_F(WindowTest, anEmptyPictureIsRefused) { EXPECT_NE(window_->present(Image()), ""); }

TEST_F(WindowTest, aReadableDescriptorEndsTheWait) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread writer([&] { EXPECT_EQ(write(ends[1], "x", 1), 1); });
    const auto limit = std::chrono::steady_clock::now() + bound;
    std::vector<int> readable;
    const int watched[] = {ends[0]};
    while (readable.empty() && std::chrono::steady_clock::now() < limit) {
        readable = window_->wait([](const Event&) {}, bound, watched);
    }
    writer.join();
    EXPECT_EQ(readable, std::vector<int>{ends[0]});
    close(ends[0]);
    close(ends[1]);
}

TEST_F(WindowTest, aDescriptorIsNotWatchedAfterTheWait) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int watched[] = {ends[0]};
    for (int i = 0; i < 50; ++i) EXPECT_TRUE(window_->wait([](const Event&) {}, 1ms, watched).empty());
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_TRUE(window_->wait([](const Event&) {}, 0ms).empty());
    close(ends[0]);
    close(ends[1]);
}

TEST_F(WindowTest, wakingEndsTheWaitFromAnotherThread) {
    std::thread waker([this] { window_->wake(); });
    const auto before = std::chrono::steady_clock::now();
    window_->wait([](const Event&) {}, bound);
    waker.join();
    EXPECT_LT(std::chrono::steady_clock::now() - before, bound);
}

/// Takes the variables away that lead to a display, and brings them back.
class WindowWithoutADisplay : public ::testing::Test {
  protected:
    static constexpr const char* names[] = {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"};

    void SetUp() override {
        for (const char* name : names) {
            const char* value = getenv(name);
            kept_.push_back(value ? std::optional<std::string>(value) : std::nullopt);
            unsetenv(name);
        }
    }
    void TearDown() override {
        for (std::size_t i = 0; i < kept_.size(); ++i) {
            kept_[i] ? setenv(names[i], kept_[i]->c_str(), 1) : unsetenv(names[i]);
        }
    }

    std::vector<std::optional<std::string>> kept_;
};

TEST_F(WindowWithoutADisplay, saysSo) {
    const Result<std::unique_ptr<Window>> opened = Window::open({.title = "Test"});
    const char* driver = SDL_GetCurrentVideoDriver();
    if (opened && driver && std::string(driver) == "KMSDRM") GTEST_SKIP() << "this machine's console is a display";
    EXPECT_FALSE(opened);
    EXPECT_THAT(opened.error(), ::testing::HasSubstr("There is no display"));
}

TEST_F(WindowWithoutADisplay, saysSoWhereTheDisplayDoesNotAnswer) {
    setenv("DISPLAY", ":4711", 1);
    setenv("SDL_VIDEODRIVER", "x11", 1);
    const Result<std::unique_ptr<Window>> opened = Window::open({.title = "Test"});
    EXPECT_FALSE(opened);
    EXPECT_THAT(opened.error(), ::testing::HasSubstr("There is no display"));
}

TEST(WindowOptions, aScreenWithoutPointsIsRefused) {
    EXPECT_FALSE(Window::open({.title = "Test", .screen = {0, 568}}));
}

}  // namespace
}  // namespace graphics

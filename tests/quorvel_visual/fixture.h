// What the tests of the visual classes stand on: a window, a clock turned by hand, a fixed now in Berlin.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include "desktop/dispatch/clock.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/quorvel/visual/visual.h"
#include "desktop/uikit/application.h"
#include "tests/quorvel_visual/entry.h"

namespace quorvel::test {

using Texts = std::vector<std::string>;

/// Saturday, 21 November 2026, 15:00 in Berlin, and moments counted from there.
inline constexpr int now = 1795269600;
inline constexpr int minute = 60;
inline constexpr int hour = 60 * minute;
inline constexpr int day = 24 * hour;

class VisualTest : public testing::Test {
  protected:
    VisualTest() {
        registerVisualClasses();
        dispatch::Clock::useVirtual(100);
        uikit::setScreen({320, 568}, 2);
        uikit::Application::makeShared(objc::classOf<uikit::Application>());
        window_ = objc::Ref<uikit::Window>::make<"initWithFrame:">(uikit::Rect{{}, {320, 568}});
        window_->makeKeyAndVisible();
        icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone("Europe/Berlin"));
        sources().now = [this] { return now_; };
        sources().language = [this] { return language_; };
        sources().showsPictures = [] { return false; };
        sources().groupsByDay = [] { return false; };
        sources().picture = [](int) { return objc::Object{}; };
        sources().number = [](const std::string& number) { return number; };
        sources().text = [](const char* key) { return std::string(key); };
    }
    ~VisualTest() override {
        window_ = {};
        advance(1000);
        uikit::Application::forgetShared();
        resetSources();
        dispatch::Clock::useReal();
    }

    static void advance(double seconds) {
        dispatch::Clock::advanceTo(dispatch::Clock::now() + seconds);
        dispatch::fireTimersDue();
        dispatch::drainMainQueue();
        uikit::stepAnimations();
    }
    /// Runs the main queue until no thread works any more; false after ten seconds.
    static bool settle() {
        const double deadline = dispatch::steadyNow() + 10;
        while (!dispatch::idle()) {
            if (!dispatch::waitForWork(deadline) && dispatch::steadyNow() >= deadline) return false;
            dispatch::drainMainQueue();
        }
        return true;
    }

    uikit::Window* window() { return window_.get(); }

    std::int64_t now_ = now;
    std::string language_ = "en";

  private:
    objc::AutoreleasePool pool_;
    objc::Ref<uikit::Window> window_;
};

}  // namespace quorvel::test

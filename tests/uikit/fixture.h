// What every test of the toolkit stands on: a pool, a clock turned by hand, a window, and fingers.
#pragma once

#include <gtest/gtest.h>

#include "desktop/dispatch/clock.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/control.h"

namespace uikit::test {

/// A window of 320 by 568 points on a new application, with the clock standing at 100 seconds.
class ToolkitTest : public testing::Test {
  protected:
    ToolkitTest() {
        dispatch::Clock::useVirtual(100);
        setScreen({320, 568}, 2);
        Application::makeShared(objc::classOf<Application>());
        window_ = objc::Ref<Window>::make<"initWithFrame:">(Rect{{}, {320, 568}});
    }
    ~ToolkitTest() override {
        window_ = {};
        // What still moves ends here, so that no test sees the movements of another.
        advance(1000);
        Application::forgetShared();
        dispatch::Clock::useReal();
    }

    Window& window() { return *window_; }

    static void advance(double seconds) {
        dispatch::Clock::advanceTo(dispatch::Clock::now() + seconds);
        stepAnimations();
    }

    void touch(TouchPhase phase, Point point) { window_->deliver({phase, point, dispatch::Clock::now()}); }
    void tap(Point point) {
        touch(TouchPhase::Began, point);
        touch(TouchPhase::Ended, point);
    }

    template <class T = View>
    objc::Ref<T> add(Rect frame) {
        auto view = objc::Ref<T>::template make<"initWithFrame:">(frame);
        window_->addSubview(view);
        return view;
    }

  private:
    objc::AutoreleasePool pool_;
    objc::Ref<Window> window_;
};

/// A target that writes down what it is sent.
class Recorder : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestRecorder"};
    static void define(objc::ClassDefinition<Recorder>& definition) {
        definition.method<"pressed", &Recorder::pressed>()
            .method<"pressed:", &Recorder::pressedBy>()
            .method<"pressed:event:", &Recorder::pressedByWith>();
    }

    void pressed() { heard.push_back("pressed"); }
    void pressedBy(objc::Object sender) {
        heard.push_back("pressed:");
        lastSender = sender;
        if (onPressed) onPressed();
    }
    void pressedByWith(objc::Object sender, objc::Object event) {
        heard.push_back(event ? "pressed:event: with an event" : "pressed:event:");
        lastSender = sender;
    }
    objc::Object object() const { return objc::Object{self}; }

    std::vector<std::string> heard;
    objc::Object lastSender;
    std::function<void()> onPressed;
};

}  // namespace uikit::test

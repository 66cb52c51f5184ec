// PhoneApplication: the telephone application's delegate. It builds the window with its tabs.
#pragma once

#include "desktop/uikit/application.h"
#include "desktop/uikit/tab_bar_controller.h"

namespace phone {

class PhoneApplication : public uikit::Responder {
  public:
    using Super = uikit::Responder;
    static constexpr objc::Name className{"PhoneApplication"};
    static void define(objc::ClassDefinition<PhoneApplication>& definition);

    void applicationDidFinishLaunching(objc::Object application);
    void applicationDidEnterBackground(objc::Object application);

    uikit::Window* window() const { return window_; }
    uikit::TabBarController* tabs() const { return tabs_; }

  private:
    objc::Ref<uikit::Window> window_;
    objc::Ref<uikit::TabBarController> tabs_;
};

/// The tab that the application starts with, and the one beside it.
inline constexpr unsigned long recentsTab = 0;
inline constexpr unsigned long keypadTab = 1;

/// The running application's delegate; null before launch.
PhoneApplication* phoneApplication();

}  // namespace phone

// UIApplication, UIWindow and UIScreen: the program, the screen that it fills, and how the main loop drives them.
#pragma once

#include <functional>

#include "desktop/uikit/view_controller.h"

namespace uikit {

class Window : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UIWindow"};
    static void define(objc::ClassDefinition<Window>& definition);

    ViewController* rootViewController() const { return root_; }
    void setRootViewController(ViewController* controller);
    void makeKeyAndVisible();

    /// Delivers one touch to the view under it (or to the one that its Began went to). While user interaction is off,
    /// a touch goes nowhere.
    void deliver(const Touch& touch);
    void deliverWheel(Point point, Point delta);
    /// Lays out what needs it and draws everything, in points.
    void renderScreen(graphics::Canvas& canvas);
    void layoutSubviews() override;
    /// Overlays (alerts, sheets) stand in front of the root view, newest last.
    void addOverlay(View* view);

  private:
    objc::Ref<ViewController> root_;
    objc::Ref<View> touched_;
    objc::Ref<View> interceptor_;
};

/// UIScreen: `mainScreen`, `bounds`, `scale`. Its size is set before the application starts.
void setScreen(Size points, double scale);
Size screenSize();
double screenScale();

class Application : public Responder {
  public:
    using Super = Responder;
    static constexpr objc::Name className{"UIApplication"};
    static void define(objc::ClassDefinition<Application>& definition);

    static Application* shared();  // `sharedApplication`
    Window* keyWindow() const { return keyWindow_; }
    void setKeyWindow(Window* window) { keyWindow_ = window; }
    objc::Object delegate() const { return delegate_; }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    bool openURL(objc::Object url);  // an NSURL; answers whether somebody took it
    bool isNetworkActivityIndicatorVisible() const { return networkActivity_; }
    void setNetworkActivityIndicatorVisible(bool visible);
    long applicationState() const { return static_cast<long>(state_); }  // 0 active, 1 inactive, 2 background

    /// Makes the delegate of that class, sends `applicationDidFinishLaunching:` to it (or the form with options where
    /// it answers that).
    void launch(Class delegateClass);
    /// Tells delegate and observers, in the handset's order: `applicationDidEnterBackground:`, then
    /// "UIApplicationDidEnterBackgroundNotification"; the foreground the other way about.
    void enterBackground();
    void enterForeground();

    /// Who takes addresses: called with the address's text. Replaces the one before.
    void setUrlOpener(std::function<bool(const std::string&)> opener) { urlOpener_ = std::move(opener); }

  private:
    enum class State : long { Active, Inactive, Background };
    objc::Strong<> delegate_;
    objc::Ref<Window> keyWindow_;
    bool networkActivity_ = false;
    State state_ = State::Active;
    std::function<bool(const std::string&)> urlOpener_;
};

/// Registers every class of the toolkit; called once, when the library is loaded.
void registerToolkit();

}  // namespace uikit

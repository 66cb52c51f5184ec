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
    /// Overlays (alerts, sheets) stand in front of the root view and of presented screens, newest last, as large as
    /// the window. They leave by `removeFromSuperview`.
    void addOverlay(View* view);
    /// Puts a controller's view in front of the other controllers' views and behind the overlays.
    void addScreen(View* view);
    /// Ends the touch that is under way, as when another program comes to the front.
    void cancelTouch();

    void drawAbove(graphics::Canvas& canvas) override;
    /// Dark text or light text in the status bar, as the screen in front wants it.
    bool hasLightStatusBar();

    Window();
    ~Window() override;

  private:
    void begin(const Touch& touch);
    bool takeOver(const Touch& touch);

    objc::Ref<ViewController> root_;
    objc::Ref<View> touched_;
    bool takenOver_ = false;
    Touch last_;
};

/// The height of the status bar, which the window draws over the screen's top.
inline constexpr double statusBarHeight = 20;
/// What the status bar's clock says; the local time in hours and minutes until another is set. Empty brings that back.
void setStatusBarClock(std::function<std::string()> clock);
/// Whether something wants to be drawn since the last renderScreen(). Main thread.
bool displayNeeded();

/// UIScreen: `mainScreen`, `bounds`, `applicationFrame`, `scale`.
class Screen : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UIScreen"};
    static void define(objc::ClassDefinition<Screen>& definition);

    Rect bounds() const;
    Rect applicationFrame() const;
    double scale() const;
};

/// The screen's size is set before the application starts.
void setScreen(Size points, double scale);
Size screenSize();
double screenScale();

class Application : public Responder {
  public:
    using Super = Responder;
    static constexpr objc::Name className{"UIApplication"};
    static void define(objc::ClassDefinition<Application>& definition);

    /// `sharedApplication`: the one of makeShared(), or a plain UIApplication made now.
    static Application* shared();
    /// Makes the application, of UIApplication's class or of one below it, and replaces the one before.
    static Application* makeShared(Class applicationClass);
    /// Gives the shared application up, for tests.
    static void forgetShared();
    Window* keyWindow() const { return keyWindow_; }
    void setKeyWindow(Window* window) { keyWindow_ = window; }
    objc::Object delegate() const { return delegate_; }
    void setDelegate(objc::Object delegate) { delegate_ = objc::Strong<>(delegate); }
    bool openURL(objc::Object url);  // an NSURL; answers whether somebody took it
    bool canOpenURL(objc::Object url);
    bool isNetworkActivityIndicatorVisible() const { return networkActivity_; }
    void setNetworkActivityIndicatorVisible(bool visible);
    double networkActivityTurn() const { return networkTurn_; }
    long applicationState() const { return static_cast<long>(state_); }  // 0 active, 1 inactive, 2 background

    /// Makes the delegate of that class (none for null: the one that is set), sends `applicationDidFinishLaunching:` to
    /// it (or the form with options where it answers that), and then becomes active.
    void launch(Class delegateClass);
    /// Tells delegate and observers, in the handset's order: it resigns being active, then
    /// `applicationDidEnterBackground:`, then "UIApplicationDidEnterBackgroundNotification"; the foreground the other
    /// way about.
    void enterBackground();
    void enterForeground();

    /// Who takes addresses: called with the address's text. Replaces the one before.
    void setUrlOpener(std::function<bool(const std::string&)> opener) { urlOpener_ = std::move(opener); }

  private:
    void tell(SEL message, std::string_view notification);

    enum class State : long { Active, Inactive, Background };
    objc::Strong<> delegate_;
    objc::Ref<Window> keyWindow_;
    bool networkActivity_ = false;
    double networkTurn_ = 0;
    unsigned long networkRound_ = 0;
    State state_ = State::Active;
    std::function<bool(const std::string&)> urlOpener_;
};

/// Registers every class of the toolkit; called once, when the library is loaded.
void registerToolkit();

}  // namespace uikit

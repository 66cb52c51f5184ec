// UIApplication and UIScreen.
#include "desktop/uikit/application.h"

#include "desktop/uikit/text.h"

namespace uikit {
namespace {

Size screenPoints{320, 568};
double pixelsPerPoint = 2;

// Never destroyed: the process may end while objects of the runtime are no longer to be touched.
objc::Ref<Application>& sharedSlot() {
    static auto* slot = new objc::Ref<Application>();
    return *slot;
}

Application* sharedApplication(Class) { return Application::shared(); }

objc::Object mainScreen(Class cls) {
    static auto* screen = new objc::Strong<>(objc::make<objc::Object>(cls));
    return *screen;
}

}  // namespace

void setScreen(Size points, double scale) {
    screenPoints = points;
    pixelsPerPoint = scale;
}

Size screenSize() { return screenPoints; }

double screenScale() { return pixelsPerPoint; }

void Screen::define(objc::ClassDefinition<Screen>& definition) {
    definition.classMethod<"mainScreen", &mainScreen>();
    definition.method<"bounds", &Screen::bounds>()
        .method<"applicationFrame", &Screen::applicationFrame>()
        .method<"scale", &Screen::scale>();
}

Rect Screen::bounds() const { return {{}, screenPoints}; }

Rect Screen::applicationFrame() const { return bounds().inset(EdgeInsets{statusBarHeight, 0, 0, 0}); }

double Screen::scale() const { return pixelsPerPoint; }

void Application::define(objc::ClassDefinition<Application>& definition) {
    definition.classMethod<"sharedApplication", &sharedApplication>();
    definition.method<"keyWindow", &Application::keyWindow>()
        .method<"delegate", &Application::delegate>()
        .method<"setDelegate:", &Application::setDelegate>()
        .method<"openURL:", &Application::openURL>()
        .method<"canOpenURL:", &Application::canOpenURL>()
        .method<"isNetworkActivityIndicatorVisible", &Application::isNetworkActivityIndicatorVisible>()
        .method<"setNetworkActivityIndicatorVisible:", &Application::setNetworkActivityIndicatorVisible>()
        .method<"applicationState", &Application::applicationState>();
}

Application* Application::shared() {
    auto& slot = sharedSlot();
    return slot ? slot.get() : makeShared(objc::classOf<Application>());
}

Application* Application::makeShared(Class applicationClass) {
    sharedSlot() = objc::Ref<Application>::adopt(objc::make<objc::Object>(applicationClass));
    return sharedSlot();
}

void Application::forgetShared() { sharedSlot() = {}; }

bool Application::openURL(objc::Object url) {
    return url && urlOpener_ && urlOpener_(utf8(objc::send<"absoluteString", objc::Object>(url)));
}

bool Application::canOpenURL(objc::Object url) { return url && urlOpener_ && objc::send<"scheme", objc::Object>(url); }

void Application::setNetworkActivityIndicatorVisible(bool visible) {
    if (visible == networkActivity_) return;
    networkActivity_ = visible;
    if (keyWindow_) keyWindow_->setNeedsDisplay();
    if (!visible) return;
    const objc::Ref<Application> kept(this);
    const auto round = ++networkRound_;
    everyFrame(Motion::Endless, [kept, round](double seconds) {
        if (!kept->networkActivity_ || kept->networkRound_ != round) return false;
        kept->networkTurn_ += seconds;
        if (kept->keyWindow_) kept->keyWindow_->setNeedsDisplay();
        return true;
    });
}

void Application::tell(SEL message, std::string_view notification) {
    if (objc::respondsTo(delegate_, message)) objc::sendSelector(delegate_.get(), message, object());
    auto centre = objc::sendClass<"NSNotificationCenter", "defaultCenter", objc::Object>();
    objc::send<"postNotificationName:object:">(centre, nsString(notification), object());
}

void Application::launch(Class delegateClass) {
    if (delegateClass) delegate_ = objc::make<objc::Object>(delegateClass);
    const SEL withOptions = objc::selector<"application:didFinishLaunchingWithOptions:">();
    const SEL plain = objc::selector<"applicationDidFinishLaunching:">();
    if (objc::respondsTo(delegate_, withOptions)) {
        objc::sendSelector<bool>(delegate_.get(), withOptions, object(), objc::Object{});
    } else if (objc::respondsTo(delegate_, plain)) {
        objc::sendSelector(delegate_.get(), plain, object());
    }
    state_ = State::Active;
    tell(objc::selector<"applicationDidBecomeActive:">(), "UIApplicationDidBecomeActiveNotification");
}

void Application::enterBackground() {
    if (state_ == State::Background) return;
    if (keyWindow_) keyWindow_->cancelTouch();
    state_ = State::Inactive;
    tell(objc::selector<"applicationWillResignActive:">(), "UIApplicationWillResignActiveNotification");
    state_ = State::Background;
    tell(objc::selector<"applicationDidEnterBackground:">(), "UIApplicationDidEnterBackgroundNotification");
}

void Application::enterForeground() {
    if (state_ != State::Background) return;
    state_ = State::Inactive;
    tell(objc::selector<"applicationWillEnterForeground:">(), "UIApplicationWillEnterForegroundNotification");
    state_ = State::Active;
    tell(objc::selector<"applicationDidBecomeActive:">(), "UIApplicationDidBecomeActiveNotification");
}

}  // namespace uikit

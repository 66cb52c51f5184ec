// PhoneApplication: Recents and the keypad, side by side.
#include "desktop/phone/phone_application.h"

#include "desktop/phone/keypad_screen.h"
#include "desktop/phone/phone_text.h"
#include "desktop/phone/recents_screen.h"
#include "desktop/uikit/navigation_controller.h"

namespace phone {
namespace {

objc::Ref<uikit::ViewController> inNavigation(uikit::ViewController* root, const std::string& title,
                                              graphics::Symbol symbol) {
    auto navigation = objc::Ref<uikit::NavigationController>::make<"initWithRootViewController:">(root->object());
    const auto item = uikit::TabBarItem::make(title, symbol);
    navigation->setTabBarItem(objc::Object{item.self()});
    return objc::Ref<uikit::ViewController>(navigation.get());
}

}  // namespace

void PhoneApplication::define(objc::ClassDefinition<PhoneApplication>& definition) {
    definition.method<"applicationDidFinishLaunching:", &PhoneApplication::applicationDidFinishLaunching>()
        .method<"applicationDidEnterBackground:", &PhoneApplication::applicationDidEnterBackground>();
}

void PhoneApplication::applicationDidFinishLaunching(objc::Object) {
    window_ = objc::Ref<uikit::Window>::make<"initWithFrame:">(uikit::Rect{{0, 0}, uikit::screenSize()});
    window_->setTintColor(uikit::uiColor(uikit::palette::brand));
    auto recents = objc::Ref<RecentsScreen>::make();
    auto keypad = objc::Ref<KeypadScreen>::make();
    const auto screens = objc::sendClass<"NSMutableArray", "array", objc::Object>();
    objc::send<"addObject:">(screens, inNavigation(recents, phoneText("RECENTS"), graphics::Symbol::Recents)->object());
    objc::send<"addObject:">(screens, inNavigation(keypad, phoneText("KEYPAD"), graphics::Symbol::Keypad)->object());
    tabs_ = objc::Ref<uikit::TabBarController>::make();
    tabs_->setViewControllers(screens);
    window_->setRootViewController(tabs_);
    window_->makeKeyAndVisible();
}

void PhoneApplication::applicationDidEnterBackground(objc::Object) {}

PhoneApplication* phoneApplication() {
    return objc::peerIf<PhoneApplication>(uikit::Application::shared()->delegate());
}

}  // namespace phone

// The stand-ins.
#include "tests/messages/stand_ins.h"

#include <stdexcept>

#include "desktop/substrate/substrate.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/button.h"
#include "desktop/uikit/text.h"
#include "tests/plugin_image.h"

namespace standins {
namespace {

objc::Strong<>& shared(Class cls) {
    static std::vector<std::pair<Class, objc::Strong<>>> instances;
    for (auto& [known, instance] : instances)
        if (known == cls) return instance;
    instances.emplace_back(cls, objc::make<objc::Object>(cls));
    return instances.back().second;
}

class Settings : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVSettingsDataController"};
    static objc::Object sharedInstance(Class cls) { return shared(cls); }
    void reloadSettings() { events().push_back("reloadSettings"); }
    bool isReplaceRecentsOn() { return companion().replaceRecentsOn; }
    void setIsNeedToLoadData(bool need) {
        events().push_back("setIsNeedToLoadData:");
        companion().needToLoadData = need;
    }
    void setIsCallSettingsChanged(bool changed) {
        events().push_back("setIsCallSettingsChanged:");
        companion().settingsChanged = changed;
    }
    static void define(objc::ClassDefinition<Settings>& definition) {
        definition.classMethod<"sharedInstance", &Settings::sharedInstance>()
            .method<"reloadSettings", &Settings::reloadSettings>()
            .method<"isReplaceRecentsOn", &Settings::isReplaceRecentsOn>()
            .method<"setIsNeedToLoadData:", &Settings::setIsNeedToLoadData>()
            .method<"setIsCallSettingsChanged:", &Settings::setIsCallSettingsChanged>();
    }
};

class Calls : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVDataController"};
    static objc::Object sharedInstance(Class cls) { return shared(cls); }
    bool isAnyRecDeleted() { return companion().anyRecordDeleted; }
    std::int64_t allCallsCount() { return companion().allCallsCount; }
    static void define(objc::ClassDefinition<Calls>& definition) {
        definition.classMethod<"sharedInstance", &Calls::sharedInstance>()
            .method<"isAnyRecDeleted", &Calls::isAnyRecDeleted>()
            .method<"allCallsCount", &Calls::allCallsCount>();
    }
};

class Utilities : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QuorvelUtils"};
    static objc::Object localizedString(Class, objc::Object key) { return key; }
    static void define(objc::ClassDefinition<Utilities>& definition) {
        definition.classMethod<"getLocalizedString:", &Utilities::localizedString>();
    }
};

/// The indicator: its messages are read on the trace.
class Indicator : public uikit::View {
  public:
    using Super = uikit::View;
    static constexpr objc::Name className{"MBProgressHUD"};
    static objc::Object showAddedTo(Class cls, uikit::View* view, bool) {
        const auto made = objc::make<objc::Object>(cls);
        view->addSubview(objc::peerOf<uikit::View>(made.self()));
        return made;
    }
    void take(objc::Object) {}
    void setLabelText(objc::Object text) { label_ = text ? uikit::utf8(text) : std::string(); }
    void setOpacity(float opacity) { opacity_ = opacity; }
    void setMode(int) {}
    objc::Object delegate() { return objc::Object{delegate_}; }
    void setDelegate(objc::Object delegate) { delegate_ = delegate.self; }
    void showWhileExecuting(SEL selector, objc::Object, objc::Object, bool) {
        events().push_back(std::string("runs ") + sel_getName(selector));
    }
    void hide(bool) { events().push_back("hide " + label_); }
    void hideLater(bool, double seconds) {
        events().push_back("hide " + label_ + " after " + std::to_string(int(seconds)));
    }
    static void define(objc::ClassDefinition<Indicator>& definition) {
        definition.classMethod<"showHUDAddedTo:animated:", &Indicator::showAddedTo>()
            .method<"setColor:", &Indicator::take>()
            .method<"setLabelColor:", &Indicator::take>()
            .method<"setDetailsLabelColor:", &Indicator::take>()
            .method<"setLabelText:", &Indicator::setLabelText>()
            .method<"setDetailsLabelText:", &Indicator::take>()
            .method<"setDelegate:", &Indicator::setDelegate>()
            .method<"delegate", &Indicator::delegate>()
            .method<"setMode:", &Indicator::setMode>()
            .method<"setOpacity:", &Indicator::setOpacity>()
            .method<"setActivityIndicatorTintColor:", &Indicator::take>()
            .method<"showWhileExecuting:onTarget:withObject:animated:", &Indicator::showWhileExecuting>()
            .method<"hide:", &Indicator::hide>()
            .method<"hide:afterDelay:", &Indicator::hideLater>();
    }

  private:
    float opacity_ = 0;
    std::string label_;
    id delegate_ = nullptr;
};

class Application : public uikit::Responder {
  public:
    using Super = uikit::Responder;
    static constexpr objc::Name className{"PhoneApplication"};
    void didEnterBackground(objc::Object) { events().push_back("host applicationDidEnterBackground:"); }
    void didFinishLaunching(objc::Object) { events().push_back("host applicationDidFinishLaunching:"); }
    static void define(objc::ClassDefinition<Application>& definition) {
        definition.method<"applicationDidEnterBackground:", &Application::didEnterBackground>()
            .method<"applicationDidFinishLaunching:", &Application::didFinishLaunching>();
    }
};

class Recents : public uikit::ViewController {
  public:
    using Super = uikit::ViewController;
    static constexpr objc::Name className{"PHRecentsViewController"};
    long numberOfRows(objc::Object, long section) { return 70 + section; }
    objc::Object cellForRow(objc::Object, objc::Object path) { return path; }
    void willDisplay(objc::Object, objc::Object, objc::Object) { events().push_back("host willDisplay"); }
    bool canEdit(objc::Object, objc::Object) { return true; }
    void willBeginEditing(objc::Object, objc::Object) { events().push_back("host willBeginEditing"); }
    void didEndEditing(objc::Object, objc::Object) { events().push_back("host didEndEditing"); }
    void commit(objc::Object, long style, objc::Object) { events().push_back("host commit " + std::to_string(style)); }
    double height(objc::Object, objc::Object) { return 61.5; }
    void updateBar() { events().push_back("host _updateNavBarButtons"); }
    static void define(objc::ClassDefinition<Recents>& definition) {
        definition.method<"tableView:numberOfRowsInSection:", &Recents::numberOfRows>()
            .method<"tableView:cellForRowAtIndexPath:", &Recents::cellForRow>()
            .method<"tableView:willDisplayCell:forRowAtIndexPath:", &Recents::willDisplay>()
            .method<"tableView:canEditRowAtIndexPath:", &Recents::canEdit>()
            .method<"tableView:willBeginEditingRowAtIndexPath:", &Recents::willBeginEditing>()
            .method<"tableView:didEndEditingRowAtIndexPath:", &Recents::didEndEditing>()
            .method<"tableView:commitEditingStyle:forRowAtIndexPath:", &Recents::commit>()
            .method<"tableView:heightForRowAtIndexPath:", &Recents::height>()
            .method<"_updateNavBarButtons", &Recents::updateBar>();
    }
};

objc::Object colorWithHex(Class, long hex) {
    events().push_back("colorWithHex:" + std::to_string(hex));
    return uikit::uiColor(uikit::Color::fromHex(static_cast<std::uint32_t>(hex)));
}

void registerAll() {
    objc::registerClasses<Settings, Calls, Utilities, Indicator, Application, Recents>();
    objc::addMethod<"colorWithHex:", &colorWithHex>(object_getClass(objc::raw(objc::classNamed<"UIColor">())));
    if (const auto error = substrate::loadPlugin(pluginImage())) throw std::runtime_error(*error);
    auto* application = uikit::Application::shared();
    static const auto window = objc::Ref<uikit::Window>::make<"initWithFrame:">(uikit::Rect{{0, 0}, {320, 568}});
    application->setKeyWindow(window);
}

}  // namespace

std::vector<std::string>& events() {
    static std::vector<std::string> recorded;
    return recorded;
}

Companion& companion() {
    static Companion one;
    return one;
}

void prepare() {
    static const bool once = (registerAll(), true);
    companion() = once ? Companion{} : companion();
    uikit::Application::shared()->keyWindow()->setUserInteractionEnabled(true);
    events().clear();
}

objc::Strong<PhoneApplication> makeApplication() {
    return objc::make<PhoneApplication>(objc::classNamed<"PhoneApplication">());
}

objc::Strong<PHRecentsViewController> makeRecentsScreen() {
    return objc::make<PHRecentsViewController>(objc::classNamed<"PHRecentsViewController">());
}

bool windowTakesTouches() { return uikit::Application::shared()->keyWindow()->isUserInteractionEnabled(); }

}  // namespace standins

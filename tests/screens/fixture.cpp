// The fixture.
#include "tests/screens/fixture.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "desktop/dispatch/clock.h"
#include "desktop/notify/notify.h"
#include "desktop/phone/keypad_screen.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/phone_application.h"
#include "desktop/phone/recents_screen.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/quorvel/services/companion.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "desktop/substrate/substrate.h"
#include "desktop/substrate/trace.h"
#include "platform/corefoundation.h"
#include "tests/plugin_image.h"

namespace screens {
namespace {

/// How often the plug-in has told other processes that a call was deleted.
int deletionsHeard = 0;
void hearDeletion(void*, void*, const void*, const void*, const void*) { ++deletionsHeard; }

void bringUpOnce() {
    static const bool once = [] {
        setenv("TZ", "UTC", 1);
        setenv("LC_ALL", "en_US.UTF-8", 1);
        tzset();
        dispatch::Clock::useVirtual(100);
        uikit::setHandsetRoot(HANDSET_ROOT);
        uikit::setScreen({320, 568}, 2);
        objc::registerClasses<phone::PhoneApplication, phone::RecentsScreen, phone::KeypadScreen>();
        if (const auto trouble = substrate::loadPlugin(pluginImage())) throw std::runtime_error(*trouble);
        darwin::observe(ns("QuorvelCallRecordDeletedNotification"), hearDeletion,
                        darwin::Suspension::DeliverImmediately);
        return true;
    }();
    static_cast<void>(once);
}

std::filesystem::path newFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "screens-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
    return name;
}

quorvel::DataDirectory open(const std::filesystem::path& folder) {
    auto opened = quorvel::DataDirectory::open(folder);
    if (auto* trouble = std::get_if<std::string>(&opened)) throw std::runtime_error(*trouble);
    return std::get<quorvel::DataDirectory>(std::move(opened));
}

}  // namespace

ScreenTest::ScreenTest() : folder_(newFolder()) {
    const auto directory = open(folder_);
    static const auto rendezvous = newFolder();
    if (const auto trouble = notify::openRendezvous(rendezvous)) throw std::runtime_error(trouble->text);
    bringUpOnce();
    if (const auto trouble = quorvel::openCompanion(directory, TEXTS_FOLDER)) throw std::runtime_error(*trouble);
    deletionsHeard = 0;
    settings().reloadSettings();
    settings().setIsNeedToLoadData(false);
    settings().setIsCallSettingsChanged(false);
    phone::setHostCallLog(
        {[](bool, std::size_t) { return std::vector<phone::HostCall>(); }, [](std::int64_t) { return false; }});
}

ScreenTest::~ScreenTest() {
    substrate::trace::end();
    settle();
    uikit::Application::forgetShared();
    quorvel::closeCompanion();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void ScreenTest::fill(const std::vector<Call>& calls) {
    for (const auto& call : calls) {
        quorvel::store::NewCall written;
        written.address = call.address;
        written.date = call.date;
        written.duration = call.duration;
        written.flags = call.flags;
        written.contactId = call.contact;
        written.name = call.name;
        const auto stored = quorvel::callStore()->append(written);
        if (!stored) throw std::runtime_error(stored.error().message);
    }
}

void ScreenTest::setSetting(const char* key, const char* value) {
    quorvel::SettingsStore stored(open(folder_).settings());
    ASSERT_EQ(stored.load(), std::nullopt);
    ASSERT_EQ(stored.set(key, value), std::nullopt);
    settings().reloadSettings();
}

void ScreenTest::start() {
    auto* application = uikit::Application::makeShared(objc::classOf<uikit::Application>());
    application->launch(objc::classOf<phone::PhoneApplication>());
    settle();
}

void ScreenTest::settle() { EXPECT_EQ(phone::settle(), std::nullopt); }

UINavigationController ScreenTest::navigation() const {
    return objc::as<UINavigationController>(phone::frontNavigation()->object());
}

std::vector<std::string> ScreenTest::stack() const {
    std::vector<std::string> names;
    auto controllers = navigation().viewControllers();
    for (NSUInteger i = 0; i < controllers.count(); ++i)
        names.emplace_back(object_getClassName(controllers.objectAtIndex(i).self));
    return names;
}

int ScreenTest::deletionsAnnounced() {
    settle();
    return std::exchange(deletionsHeard, 0);
}

void ScreenTest::denyAddressBook() {
    const auto contacts = open(folder_).contacts();
    std::filesystem::create_directories(contacts);
    std::ofstream(contacts / "denied") << "";
}

void ScreenTest::closeDatabase() { quorvel::closeCompanion(); }

std::vector<std::string> ScreenTest::log() const {
    std::vector<std::string> lines;
    const auto page =
        quorvel::callStore()->page(quorvel::store::Filter::all, {}, quorvel::store::Cursor::top(), 1'000'000);
    if (!page) throw std::runtime_error(page.error().message);
    for (const auto& call : (*page).rows)
        lines.push_back(call.address + ' ' + std::to_string((call.date - noon) / day) + ' ' +
                        std::to_string(call.flags) + ' ' + std::to_string(call.duration));
    return lines;
}

void ScreenTest::trace(const std::vector<std::string>& classes) {
    lines_.clear();
    ASSERT_EQ(substrate::trace::begin(
                  classes,
                  [this](const std::string& line) {
                      const auto space = line.find(' ');
                      auto message = line.substr(space + 1);
                      message.erase(message.find(']'), 1);
                      lines_.push_back(std::move(message));
                  },
                  substrate::trace::Ownership::leftOut),
              std::nullopt);
}

std::vector<std::string> ScreenTest::traced() {
    substrate::trace::end();
    return lines_;
}

}  // namespace screens

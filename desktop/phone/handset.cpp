// One handset brought up.
#include "desktop/phone/handset.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <filesystem>

#include "desktop/addressbook/names.h"
#include "desktop/addressbookui/sharing.h"
#include "desktop/dispatch/clock.h"
#include "desktop/notify/notify.h"
#include "desktop/phone/calling_screen.h"
#include "desktop/phone/first_start.h"
#include "desktop/phone/host_call_log.h"
#include "desktop/phone/keypad_screen.h"
#include "desktop/phone/opened_address.h"
#include "desktop/phone/phone_application.h"
#include "desktop/phone/recents_screen.h"
#include "desktop/phone/show.h"
#include "desktop/phone/url_opening.h"
#include "desktop/quorvel/services/companion.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "desktop/substrate/handset_files.h"
#include "desktop/substrate/substrate.h"
#include "desktop/substrate/trace.h"
#include "desktop/uikit/color.h"

namespace phone {
namespace {

constexpr const char* bundleIdentifier = "com.apple.mobilephone";
std::filesystem::path settingsFile;

std::filesystem::path handsetRoot() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() / "root";
}

HostCallLog callLogOfStore() {
    using quorvel::store::Filter;
    return {[](bool missedOnly, std::size_t limit) {
                std::vector<HostCall> calls;
                auto* log = quorvel::DataService::shared()->store();
                const auto page = log->page(missedOnly ? Filter::missed : Filter::all, {},
                                            quorvel::store::Cursor::top(), static_cast<std::int64_t>(limit));
                if (!page) return calls;
                for (const auto& record : (*page).rows)
                    calls.push_back({record.rowId, record.address, record.name, record.label, record.date,
                                     quorvel::store::isOutgoing(record.flags),
                                     quorvel::store::isMissed(record.flags, record.duration)});
                return calls;
            },
            [](std::int64_t rowId) {
                return quorvel::DataService::shared()->store()->deleteCalls({&rowId, 1}).ok();
            }};
}

/// The main bundle's texts are in the language of the product's.
void speak(const std::string& language) {
    const auto languages = objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(
        uikit::nsString(std::string_view(language).substr(0, 2)));
    objc::sendClass<"NSUserDefaults", "setUserLanguages:">(languages);
}

std::optional<std::string> loadPlugins(const Options& options) {
    if (!options.plugin) return std::nullopt;
    if (!options.pluginImage.empty()) return substrate::loadPlugin(options.pluginImage);
    substrate::loadPlugins(handsetRoot() / "Library/MobileSubstrate/DynamicLibraries", bundleIdentifier, reportLine);
    return std::nullopt;
}

}  // namespace

int callersError() {
    static const int duplicate = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    return duplicate;
}

void reportLine(const std::string& line) { dprintf(callersError(), "%s\n", line.c_str()); }

std::optional<std::string> startHandset(const Options& options, double scale) {
    callersError();
    auto opened = quorvel::DataDirectory::open(options.dataDirectory);
    if (auto* trouble = std::get_if<std::string>(&opened)) return *trouble;
    const auto& directory = std::get<quorvel::DataDirectory>(opened);
    settingsFile = directory.settings();
    const bool isUsersOwn = options.dataDirectory.empty();
    if (isUsersOwn)
        if (const auto trouble = noteFirstStart(directory)) reportLine(*trouble);
    addressbookui::setShareFolder(directory.shared());
    uikit::setHandsetRoot(handsetRoot().string());
    substrate::setTemporaryFolder(directory.temporaryFiles());
    uikit::setScreen({320, 568}, scale);
    if (const auto failure = notify::openRendezvous(directory.notifications())) return failure->text;
    if (auto trouble = quorvel::openCompanion(directory, handsetRoot() / "Applications/Quorvel.app")) return trouble;
    speak(contacts::language());
    if (isUsersOwn)
        if (const auto trouble =
                finishFirstStart(directory, *quorvel::DataService::shared()->store(), std::time(nullptr)))
            reportLine(*trouble);
    setHostCallLog(callLogOfStore());
    objc::registerClasses<PhoneApplication, RecentsScreen, KeypadScreen, CallingScreen>();
    if (auto trouble = loadPlugins(options)) return trouble;
    substrate::trace::describe("hideHUD:afterDelay:", "v@:Cd");
    auto* application = uikit::Application::makeShared(objc::classOf<uikit::Application>());
    application->setUrlOpener([openUrls = options.openUrls](const std::string& address) {
        // A withheld number is an empty one: there is nobody to call.
        if (!reachesSomebody(address)) return false;
        noteUrl(address);
        return takeAddress(address, openUrls);
    });
    application->launch(objc::classOf<PhoneApplication>());
    return std::nullopt;
}

graphics::Image renderScreen(double scale) {
    graphics::Image image(uikit::screenSize(), scale);
    graphics::Canvas canvas(image);
    if (auto* window = uikit::Application::shared()->keyWindow()) window->renderScreen(canvas);
    return image;
}

std::string writePicture(const std::string& file, double scale) { return renderScreen(scale).writePng(file); }

std::string writeSetting(const std::string& key, const std::string& value) {
    quorvel::SettingsStore settings(settingsFile);
    if (auto trouble = settings.load()) return *trouble;
    return settings.set(key, value).value_or("");
}

}  // namespace phone

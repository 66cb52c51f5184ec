// Bringing the handset up, and changing its log.
#include "bench/recents/handset.h"

#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>

#include "bench/store/sized_log.h"
#include "desktop/dispatch/clock.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/notify/notify.h"
#include "desktop/phone/keypad_screen.h"
#include "desktop/phone/main_loop.h"
#include "desktop/phone/phone_application.h"
#include "desktop/phone/recents_screen.h"
#include "desktop/phone/screen_probe.h"
#include "desktop/quorvel/services/companion.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/substrate/substrate.h"
#include "plugin/companion/settings.h"

namespace bench {
namespace {

using quorvel::store::valueOf;

void orThrow(const std::optional<std::string>& trouble) {
    if (trouble) throw std::runtime_error(*trouble);
}

struct Log {
    std::int64_t calls;
    Callers callers;
    auto operator<=>(const Log&) const = default;
};

/// A data directory with that log, filled once.
quorvel::DataDirectory directoryOf(const Log& log) {
    static std::map<Log, quorvel::store::Folder> folders;
    const auto [folder, isNew] = folders.try_emplace(log);
    auto opened = quorvel::DataDirectory::open(folder->second.file("data"));
    if (auto* trouble = std::get_if<std::string>(&opened)) throw std::runtime_error(*trouble);
    auto directory = std::get<quorvel::DataDirectory>(std::move(opened));
    if (isNew) {
        auto store = valueOf(quorvel::store::CallStore::open(directory.calls()));
        auto session = valueOf(store.beginImport());
        for (auto& call : quorvel::store::makeCalls(log.calls)) {
            if (log.callers == Callers::one) {
                call.address = "+493012345678";
                call.contactId = quorvel::store::noContact;
                call.name.clear();
            }
            valueOf(session.add(call));
        }
        valueOf(session.finish());
    }
    return directory;
}

void open(const Log& log) { orThrow(quorvel::openCompanion(directoryOf(log), TEXTS_FOLDER)); }

void launch() {
    setenv("TZ", "UTC", 1);
    setenv("LC_ALL", "en_US.UTF-8", 1);
    tzset();
    static const quorvel::store::Folder rendezvous;
    if (const auto trouble = notify::openRendezvous(rendezvous.file("."))) throw std::runtime_error(trouble->text);
    constexpr double clockStart = 100;
    dispatch::Clock::useVirtual(clockStart);
    uikit::setHandsetRoot(HANDSET_ROOT);
    uikit::setScreen({320, 568}, 2);
    objc::registerClasses<phone::PhoneApplication, phone::RecentsScreen, phone::KeypadScreen>();
    orThrow(substrate::loadPlugin(PLUGIN_IMAGE));
    phone::setHostCallLog(
        {[](bool, std::size_t) { return std::vector<phone::HostCall>(); }, [](std::int64_t) { return false; }});
    uikit::Application::makeShared(objc::classOf<uikit::Application>())
        ->launch(objc::classOf<phone::PhoneApplication>());
}

}  // namespace

std::filesystem::path logOf(std::int64_t calls, Callers callers) { return directoryOf({calls, callers}).calls(); }

UIViewController recentsOn(std::int64_t calls, Callers callers) {
    static std::optional<Log> present;
    const Log log{calls, callers};
    if (present == log) {
        forgetLists();
    } else if (!present) {
        open(log);
        launch();
    } else {
        quorvel::closeCompanion();
        open(log);
        forgetLists();
    }
    present = log;
    const auto recents = objc::as<UIViewController>(phone::frontScreen()->object());
    objc::send<"viewAppearedAction">(recents);
    orThrow(phone::settle());
    return recents;
}

void forgetLists() { QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true); }

void loadMoreTo(UIViewController recents, std::int64_t rows) {
    while (loadedEntries() < rows) {
        const objc::AutoreleasePool pool;
        objc::send<"loadMoreRecordsAction">(recents);
    }
}

void drain() {
    while (dispatch::drainMainQueue() > 0) continue;
}

void type(const char* text) {
    phone::frontSearch()->setActive(true);
    phone::frontSearch()->searchBar()->type(text);
    orThrow(phone::settle());
}

void endSearch() {
    phone::frontSearch()->setActive(false);
    orThrow(phone::settle());
}

std::int64_t loadedEntries() { return static_cast<std::int64_t>(service().callList().count()); }

}  // namespace bench

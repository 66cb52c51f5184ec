// Bringing the handset up, and changing its log.
#include "bench/recents/handset.h"

#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>

#include "bench/store/bare_deletion.h"
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

quorvel::DataDirectory directoryIn(const quorvel::store::Folder& folder) {
    auto opened = quorvel::DataDirectory::open(folder.file("data"));
    if (auto* trouble = std::get_if<std::string>(&opened)) throw std::runtime_error(*trouble);
    return std::get<quorvel::DataDirectory>(std::move(opened));
}

/// A data directory with that log, filled once.
quorvel::DataDirectory directoryOf(const Log& log) {
    static std::map<Log, quorvel::store::Folder> folders;
    const auto [folder, isNew] = folders.try_emplace(log);
    auto directory = directoryIn(folder->second);
    if (isNew) {
        auto store = valueOf(quorvel::store::CallStore::open(directory.calls()));
        auto session = valueOf(store.beginImport());
        std::int64_t at = 0;
        for (auto& call : quorvel::store::makeCalls(log.calls)) {
            if (log.callers == Callers::one || (log.callers == Callers::oneInTen && at++ % 10 == 0)) {
                call.address = theNumber;
                call.contactId = quorvel::store::noContact;
                call.name.clear();
            }
            valueOf(session.add(call));
        }
        valueOf(session.finish());
    }
    return directory;
}

/// A data directory with a copy of that log. It lasts until the next one is made.
quorvel::DataDirectory directoryOfACopy(std::int64_t calls) {
    static std::optional<quorvel::store::Folder> folder;
    folder.emplace();
    auto directory = directoryIn(*folder);
    quorvel::store::copyLog(calls, directory.calls());
    return directory;
}

void open(const quorvel::DataDirectory& directory) { orThrow(quorvel::openCompanion(directory, TEXTS_FOLDER)); }

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

/// The log that is open, where one is that others may meet again.
std::optional<Log> present;

/// The Recents screen, appearing with the first page of what the companion has open, whatever was shown before.
UIViewController appear() {
    const auto recents = objc::as<UIViewController>(phone::frontScreen()->object());
    switchTo(recents, Filter::All);
    objc::send<"viewAppearedAction">(recents);
    orThrow(phone::settle());
    return recents;
}

UIViewController appearOn(const quorvel::DataDirectory& directory) {
    static bool isLaunched = false;
    quorvel::closeCompanion();
    open(directory);
    if (!isLaunched) launch();
    isLaunched = true;
    forgetLists();
    return appear();
}

}  // namespace

std::filesystem::path logOf(std::int64_t calls, Callers callers) { return directoryOf({calls, callers}).calls(); }

UIViewController recentsOn(std::int64_t calls, Callers callers) {
    const Log log{calls, callers};
    if (present == log) {
        forgetLists();
        return appear();
    }
    present = log;
    return appearOn(directoryOf(log));
}

UIViewController recentsOnACopy(std::int64_t calls) {
    present.reset();
    return appearOn(directoryOfACopy(calls));
}

void forgetLists() { QVSettingsDataController::sharedInstance().setIsNeedToLoadData(true); }

void loadMoreTo(UIViewController recents, std::int64_t rows, Filter filter) {
    const auto loaded = [&] { return static_cast<std::int64_t>(listOfFilter(service(), filter, false).count()); };
    while (loaded() < rows) {
        const objc::AutoreleasePool pool;
        objc::send<"loadMoreRecordsAction">(recents);
    }
}

void switchTo(UIViewController recents, Filter filter) {
    if (phone::titleSegments()->selectedSegmentIndex() == static_cast<long>(filter) - 1) return;
    auto* segments = phone::titleSegments();
    segments->setSelectedSegmentIndex(static_cast<long>(filter) - 1);
    objc::send<"segmentAction:">(recents, segments->object());
    orThrow(phone::settle());
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

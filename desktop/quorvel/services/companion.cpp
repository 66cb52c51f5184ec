// The companion's classes, and its opening.
#include "desktop/quorvel/services/companion.h"

#include <cstdio>

#include "desktop/addressbook/names.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/log_opening.h"
#include "desktop/quorvel/services/plural_format.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/quorvel/services/utilities.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/quorvel/visual/visual.h"
#include "platform/dispatch.h"
#include "platform/foundation.h"

namespace quorvel {
namespace {

[[gnu::constructor]] void registerAtLoad() {
    const objc::AutoreleasePool pool;
    objc::registerClasses<CallArray, CallEntry, DataService, SettingsService, Utilities>();
    registerPluralFormat();
    registerVisualClasses();
}

void say(const std::string& sentence) { std::fprintf(stderr, "%s\n", sentence.c_str()); }

}  // namespace

std::optional<std::string> openCompanion(const DataDirectory& directory, const std::filesystem::path& textsFolder) {
    auto opened = openCalls(directory);
    if (!opened) return opened.error().message;
    DataService::shared()->setStore(std::make_unique<store::CallStore>(std::move(*opened)));
    SettingsService::shared()->setFile(directory.settings());
    SettingsService::shared()->reloadSettings();
    for (const auto& sentence : Texts::shared().open(textsFolder, SettingsService::shared()->language())) say(sentence);
    sources().language = [] { return Texts::shared().language(); };
    contacts::setLanguage(Texts::shared().language());
    openContacts(directory.contacts());
    return std::nullopt;
}

void closeCompanion() {
    closeContacts();
    DataService::shared()->setStore(nullptr);
}

store::CallStore* callStore() { return DataService::shared()->store(); }

store::Result<std::int64_t> recordCall(const store::NewCall& call) {
    store::CallStore* calls = callStore();
    if (!calls) return store::Error{store::ErrorKind::failed, "The call was not stored: no log of calls is open."};
    store::NewCall named = call;
    if (const auto caller = named.contactId == store::noContact ? callerOf(call.address) : std::nullopt) {
        named.contactId = caller->record;
        named.name = caller->name;
        named.label = caller->label;
    }
    auto stored = calls->append(named);
    if (!stored) return stored;
    dispatch::asyncOnMain([] {
        objc::send<"postNotificationName:object:">(NSNotificationCenter::defaultCenter(),
                                                   text<"com.velmarin.QuorvelNewRecordAddedNotification">(),
                                                   objc::Object{});
    });
    return stored;
}

}  // namespace quorvel

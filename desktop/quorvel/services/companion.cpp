// The companion's classes, and its opening.
#include "desktop/quorvel/services/companion.h"

#include <cstdio>

#include "desktop/quorvel/services/data_service.h"
#include "desktop/quorvel/services/settings_service.h"
#include "desktop/quorvel/services/utilities.h"
#include "desktop/quorvel/visual/visual.h"

namespace quorvel {
namespace {

[[gnu::constructor]] void registerAtLoad() {
    objc::registerClasses<CallArray, CallEntry, DataService, SettingsService, Utilities>();
    registerVisualClasses();
}

}  // namespace

std::optional<std::string> openCompanion(const DataDirectory& directory, const std::filesystem::path& textsFolder) {
    auto opened = store::CallStore::open(directory.calls());
    if (!opened && opened.error().kind == store::ErrorKind::damaged) {
        std::fprintf(stderr, "%s\n", opened.error().message.c_str());
        const auto aside = store::CallStore::setAside(directory.calls());
        if (!aside) return aside.error().message;
        std::fprintf(stderr, "It was kept as %s, and a new log was begun.\n", (*aside).c_str());
        opened = store::CallStore::open(directory.calls());
    }
    if (!opened) return opened.error().message;
    DataService::shared()->setStore(std::make_unique<store::CallStore>(std::move(*opened)));
    SettingsService::shared()->setFile(directory.settings());
    SettingsService::shared()->reloadSettings();
    setTexts(textsFolder, {});
    setContactPictures(directory.contacts());
    return std::nullopt;
}

}  // namespace quorvel

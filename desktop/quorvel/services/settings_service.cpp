// QVSettingsDataController.
#include "desktop/quorvel/services/settings_service.h"

#include <cstdio>

#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/phone_number.h"
#include "desktop/quorvel/services/texts.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "desktop/uikit/text.h"

namespace quorvel {

void SettingsService::define(objc::ClassDefinition<SettingsService>& definition) {
    using Self = SettingsService;
    definition.classMethod<"sharedInstance", &Self::sharedInstance>()
        .method<"reloadSettings", &Self::reloadSettings>()
        .method<"isReplaceRecentsOn", &Self::isOn<"isReplaceRecentsOn">>()
        .method<"minRec_Call", &Self::pageSize>()
        .method<"isGroupByDate", &Self::isOn<"isGroupByDate">>()
        .method<"isGroupContacts_Call", &Self::isOn<"isGroupContacts_Call">>()
        .method<"isEnableCallSearch", &Self::isOn<"isEnableCallSearch">>()
        .method<"isShowHeader_Call", &Self::isOn<"isShowHeader_Call">>()
        .method<"isShowFooter_Call", &Self::isOn<"isShowFooter_Call">>()
        .method<"isShowContactImage", &Self::isOn<"isShowContactImage">>()
        .method<"isCallOnTap_Call", &Self::isOn<"isCallOnTap_Call">>()
        .method<"isFaceTimeEnabled", &Self::isOn<"isFaceTimeEnabled">>()
        .method<"isNeedToLoadData", &Self::isNeedToLoadData>()
        .method<"setIsNeedToLoadData:", &Self::setIsNeedToLoadData>()
        .method<"isCallSettingsChanged", &Self::isCallSettingsChanged>()
        .method<"setIsCallSettingsChanged:", &Self::setIsCallSettingsChanged>();
}

SettingsService* SettingsService::shared() {
    static const auto one = objc::Ref<SettingsService>::make();
    return one;
}

objc::Object SettingsService::sharedInstance(Class) { return objc::Object{shared()->self}; }

void SettingsService::setFile(std::filesystem::path file) {
    const std::lock_guard lock(mutex_);
    file_ = std::move(file);
}

void SettingsService::reloadSettings() {
    const objc::AutoreleasePool pool;
    const std::lock_guard lock(mutex_);
    SettingsStore stored(file_);
    if (const auto trouble = stored.load()) std::fprintf(stderr, "%s\n", trouble->c_str());
    for (const auto& setting : settingDescriptions()) values_[setting.key] = stored.value(setting.key);
    language_ = stored.text("language");
    const std::string chosen = stored.text("region");
    const std::string region = chosen.empty() ? regionOf(localeLanguage()) : chosen;
    if (region == homeRegion()) return;
    setHomeRegion(region);
    followContacts();
}

std::string SettingsService::language() const {
    const std::lock_guard lock(mutex_);
    return language_;
}

std::int64_t SettingsService::value(const char* key) const {
    const std::lock_guard lock(mutex_);
    if (const auto found = values_.find(std::string_view(key)); found != values_.end()) return found->second;
    const auto* setting = describeSetting(key);
    return setting ? setting->usual : 0;
}

store::Mode SettingsService::mode() const { return {value("isGroupByDate") != 0, value("isGroupContacts_Call") != 0}; }

objc::Strong<> SettingsService::pageSize() const {
    return objc::sendClass<"NSNumber", "numberWithInt:", objc::Object>(static_cast<int>(value("minRec_Call")));
}

}  // namespace quorvel

// QVSettingsDataController: the settings as messages, and the two flags that say what is stale.
#pragma once

#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>

#include "desktop/quorvel/store/call.h"
#include "objc/layer.h"

namespace quorvel {

class SettingsService : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"QVSettingsDataController"};
    static void define(objc::ClassDefinition<SettingsService>& definition);

    /// The one for the process; `sharedInstance`.
    static SettingsService* shared();
    /// Which file the settings come from. Before the first reload.
    void setFile(std::filesystem::path file);
    /// Reads everything again; what is wrong goes to standard error. The region that the user chose, or that of the
    /// machine, is the home of numbers without a country code from then on.
    void reloadSettings();

    std::int64_t value(const char* key) const;
    store::Mode mode() const;
    objc::Strong<> pageSize() const;  // an NSNumber
    /// The language that the user chose for the product, "de"; empty for that of the machine.
    std::string language() const;
    bool isNeedToLoadData() const { return needToLoadData_.load(std::memory_order_relaxed); }
    void setIsNeedToLoadData(bool need) { needToLoadData_.store(need, std::memory_order_relaxed); }
    bool isCallSettingsChanged() const { return settingsChanged_.load(std::memory_order_relaxed); }
    void setIsCallSettingsChanged(bool changed) { settingsChanged_.store(changed, std::memory_order_relaxed); }

  private:
    static objc::Object sharedInstance(Class);
    template <objc::Name key>
    bool isOn() const {
        return value(key.text) != 0;
    }

    mutable std::mutex mutex_;
    std::filesystem::path file_;
    std::map<std::string, std::int64_t, std::less<>> values_;
    std::string language_;
    std::atomic<bool> needToLoadData_{false};
    std::atomic<bool> settingsChanged_{false};
};

}  // namespace quorvel

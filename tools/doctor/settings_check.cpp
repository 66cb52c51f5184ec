// The settings' property list: that it is one, and that each value makes sense.
#include <ctime>
#include <fstream>
#include <iterator>

#include "desktop/quorvel/settings/property_list.h"
#include "desktop/quorvel/settings/settings_store.h"
#include "desktop/quorvel/store/log_files.h"
#include "tools/doctor/check.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

class Settings : public Organ {
  public:
    explicit Settings(std::filesystem::path file) : file_(std::move(file)) {}
    const char* name() const override { return "settings"; }

    Sentences examine() override {
        if (!quorvel::store::isThere(file_)) return {};
        // Loading would set a damaged file aside.
        if (isDamaged()) return {"The settings in " + file_.string() + " are damaged; the usual ones are used."};
        quorvel::SettingsStore settings(file_);
        if (const auto trouble = settings.load()) return {*trouble};
        return settings.objections();
    }

    Sentences mend() override {
        quorvel::SettingsStore settings(file_);
        if (const auto trouble = settings.load()) return {*trouble};
        const auto unusable = settings.unusable();
        if (unusable.empty()) return {};
        const auto kept = quorvel::store::formerName(file_, "before-mending", std::time(nullptr));
        std::error_code error;
        std::filesystem::copy_file(file_, kept, error);
        if (error) return {"The settings cannot be kept as " + kept.string() + ": " + error.message() + '.'};
        Sentences said{"The settings as they were are kept as " + kept.string() + '.'};
        for (const auto* setting : unusable) {
            const std::string usual = settings.text(setting->key);
            const auto trouble = settings.set(setting->key, usual);
            said.push_back(trouble.value_or(std::string(setting->key) + " is " +
                                            (usual.empty() ? "the locale's" : usual) + " again."));
        }
        return said;
    }

    const char* announcement() const override { return settingsChanged.data(); }

  private:
    bool isDamaged() const {
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(file_, ignored)) return false;
        std::ifstream stream(file_, std::ios::binary);
        if (!stream) return false;
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        return !quorvel::dictionaryInPropertyList(bytes);
    }

    std::filesystem::path file_;
};

}  // namespace

std::unique_ptr<Organ> settingsOrgan(const quorvel::DataDirectory& directory) {
    return std::make_unique<Settings>(directory.settings());
}

}  // namespace tools

// The settings' property list: that it is one, and that each value makes sense.
#include <ctime>

#include "desktop/files/new_file.h"
#include "desktop/files/regular_file.h"
#include "desktop/foundation/property_list.h"
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
        if (const auto error = copyTo(kept))
            return {"The settings cannot be kept as " + kept.string() + ": " + error.message() + '.'};
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
    std::error_code copyTo(const std::filesystem::path& kept) const {
        const auto content = files::readFile(file_, foundation::longestPropertyList);
        if (const auto* error = std::get_if<std::error_code>(&content)) return *error;
        auto made = files::NewFile::beside(kept);
        if (const auto* error = std::get_if<std::error_code>(&made)) return *error;
        auto& whole = std::get<files::NewFile>(made);
        if (const auto error = whole.write(std::get<std::string>(content))) return error;
        return whole.publish(kept, files::Existing::refused);
    }

    bool isDamaged() const {
        const auto content = files::readFile(file_, foundation::longestPropertyList);
        if (const auto* bytes = std::get_if<std::string>(&content))
            return !foundation::dictionaryInPropertyList(*bytes);
        return std::get<std::error_code>(content) == std::errc::file_too_large;
    }

    std::filesystem::path file_;
};

}  // namespace

std::unique_ptr<Organ> settingsOrgan(const quorvel::DataDirectory& directory) {
    return std::make_unique<Settings>(directory.settings());
}

}  // namespace tools

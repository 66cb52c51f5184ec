// Reading and writing the settings' property list.
#include "desktop/quorvel/settings/settings_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "desktop/files/new_file.h"
#include "desktop/files/regular_file.h"
#include "desktop/foundation/property_list.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using Kind = SettingDescription::Kind;

/// Keeps other processes that would change files of the folder waiting. Where the folder cannot be locked, nobody can
/// write there either.
class FolderLock {
  public:
    explicit FolderLock(const fs::path& folder)
        : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) continue;
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

  private:
    int descriptor_;
};

std::string knownKeys() {
    std::string known;
    for (const auto& each : settingDescriptions()) known += (known.empty() ? "" : ", ") + std::string(each.key);
    return known;
}

}  // namespace

std::optional<std::string> SettingsStore::load() {
    const FolderLock lock(files::folderOf(file_));
    return read();
}

std::optional<std::string> SettingsStore::read() {
    values_ = objc::make<objc::Object>(objc::classNamed<"NSMutableDictionary">());
    const auto content = files::readFile(file_, foundation::longestPropertyList);
    const auto* bytes = std::get_if<std::string>(&content);
    const auto error = bytes ? std::error_code() : std::get<std::error_code>(content);
    if (error == std::errc::no_such_file_or_directory) return std::nullopt;
    // More than settings can ever be is damage.
    if (error && error != std::errc::file_too_large) {
        return "The settings in " + file_.string() + " cannot be read: " + files::reasonOf(error) +
               ". The usual ones are used. Check what is there, and its permissions.";
    }
    if (const auto found = bytes ? foundation::dictionaryInPropertyList(*bytes) : objc::Object{}) {
        objc::send<"setDictionary:">(values_.get(), found);
        return std::nullopt;
    }
    const auto renamed = files::setAside(file_);
    if (const auto* trouble = std::get_if<std::error_code>(&renamed)) {
        return "The settings in " + file_.string() + " are damaged; the usual ones are used. The file cannot be set " +
               "aside: " + trouble->message() + ". Move it away.";
    }
    return "The settings in " + file_.string() + " are damaged; the usual ones are used. The file was kept as " +
           std::get<fs::path>(renamed).string() + ".";
}

objc::Object SettingsStore::stored(const SettingDescription& setting) const {
    return objc::send<"objectForKey:", objc::Object>(values_.get(), foundation::propertyText(setting.key));
}

std::optional<std::int64_t> SettingsStore::storedNumber(const SettingDescription& setting) const {
    const auto found = stored(setting);
    if (!objc::isKindOf(found, objc::classNamed<"NSNumber">())) return std::nullopt;
    const auto number = objc::send<"longLongValue", long long>(found);
    if (number < setting.least || number > setting.greatest) return std::nullopt;
    return number;
}

std::optional<std::string> SettingsStore::storedText(const SettingDescription& setting) const {
    const auto found = stored(setting);
    if (!objc::isKindOf(found, objc::classNamed<"NSString">())) return std::nullopt;
    const char* text = objc::send<"UTF8String", const char*>(found);
    return parseText(setting, text ? text : "");
}

std::int64_t SettingsStore::value(std::string_view key) const {
    const auto* setting = describeSetting(key);
    if (!setting || setting->isText()) return 0;
    return storedNumber(*setting).value_or(setting->usual);
}

std::string SettingsStore::text(std::string_view key) const {
    const auto* setting = describeSetting(key);
    if (!setting) return {};
    if (setting->isText()) return storedText(*setting).value_or("");
    if (setting->kind == Kind::Switch) return isOn(key) ? "on" : "off";
    return std::to_string(value(key));
}

std::vector<const SettingDescription*> SettingsStore::unusable() const {
    std::vector<const SettingDescription*> found;
    for (const auto& setting : settingDescriptions()) {
        if (!stored(setting)) continue;
        if (setting.isText() ? storedText(setting).has_value() : storedNumber(setting).has_value()) continue;
        found.push_back(&setting);
    }
    return found;
}

std::vector<std::string> SettingsStore::objections() const {
    std::vector<std::string> sentences;
    for (const auto* setting : unusable()) {
        const std::string usual = text(setting->key);
        sentences.push_back("The value of " + std::string(setting->key) + " in " + file_.string() + " is not " +
                            acceptedValues(*setting) + "; " + (usual.empty() ? "the locale's" : usual) + " is used.");
    }
    return sentences;
}

std::optional<std::string> SettingsStore::set(std::string_view key, std::string_view text) {
    const auto* setting = describeSetting(key);
    if (!setting) return "There is no setting " + std::string(key) + "; there are " + knownKeys() + ".";
    objc::Object value;
    if (const auto words = parseText(*setting, text)) {
        value = foundation::propertyText(*words);
    } else if (const auto number = parseNumber(*setting, text)) {
        value = setting->kind == Kind::Switch
                    ? objc::sendClass<"NSNumber", "numberWithBool:", objc::Object>(*number != 0)
                    : objc::sendClass<"NSNumber", "numberWithLongLong:", objc::Object>(static_cast<long long>(*number));
    }
    if (!value) return std::string(key) + " takes " + acceptedValues(*setting) + ", not \"" + std::string(text) + "\".";
    const FolderLock lock(files::folderOf(file_));
    if (const auto trouble = read()) return *trouble + " Nothing was set.";
    objc::send<"setObject:forKey:">(values_.get(), value, foundation::propertyText(key));
    if (const auto trouble = write()) {
        read();
        return trouble;
    }
    return std::nullopt;
}

std::error_code SettingsStore::writeWhole() const {
    auto made = files::NewFile::beside(file_);
    if (const auto* error = std::get_if<std::error_code>(&made)) return *error;
    auto& whole = std::get<files::NewFile>(made);
    if (const auto error = whole.write(foundation::xmlPropertyList(values_.get()))) return error;
    return whole.publish(file_, files::Existing::replaced);
}

std::optional<std::string> SettingsStore::write() const {
    const auto error = writeWhole();
    if (!error) return std::nullopt;
    return "The settings in " + file_.string() + " cannot be written: " + error.message() +
           ". Nothing was changed. Make room, or make the folder writable.";
}

}  // namespace quorvel

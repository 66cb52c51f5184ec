// Reading and writing the settings' property list.
#include "desktop/quorvel/settings/settings_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include "desktop/quorvel/settings/property_list.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using Kind = SettingDescription::Kind;

std::string reason(int error) { return std::system_category().message(error); }

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
    /// Puts renamed files on disk.
    void sync() const {
        if (descriptor_ >= 0) fsync(descriptor_);
    }

  private:
    int descriptor_;
};

fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

fs::path freeName(const fs::path& file) {
    for (int i = 1;; ++i) {
        fs::path name = file.string() + ".damaged-" + std::to_string(i);
        std::error_code error;
        if (!fs::exists(fs::symlink_status(name, error))) return name;
    }
}

/// Writes the bytes to a new file and puts them on disk; 0, or the number of the error.
int writeNewFile(const fs::path& file, std::string_view bytes) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor < 0) return errno;
    int error = 0;
    while (!bytes.empty() && error == 0) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            error = errno;
        }
    }
    if (error == 0 && ::fsync(descriptor) != 0) error = errno;
    if (::close(descriptor) != 0 && error == 0) error = errno;
    return error;
}

/// The whole file; nothing, and errno, where it cannot be read.
std::optional<std::string> contentOf(const fs::path& file) {
    std::error_code unknown;
    if (fs::is_directory(file, unknown)) {  // it would open well, and throw when it is read
        errno = EISDIR;
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    return stream.bad() ? std::nullopt : std::optional(std::move(bytes));
}

std::string knownKeys() {
    std::string known;
    for (const auto& each : settingDescriptions()) known += (known.empty() ? "" : ", ") + std::string(each.key);
    return known;
}

}  // namespace

std::optional<std::string> SettingsStore::load() {
    const FolderLock lock(folderOf(file_));
    return read();
}

std::optional<std::string> SettingsStore::read() {
    values_ = objc::make<objc::Object>(objc::classNamed<"NSMutableDictionary">());
    const auto bytes = contentOf(file_);
    if (!bytes) {
        if (errno == ENOENT) return std::nullopt;
        return "The settings in " + file_.string() + " cannot be read: " + reason(errno) +
               ". The usual ones are used. Check what is there, and its permissions.";
    }
    if (const auto found = dictionaryInPropertyList(*bytes)) {
        objc::send<"setDictionary:">(values_.get(), found);
        return std::nullopt;
    }
    const auto aside = freeName(file_);
    if (::rename(file_.c_str(), aside.c_str()) != 0)
        return "The settings in " + file_.string() + " are damaged; the usual ones are used. The file cannot be set " +
               "aside: " + reason(errno) + ". Move it away.";
    return "The settings in " + file_.string() + " are damaged; the usual ones are used. The file was kept as " +
           aside.string() + ".";
}

objc::Object SettingsStore::stored(const SettingDescription& setting) const {
    return objc::send<"objectForKey:", objc::Object>(values_.get(), propertyText(setting.key));
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
        value = propertyText(*words);
    } else if (const auto number = parseNumber(*setting, text)) {
        value = setting->kind == Kind::Switch
                    ? objc::sendClass<"NSNumber", "numberWithBool:", objc::Object>(*number != 0)
                    : objc::sendClass<"NSNumber", "numberWithLongLong:", objc::Object>(static_cast<long long>(*number));
    }
    if (!value) return std::string(key) + " takes " + acceptedValues(*setting) + ", not \"" + std::string(text) + "\".";
    const FolderLock lock(folderOf(file_));
    if (const auto trouble = read()) return *trouble + " Nothing was set.";
    objc::send<"setObject:forKey:">(values_.get(), value, propertyText(key));
    if (const auto trouble = write()) {
        read();
        return trouble;
    }
    lock.sync();
    return std::nullopt;
}

std::optional<std::string> SettingsStore::write() const {
    const fs::path temporary = file_.string() + ".new-" + std::to_string(getpid());
    int error = writeNewFile(temporary, xmlPropertyList(values_.get()));
    if (error == 0 && ::rename(temporary.c_str(), file_.c_str()) != 0) error = errno;
    if (error == 0) return std::nullopt;
    ::unlink(temporary.c_str());
    return "The settings in " + file_.string() + " cannot be written: " + reason(error) +
           ". Nothing was changed. Make room, or make the folder writable.";
}

}  // namespace quorvel

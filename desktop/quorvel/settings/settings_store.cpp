// The settings' property list.
#include "desktop/quorvel/settings/settings_store.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>

namespace quorvel {
namespace {

using Kind = SettingDescription::Kind;

constexpr SettingDescription descriptions[] = {
    {"isReplaceRecentsOn", Kind::Switch, 1, 0, 1, "the plug-in's Recents screen in place of the telephone's"},
    {"minRec_Call", Kind::Number, 50, 1, 10000, "calls shown at first and added by each load-more"},
    {"isEnableCallSearch", Kind::Switch, 1, 0, 1, "the search bar"},
    {"isShowHeader_Call", Kind::Switch, 1, 0, 1, "the count above the list"},
    {"isShowFooter_Call", Kind::Switch, 1, 0, 1, "the totals below the list"},
    {"isShowContactImage", Kind::Switch, 1, 0, 1, "the contacts' pictures"},
    {"isCallOnTap_Call", Kind::Switch, 0, 0, 1, "a tap on a row calls back"},
    {"isFaceTimeEnabled", Kind::Switch, 1, 0, 1, "FaceTime calls are called back with FaceTime"},
    {"isGroupByDate", Kind::Switch, 0, 0, 1, "one row for each day"},
    {"isGroupContacts_Call", Kind::Switch, 0, 0, 1, "calls of one contact in a row are one row"},
};

objc::Object nsText(std::string_view text) {
    return objc::sendClass<"NSString", "stringWithUTF8String:", objc::Object>(std::string(text).c_str());
}

objc::Object dataOf(const std::string& bytes) {
    return objc::sendClass<"NSData", "dataWithBytes:length:", objc::Object>(static_cast<const void*>(bytes.data()),
                                                                            bytes.size());
}

/// The property list in the bytes as a mutable dictionary; null where they are none.
objc::Object dictionaryIn(const std::string& bytes) {
    constexpr unsigned long mutableContainers = 1;
    const auto list =
        objc::sendClass<"NSPropertyListSerialization", "propertyListWithData:options:format:error:", objc::Object>(
            dataOf(bytes), mutableContainers, static_cast<void*>(nullptr), static_cast<void*>(nullptr));
    return objc::isKindOf(list, objc::classNamed<"NSDictionary">()) ? list : objc::Object{};
}

std::filesystem::path freeName(const std::filesystem::path& file) {
    for (int i = 1;; ++i) {
        std::filesystem::path name = file.string() + ".damaged-" + std::to_string(i);
        if (!std::filesystem::exists(name)) return name;
    }
}

std::optional<std::int64_t> parse(const SettingDescription& setting, std::string_view text) {
    if (setting.kind == Kind::Switch) {
        for (const char* word : {"on", "yes", "true"})
            if (text == word) return 1;
        for (const char* word : {"off", "no", "false"})
            if (text == word) return 0;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    if (value < setting.least || value > setting.greatest) return std::nullopt;
    return value;
}

}  // namespace

std::span<const SettingDescription> settingDescriptions() { return descriptions; }

const SettingDescription* describeSetting(std::string_view key) {
    for (const auto& setting : descriptions)
        if (setting.key == key) return &setting;
    return nullptr;
}

std::optional<std::string> SettingsStore::load() {
    values_ = objc::make<objc::Object>(objc::classNamed<"NSMutableDictionary">());
    std::ifstream stream(file_, std::ios::binary);
    if (!stream) {
        if (!std::filesystem::exists(file_)) return std::nullopt;
        return "The settings in " + file_.string() +
               " cannot be read; the usual ones are used. Check the file's permissions.";
    }
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (const auto read = dictionaryIn(bytes)) {
        objc::send<"setDictionary:">(values_.get(), read);
        return std::nullopt;
    }
    const auto aside = freeName(file_);
    std::error_code error;
    std::filesystem::rename(file_, aside, error);
    return "The settings in " + file_.string() + " are damaged; the usual ones are used. The file was kept as " +
           (error ? file_.string() : aside.string()) + ".";
}

std::int64_t SettingsStore::value(std::string_view key) const {
    const auto* setting = describeSetting(key);
    if (!setting) return 0;
    const auto stored = objc::send<"objectForKey:", objc::Object>(values_.get(), nsText(key));
    constexpr auto question = objc::Name{"longLongValue"};
    if (!stored || !objc::respondsTo(stored, objc::selector<question>())) return setting->usual;
    const auto number = objc::send<question, long long>(stored);
    return std::clamp<std::int64_t>(number, setting->least, setting->greatest);
}

std::string SettingsStore::text(std::string_view key) const {
    const auto* setting = describeSetting(key);
    if (!setting) return {};
    if (setting->kind == Kind::Switch) return isOn(key) ? "on" : "off";
    return std::to_string(value(key));
}

std::optional<std::string> SettingsStore::set(std::string_view key, std::string_view text) {
    const auto* setting = describeSetting(key);
    if (!setting) {
        std::string known;
        for (const auto& each : descriptions) known += (known.empty() ? "" : ", ") + std::string(each.key);
        return "There is no setting " + std::string(key) + "; there are " + known + ".";
    }
    const auto value = parse(*setting, text);
    if (!value) {
        const std::string wanted =
            setting->kind == Kind::Switch
                ? "on or off"
                : "a whole number from " + std::to_string(setting->least) + " to " + std::to_string(setting->greatest);
        return std::string(key) + " takes " + wanted + ", not \"" + std::string(text) + "\".";
    }
    const auto number =
        setting->kind == Kind::Switch
            ? objc::sendClass<"NSNumber", "numberWithBool:", objc::Object>(*value != 0)
            : objc::sendClass<"NSNumber", "numberWithLongLong:", objc::Object>(static_cast<long long>(*value));
    objc::send<"setObject:forKey:">(values_.get(), number, nsText(key));
    return write();
}

std::optional<std::string> SettingsStore::write() const {
    constexpr unsigned long xmlFormat = 100;
    const auto data =
        objc::sendClass<"NSPropertyListSerialization", "dataWithPropertyList:format:options:error:", objc::Object>(
            values_.get(), xmlFormat, 0UL, static_cast<void*>(nullptr));
    const std::string temporary = file_.string() + ".new-" + std::to_string(getpid());
    const auto* bytes = objc::send<"bytes", const char*>(data);
    const auto length = objc::send<"length", unsigned long>(data);
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    bool good = descriptor >= 0 && ::write(descriptor, bytes, length) == static_cast<ssize_t>(length) &&
                ::fsync(descriptor) == 0;
    if (descriptor >= 0) good = ::close(descriptor) == 0 && good;
    if (good && ::rename(temporary.c_str(), file_.c_str()) == 0) return std::nullopt;
    const std::string why = std::strerror(errno);
    ::unlink(temporary.c_str());
    return "The settings in " + file_.string() + " cannot be written: " + why + ". Nothing was changed.";
}

}  // namespace quorvel

// The user's settings on disk: a property list, one value a key.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "objc/layer.h"

namespace quorvel {

/// A setting: what it is called, what it means, and what it is where nothing was set.
struct SettingDescription {
    const char* key;
    enum class Kind { Switch, Number } kind;
    std::int64_t usual;
    std::int64_t least;
    std::int64_t greatest;
    const char* meaning;
};

/// Every setting, in the order that the settings screen shows.
std::span<const SettingDescription> settingDescriptions();
const SettingDescription* describeSetting(std::string_view key);

/// The settings of one file. Needs an autorelease pool.
class SettingsStore {
  public:
    explicit SettingsStore(std::filesystem::path file) : file_(std::move(file)) {}

    /// Reads the file; without one everything is as usual. A damaged file is set aside under another name and the
    /// sentence says so; everything is as usual then.
    std::optional<std::string> load();

    std::int64_t value(std::string_view key) const;
    bool isOn(std::string_view key) const { return value(key) != 0; }

    /// Sets one key and writes the file, whole or not at all. "on", "off", "yes", "no", "true", "false" and numbers are
    /// understood. Answers what is wrong with key or value, or why the file cannot be written.
    std::optional<std::string> set(std::string_view key, std::string_view text);

    /// The value as `get` prints it: "on", "off", or the number.
    std::string text(std::string_view key) const;

  private:
    std::optional<std::string> write() const;

    std::filesystem::path file_;
    objc::Strong<> values_;  // NSMutableDictionary; keys that are not ours are kept
};

}  // namespace quorvel

// The user's settings on disk: a property list, one value a key.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "desktop/quorvel/settings/setting_table.h"
#include "objc/layer.h"

namespace quorvel {

/// The settings of one file. Several processes may have the file: each change is made to what the file says at that
/// moment, and a reader finds it whole. An object belongs to one thread at a time and needs an autorelease pool.
class SettingsStore {
  public:
    explicit SettingsStore(std::filesystem::path file) : file_(std::move(file)) {}

    /// Reads the file; without one everything is as usual. Everything is as usual too where the answer is a sentence:
    /// the file cannot be read and stays as it is, or it is damaged and was given the name FILE.damaged-N.
    std::optional<std::string> load();

    /// The value of a switch or number; the usual one where the file has none of the right type within the bounds. 0
    /// for a key that is none.
    std::int64_t value(std::string_view key) const;
    bool isOn(std::string_view key) const { return value(key) != 0; }
    /// The value as `set` takes it: "on", "off", the number, or the text. Empty for a key that is none.
    std::string text(std::string_view key) const;

    /// A sentence for each value in the file that cannot be used, and for which the usual one stands in.
    std::vector<std::string> objections() const;

    /// The settings whose value in the file cannot be used.
    std::vector<const SettingDescription*> unusable() const;

    /// Sets one key and writes the file, whole or not at all; keys that are not ours are kept. Answers what is wrong
    /// with the key or the value, or why the file cannot be read or written; nothing has changed then.
    std::optional<std::string> set(std::string_view key, std::string_view text);

  private:
    std::optional<std::string> read();
    std::optional<std::string> write() const;
    std::error_code writeWhole() const;
    std::optional<std::int64_t> storedNumber(const SettingDescription& setting) const;
    std::optional<std::string> storedText(const SettingDescription& setting) const;
    objc::Object stored(const SettingDescription& setting) const;

    std::filesystem::path file_;
    objc::Strong<> values_;  // NSMutableDictionary; null before the first load
};

}  // namespace quorvel

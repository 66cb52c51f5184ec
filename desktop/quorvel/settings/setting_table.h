// Every setting that the handset keeps: its key, its values, what it is where nothing was set, and what it means.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvel {

struct SettingDescription {
    enum class Kind {
        Switch,    ///< on (1) or off (0)
        Number,    ///< a whole number within the bounds
        Language,  ///< a language tag such as "de" or "pt-BR"; empty for the one of the locale
        Region,    ///< a region such as "DE" or "419"; empty for the one of the locale
    };
    const char* key;
    Kind kind;
    std::int64_t usual;  ///< Switches and numbers; texts are usually empty.
    std::int64_t least;
    std::int64_t greatest;
    const char* meaning;

    bool isText() const { return kind == Kind::Language || kind == Kind::Region; }
};

/// Every setting, in the order that the settings screen shows.
std::span<const SettingDescription> settingDescriptions();
/// Null where there is no setting of that key.
const SettingDescription* describeSetting(std::string_view key);

/// What the setting takes, as a sentence goes on: "on or off", "a whole number from 1 to 10000".
std::string acceptedValues(const SettingDescription& setting);
/// The value of a switch or number as a person writes it ("on", "yes", "true", "1", "off", "no", "false", "0", "50").
/// Nothing where it is none, or lies out of bounds.
std::optional<std::int64_t> parseNumber(const SettingDescription& setting, std::string_view text);
/// The value of a language or region, spelt as usual ("de", "pt-BR"; "DE"). Nothing where it is none.
std::optional<std::string> parseText(const SettingDescription& setting, std::string_view text);

}  // namespace quorvel

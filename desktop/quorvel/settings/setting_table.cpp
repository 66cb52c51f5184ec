// The table of settings, and what people may write for each.
#include "desktop/quorvel/settings/setting_table.h"

#include <algorithm>
#include <charconv>

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
    {"language", Kind::Language, 0, 0, 0, "the language of the texts; empty: the locale's"},
    {"region", Kind::Region, 0, 0, 0, "the region of numbers without a country code; empty: the locale's"},
};

// Letters and digits of tags are ASCII whatever the locale.
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Two letters, or three digits.
bool isRegion(std::string_view text) {
    return (text.size() == 2 && std::ranges::all_of(text, isLetter)) ||
           (text.size() == 3 && std::ranges::all_of(text, isDigit));
}

std::optional<std::string> languageOf(std::string_view text) {
    constexpr std::size_t longestTag = 35;
    constexpr std::size_t longestPiece = 8;
    if (text.size() > longestTag) return std::nullopt;
    std::string tag;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = std::min(text.find_first_of("-_", at), text.size());
        const auto piece = text.substr(at, end - at);
        const bool isFirst = at == 0;
        if (piece.empty() || piece.size() > longestPiece) return std::nullopt;
        if (isFirst && (piece.size() < 2 || !std::ranges::all_of(piece, isLetter))) return std::nullopt;
        if (!std::ranges::all_of(piece, [](char c) { return isLetter(c) || isDigit(c); })) return std::nullopt;
        if (!isFirst) tag += '-';
        // "de", "Hant", "BR": the language small, the script with a capital, the region in capitals.
        std::ranges::transform(piece, std::back_inserter(tag), !isFirst && isRegion(piece) ? upper : lower);
        if (!isFirst && piece.size() == 4) tag[tag.size() - 4] = upper(tag[tag.size() - 4]);
        at = end + 1;
    }
    return tag;
}

}  // namespace

std::span<const SettingDescription> settingDescriptions() { return descriptions; }

const SettingDescription* describeSetting(std::string_view key) {
    const auto* found = std::ranges::find_if(descriptions, [key](const auto& setting) { return setting.key == key; });
    return found == std::end(descriptions) ? nullptr : found;
}

std::string acceptedValues(const SettingDescription& setting) {
    switch (setting.kind) {
        case Kind::Switch:
            return "on or off";
        case Kind::Number:
            return "a whole number from " + std::to_string(setting.least) + " to " + std::to_string(setting.greatest);
        case Kind::Language:
            return "a language such as de or pt-BR, or nothing for the one of the locale";
        case Kind::Region:
            return "a region such as DE, or nothing for the one of the locale";
    }
    return {};
}

std::optional<std::int64_t> parseNumber(const SettingDescription& setting, std::string_view text) {
    if (setting.isText()) return std::nullopt;
    if (setting.kind == Kind::Switch) {
        for (const std::string_view word : {"on", "yes", "true"})
            if (text == word) return 1;
        for (const std::string_view word : {"off", "no", "false"})
            if (text == word) return 0;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    if (value < setting.least || value > setting.greatest) return std::nullopt;
    return value;
}

std::optional<std::string> parseText(const SettingDescription& setting, std::string_view text) {
    if (!setting.isText()) return std::nullopt;
    if (text.empty()) return std::string();
    if (setting.kind == Kind::Language) return languageOf(text);
    if (!isRegion(text)) return std::nullopt;
    std::string region(text);
    std::ranges::transform(region, region.begin(), upper);
    return region;
}

}  // namespace quorvel

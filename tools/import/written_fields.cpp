// Kinds by the stems of words, durations by their units.
#include "tools/import/written_fields.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "tools/text/words.h"

namespace tools {
namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool isLetter(char letter) { return (letter >= 'a' && letter <= 'z') || static_cast<unsigned char>(letter) >= 0x80; }

template <std::size_t size>
bool holdsAny(std::string_view word, const std::array<std::string_view, size>& stems) {
    return std::any_of(stems.begin(), stems.end(),
                       [&](std::string_view stem) { return word.find(stem) != std::string_view::npos; });
}

constexpr std::array<std::string_view, 6> beyondKind{"reject", "declin", "block", "voicemail", "abgelehnt", "refus"};
constexpr std::array<std::string_view, 9> unanswered{"missed", "unanswered", "noanswer", "verpasst", "entgangen",
                                                     "manqué", "manque",     "perdida",  "gemist"};
constexpr std::array<std::string_view, 4> cancelled{"cancel", "abgebrochen", "annulé", "annullat"};
constexpr std::array<std::string_view, 9> outgoing{"outgoing",  "outbound", "dialled", "dialed",  "placed",
                                                   "ausgehend", "gewählt",  "sortant", "saliente"};
constexpr std::array<std::string_view, 9> incoming{"incoming",   "inbound", "received", "answered", "eingehend",
                                                   "angenommen", "entrant", "reçu",     "recibida"};

struct Unit {
    std::string_view name;
    double seconds;
};
constexpr std::array<Unit, 16> units{{{"h", 3600},
                                      {"hr", 3600},
                                      {"hrs", 3600},
                                      {"hour", 3600},
                                      {"hours", 3600},
                                      {"std", 3600},
                                      {"m", 60},
                                      {"min", 60},
                                      {"mins", 60},
                                      {"minute", 60},
                                      {"minutes", 60},
                                      {"s", 1},
                                      {"sec", 1},
                                      {"secs", 1},
                                      {"second", 1},
                                      {"seconds", 1}}};

std::optional<double> parseDecimal(std::string_view text) {
    if (text.empty() || !isDigit(text[0])) return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size() || value < 0 || value > 1e12) return std::nullopt;
    return value;
}

/// "1:03" and "0:01:03".
std::optional<double> parseClockDuration(std::string_view text) {
    double seconds = 0;
    for (int part = 0; part < 3; ++part) {
        const auto colon = text.find(':');
        const auto number = parseDecimal(text.substr(0, colon));
        if (!number || (part > 0 && *number >= 60)) return std::nullopt;
        seconds = seconds * 60 + *number;
        if (colon == std::string_view::npos) return part > 0 ? std::optional(seconds) : std::nullopt;
        text.remove_prefix(colon + 1);
    }
    return std::nullopt;
}

/// "1m 3s" and what remains of "PT1M3S".
std::optional<double> parseUnits(std::string_view text) {
    double seconds = 0;
    bool hasAny = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        while (at < text.size() && (isDigit(text[at]) || text[at] == '.')) ++at;
        const auto number = parseDecimal(text.substr(begin, at - begin));
        while (at < text.size() && text[at] == ' ') ++at;
        const std::size_t word = at;
        while (at < text.size() && isLetter(text[at])) ++at;
        const auto name = text.substr(word, at - word);
        const auto unit = std::find_if(units.begin(), units.end(), [&](const Unit& each) { return each.name == name; });
        if (!number || unit == units.end()) return std::nullopt;
        seconds += *number * unit->seconds;
        hasAny = true;
        while (at < text.size() && (text[at] == ' ' || text[at] == ',' || text[at] == '.')) ++at;
    }
    return hasAny ? std::optional(seconds) : std::nullopt;
}

}  // namespace

std::string bareWord(std::string_view text) {
    std::string word;
    bool followsLatin = false;
    for (char letter : lowerCase(text)) {
        const auto byte = static_cast<unsigned char>(letter);
        // The capitals of U+00C0 to U+00DE lie 32 before their small letters.
        if (followsLatin && byte >= 0x80 && byte <= 0x9E && byte != 0x97) letter = static_cast<char>(byte + 32);
        followsLatin = byte == 0xC3;
        if (isLetter(letter) || isDigit(letter)) word += letter;
    }
    return word;
}

bool saysMoreThanKind(std::string_view text) { return holdsAny(bareWord(text), beyondKind); }

std::optional<CallKind> parseWrittenKind(std::string_view text) {
    const std::string word = bareWord(text);
    if (word == "1" || word == "7") return CallKind::Received;
    if (word == "2") return CallKind::Dialled;
    if (word.size() == 1 && word[0] >= '3' && word[0] <= '6') return CallKind::Missed;
    if (word == "in") return CallKind::Received;
    if (word == "out") return CallKind::Dialled;
    const bool isUnanswered = holdsAny(word, unanswered) || holdsAny(word, beyondKind);
    if (holdsAny(word, cancelled)) return CallKind::Cancelled;
    if (holdsAny(word, outgoing)) return isUnanswered ? CallKind::Cancelled : CallKind::Dialled;
    if (isUnanswered) return CallKind::Missed;
    if (holdsAny(word, incoming)) return CallKind::Received;
    return std::nullopt;
}

std::optional<std::int64_t> parseWrittenDuration(std::string_view text) {
    if (text.size() > longestField) return std::nullopt;
    std::string lower = lowerCase(text);
    lower.erase(0, std::min(lower.find_first_not_of(' '), lower.size()));
    lower.erase(lower.find_last_not_of(' ') + 1);
    auto seconds = parseDecimal(lower);
    if (!seconds) seconds = parseClockDuration(lower);
    if (!seconds) seconds = parseUnits(lower.starts_with("pt") ? std::string_view(lower).substr(2) : lower);
    if (!seconds) return std::nullopt;
    return *seconds > 0 && *seconds < 1 ? 1 : static_cast<std::int64_t>(*seconds);
}

}  // namespace tools

// Recognising the product's questions by their texts.
#include "desktop/quorvel/visual/question.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "desktop/quorvel/visual/call_time.h"
#include "desktop/quorvel/visual/sources.h"

namespace quorvel {
namespace {

/// How Foundation writes a missing argument of a format.
constexpr std::string_view missing = "(null)";
constexpr std::string_view place = "%@";

struct Question {
    const char* plain;
    const char* named;
};
constexpr Question questions[] = {{"ALL_DEL_ALL_CONFIRM_MSG", "ALL_DEL_ALL_CONTACT_CONFIRM_MSG"},
                                  {"DLD_DEL_ALL_CONFIRM_MSG", "DLD_DEL_ALL_CONTACT_CONFIRM_MSG"},
                                  {"RCD_DEL_ALL_CONFIRM_MSG", "RCD_DEL_ALL_CONTACT_CONFIRM_MSG"},
                                  {"MSD_DEL_ALL_CONFIRM_MSG", "MSD_DEL_ALL_CONTACT_CONFIRM_MSG"}};

/// What fills the format to give the text; nothing where the text is of another format.
std::optional<std::string> argumentOf(std::string_view text, std::string_view format) {
    const auto at = format.find(place);
    if (at == std::string_view::npos) return std::nullopt;
    const auto before = format.substr(0, at);
    const auto after = format.substr(at + place.size());
    if (text.size() < before.size() + after.size() || !text.starts_with(before) || !text.ends_with(after))
        return std::nullopt;
    return std::string(text.substr(before.size(), text.size() - before.size() - after.size()));
}

/// "yyyy-MM-dd", as entries name their days.
bool isDay(std::string_view text) {
    constexpr std::string_view form = "0000-00-00";
    return text.size() == form.size() && std::ranges::equal(text, form, [](char letter, char wanted) {
               return wanted == '0' ? letter >= '0' && letter <= '9' : letter == wanted;
           });
}

/// The question with a day in words and without a missing argument; nothing for a title that is none of the product's.
std::optional<std::string> question(const std::string& title) {
    for (const auto& each : questions) {
        const std::string plain = sources().text(each.plain);
        if (title == plain) return plain;
        std::string format = sources().text(each.named);
        const auto argument = argumentOf(title, format);
        if (!argument) continue;
        if (argument->empty() || *argument == missing) return plain;
        const std::string day = isDay(*argument) ? dayHeadline(*argument) : std::string();
        return day.empty() ? title : format.replace(format.find(place), place.size(), day);
    }
    return std::nullopt;
}

}  // namespace

std::string questionForPeople(const std::string& title, const std::string& action) {
    const auto asked = question(title);
    if (!asked) return title;
    return action == sources().text("DEL_ALL_SEARCHED") ? sources().text("SEARCHED_DEL_ALL_CONFIRM_MSG") : *asked;
}

}  // namespace quorvel

// The texts of rows.
#include "desktop/quorvel/visual/row_text.h"

#include "desktop/quorvel/visual/call_time.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/quorvel/visual/sources.h"

namespace quorvel {
namespace {

const char* faceTime(const CallFacts& facts) { return facts.faceTimeVideo ? "FaceTime" : "FaceTime Audio"; }

std::string shownNumber(const CallFacts& facts) {
    return facts.number.empty() ? sources().text("UNKNOWN") : sources().number(facts.number);
}

std::string callSubtitle(const CallFacts& facts) {
    if (facts.faceTime) return faceTime(facts);
    if (!facts.label.empty()) return facts.label;
    return facts.location;
}

RowText callText(const CallFacts& facts, bool counts) {
    RowText text;
    text.title = facts.name.empty() ? shownNumber(facts) : facts.name;
    if (counts && facts.count > 1) text.count = "(" + std::to_string(facts.count) + ")";
    text.subtitle = callSubtitle(facts);
    text.side = sources().groupsByDay() ? clockTime(facts.date) : listTime(facts.date);
    text.initials = initialsOf(facts.name);
    return text;
}

RowText dayText(const CallFacts& facts) {
    RowText text;
    text.title = dayHeadline(facts.day);
    if (text.title.empty()) text.title = dayName(facts.date);
    text.dialled = std::to_string(facts.dialled);
    text.dialledDuration = durationText(facts.dialledSeconds);
    text.received = std::to_string(facts.received);
    text.receivedDuration = durationText(facts.receivedSeconds);
    text.missed = std::to_string(facts.missed);
    return text;
}

RowText historyText(const CallFacts& facts) {
    RowText text;
    text.title = exactTime(facts.date);
    text.subtitle = shownNumber(facts);
    if (facts.faceTime) text.subtitle = std::string(faceTime(facts)) + " · " + text.subtitle;
    if (facts.duration > 0) text.side = durationText(facts.duration);
    return text;
}

}  // namespace

std::vector<std::string> RowText::all() const {
    std::vector<std::string> texts{count.empty() ? title : title + " " + count};
    for (const auto* text : {&subtitle, &side, &dialled, &dialledDuration, &received, &receivedDuration, &missed})
        texts.push_back(*text);
    std::erase(texts, std::string());
    return texts;
}

RowText rowText(const CallFacts& facts, RowKind kind, bool counts) {
    switch (kind) {
        case RowKind::Day:
            return dayText(facts);
        case RowKind::History:
            return historyText(facts);
        default:
            return callText(facts, counts);
    }
}

}  // namespace quorvel

// QVUITableViewCell.
#include "desktop/quorvel/visual/call_cell.h"

#include <ctime>

#include "desktop/graphics/icons.h"
#include "desktop/graphics/text.h"

namespace quorvel {
namespace {

using graphics::Alignment;
using graphics::Font;
using graphics::TextStyle;
using uikit::Color;
using uikit::Rect;

constexpr double margin = 12;
constexpr double arrowSide = 14;
constexpr double pictureSide = 34;
constexpr double gap = 8;
constexpr double timeWidth = 74;
const Color monogramGround = Color::fromHex(0xDCE5EA);

std::tm localTime(std::int64_t seconds) {
    const std::time_t moment = seconds;
    std::tm parts{};
    localtime_r(&moment, &parts);
    return parts;
}

std::string formatted(const std::tm& parts, const char* format) {
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, format, &parts));
}

long daysBetween(std::tm earlier, std::tm later) {
    for (auto* parts : {&earlier, &later}) {
        parts->tm_hour = 12;
        parts->tm_min = parts->tm_sec = 0;
        parts->tm_isdst = -1;
    }
    constexpr double day = 86400;
    return static_cast<long>(std::difftime(std::mktime(&later), std::mktime(&earlier)) / day + 0.5);
}

std::string durationOf(long long seconds) {
    char text[48];
    if (seconds >= 3600)
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld", seconds / 60, seconds % 60);
    return text;
}

template <objc::Name name>
std::string textOf(objc::Object entry) {
    return uikit::utf8(objc::send<name, objc::Object>(entry));
}

/// The first letters of the first two words.
std::string initials(const std::string& name) {
    std::string letters;
    int words = 0;
    bool atStart = true;
    for (std::size_t i = 0; i < name.size() && words < 2; ++i) {
        const auto byte = static_cast<unsigned char>(name[i]);
        if (byte == ' ') {
            atStart = true;
            continue;
        }
        if (!std::exchange(atStart, false)) continue;
        letters += name[i];
        while (i + 1 < name.size() && (static_cast<unsigned char>(name[i + 1]) & 0xC0) == 0x80) letters += name[++i];
        ++words;
    }
    return letters;
}

std::string kindOf(objc::Object entry) {
    const bool faceTime = objc::send<"isFaceTime", bool>(entry);
    if (faceTime) return objc::send<"isFaceTimeVideo", bool>(entry) ? "FaceTime" : "FaceTime Audio";
    if (auto label = textOf<"phoneLabel">(entry); !label.empty()) return label;
    if (auto place = textOf<"location">(entry); !place.empty()) return place;
    return objc::send<"abRecID", int>(entry) == -1 ? "unknown" : "phone";
}

}  // namespace

std::string rowTime(std::int64_t call, std::int64_t now) {
    const std::tm then = localTime(call);
    const std::tm today = localTime(now);
    const long days = daysBetween(then, today);
    if (days == 0) return formatted(then, "%H:%M");
    if (days == 1) return "Yesterday";
    if (days > 1 && days < 7) return formatted(then, "%A");
    return formatted(then, "%d.%m.%y");
}

void CallCell::define(objc::ClassDefinition<CallCell>& definition) {
    definition.method<"callEntry", &CallCell::callEntry>()
        .method<"setCallEntry:", &CallCell::setCallEntry>()
        .method<"setShowGroupByDateCell:", &CallCell::setShowGroupByDateCell>()
        .method<"setShowGroupCount:", &CallCell::setShowGroupCount>()
        .method<"setShowLogCell:", &CallCell::setShowLogCell>();
}

void CallCell::prepareForReuse() {
    TableViewCell::prepareForReuse();
    entry_ = {};
    texts_ = {};
    dayLines_.clear();
}

void CallCell::setCallEntry(objc::Object entry) {
    entry_ = objc::Strong<>(entry);
    refresh();
}

void CallCell::setShowGroupByDateCell(bool show) {
    showsDay_ = show;
    refresh();
}

void CallCell::setShowGroupCount(bool show) {
    showsCount_ = show;
    refresh();
}

void CallCell::setShowLogCell(bool show) {
    showsLog_ = show;
    refresh();
}

void CallCell::refresh() {
    setNeedsDisplay();
    texts_ = {};
    dayLines_.clear();
    const objc::Object entry = entry_;
    if (!entry) return;
    outgoing_ = objc::send<"isOutGoing", bool>(entry);
    missed_ = objc::send<"isMissed", bool>(entry);
    contact_ = objc::send<"abRecID", int>(entry);
    const std::int64_t date = objc::send<"date", int>(entry);
    if (showsDay_) {
        texts_.title = formatted(localTime(date), "%A, %d %B %Y");
        auto line = [](const char* what, std::int64_t count, std::int64_t seconds) {
            return std::string(what) + ' ' + std::to_string(count) + (seconds > 0 ? ", " + durationOf(seconds) : "");
        };
        dayLines_ = {line("Dialled", objc::send<"dldCallsCnt", std::int64_t>(entry),
                          objc::send<"dldCallsDuration", std::int64_t>(entry)),
                     line("Received", objc::send<"rcdCallsCnt", std::int64_t>(entry),
                          objc::send<"rcdCallsDuration", std::int64_t>(entry)),
                     line("Missed", objc::send<"msdCallsCnt", std::int64_t>(entry), 0)};
        return;
    }
    if (showsLog_) {
        texts_.title = objc::send<"isDialed", bool>(entry)     ? "Dialled"
                       : objc::send<"isCanceled", bool>(entry) ? "Cancelled"
                       : missed_                               ? "Missed"
                                                               : "Received";
        texts_.below = textOf<"phoneNumber">(entry);
        texts_.right = formatted(localTime(date), "%H:%M:%S");
        if (const int seconds = objc::send<"duration", int>(entry)) texts_.below += ", " + durationOf(seconds);
        return;
    }
    texts_.title = textOf<"name">(entry);
    if (texts_.title.empty()) texts_.title = textOf<"phoneNumber">(entry);
    if (texts_.title.empty()) texts_.title = "No caller ID";
    if (const int count = objc::send<"count", int>(entry); showsCount_ && count > 1)
        texts_.title += " (" + std::to_string(count) + ')';
    texts_.below = kindOf(entry);
    texts_.right = rowTime(date, std::time(nullptr));
}

std::vector<std::string> CallCell::drawnTexts() const {
    if (!dayLines_.empty()) {
        std::vector<std::string> lines{texts_.title};
        lines.insert(lines.end(), dayLines_.begin(), dayLines_.end());
        return lines;
    }
    return {texts_.title, texts_.below, texts_.right};
}

void CallCell::draw(graphics::Canvas& canvas) {
    TableViewCell::draw(canvas);
    if (!entry_) return;
    graphics::SavedState state(canvas);
    canvas.translate(contentView()->frame().left(), 0);
    if (showsDay_)
        drawDay(canvas);
    else
        drawCall(canvas);
}

double CallCell::drawPicture(graphics::Canvas& canvas, double x) {
    const auto settings = objc::sendClass<"QVSettingsDataController", "sharedInstance", objc::Object>();
    if (showsLog_ || !objc::send<"isShowContactImage", bool>(settings)) return x;
    const Rect rect{{x, (bounds().size.height - pictureSide) / 2}, {pictureSide, pictureSide}};
    const auto picture = contact_ >= 1
                             ? objc::sendClass<"QuorvelUtils", "getContactImageFromCache:", objc::Object>(contact_)
                             : objc::Object{};
    graphics::SavedState state(canvas);
    canvas.clipRounded(rect, pictureSide / 2);
    if (picture) {
        canvas.draw(uikit::imageOf(picture), rect);
        return rect.right() + gap;
    }
    canvas.fill(rect, monogramGround);
    const Color ink = uikit::palette::brand.withAlpha(0.75);
    if (contact_ >= 1)
        graphics::drawText(canvas, initials(texts_.title), rect,
                           TextStyle{Font::system(13, graphics::Weight::Semibold), Alignment::Centre}, ink);
    else
        graphics::drawSymbol(canvas, graphics::Symbol::Person, rect.inset(9, 9), ink);
    return rect.right() + gap;
}

void CallCell::drawCall(graphics::Canvas& canvas) {
    const double height = bounds().size.height;
    const Color ink = missed_ ? uikit::palette::destructive : Color::black();
    if (outgoing_)
        graphics::drawSymbol(canvas, graphics::Symbol::Outgoing,
                             {{margin - 2, (height - arrowSide) / 2}, {arrowSide, arrowSide}},
                             uikit::palette::secondaryText);
    const double x = drawPicture(canvas, margin + arrowSide + gap / 2);
    const double right = contentView()->frame().width();
    const double width = right - x - timeWidth - gap;
    const TextStyle title{Font::system(16, graphics::Weight::Semibold), Alignment::Left};
    const TextStyle below{Font::system(12.5), Alignment::Left};
    graphics::drawText(canvas, texts_.title, {{x, height / 2 - 19}, {width, 21}}, title, ink);
    graphics::drawText(canvas, texts_.below, {{x, height / 2 + 3}, {width, 16}}, below, uikit::palette::secondaryText);
    graphics::drawText(canvas, texts_.right, {{right - timeWidth, 0}, {timeWidth, height}},
                       TextStyle{Font::system(13), Alignment::Right}, uikit::palette::secondaryText);
}

void CallCell::drawDay(graphics::Canvas& canvas) {
    const double width = contentView()->frame().width() - 2 * margin;
    graphics::drawText(canvas, texts_.title, {{margin, 8}, {width, 22}},
                       TextStyle{Font::system(16, graphics::Weight::Semibold), Alignment::Left}, Color::black());
    constexpr graphics::Symbol symbols[] = {graphics::Symbol::DialledCalls, graphics::Symbol::ReceivedCalls,
                                            graphics::Symbol::MissedCalls};
    constexpr double lineHeight = 19;
    double y = 33;
    for (std::size_t i = 0; i < dayLines_.size(); ++i) {
        const Color ink = i == 2 ? uikit::palette::destructive : uikit::palette::secondaryText;
        graphics::drawSymbol(canvas, symbols[i], {{margin, y + 1}, {16, 16}}, ink);
        graphics::drawText(canvas, dayLines_[i], {{margin + 16 + gap, y}, {width - 16 - gap, lineHeight}},
                           TextStyle{Font::system(13), Alignment::Left}, ink);
        y += lineHeight;
    }
}

}  // namespace quorvel

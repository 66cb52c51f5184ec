// QVUITableViewCell.
#include "desktop/quorvel/visual/call_cell.h"

#include "desktop/quorvel/visual/row_parts.h"
#include "desktop/quorvel/visual/sources.h"

namespace quorvel {
namespace {

using graphics::Font;
using graphics::Rect;
using graphics::Weight;

constexpr double symbolLeft = 8;
constexpr double symbolSide = 16;
constexpr double textLeft = 30;
constexpr double pictureSide = 34;
constexpr double pictureGap = 9;
constexpr double gap = 8;
constexpr double smallGap = 4;
constexpr double titleRise = 9;
constexpr double subtitleFall = 10;

const Font titleFont = Font::system(16, Weight::Semibold);
constexpr double smallestTitle = 12.5;
const Font countFont = Font::system(15);
const Font subtitleFont = Font::system(12.5);
const Font sideFont = Font::system(13);

}  // namespace

void CallCell::define(objc::ClassDefinition<CallCell>& definition) {
    definition.method<"callEntry", &CallCell::callEntry>()
        .method<"setCallEntry:", &CallCell::setCallEntry>()
        .method<"showGroupByDateCell", &CallCell::showGroupByDateCell>()
        .method<"setShowGroupByDateCell:", &CallCell::setShowGroupByDateCell>()
        .method<"showGroupCount", &CallCell::showGroupCount>()
        .method<"setShowGroupCount:", &CallCell::setShowGroupCount>()
        .method<"showLogCell", &CallCell::showLogCell>()
        .method<"setShowLogCell:", &CallCell::setShowLogCell>()
        .method<"setNeedsDisplay", &CallCell::pictureMayHaveCome>();
}

void CallCell::setCallEntry(objc::Object entry) {
    entry_ = objc::Strong<>(entry);
    facts_ = readCall(entry);
    showsPictures_ = sources().showsPictures();
    picture_ = {};
    if (showsPictures_ && !facts_.name.empty()) tone_ = pictureTone(facts_.contact, facts_.number);
    lookUpPicture();
    refresh();
}

void CallCell::setShowGroupByDateCell(bool shows) {
    showsDay_ = shows;
    refresh();
}

void CallCell::setShowGroupCount(bool shows) {
    showsCount_ = shows;
    refresh();
}

void CallCell::setShowLogCell(bool shows) {
    showsHistory_ = shows;
    refresh();
}

void CallCell::pictureMayHaveCome() {
    if (!picture_) lookUpPicture();
    setNeedsDisplay();
}

void CallCell::lookUpPicture() {
    if (showsPictures_ && facts_.contact >= 1) picture_ = uikit::imageOf(sources().picture(facts_.contact));
}

void CallCell::refresh() {
    row_.reset();
    setNeedsDisplay();
}

void CallCell::prepareForReuse() {
    TableViewCell::prepareForReuse();
    showsDay_ = showsCount_ = showsHistory_ = false;
    entry_ = {};
    facts_ = {};
    picture_ = {};
    refresh();
}

const RowText& CallCell::row() const {
    const RowKind kind = showsHistory_ ? RowKind::History : showsDay_ ? RowKind::Day : RowKind::Call;
    if (!row_) row_ = rowText(facts_, kind, showsCount_);
    return *row_;
}

std::vector<std::string> CallCell::drawnTexts() const { return entry_ ? row().all() : std::vector<std::string>{}; }

void CallCell::draw(graphics::Canvas& canvas) {
    TableViewCell::draw(canvas);
    if (!entry_) return;
    const Rect content = contentView()->frame();
    const graphics::SavedState saved(canvas);
    canvas.translate(content.left(), content.top());
    if (showsHistory_)
        drawHistory(canvas, content.size);
    else if (showsDay_)
        drawDay(canvas, content.size);
    else
        drawCall(canvas, content.size);
}

/// Without an accessory the margin of the rows is kept.
double CallCell::textEdge(uikit::Size size) const {
    constexpr double margin = 15;
    return accessoryWidth() > 0 ? size.width : size.width - margin;
}

void CallCell::drawCall(graphics::Canvas& canvas, uikit::Size size) const {
    const RowText& text = row();
    const double middle = size.height / 2;
    drawDirection(canvas, facts_.direction, {{symbolLeft, middle - symbolSide / 2}, {symbolSide, symbolSide}});
    double left = textLeft;
    if (showsPictures_) {
        const Rect circle{{left, middle - pictureSide / 2}, {pictureSide, pictureSide}};
        drawContactPicture(canvas, circle, picture_, text.initials, tone_);
        left += pictureSide + pictureGap;
    }
    const double edge = textEdge(size);
    const double right = edge - drawSide(canvas, text.side, edge, middle, sideFont);
    const double titleMiddle = text.subtitle.empty() ? middle : middle - titleRise;
    const double countWidth = text.count.empty() ? 0 : textWidth(text.count, countFont) + smallGap;
    const uikit::Color color = titleColor(facts_.direction);
    // Names stand in one size in all rows; a number that is cut cannot be read.
    const Font fitted =
        facts_.name.empty() ? fittedFont(text.title, titleFont, smallestTitle, right - countWidth - left) : titleFont;
    const double end = drawLine(canvas, text.title, {left, titleMiddle}, right - countWidth, fitted, color);
    if (countWidth > 0) drawLine(canvas, text.count, {end + smallGap, titleMiddle}, right, countFont, color);
    double subtitleLeft = left;
    if (facts_.faceTime) subtitleLeft = drawFaceTime(canvas, facts_.faceTimeVideo, {left, middle + subtitleFall});
    drawLine(canvas, text.subtitle, {subtitleLeft, middle + subtitleFall}, right, subtitleFont,
             uikit::palette::secondaryText);
}

void CallCell::drawDay(graphics::Canvas& canvas, uikit::Size size) const {
    constexpr double margin = 15;
    constexpr double headlineMiddle = 24;
    constexpr double countsMiddle = 53;
    constexpr int columns = 3;
    const RowText& text = row();
    const double right = size.width - gap;
    drawLine(canvas, text.title, {margin, headlineMiddle}, right, titleFont, uikit::palette::brand);
    // The last column has no duration and gives room to the others.
    const double width = (right - margin) * 0.36;
    const DayColumn counts[columns] = {{Direction::Outgoing, text.dialled, text.dialledDuration},
                                       {Direction::Incoming, text.received, text.receivedDuration},
                                       {Direction::Missed, text.missed, {}}};
    for (int i = 0; i < columns; ++i) drawDayColumn(canvas, counts[i], {margin + i * width, countsMiddle}, width - gap);
}

void CallCell::drawHistory(graphics::Canvas& canvas, uikit::Size size) const {
    const RowText& text = row();
    const double middle = size.height / 2;
    drawDirection(canvas, facts_.direction, {{symbolLeft, middle - symbolSide / 2}, {symbolSide, symbolSide}});
    const double edge = textEdge(size);
    const double right = edge - drawSide(canvas, text.side, edge, middle, sideFont);
    drawLine(canvas, text.title, {textLeft, middle - titleRise}, right, Font::system(15, Weight::Medium),
             titleColor(facts_.direction));
    double left = textLeft;
    if (facts_.faceTime) left = drawFaceTime(canvas, facts_.faceTimeVideo, {left, middle + subtitleFall});
    drawLine(canvas, text.subtitle, {left, middle + subtitleFall}, right, subtitleFont, uikit::palette::secondaryText);
}

}  // namespace quorvel

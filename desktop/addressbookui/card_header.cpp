// The top of a card, drawn.
#include "desktop/addressbookui/card_header.h"

#include <algorithm>

#include "desktop/addressbookui/words.h"
#include "desktop/quorvel/visual/contact_picture.h"

namespace addressbookui {
namespace {

constexpr double margin = 15;
constexpr double pictureSide = 64;
constexpr double gap = 14;
constexpr double lineGap = 2;

graphics::TextStyle nameStyle() {
    graphics::TextStyle style;
    style.font = graphics::Font::system(21, graphics::Weight::Medium);
    style.alignment = graphics::Alignment::Left;
    style.lines = 3;
    return style;
}

graphics::TextStyle lineStyle() {
    graphics::TextStyle style;
    style.font = graphics::Font::system(14);
    style.alignment = graphics::Alignment::Left;
    style.lines = 2;
    return style;
}

double textWidth(double width) { return width - 2 * margin - pictureSide - gap; }

}  // namespace

void CardHeader::setContent(Content content) {
    content_ = std::move(content);
    setBackgroundColor(uikit::uiColor(uikit::Color::white()));
    setNeedsDisplay();
}

void CardHeader::setAddedView(uikit::View* view) {
    if (added_.get() == view) return;
    if (added_) added_->removeFromSuperview();
    added_ = objc::Ref<uikit::View>(view);
    if (view) addSubview(view);
    setNeedsLayout();
}

double CardHeader::topHeight(double width) const {
    double text = graphics::measureText(content_.name, nameStyle(), textWidth(width)).height;
    for (const auto& line : content_.lines)
        text += lineGap + graphics::measureText(line, lineStyle(), textWidth(width)).height;
    return std::max(pictureSide, text) + 2 * margin;
}

bool CardHeader::fit(double width) {
    const double height = topHeight(width) + (added_ ? added_->frame().height() : 0);
    const uikit::Size size{width, height};
    if (frame().size == size) return false;
    setFrame({frame().origin, size});
    setNeedsLayout();
    return true;
}

void CardHeader::layoutSubviews() {
    if (!added_) return;
    const double width = bounds().size.width;
    added_->setFrame({{0, topHeight(width)}, {width, added_->frame().height()}});
}

void CardHeader::draw(graphics::Canvas& canvas) {
    const double width = bounds().size.width;
    const double height = topHeight(width);
    const uikit::Rect circle{{margin, (height - pictureSide) / 2}, {pictureSide, pictureSide}};
    quorvel::drawContactPicture(canvas, circle, content_.picture, content_.initials, content_.tone);
    const double left = margin + pictureSide + gap;
    double text = graphics::measureText(content_.name, nameStyle(), textWidth(width)).height;
    double total = text;
    for (const auto& line : content_.lines)
        total += lineGap + graphics::measureText(line, lineStyle(), textWidth(width)).height;
    double y = (height - total) / 2;
    graphics::drawText(canvas, content_.name, {{left, y}, {textWidth(width), text}}, nameStyle(),
                       uikit::Color::black());
    for (const auto& line : content_.lines) {
        y += text + lineGap;
        text = graphics::measureText(line, lineStyle(), textWidth(width)).height;
        graphics::drawText(canvas, line, {{left, y}, {textWidth(width), text}}, lineStyle(),
                           uikit::palette::secondaryText);
    }
    canvas.horizontalHairline(added_ ? margin : 0, width, height - canvas.pixel(), uikit::palette::separator);
}

std::vector<std::string> CardHeader::drawnTexts() const {
    std::vector<std::string> texts{content_.name};
    texts.insert(texts.end(), content_.lines.begin(), content_.lines.end());
    std::erase(texts, std::string());
    return texts;
}

}  // namespace addressbookui

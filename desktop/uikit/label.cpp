// UILabel.
#include "desktop/uikit/label.h"

#include "desktop/uikit/text.h"

namespace uikit {
namespace {

graphics::Alignment alignmentOf(long alignment) {
    using graphics::Alignment;
    constexpr Alignment known[] = {Alignment::Left, Alignment::Centre, Alignment::Right};
    return alignment >= 0 && alignment < 3 ? known[alignment] : Alignment::Natural;
}

graphics::LineBreak lineBreakOf(long mode) {
    using graphics::LineBreak;
    constexpr LineBreak known[] = {LineBreak::Words,        LineBreak::Characters,   LineBreak::Clip,
                                   LineBreak::TruncateHead, LineBreak::TruncateTail, LineBreak::TruncateMiddle};
    return mode >= 0 && mode < 6 ? known[mode] : LineBreak::TruncateTail;
}

}  // namespace

Label::Label() { setUserInteractionEnabled(false); }

void Label::define(objc::ClassDefinition<Label>& definition) {
    definition.method<"text", &Label::text>()
        .method<"setText:", &Label::setText>()
        .method<"font", &Label::font>()
        .method<"setFont:", &Label::setFont>()
        .method<"textColor", &Label::textColor>()
        .method<"setTextColor:", &Label::setTextColor>()
        .method<"highlightedTextColor", &Label::highlightedTextColor>()
        .method<"setHighlightedTextColor:", &Label::setHighlightedTextColor>()
        .method<"isHighlighted", &Label::isHighlighted>()
        .method<"setHighlighted:", &Label::setHighlighted>()
        .method<"isEnabled", &Label::isEnabled>()
        .method<"setEnabled:", &Label::setEnabled>();
    definition.method<"textAlignment", &Label::textAlignment>()
        .method<"setTextAlignment:", &Label::setTextAlignment>()
        .method<"lineBreakMode", &Label::lineBreakMode>()
        .method<"setLineBreakMode:", &Label::setLineBreakMode>()
        .method<"numberOfLines", &Label::numberOfLines>()
        .method<"setNumberOfLines:", &Label::setNumberOfLines>()
        .method<"adjustsFontSizeToFitWidth", &Label::adjustsFontSizeToFitWidth>()
        .method<"setAdjustsFontSizeToFitWidth:", &Label::setAdjustsFontSizeToFitWidth>()
        .method<"minimumScaleFactor", &Label::minimumScaleFactor>()
        .method<"setMinimumScaleFactor:", &Label::setMinimumScaleFactor>();
}

void Label::setText(objc::Object text) {
    text_ = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(text));
    string_ = utf8(text_);
    setNeedsDisplay();
}

void Label::setString(std::string_view text) { setText(text.empty() ? objc::Object{} : nsString(text)); }

objc::Object Label::font() const { return uiFont(font_); }

void Label::setFont(objc::Object font) { setFontValue(fontOf(font)); }

void Label::setFontValue(const graphics::Font& font) {
    font_ = font;
    setNeedsDisplay();
}

objc::Object Label::textColor() const { return color_ ? color_.get() : uiColor(Color::black()); }

void Label::setTextColor(objc::Object color) {
    color_ = objc::Strong<>(color);
    setNeedsDisplay();
}

void Label::setColorValue(const Color& color) { setTextColor(uiColor(color)); }

void Label::setHighlightedTextColor(objc::Object color) {
    highlightedColor_ = objc::Strong<>(color);
    setNeedsDisplay();
}

void Label::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void Label::setEnabled(bool enabled) {
    enabled_ = enabled;
    setNeedsDisplay();
}

void Label::setTextAlignment(long alignment) {
    alignment_ = alignment;
    setNeedsDisplay();
}

void Label::setLineBreakMode(long mode) {
    lineBreak_ = mode;
    setNeedsDisplay();
}

void Label::setNumberOfLines(long lines) {
    lines_ = std::max(0L, lines);
    setNeedsDisplay();
}

void Label::setAdjustsFontSizeToFitWidth(bool shrinks) {
    shrinks_ = shrinks;
    setNeedsDisplay();
}

graphics::TextStyle Label::style() const {
    graphics::TextStyle style;
    style.font = font_;
    style.alignment = alignmentOf(alignment_);
    style.lineBreak = lineBreakOf(lineBreak_);
    style.lines = static_cast<int>(lines_);
    return style;
}

/// The style with the largest font, down to the minimum, in which a single line fits.
graphics::TextStyle Label::fittedStyle() const {
    graphics::TextStyle fitted = style();
    if (!shrinks_ || lines_ != 1) return fitted;
    const double smallest = font_.size * (minimumScale_ > 0 ? minimumScale_ : 0.5);
    while (fitted.font.size - 0.5 >= smallest && isTruncated(string_, fitted, frame().width())) fitted.font.size -= 0.5;
    return fitted;
}

Size Label::sizeThatFits(Size size) {
    if (string_.empty()) return {};
    // A single line is as long as it is; lines that wrap keep to the width that there is.
    const double width = lines_ == 1 || size.width <= 0 ? graphics::unboundedWidth : size.width;
    return measureText(string_, style(), width);
}

void Label::draw(graphics::Canvas& canvas) {
    if (string_.empty()) return;
    Color color = color_ ? colorOf(color_) : Color::black();
    if (highlighted_ && highlightedColor_) color = colorOf(highlightedColor_);
    if (!enabled_) color.alpha *= 0.4;
    drawText(canvas, string_, bounds(), fittedStyle(), color);
}

std::vector<std::string> Label::drawnTexts() const {
    return string_.empty() ? std::vector<std::string>{} : std::vector{string_};
}

}  // namespace uikit

// Rows of cards, drawn.
#include "desktop/addressbookui/card_cell.h"

#include "desktop/graphics/icons.h"
#include "desktop/uikit/application.h"

namespace addressbookui {
namespace {

constexpr double margin = 15;
constexpr double above = 9;
constexpr double labelGap = 3;
constexpr double buttonHeight = 44;
constexpr double symbolSide = 22;
constexpr double symbolGap = 16;
constexpr double touchSide = 44;
constexpr int mostLines = 12;

graphics::TextStyle labelStyle() {
    graphics::TextStyle style;
    style.font = graphics::Font::system(13);
    style.alignment = graphics::Alignment::Left;
    return style;
}

graphics::TextStyle textStyle(CardRow::Emphasis emphasis) {
    graphics::TextStyle style;
    const bool isStrong = emphasis != CardRow::Emphasis::none;
    style.font = graphics::Font::system(17, isStrong ? graphics::Weight::Semibold : graphics::Weight::Regular);
    style.alignment = graphics::Alignment::Left;
    style.lines = mostLines;
    style.vertical = graphics::VerticalAlignment::Top;
    return style;
}

graphics::TextStyle buttonStyle() {
    graphics::TextStyle style;
    style.alignment = graphics::Alignment::Left;
    return style;
}

double symbolsWidth(const CardRow& row) {
    return (row.callable ? symbolSide + symbolGap : 0) + (row.message ? symbolSide + symbolGap : 0);
}

double textWidth(const CardRow& row, double width) { return width - 2 * margin - symbolsWidth(row); }

uikit::Color textColor(const CardRow& row) {
    if (row.look == CardRow::Look::destructive || row.emphasis == CardRow::Emphasis::important)
        return uikit::palette::destructive;
    if (row.look == CardRow::Look::button || row.emphasis == CardRow::Emphasis::highlighted)
        return uikit::palette::brand;
    return uikit::Color::black();
}

}  // namespace

void CardCell::define(objc::ClassDefinition<CardCell>& definition) {
    definition.method<"sendMessage", &CardCell::sendMessage>();
}

double CardCell::heightOf(const CardRow& row, double width) {
    if (row.look != CardRow::Look::value) return buttonHeight;
    const double text = graphics::measureText(row.text, textStyle(row.emphasis), textWidth(row, width)).height;
    return above + labelStyle().font.lineHeight() + labelGap + text + above;
}

void CardCell::setRow(const CardRow& row) {
    row_ = row;
    setSelectionStyle(row_.chosen ? 3 : 0);
    setAccessoryType(row_.look == CardRow::Look::person ? disclosureIndicator : none);
    if (row_.message && !message_) {
        message_ = objc::Ref<uikit::Button>::make<"initWithFrame:">(uikit::Rect{{}, {touchSide, touchSide}});
        message_->setImageForState(
            uikit::uiImage(graphics::symbolImage(graphics::Symbol::Message, uikit::screenScale()), "message"),
            uikit::normalState);
        message_->setImageTint(uikit::palette::brand);
        message_->addTargetActionForControlEvents(object(), objc::selector<"sendMessage">(), uikit::touchUpInside);
        addSubview(message_);
    }
    if (message_) message_->setHidden(!row_.message);
    setNeedsLayout();
    setNeedsDisplay();
}

void CardCell::sendMessage() {
    if (const auto message = row_.message) message();
}

void CardCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    if (!message_) return;
    const uikit::Size size = bounds().size;
    const double right = size.width - margin - (row_.callable ? symbolSide + symbolGap : 0);
    message_->setFrame(
        {{right - symbolSide / 2 - touchSide / 2, (size.height - touchSide) / 2}, {touchSide, touchSide}});
}

void CardCell::draw(graphics::Canvas& canvas) {
    TableViewCell::draw(canvas);
    const uikit::Size size = bounds().size;
    if (row_.look != CardRow::Look::value) {
        const double width = size.width - margin - std::max(margin, accessoryWidth());
        graphics::drawText(canvas, row_.text, {{margin, 0}, {width, size.height}}, buttonStyle(), textColor(row_));
        return;
    }
    const double width = textWidth(row_, size.width);
    const double labelHeight = labelStyle().font.lineHeight();
    graphics::drawText(
        canvas, row_.label, {{margin, above}, {width, labelHeight}}, labelStyle(),
        row_.emphasis == CardRow::Emphasis::important ? uikit::palette::destructive : uikit::palette::brand);
    const double top = above + labelHeight + labelGap;
    graphics::drawText(canvas, row_.text, {{margin, top}, {width, size.height - top - above}}, textStyle(row_.emphasis),
                       textColor(row_));
    if (!row_.callable) return;
    const uikit::Rect place{{size.width - margin - symbolSide, (size.height - symbolSide) / 2},
                            {symbolSide, symbolSide}};
    graphics::drawSymbol(canvas, graphics::Symbol::Phone, place, uikit::palette::brand);
}

std::vector<std::string> CardCell::drawnTexts() const {
    std::vector<std::string> texts;
    if (!row_.label.empty()) texts.push_back(row_.label);
    texts.push_back(row_.text);
    return texts;
}

}  // namespace addressbookui

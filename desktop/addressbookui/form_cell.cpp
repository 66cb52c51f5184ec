// Rows of the form, laid out and drawn.
#include "desktop/addressbookui/form_cell.h"

#include "desktop/graphics/icons.h"

namespace addressbookui {
namespace {

constexpr double margin = 15;
constexpr double labelWidth = 78;
constexpr double gap = 10;
constexpr double plusRadius = 11;
constexpr long systemButton = 1;
constexpr long leftAligned = 1;

}  // namespace

void FormCell::define(objc::ClassDefinition<FormCell>& definition) {
    definition.method<"fieldChanged", &FormCell::fieldChanged>()
        .method<"tapLabel", &FormCell::tapLabel>()
        .method<"textFieldShouldReturn:", &FormCell::shouldReturn>();
}

objc::Object FormCell::initWithFrame(uikit::Rect frame) {
    const auto made = TableViewCell::initWithFrame(frame);
    field_ = objc::Ref<uikit::TextField>::make<"initWithFrame:">(uikit::Rect{});
    field_->setFont(uikit::uiFont(graphics::Font::system(16)));
    field_->setClearButtonMode(uikit::TextField::whileEditing);
    field_->setDelegate(object());
    field_->addTargetActionForControlEvents(object(), objc::selector<"fieldChanged">(), uikit::editingChanged);
    contentView()->addSubview(field_);
    label_ = objc::Ref<uikit::Button>(
        objc::peerOf<uikit::Button>(uikit::Button::withType(objc::classOf<uikit::Button>(), systemButton)));
    label_->titleLabel()->setFontValue(graphics::Font::system(15));
    label_->setContentHorizontalAlignment(leftAligned);
    label_->addTargetActionForControlEvents(object(), objc::selector<"tapLabel">(), uikit::touchUpInside);
    contentView()->insertSubviewBelow(label_, field_);
    return made;
}

void FormCell::setRow(const FormRow& row, std::function<void()> returned) {
    row_ = row;
    returned_ = std::move(returned);
    setSelectionStyle(row_.chosen ? 3 : 0);
    field_->setHidden(!hasField());
    field_->setText(uikit::nsString(row_.text));
    field_->setPlaceholder(uikit::nsString(row_.placeholder));
    label_->setHidden(row_.look != FormRow::Look::labelledField);
    label_->setTitleForState(uikit::nsString(row_.label), uikit::normalState);
    setNeedsLayout();
    setNeedsDisplay();
}

void FormCell::fieldChanged() {
    row_.text = field_->string();
    // Changing may make the rows anew.
    if (const auto edited = row_.edited) edited(row_.text);
}

void FormCell::tapLabel() {
    if (const auto tapped = row_.labelTapped) tapped();
}

bool FormCell::shouldReturn(objc::Object) {
    if (const auto returned = returned_) returned();
    return false;
}

void FormCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    const uikit::Size size = contentView()->frame().size;
    const bool isLabelled = row_.look == FormRow::Look::labelledField;
    const double inset = isLabelled && isEditing() ? 0 : margin;
    label_->setFrame({{inset, 0}, {labelWidth, size.height}});
    const double left = isLabelled ? inset + labelWidth + gap : margin;
    field_->setFrame({{left, 0}, {size.width - left - gap, size.height}});
}

void FormCell::draw(graphics::Canvas& canvas) {
    TableViewCell::draw(canvas);
    const uikit::Size size = bounds().size;
    graphics::TextStyle style;
    style.alignment = graphics::Alignment::Left;
    if (row_.look == FormRow::Look::labelledField) {
        const double x = contentView()->frame().left() + field_->frame().left() - gap;
        canvas.verticalHairline(x, 0, size.height, uikit::palette::separator);
    }
    if (row_.look == FormRow::Look::add) {
        const uikit::Point middle{margin - 4 + plusRadius, size.height / 2};
        canvas.fillCircle(middle, plusRadius, uikit::Color::fromHex(0x34C759));
        canvas.line({middle.x - 5, middle.y}, {middle.x + 5, middle.y}, 2, uikit::Color::white());
        canvas.line({middle.x, middle.y - 5}, {middle.x, middle.y + 5}, 2, uikit::Color::white());
        graphics::drawText(canvas, row_.text, {{minusWidth, 0}, {size.width - minusWidth - margin, size.height}}, style,
                           uikit::palette::brand);
    }
    if (row_.look == FormRow::Look::destructive)
        graphics::drawText(canvas, row_.text, {{margin, 0}, {size.width - 2 * margin, size.height}}, style,
                           uikit::palette::destructive);
}

std::vector<std::string> FormCell::drawnTexts() const {
    return hasField() ? std::vector<std::string>() : std::vector<std::string>{row_.text};
}

}  // namespace addressbookui

// UITextField: focus, typing, and the delegate's say.
#include "desktop/uikit/text_field.h"

#include <algorithm>

#include "desktop/graphics/icons.h"
#include "desktop/uikit/text.h"

namespace uikit {
namespace {

constexpr double roundedMargin = 7;
constexpr double rounding = 5;
constexpr double clearSide = 15;
constexpr double clearMargin = 6;
constexpr double verticalMargin = 4;
const Color placeholderColor = Color::fromHex(0xC7C7CD);

/// Where the UTF-16 units of a string's first bytes end: what a range in an NSString counts.
unsigned long unitsOf(std::string_view text) {
    return text.empty() ? 0 : objc::send<"length", unsigned long>(nsString(text));
}

struct Range {
    unsigned long location;
    unsigned long length;
};

}  // namespace

void TextField::define(objc::ClassDefinition<TextField>& definition) {
    definition.method<"text", &TextField::text>()
        .method<"setText:", &TextField::setText>()
        .method<"placeholder", &TextField::placeholder>()
        .method<"setPlaceholder:", &TextField::setPlaceholder>()
        .method<"font", &TextField::font>()
        .method<"setFont:", &TextField::setFont>()
        .method<"textColor", &TextField::textColor>()
        .method<"setTextColor:", &TextField::setTextColor>()
        .method<"delegate", &TextField::delegate>()
        .method<"setDelegate:", &TextField::setDelegate>()
        .method<"isEditing", &TextField::isEditing>()
        .method<"borderStyle", &TextField::borderStyle>()
        .method<"setBorderStyle:", &TextField::setBorderStyle>()
        .method<"clearButtonMode", &TextField::clearButtonMode>()
        .method<"setClearButtonMode:", &TextField::setClearButtonMode>();
}

objc::Object TextField::text() const { return nsString(editor_.text()); }

void TextField::setText(objc::Object text) {
    editor_.setText(utf8(text));
    setNeedsDisplay();
}

objc::Object TextField::placeholder() const { return placeholder_.empty() ? objc::Object{} : nsString(placeholder_); }

void TextField::setPlaceholder(objc::Object text) {
    placeholder_ = utf8(text);
    setNeedsDisplay();
}

objc::Object TextField::font() const { return uiFont(font_); }

void TextField::setFont(objc::Object font) {
    font_ = fontOf(font);
    setNeedsDisplay();
}

objc::Object TextField::textColor() const { return textColor_ ? textColor_.get() : uiColor(Color::black()); }

void TextField::setTextColor(objc::Object color) {
    textColor_ = objc::Strong<>(color);
    setNeedsDisplay();
}

void TextField::setBorderStyle(long style) {
    border_ = style;
    setNeedsDisplay();
}

void TextField::setClearButtonMode(long mode) {
    clearMode_ = mode;
    setNeedsDisplay();
}

bool TextField::delegateAllows(SEL question) {
    const auto receiver = delegate();
    return !receiver || !objc::respondsTo(receiver, question) || objc::sendSelector<bool>(receiver, question, object());
}

void TextField::tellDelegate(SEL message) {
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, message)) objc::sendSelector(receiver, message, object());
}

bool TextField::becomeFirstResponder() {
    if (isFirstResponder()) return true;
    if (!isEnabled() || !delegateAllows(objc::selector<"textFieldShouldBeginEditing:">())) return false;
    if (!Control::becomeFirstResponder()) return false;
    setNeedsDisplay();
    tellDelegate(objc::selector<"textFieldDidBeginEditing:">());
    sendActionsForControlEvents(editingDidBegin);
    return true;
}

bool TextField::resignFirstResponder() {
    if (!isFirstResponder()) return true;
    if (!delegateAllows(objc::selector<"textFieldShouldEndEditing:">())) return false;
    Control::resignFirstResponder();
    setNeedsDisplay();
    tellDelegate(objc::selector<"textFieldDidEndEditing:">());
    sendActionsForControlEvents(editingDidEnd);
    return true;
}

void TextField::windowChanged(Window* window) {
    Control::windowChanged(window);
    if (window || !isFirstResponder()) return;
    // There is no place left to edit in, so nobody is asked.
    Control::resignFirstResponder();
    tellDelegate(objc::selector<"textFieldDidEndEditing:">());
    sendActionsForControlEvents(editingDidEnd);
}

bool TextField::touch(const Touch& touch) {
    if (!isEnabled()) return false;
    if (touch.phase != TouchPhase::Ended) return true;
    const Point point = pointFromWindow(touch.point);
    if (!bounds().contains(point)) return true;
    if (const Rect clear = clearRect(); !clear.isEmpty() && clear.inset(-clearMargin, -clearMargin).contains(point)) {
        this->clear();
        return true;
    }
    if (!objc::send<"becomeFirstResponder", bool>(object())) return true;
    const Rect rect = textRect();
    editor_.moveCaretTo(point.x - rect.left(), rect.width(), font_);
    setNeedsDisplay();
    return true;
}

void TextField::insertText(std::string_view text) {
    constexpr auto question = objc::Name{"textField:shouldChangeCharactersInRange:replacementString:"};
    if (const auto receiver = delegate(); receiver && objc::respondsTo(receiver, objc::selector<question>())) {
        const Range range{unitsOf(std::string_view(editor_.text()).substr(0, editor_.caret())), 0};
        if (!objc::send<question, bool>(receiver, object(), range, nsString(text))) return;
    }
    editor_.insert(text);
    changed();
}

void TextField::pressKey(EditingKey key) {
    if (key == EditingKey::Return) {
        if (!delegateAllows(objc::selector<"textFieldShouldReturn:">())) return;
        sendActionsForControlEvents(editingDidEndOnExit);
        objc::send<"resignFirstResponder", bool>(object());
        return;
    }
    if (editor_.press(key)) changed();
    setNeedsDisplay();
}

void TextField::clear() {
    if (!delegateAllows(objc::selector<"textFieldShouldClear:">())) return;
    editor_.setText({});
    changed();
}

void TextField::changed() {
    setNeedsDisplay();
    sendActionsForControlEvents(editingChanged);
}

Rect TextField::clearRect() const {
    const bool shown = clearMode_ == always || (clearMode_ == whileEditing && isEditing()) ||
                       (clearMode_ == unlessEditing && !isEditing());
    if (!shown || editor_.text().empty()) return {};
    const Size size = bounds().size;
    return {{size.width - clearSide - clearMargin, (size.height - clearSide) / 2}, {clearSide, clearSide}};
}

Rect TextField::textRect() const {
    const double margin = border_ == noBorder ? 0 : roundedMargin;
    const double right = clearMode_ == never ? margin : clearSide + 2 * clearMargin;
    const Size size = bounds().size;
    return {{margin, 0}, {std::max(0.0, size.width - margin - right), size.height}};
}

void TextField::draw(graphics::Canvas& canvas) {
    if (border_ == rounded) {
        canvas.fillRounded(bounds(), rounding, Color::white());
        canvas.strokeRounded(bounds().inset(canvas.pixel() / 2, canvas.pixel() / 2), rounding, canvas.pixel(),
                             palette::separator);
    } else if (border_ != noBorder) {
        canvas.strokeRounded(bounds().inset(canvas.pixel() / 2, canvas.pixel() / 2), 0, canvas.pixel(),
                             palette::secondaryText);
    }
    const Color color = isEnabled() ? colorOf(textColor()) : palette::secondaryText;
    editor_.draw(canvas, textRect(), {font_, color, placeholderColor, tint(), placeholder_, isFirstResponder()});
    if (const Rect clear = clearRect(); !clear.isEmpty())
        graphics::drawSymbol(canvas, graphics::Symbol::Clear, clear, palette::secondaryText);
}

Size TextField::sizeThatFits(Size size) {
    return {size.width, font_.lineHeight() + 2 * (border_ == noBorder ? 0 : verticalMargin)};
}

std::vector<std::string> TextField::drawnTexts() const {
    const std::string& shown = editor_.text().empty() ? placeholder_ : editor_.text();
    if (shown.empty()) return {};
    return {shown};
}

}  // namespace uikit

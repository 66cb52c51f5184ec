// The keypad's twelve keys, call and delete.
#include "desktop/phone/keypad_screen.h"

#include "desktop/graphics/icons.h"
#include "desktop/phone/phone_text.h"
#include "desktop/uikit/application.h"

namespace phone {
namespace {

struct KeyCap {
    const char* digit;
    const char* letters;
};
constexpr KeyCap keys[] = {{"1", ""},     {"2", "ABC"}, {"3", "DEF"},  {"4", "GHI"}, {"5", "JKL"}, {"6", "MNO"},
                           {"7", "PQRS"}, {"8", "TUV"}, {"9", "WXYZ"}, {"*", ""},    {"0", "+"},   {"#", ""}};
constexpr double keySide = 66;
constexpr double keyGapX = 22;
constexpr double keyGapY = 10;
constexpr double padTop = 70;

/// A round key with a hairline around it.
class KeyButton : public uikit::Button {
  public:
    using Super = uikit::Button;
    static constexpr objc::Name className{"PHKeypadButton"};
    static void define(objc::ClassDefinition<KeyButton>&) {}

    void draw(graphics::Canvas& canvas) override {
        const double radius = bounds().size.width / 2;
        const uikit::Color ground = fill.alpha > 0 ? fill : uikit::palette::brand.withAlpha(isHighlighted() ? 0.15 : 0);
        canvas.fillCircle(bounds().centre(), radius, ground);
        if (fill.alpha == 0) canvas.strokeCircle(bounds().centre(), radius - 0.5, 0.75, uikit::palette::brand);
        Button::draw(canvas);
    }
    uikit::Color fill = uikit::Color::clear();
};

double padLeft() { return (uikit::screenSize().width - 3 * keySide - 2 * keyGapX) / 2; }

uikit::Rect keyRect(int row, int column) {
    return {{padLeft() + column * (keySide + keyGapX), padTop + row * (keySide + keyGapY)}, {keySide, keySide}};
}

}  // namespace

void KeypadScreen::define(objc::ClassDefinition<KeypadScreen>& definition) {
    definition.method<"loadView", &KeypadScreen::loadView>()
        .method<"typeDigit:", &KeypadScreen::typeDigit>()
        .method<"removeDigit", &KeypadScreen::removeDigit>()
        .method<"call", &KeypadScreen::call>();
}

void KeypadScreen::loadView() {
    auto pad = objc::Ref<uikit::View>::make<"initWithFrame:">(uikit::Rect{{0, 0}, uikit::screenSize()});
    pad->setBackgroundColor(uikit::uiColor(uikit::Color::white()));
    setView(pad);
    setTitle(uikit::nsString(phoneText("KEYPAD")));
    number_ = objc::Ref<uikit::Label>::make();
    number_->setFrame({{20, 10}, {uikit::screenSize().width - 40, 50}});
    number_->setTextAlignment(1);
    number_->setFontValue(graphics::Font::system(32, graphics::Weight::Light));
    number_->setAdjustsFontSizeToFitWidth(true);
    pad->addSubview(number_);
    for (int i = 0; i < static_cast<int>(std::size(keys)); ++i) addKey(pad, i, keys[i].digit, keys[i].letters);

    auto callKey = objc::Ref<KeyButton>::make<"initWithFrame:">(keyRect(4, 1));
    callKey->fill = uikit::Color::fromHex(0x34C759);
    callKey->setImageForState(
        uikit::uiImage(graphics::symbolImage(graphics::Symbol::PhoneFilled, uikit::screenScale())), uikit::normalState);
    callKey->setImageTint(uikit::Color::white());
    callKey->addTargetActionForControlEvents(object(), objc::selector<"call">(), uikit::touchUpInside);
    pad->addSubview(callKey);
    auto removeKey = objc::Ref<uikit::Button>::make<"initWithFrame:">(keyRect(4, 2));
    removeKey->setImageForState(uikit::uiImage(graphics::symbolImage(graphics::Symbol::Clear, uikit::screenScale())),
                                uikit::normalState);
    removeKey->setImageTint(uikit::palette::secondaryText);
    removeKey->addTargetActionForControlEvents(object(), objc::selector<"removeDigit">(), uikit::touchUpInside);
    pad->addSubview(removeKey);
    showDigits();
}

void KeypadScreen::addKey(uikit::View* pad, int index, const char* digit, const char* letters) {
    auto key = objc::Ref<KeyButton>::make<"initWithFrame:">(keyRect(index / 3, index % 3));
    key->setTitleForState(uikit::nsString(digit), uikit::normalState);
    key->setTitleColorForState(uikit::uiColor(uikit::palette::brand), uikit::normalState);
    key->titleLabel()->setFontValue(graphics::Font::system(30, graphics::Weight::Light));
    key->setTitleEdgeInsets({0, 0, *letters ? 14.0 : 0.0, 0});
    key->addTargetActionForControlEvents(object(), objc::selector<"typeDigit:">(), uikit::touchUpInside);
    pad->addSubview(key);
    if (!*letters) return;
    auto caption = objc::Ref<uikit::Label>::make();
    caption->setString(letters);
    caption->setTextAlignment(1);
    caption->setFontValue(graphics::Font::system(9));
    caption->setColorValue(uikit::palette::brand);
    caption->setFrame({{0, 44}, {keySide, 12}});
    key->addSubview(caption);
}

void KeypadScreen::showDigits() { number_->setString(digits_); }

void KeypadScreen::typeDigit(objc::Object button) {
    digits_ += uikit::utf8(objc::send<"currentTitle", objc::Object>(button));
    showDigits();
}

void KeypadScreen::insertText(std::string_view text) {
    constexpr std::string_view typed = "0123456789*#+";
    for (const char letter : text)
        if (typed.find(letter) != std::string_view::npos) digits_ += letter;
    showDigits();
}

void KeypadScreen::pressKey(EditingKey key) {
    if (key == EditingKey::Backspace) removeDigit();
    if (key == EditingKey::Return) call();
    if (key == EditingKey::Escape) digits_.clear();
    showDigits();
}

void KeypadScreen::removeDigit() {
    if (!digits_.empty()) digits_.pop_back();
    showDigits();
}

void KeypadScreen::call() {
    if (digits_.empty()) return;
    const auto url = objc::sendClass<"NSURL", "URLWithString:", objc::Object>(uikit::nsString("tel://" + digits_));
    if (url) objc::send<"openURL:", bool>(uikit::Application::shared()->object(), url);
}

}  // namespace phone

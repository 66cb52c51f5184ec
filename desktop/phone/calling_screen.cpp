// The calling screen.
#include "desktop/phone/calling_screen.h"

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/addressbook/labels.h"
#include "desktop/addressbook/names.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbookui/people.h"
#include "desktop/dispatch/clock.h"
#include "desktop/phone/phone_text.h"
#include "desktop/quorvel/visual/contact_picture.h"
#include "desktop/uikit/application.h"

namespace phone {
namespace {

using Kind = OpenedAddress::Kind;

constexpr double margin = 24;
constexpr double pictureTop = 84;
constexpr double pictureSide = 120;
constexpr double buttonHeight = 50;
constexpr double buttonBottom = 44;
constexpr double fadeSeconds = 0.25;
constexpr double minute = 60;

const char* mannerKey(Kind kind) {
    switch (kind) {
        case Kind::telephone:
            return "CALL_TELEPHONE";
        case Kind::faceTime:
            return "CALL_FACETIME";
        case Kind::faceTimeAudio:
            return "CALL_FACETIME_AUDIO";
        case Kind::message:
            return "CALL_MESSAGE";
        case Kind::mail:
            return "CALL_MAIL";
    }
    return "";
}

graphics::TextStyle styleOf(double size, graphics::Weight weight, int lines) {
    graphics::TextStyle style;
    style.font = graphics::Font::system(size, weight);
    style.alignment = graphics::Alignment::Centre;
    style.lines = lines;
    style.vertical = graphics::VerticalAlignment::Top;
    return style;
}

/// A button without a picture of its own: a pill in one colour.
class EndButton : public uikit::Button {
  public:
    using Super = uikit::Button;
    static constexpr objc::Name className{"PHEndCallButton"};
    static void define(objc::ClassDefinition<EndButton>&) {}

    void draw(graphics::Canvas& canvas) override {
        const double strength = isHighlighted() ? 0.7 : 1;
        canvas.fillRounded(bounds(), bounds().height() / 2, ground.withAlpha(strength));
        Button::draw(canvas);
    }
    uikit::Color ground = uikit::palette::destructive;
};

}  // namespace

void CallingScreen::define(objc::ClassDefinition<CallingScreen>& definition) {
    definition.method<"hangUp", &CallingScreen::hangUp>();
}

CallingScreen::~CallingScreen() { uikit::cancelAnimation(ticking_); }

CallingScreen* CallingScreen::front() {
    auto* window = uikit::Application::shared()->keyWindow();
    if (!window) return nullptr;
    for (const auto& view : window->subviews()) {
        auto* screen = objc::peerIf<CallingScreen>(view->object());
        if (screen && !screen->leaving_) return screen;
    }
    return nullptr;
}

CallingScreen* CallingScreen::show(const OpenedAddress& address) {
    auto* window = uikit::Application::shared()->keyWindow();
    if (!window) return nullptr;
    if (auto* former = front()) former->removeFromSuperview();
    auto screen = objc::Ref<CallingScreen>::make<"initWithFrame:">(uikit::Rect{{}, uikit::screenSize()});
    screen->begin(address);
    window->cancelTouch();
    window->addOverlay(screen);
    screen->setAlpha(0);
    uikit::animateChanges(fadeSeconds, 0, uikit::Curve::EaseOut, [&] { screen->setAlpha(1); });
    return screen;
}

void CallingScreen::begin(const OpenedAddress& address) {
    address_ = address;
    setBackgroundColor(uikit::uiColor(uikit::Color::white()));
    setAutoresizingMask(uikit::flexibleWidth | uikit::flexibleHeight);
    const std::string formatted = contacts::formattedNumber(address.target);
    manner_ = phoneText(mannerKey(address.kind));
    if (const auto caller = contacts::callerOf(address.target)) {
        record_ = caller->record;
        name_ = caller->name;
        const std::string label = contacts::label::ofLog(caller->label, contacts::language());
        number_ = label.empty() ? formatted : label + "  " + formatted;
        if (const auto contact = contacts::Book::shared().contact(record_))
            picture_ = addressbookui::pictureOf(*contact);
    } else {
        name_ = formatted.empty() ? phoneText("CALL_NOBODY") : formatted;
    }
    const bool isACall = isCall(address.kind);
    if (!isACall) note_ = phoneText("CALL_NOT_SENT");
    auto button = objc::Ref<EndButton>::make<"initWithFrame:">(uikit::Rect{});
    if (!isACall) button->ground = uikit::palette::brand;
    button->setTitleForState(uikit::nsString(phoneText(isACall ? "CALL_END" : "CALL_CLOSE")), uikit::normalState);
    button->setTitleColorForState(uikit::uiColor(uikit::Color::white()), uikit::normalState);
    button->titleLabel()->setFontValue(graphics::Font::system(18, graphics::Weight::Medium));
    button->addTargetActionForControlEvents(object(), objc::selector<"hangUp">(), uikit::touchUpInside);
    addSubview(button);
    end_ = objc::Ref<uikit::Button>(button.get());
    began_ = dispatch::Clock::now();
    if (!isACall) return;
    ticking_ = uikit::everyFrame(uikit::Motion::Endless, [this](double) {
        const long second = static_cast<long>(dispatch::Clock::now() - began_);
        if (second != shownSecond_) setNeedsDisplay();
        shownSecond_ = second;
        return true;
    });
}

void CallingScreen::hangUp() {
    if (leaving_) return;
    leaving_ = true;
    uikit::cancelAnimation(std::exchange(ticking_, 0));
    uikit::animateChanges(
        fadeSeconds, 0, uikit::Curve::EaseOut, [this] { setAlpha(0); },
        [me = objc::Ref<CallingScreen>(this)](bool) { me->removeFromSuperview(); });
}

std::string CallingScreen::time() const {
    const double seconds = std::max(0.0, dispatch::Clock::now() - began_);
    const long minutes = static_cast<long>(seconds / minute);
    char text[32];
    constexpr long minutesOfAnHour = 60;
    const int rest = static_cast<int>(seconds - static_cast<double>(minutes) * minute);
    if (minutes < minutesOfAnHour)
        std::snprintf(text, sizeof text, "%ld:%02d", minutes, rest);
    else
        std::snprintf(text, sizeof text, "%ld:%02ld:%02d", minutes / minutesOfAnHour, minutes % minutesOfAnHour, rest);
    return text;
}

void CallingScreen::layoutSubviews() {
    const uikit::Size size = bounds().size;
    end_->setFrame({{margin, size.height - buttonBottom - buttonHeight}, {size.width - 2 * margin, buttonHeight}});
}

void CallingScreen::draw(graphics::Canvas& canvas) {
    const double width = bounds().size.width - 2 * margin;
    const uikit::Rect circle{{(bounds().size.width - pictureSide) / 2, pictureTop}, {pictureSide, pictureSide}};
    quorvel::drawContactPicture(canvas, circle, picture_, record_ > 0 ? quorvel::initialsOf(name_) : "",
                                quorvel::pictureTone(record_, address_.target));
    double y = circle.bottom() + 22;
    const auto put = [&](const std::string& text, const graphics::TextStyle& style, const uikit::Color& color,
                         double gap) {
        if (text.empty()) return;
        const double height = graphics::measureText(text, style, width).height;
        graphics::drawText(canvas, text, {{margin, y}, {width, height}}, style, color);
        y += height + gap;
    };
    put(name_, styleOf(28, graphics::Weight::Light, 2), uikit::Color::black(), 6);
    put(number_, styleOf(16, graphics::Weight::Regular, 2), uikit::palette::secondaryText, 6);
    put(manner_, styleOf(16, graphics::Weight::Medium, 1), uikit::palette::brand, 14);
    if (isCall(address_.kind))
        put(time(), styleOf(20, graphics::Weight::Light, 1), uikit::Color::black(), 0);
    else
        put(note_, styleOf(14, graphics::Weight::Regular, 4), uikit::palette::secondaryText, 0);
}

std::vector<std::string> CallingScreen::drawnTexts() const {
    std::vector<std::string> texts{name_, number_, manner_, isCall(address_.kind) ? time() : note_};
    std::erase(texts, std::string());
    return texts;
}

}  // namespace phone

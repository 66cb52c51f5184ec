// QVRecentsPersonPhoneHeaderView.
#include "desktop/quorvel/visual/person_header.h"

#include "desktop/graphics/icons.h"
#include "desktop/quorvel/visual/call_time.h"
#include "desktop/quorvel/visual/row_parts.h"
#include "desktop/quorvel/visual/sources.h"
#include "desktop/uikit/application.h"

namespace quorvel {
namespace {

constexpr std::size_t mostLines = 5;
constexpr double margin = 15;
constexpr double dayHeight = 40;
constexpr double lineHeight = 25;
constexpr double buttonHeight = 36;
constexpr double buttonGap = 10;
constexpr double symbolSide = 15;
constexpr double detailSide = 40;
constexpr long systemButton = 1;

const graphics::Font dayFont = graphics::Font::system(15, graphics::Weight::Semibold);
const graphics::Font lineFont = graphics::Font::system(14);

}  // namespace

void PersonHeader::define(objc::ClassDefinition<PersonHeader>& definition) {
    definition.method<"setCallRecords:", &PersonHeader::setCallRecords>()
        .method<"callRecords", &PersonHeader::callRecords>()
        .method<"delegate", &PersonHeader::delegate>()
        .method<"setDelegate:", &PersonHeader::setDelegate>()
        .method<"showHistory:", &PersonHeader::showHistory>()
        .method<"showDetails", &PersonHeader::showDetails>();
}

objc::Object PersonHeader::initWithFrame(uikit::Rect frame) {
    const auto made = View::initWithFrame(frame);
    setBackgroundColor(uikit::uiColor(uikit::Color::white()));
    auto makeButton = [&](SEL action) {
        auto* button =
            objc::peerOf<uikit::Button>(uikit::Button::withType(objc::classOf<uikit::Button>(), systemButton));
        button->setTintColor(uikit::uiColor(uikit::palette::brand));
        button->addTargetActionForControlEvents(object(), action, uikit::touchUpInside);
        addSubview(button);
        return objc::Ref<uikit::Button>(button);
    };
    history_ = makeButton(objc::selector<"showHistory:">());
    history_->setTitleForState(uikit::nsString(sources().text("CALL_HISTORY")), uikit::normalState);
    history_->setBackgroundColor(uikit::uiColor(uikit::palette::brand.withAlpha(0.08)));
    history_->setCornerRadius(8);
    details_ = makeButton(objc::selector<"showDetails">());
    details_->setImageForState(
        uikit::uiImage(graphics::symbolImage(graphics::Symbol::Detail, uikit::screenScale()), "detail"),
        uikit::normalState);
    return made;
}

void PersonHeader::setCallRecords(objc::Object records) {
    records_ = objc::Strong<>(records);
    lines_.clear();
    day_.clear();
    more_.clear();
    const auto count = objc::send<"count", unsigned long>(records);
    for (unsigned long i = 0; i < count && i < mostLines; ++i) {
        const auto entry = objc::send<"objectAtIndex:", objc::Object>(records, i);
        const CallFacts facts = readCall(entry);
        lines_.push_back({facts, clockTime(facts.date), facts.duration > 0 ? durationText(facts.duration) : ""});
    }
    if (!lines_.empty()) day_ = dayName(lines_.front().facts.date);
    if (count > mostLines) more_ = "+" + std::to_string(count - mostLines);
    uikit::Rect place = frame();
    place.size = sizeThatFits(place.size);
    setFrame(place);
    setNeedsLayout();
    setNeedsDisplay();
}

double PersonHeader::height() const {
    const double below = buttonGap + buttonHeight + buttonGap;
    const std::size_t lines = lines_.size() + (more_.empty() ? 0 : 1);
    return (day_.empty() ? 0 : dayHeight) + static_cast<double>(lines) * lineHeight + below;
}

uikit::Size PersonHeader::sizeThatFits(uikit::Size size) {
    return {size.width > 0 ? size.width : uikit::screenSize().width, height()};
}

void PersonHeader::layoutSubviews() {
    const uikit::Size size = bounds().size;
    history_->setFrame({{margin, size.height - buttonGap - buttonHeight}, {size.width - 2 * margin, buttonHeight}});
    details_->setFrame({{size.width - margin - detailSide + 9, 0}, {detailSide, dayHeight}});
    details_->setHidden(day_.empty());
}

void PersonHeader::draw(graphics::Canvas& canvas) {
    const double right = bounds().size.width - margin;
    drawLine(canvas, day_, {margin, dayHeight / 2}, right - detailSide, dayFont, uikit::palette::brand);
    double y = dayHeight + lineHeight / 2;
    for (const auto& line : lines_) {
        drawDirection(canvas, line.facts.direction, {{margin, y - symbolSide / 2}, {symbolSide, symbolSide}});
        const double left = margin + symbolSide + 9;
        const double end = drawLine(canvas, line.time, {left, y}, right, lineFont, titleColor(line.facts.direction));
        if (line.facts.faceTime) drawFaceTime(canvas, line.facts.faceTimeVideo, {end + 8, y});
        drawSide(canvas, line.duration, right, y, lineFont);
        y += lineHeight;
    }
    drawLine(canvas, more_, {margin + symbolSide + 9, y}, right, lineFont, uikit::palette::secondaryText);
    canvas.horizontalHairline(0, bounds().size.width, bounds().size.height - canvas.pixel(), uikit::palette::separator);
}

std::vector<std::string> PersonHeader::drawnTexts() const {
    std::vector<std::string> texts{day_};
    for (const auto& line : lines_) {
        texts.push_back(line.time);
        texts.push_back(line.duration);
    }
    texts.push_back(more_);
    std::erase(texts, std::string());
    return texts;
}

void PersonHeader::showHistory(objc::Object button) {
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, objc::selector<"showLogAction:">()))
        objc::send<"showLogAction:">(receiver, button);
}

void PersonHeader::showDetails() {
    const auto receiver = delegate();
    if (receiver && objc::respondsTo(receiver, objc::selector<"detailsButotnClicked">()))
        objc::send<"detailsButotnClicked">(receiver);
}

}  // namespace quorvel

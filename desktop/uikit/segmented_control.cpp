// UISegmentedControl.
#include "desktop/uikit/segmented_control.h"

#include <cmath>

#include "desktop/uikit/text.h"

namespace uikit {
namespace {

constexpr double outlineRadius = 4;
constexpr double lineWidth = 1;
constexpr double margin = 10;
constexpr double textMargin = 3;
constexpr double smallestText = 9;
constexpr double pressedShade = 0.15;
constexpr double disabledAlpha = 0.4;
constexpr double leastContrast = 0.4;

graphics::TextStyle titleStyle() {
    graphics::TextStyle style;
    style.font = graphics::Font::system(13);
    style.alignment = graphics::Alignment::Centre;
    return style;
}

/// As bright as people see it, 0 to 1.
double brightness(const Color& color) { return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue; }

bool canBeReadOn(const Color& ground, const Color& color) {
    return std::abs(brightness(ground) - brightness(color)) >= leastContrast;
}

}  // namespace

void SegmentedControl::define(objc::ClassDefinition<SegmentedControl>& definition) {
    definition.method<"initWithItems:", &SegmentedControl::initWithItems>()
        .method<"numberOfSegments", &SegmentedControl::numberOfSegments>()
        .method<"insertSegmentWithTitle:atIndex:animated:", &SegmentedControl::insertTitleAtIndexAnimated>()
        .method<"insertSegmentWithImage:atIndex:animated:", &SegmentedControl::insertImageAtIndexAnimated>()
        .method<"removeSegmentAtIndex:animated:", &SegmentedControl::removeAtIndexAnimated>()
        .method<"removeAllSegments", &SegmentedControl::removeAllSegments>()
        .method<"setTitle:forSegmentAtIndex:", &SegmentedControl::setTitleForSegment>()
        .method<"titleForSegmentAtIndex:", &SegmentedControl::titleForSegment>()
        .method<"setImage:forSegmentAtIndex:", &SegmentedControl::setImageForSegment>()
        .method<"imageForSegmentAtIndex:", &SegmentedControl::imageForSegment>();
    definition.method<"setEnabled:forSegmentAtIndex:", &SegmentedControl::setEnabledForSegment>()
        .method<"isEnabledForSegmentAtIndex:", &SegmentedControl::isEnabledForSegment>()
        .method<"setWidth:forSegmentAtIndex:", &SegmentedControl::setWidthForSegment>()
        .method<"widthForSegmentAtIndex:", &SegmentedControl::widthForSegment>()
        .method<"selectedSegmentIndex", &SegmentedControl::selectedSegmentIndex>()
        .method<"setSelectedSegmentIndex:", &SegmentedControl::setSelectedSegmentIndex>()
        .method<"isMomentary", &SegmentedControl::isMomentary>()
        .method<"setMomentary:", &SegmentedControl::setMomentary>();
}

objc::Object SegmentedControl::initWithItems(objc::Object items) {
    const auto made = objc::send<"initWithFrame:", objc::Object>(object(), Rect{});
    const unsigned long count = objc::send<"count", unsigned long>(items);
    for (unsigned long i = 0; i < count; ++i) {
        const auto item = objc::send<"objectAtIndex:", objc::Object>(items, i);
        if (objc::peerIf<ImageObject>(item))
            insertImageAtIndexAnimated(item, i, false);
        else
            insertTitleAtIndexAnimated(item, i, false);
    }
    setFrame({{}, sizeThatFits({})});
    return made;
}

objc::Object SegmentedControl::initWithFrame(Rect frame) {
    if (frame.height() == 0) frame.size.height = height;
    return Control::initWithFrame(frame);
}

void SegmentedControl::insert(Segment segment, unsigned long index) {
    index = std::min<unsigned long>(index, segments_.size());
    segments_.insert(segments_.begin() + static_cast<std::ptrdiff_t>(index), std::move(segment));
    if (selected_ >= static_cast<long>(index)) ++selected_;
    setNeedsDisplay();
}

void SegmentedControl::insertTitleAtIndexAnimated(objc::Object title, unsigned long index, bool) {
    insert({objc::Strong<>::adopt(objc::send<"copy", objc::Object>(title)), {}}, index);
}

void SegmentedControl::insertImageAtIndexAnimated(objc::Object image, unsigned long index, bool) {
    insert({{}, objc::Strong<>(image)}, index);
}

void SegmentedControl::removeAtIndexAnimated(unsigned long index, bool) {
    if (index >= segments_.size()) return;
    segments_.erase(segments_.begin() + static_cast<std::ptrdiff_t>(index));
    const long removed = static_cast<long>(index);
    if (selected_ == removed) selected_ = noSegment;
    if (selected_ > removed) --selected_;
    setNeedsDisplay();
}

void SegmentedControl::removeAllSegments() {
    segments_.clear();
    selected_ = pressed_ = noSegment;
    setNeedsDisplay();
}

void SegmentedControl::setTitleForSegment(objc::Object title, unsigned long index) {
    if (index >= segments_.size()) return;
    segments_[index].title = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(title));
    segments_[index].image = {};
    setNeedsDisplay();
}

objc::Object SegmentedControl::titleForSegment(unsigned long index) const {
    return index < segments_.size() ? segments_[index].title.get() : objc::Object{};
}

void SegmentedControl::setImageForSegment(objc::Object image, unsigned long index) {
    if (index >= segments_.size() || !image) return;
    segments_[index].image = objc::Strong<>(image);
    segments_[index].title = {};
    setNeedsDisplay();
}

objc::Object SegmentedControl::imageForSegment(unsigned long index) const {
    return index < segments_.size() ? segments_[index].image.get() : objc::Object{};
}

void SegmentedControl::setEnabledForSegment(bool enabled, unsigned long index) {
    if (index >= segments_.size()) return;
    segments_[index].enabled = enabled;
    setNeedsDisplay();
}

bool SegmentedControl::isEnabledForSegment(unsigned long index) const {
    return index < segments_.size() && segments_[index].enabled;
}

void SegmentedControl::setWidthForSegment(double width, unsigned long index) {
    if (index >= segments_.size()) return;
    segments_[index].width = width;
    setNeedsDisplay();
}

double SegmentedControl::widthForSegment(unsigned long index) const {
    return index < segments_.size() ? segments_[index].width : 0;
}

void SegmentedControl::setSelectedSegmentIndex(long index) {
    if (index < noSegment || index >= static_cast<long>(segments_.size())) return;
    selected_ = index;
    setNeedsDisplay();
}

Size SegmentedControl::sizeThatFits(Size) {
    double widest = 0;
    double fixed = 0;
    int flexible = 0;
    for (const auto& each : segments_) {
        if (each.width > 0) {
            fixed += each.width;
            continue;
        }
        ++flexible;
        const double content =
            each.image ? imageOf(each.image).size().width : measureText(utf8(each.title), titleStyle()).width;
        widest = std::max(widest, content);
    }
    return {std::ceil(fixed + flexible * (widest + 2 * margin)), height};
}

Rect SegmentedControl::segmentRect(unsigned long index) const {
    double fixed = 0;
    int flexible = 0;
    for (const auto& each : segments_) {
        fixed += each.width;
        flexible += each.width <= 0;
    }
    const double share = flexible ? std::max(0.0, frame().width() - fixed) / flexible : 0;
    double left = 0;
    for (unsigned long i = 0; i < index && i < segments_.size(); ++i)
        left += segments_[i].width > 0 ? segments_[i].width : share;
    if (index >= segments_.size()) return {{left, 0}, {}};
    const double width = segments_[index].width > 0 ? segments_[index].width : share;
    return {{left, 0}, {width, frame().height()}};
}

long SegmentedControl::segmentAt(Point point) const {
    for (unsigned long i = 0; i < segments_.size(); ++i) {
        if (segmentRect(i).contains(point)) return static_cast<long>(i);
    }
    return noSegment;
}

void SegmentedControl::setPressed(long index) {
    if (index >= 0 && !isEnabledForSegment(static_cast<unsigned long>(index))) index = noSegment;
    if (index == pressed_) return;
    pressed_ = index;
    setNeedsDisplay();
}

void SegmentedControl::trackingBegan(Point point) { setPressed(segmentAt(point)); }

void SegmentedControl::trackingMoved(Point point, bool) { setPressed(segmentAt(point)); }

void SegmentedControl::trackingEnded(Point, bool) {
    const long chosen = pressed_;
    setPressed(noSegment);
    if (chosen == noSegment || (chosen == selected_ && !momentary_)) return;
    selected_ = chosen;
    setNeedsDisplay();
    sendActionsForControlEvents(valueChanged);
    if (momentary_) selected_ = noSegment;
}

void SegmentedControl::trackingCancelled() { setPressed(noSegment); }

void SegmentedControl::drawContent(graphics::Canvas& canvas, const Segment& segment, const Rect& rect,
                                   const Color& color, const graphics::TextStyle& style) const {
    if (const auto image = imageOf(segment.image)) {
        const double factor = std::min({1.0, rect.width() / image.size().width, rect.height() / image.size().height});
        const Size size{image.size().width * factor, image.size().height * factor};
        canvas.drawTinted(image, canvas.snapped(centred(size, rect)), color);
        return;
    }
    drawText(canvas, utf8(segment.title), rect.inset(textMargin, 0), style, color);
}

/// All titles in one size: the largest in which the longest of them fits.
graphics::TextStyle SegmentedControl::fittedStyle() const {
    auto style = titleStyle();
    for (unsigned long i = 0; i < segments_.size(); ++i) {
        if (!segments_[i].title) continue;
        const std::string title = utf8(segments_[i].title);
        const double width = segmentRect(i).inset(textMargin, 0).width();
        while (style.font.size > smallestText && isTruncated(title, style, width)) style.font.size -= 0.5;
    }
    return style;
}

void SegmentedControl::drawSegments(graphics::Canvas& canvas, const Rect& whole, const Color& color) const {
    const graphics::SavedState saved(canvas);
    canvas.clipRounded(whole, outlineRadius);
    for (unsigned long i = 0; i < segments_.size(); ++i) {
        const Rect rect = canvas.snapped(segmentRect(i));
        const bool selected = static_cast<long>(i) == selected_;
        if (selected) canvas.fill(rect, color);
        if (static_cast<long>(i) == pressed_ && !selected) canvas.fill(rect, color.withAlpha(pressedShade));
        if (i > 0) canvas.fill(canvas.snapped({{rect.left() - lineWidth / 2, 0}, {lineWidth, rect.height()}}), color);
    }
}

/// White on a dark tint. On a light one the selected segment shows its content in the colour of what lies behind the
/// control, as if it were cut out, and in black where that cannot be read either.
Color SegmentedControl::selectedContentColor() const {
    const Color ground = tint();
    if (canBeReadOn(ground, Color::white())) return Color::white();
    for (const View* each = superview(); each; each = each->superview()) {
        const Color behind = colorOf(each->backgroundColor());
        if (behind.alpha == 1) return canBeReadOn(ground, behind) ? behind : Color::black();
    }
    return Color::black();
}

void SegmentedControl::draw(graphics::Canvas& canvas) {
    if (segments_.empty()) return;
    const Color color = tint();
    const Rect whole = canvas.snapped(bounds());
    if (!isEnabled()) canvas.beginGroup();
    drawSegments(canvas, whole, color);
    canvas.strokeRounded(whole, outlineRadius, lineWidth, color);
    const auto style = fittedStyle();
    const Color selected = selectedContentColor();
    for (unsigned long i = 0; i < segments_.size(); ++i) {
        const Color plain = segments_[i].enabled ? color : color.withAlpha(disabledAlpha);
        drawContent(canvas, segments_[i], segmentRect(i), static_cast<long>(i) == selected_ ? selected : plain, style);
    }
    if (!isEnabled()) canvas.endGroup(disabledAlpha);
}

std::vector<std::string> SegmentedControl::drawnTexts() const {
    std::vector<std::string> texts;
    for (const auto& each : segments_) {
        if (!each.image && each.title) texts.push_back(utf8(each.title));
    }
    return texts;
}

}  // namespace uikit

// UITableViewCell.
#include "desktop/uikit/table_view_cell.h"

#include "desktop/graphics/icons.h"

namespace uikit {
namespace {

constexpr double margin = 15;
constexpr double detailSide = 22;
constexpr double chevronWidth = 9;
constexpr double chevronHeight = 14;
constexpr double accessoryGap = 8;
constexpr double touchMargin = 10;
constexpr double imageSide = 34;
constexpr double minusSide = 22;
constexpr double fadeSeconds = 0.3;
constexpr double slideSeconds = 0.25;
constexpr double pressedAlpha = 0.3;
const Color highlightColor = Color::fromHex(0xD9D9D9);

}  // namespace

void TableViewCell::define(objc::ClassDefinition<TableViewCell>& definition) {
    definition.method<"initWithStyle:reuseIdentifier:", &TableViewCell::initWithStyleReuseIdentifier>()
        .method<"reuseIdentifier", &TableViewCell::reuseIdentifier>()
        .method<"prepareForReuse", &TableViewCell::prepareForReuse>()
        .method<"contentView", &TableViewCell::contentView>()
        .method<"textLabel", &TableViewCell::textLabel>()
        .method<"detailTextLabel", &TableViewCell::detailTextLabel>()
        .method<"imageView", &TableViewCell::imageView>()
        .method<"accessoryType", &TableViewCell::accessoryType>()
        .method<"setAccessoryType:", &TableViewCell::setAccessoryType>()
        .method<"accessoryView", &TableViewCell::accessoryView>()
        .method<"setAccessoryView:", &TableViewCell::setAccessoryView>()
        .method<"selectionStyle", &TableViewCell::selectionStyle>()
        .method<"setSelectionStyle:", &TableViewCell::setSelectionStyle>()
        .method<"isHighlighted", &TableViewCell::isHighlighted>()
        .method<"setHighlighted:animated:", &TableViewCell::setHighlightedAnimated>()
        .method<"isEditing", &TableViewCell::isEditing>()
        .method<"setEditing:", &TableViewCell::setEditing>();
}

TableViewCell::~TableViewCell() {
    cancelAnimation(fade_);
    cancelAnimation(slide_);
}

objc::Object TableViewCell::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setBackgroundColor(uiColor(Color::white()));
    setClipsToBounds(true);
    contentView_ = objc::Ref<View>::make();
    addSubview(contentView_);
    return made;
}

objc::Object TableViewCell::initWithStyleReuseIdentifier(long style, objc::Object identifier) {
    style_ = style;
    setIdentifier(identifier);
    constexpr Rect usual{{0, 0}, {320, 44}};
    return objc::send<"initWithFrame:", objc::Object>(object(), usual);
}

void TableViewCell::setIdentifier(objc::Object identifier) { identifier_ = objc::Strong<>(identifier); }

/// What moved for the row before ends with it.
void TableViewCell::prepareForReuse() {
    setHighlightedAnimated(false, false);
    setDetailPressed(false);
    setRevealed(0);
}

Label* TableViewCell::textLabel() {
    if (!text_) {
        text_ = objc::Ref<Label>::make();
        text_->setFontValue(graphics::Font::system(style_ == subtitle ? 16 : 17));
        contentView_->addSubview(text_);
    }
    return text_;
}

Label* TableViewCell::detailTextLabel() {
    if (!detail_) {
        detail_ = objc::Ref<Label>::make();
        detail_->setFontValue(graphics::Font::system(style_ == subtitle ? 12 : 17));
        detail_->setColorValue(palette::secondaryText);
        contentView_->addSubview(detail_);
    }
    return detail_;
}

ImageView* TableViewCell::imageView() {
    if (!image_) {
        image_ = objc::Ref<ImageView>::make();
        contentView_->addSubview(image_);
    }
    return image_;
}

void TableViewCell::setAccessoryType(long type) {
    accessory_ = type;
    setNeedsLayout();
    setNeedsDisplay();
}

void TableViewCell::setAccessoryView(View* view) {
    if (accessoryView_) accessoryView_->removeFromSuperview();
    accessoryView_ = objc::Ref<View>(view);
    if (view) {
        view->setHidden(editing_);
        addSubview(view);
    }
    setNeedsLayout();
}

void TableViewCell::setEditing(bool editing) {
    editing_ = editing;
    if (accessoryView_) accessoryView_->setHidden(editing);
    setNeedsLayout();
    setNeedsDisplay();
}

void TableViewCell::setShowsMinus(bool shows) {
    showsMinus_ = shows;
    setNeedsLayout();
}

void TableViewCell::setRevealed(double points) {
    cancelAnimation(std::exchange(slide_, 0));
    revealed_ = points;
    setNeedsLayout();
    setNeedsDisplay();
}

void TableViewCell::slideToRevealed(double points) {
    cancelAnimation(slide_);
    slide_ = animate(slideSeconds, Curve::EaseOut, [this, from = revealed_, points](double progress) {
        revealed_ = from + (points - from) * progress;
        setNeedsLayout();
        setNeedsDisplay();
    });
}

void TableViewCell::setDetailPressed(bool pressed) {
    detailPressed_ = pressed;
    setNeedsDisplay();
}

void TableViewCell::setHighlightedAnimated(bool highlighted, bool animated) {
    if (highlighted == highlighted_ && animated) return;
    highlighted_ = highlighted;
    cancelAnimation(std::exchange(fade_, 0));
    const double from = highlight_;
    const double to = highlighted ? 1 : 0;
    // What is pressed is grey at once.
    fade_ = animate(highlighted || !animated ? 0 : fadeSeconds, Curve::EaseOut, [this, from, to](double progress) {
        highlight_ = from + (to - from) * progress;
        setNeedsDisplay();
    });
}

double TableViewCell::accessoryWidth() const {
    if (editing_) return 0;
    if (accessoryView_) return accessoryView_->frame().size.width + margin + accessoryGap;
    switch (accessory_) {
        case disclosureIndicator:
            return chevronWidth + margin + accessoryGap;
        case detailDisclosure:
            return detailSide + chevronWidth + margin + 2 * accessoryGap;
        case checkmark:
        case detailButton:
            return detailSide + margin + accessoryGap;
        default:
            return 0;
    }
}

Rect TableViewCell::detailRect() const {
    if (editing_ || (accessory_ != detailButton && accessory_ != detailDisclosure)) return {};
    const double right =
        bounds().size.width - margin - (accessory_ == detailDisclosure ? chevronWidth + accessoryGap : 0) - revealed_;
    return Rect{{right - detailSide, (bounds().size.height - detailSide) / 2}, {detailSide, detailSide}}.inset(
        -touchMargin, -touchMargin);
}

Rect TableViewCell::minusRect() const {
    return leftInset() > 0 ? Rect{{0, 0}, {minusWidth + margin / 2, bounds().size.height}} : Rect{};
}

void TableViewCell::layoutSubviews() {
    const Size size = bounds().size;
    const double left = leftInset() - revealed_;
    const Rect content{{left, 0}, {size.width - leftInset() - accessoryWidth(), size.height}};
    contentView_->setFrame(content);
    if (accessoryView_) {
        Size own = accessoryView_->frame().size;
        if (own.isEmpty()) own = {20, 20};
        accessoryView_->setFrame({{size.width - margin - own.width - revealed_, (size.height - own.height) / 2}, own});
    }
    double x = margin;
    if (image_ && image_->image()) {
        image_->setFrame({{x, (size.height - imageSide) / 2}, {imageSide, imageSide}});
        x += imageSide + accessoryGap;
    }
    const double width = content.size.width - x;
    if (style_ == subtitle && detail_ && text_) {
        const double middle = size.height / 2;
        text_->setFrame({{x, middle - 19}, {width, 21}});
        detail_->setFrame({{x, middle + 3}, {width, 16}});
    } else {
        const double detailWidth = detail_ ? detail_->sizeThatFits({width, 0}).width : 0;
        if (text_) text_->setFrame({{x, 0}, {width - detailWidth, size.height}});
        if (detail_) detail_->setFrame({{x + width - detailWidth, 0}, {detailWidth, size.height}});
    }
}

void TableViewCell::draw(graphics::Canvas& canvas) {
    if (highlight_ > 0 && selectionStyle_ != 0) canvas.fill(bounds(), highlightColor.withAlpha(highlight_));
    if (leftInset() > 0) {
        const Point middle{margin - 4 + minusSide / 2, bounds().size.height / 2};
        canvas.fillCircle(middle, minusSide / 2, palette::destructive);
        canvas.line({middle.x - 5, middle.y}, {middle.x + 5, middle.y}, 2, Color::white());
    }
    drawAccessory(canvas);
}

void TableViewCell::drawAccessory(graphics::Canvas& canvas) const {
    if (accessoryView_ || editing_) return;
    const double middle = bounds().size.height / 2;
    double right = bounds().size.width - margin - revealed_;
    if (accessory_ == disclosureIndicator || accessory_ == detailDisclosure) {
        const Rect chevron{{right - chevronWidth, middle - chevronHeight / 2}, {chevronWidth, chevronHeight}};
        graphics::drawSymbol(canvas, graphics::Symbol::Disclosure, chevron, palette::separator);
        right -= chevronWidth + accessoryGap;
    }
    const Rect symbol{{right - detailSide, middle - detailSide / 2}, {detailSide, detailSide}};
    if (accessory_ == detailButton || accessory_ == detailDisclosure)
        graphics::drawSymbol(canvas, graphics::Symbol::Detail, symbol,
                             detailPressed_ ? tint().withAlpha(pressedAlpha) : tint());
    if (accessory_ == checkmark) graphics::drawSymbol(canvas, graphics::Symbol::Checkmark, symbol, tint());
}

}  // namespace uikit

// UINavigationBar: rebuilt for each change of its item, faded where the change is animated.
#include "desktop/uikit/navigation_bar.h"

#include <algorithm>

#include "desktop/graphics/icons.h"
#include "desktop/uikit/application.h"
#include "desktop/weak/weak.h"

namespace uikit {
namespace {

constexpr double sideMargin = 6;
constexpr double maximumTitleWidth = 200;
constexpr double maximumBackWidth = 110;
constexpr double titleGap = 8;
constexpr double fadeSeconds = 0.2;
const Color barColor = Color::fromHex(0xF8F8F8);
const Color hairlineColor = Color::fromHex(0xB2B2B2);

}  // namespace

void NavigationBar::define(objc::ClassDefinition<NavigationBar>& definition) {
    definition.method<"goBack", &NavigationBar::goBack>();
}

NavigationBar::~NavigationBar() { cancelAnimation(fade_); }

objc::Object NavigationBar::initWithFrame(Rect frame) {
    const auto made = View::initWithFrame(frame);
    setBackgroundColor(uiColor(barColor));
    return made;
}

void NavigationBar::showItem(NavigationItem* item, const std::string& backTitle, bool animated) {
    if (item_ && item_.get() != item) item_->setObserver({});
    item_ = objc::Ref<NavigationItem>(item);
    backTitle_ = backTitle;
    if (item_) item_->setObserver(weak::whileAlive(this, [this](bool itemAnimated) { rebuild(itemAnimated); }));
    rebuild(animated);
}

void NavigationBar::goBack() {
    if (backAction_) backAction_();
}

bool NavigationBar::isBackShown() const {
    return item_ && !backTitle_.empty() && !item_->hidesBackButton() && !item_->leftBarButtonItem();
}

objc::Ref<View> NavigationBar::makeBackButton() {
    constexpr long systemType = 1;
    constexpr double gap = 4;
    objc::Ref<Button> button(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), systemType)));
    button->setImageForState(uiImage(graphics::symbolImage(graphics::Symbol::Back, screenScale())), normalState);
    button->setTitleForState(nsString(backTitle_), normalState);
    button->setTitleEdgeInsets({0, gap, 0, 0});
    button->addTargetActionForControlEvents(object(), objc::selector<"goBack">(), touchUpInside);
    // Beside a wide title view there is room for the arrow alone.
    const auto* middle = item_->titleView();
    const double besideMiddle = middle ? (bounds().size.width - middle->frame().size.width) / 2 : 0;
    const double room = middle ? besideMiddle - sideMargin - titleGap : maximumBackWidth;
    if (button->sizeThatFits({}).width + gap > room) button->setTitleForState({}, normalState);
    const double width = std::min(button->sizeThatFits({}).width + gap, maximumBackWidth);
    button->setFrame({{0, 0}, {width, height}});
    return objc::Ref<View>(button.get());
}

void NavigationBar::showTitle() {
    if (item_->titleView()) {
        title_ = objc::Ref<View>(item_->titleView());
        if (title_->frame().size.height == 0) title_->sizeToFit();
    } else {
        auto label = objc::Ref<Label>::make();
        label->setString(utf8(item_->title()));
        label->setFontValue(graphics::Font::boldSystem(17));
        label->setTextAlignment(1);
        label->setFrame({{0, 0}, {maximumTitleWidth, height}});
        title_ = objc::Ref<View>(label.get());
    }
    addSubview(title_);
}

void NavigationBar::rebuild(bool animated) {
    for (auto* view : {&left_, &right_, &title_}) {
        if (*view && (*view)->superview() == this) (*view)->removeFromSuperview();
        *view = {};
    }
    if (!item_) return;
    if (item_->leftBarButtonItem())
        left_ = item_->leftBarButtonItem()->makeView();
    else if (isBackShown())
        left_ = makeBackButton();
    if (item_->rightBarButtonItem()) right_ = item_->rightBarButtonItem()->makeView();
    for (auto* view : {&left_, &right_})
        if (*view) addSubview(*view);
    showTitle();
    setNeedsLayout();
    if (animated) fadeIn();
}

void NavigationBar::fadeIn() {
    cancelAnimation(fade_);
    fade_ = animate(
        fadeSeconds, Curve::EaseOut,
        [this](double progress) {
            for (auto* view : {&left_, &right_})
                if (*view) (*view)->setAlpha(progress);
        },
        [this](bool) {
            for (auto* view : {&left_, &right_})
                if (*view) (*view)->setAlpha(1);
        });
}

void NavigationBar::place(View* view, double x) {
    const Size size = view->frame().size;
    view->setFrame({{x, (bounds().size.height - size.height) / 2}, size});
}

void NavigationBar::layoutSubviews() {
    const double width = bounds().size.width;
    if (left_) place(left_, sideMargin);
    if (right_) place(right_, width - sideMargin - right_->frame().size.width);
    if (!title_) return;
    double titleWidth = title_->frame().size.width;
    if (!item_->titleView()) {
        const double taken =
            std::max(left_ ? left_->frame().right() : sideMargin, right_ ? width - right_->frame().left() : sideMargin);
        titleWidth = std::max(0.0, width - 2 * taken);
        title_->setFrame({title_->frame().origin, {titleWidth, title_->frame().size.height}});
    }
    // In the middle, as far as the buttons leave room there.
    const double least = left_ ? left_->frame().right() + titleGap : sideMargin;
    const double most = (right_ ? right_->frame().left() - titleGap : width - sideMargin) - titleWidth;
    const double middle = (width - titleWidth) / 2;
    place(title_, item_->titleView() ? std::max(least, std::min(middle, most)) : middle);
}

void NavigationBar::drawAbove(graphics::Canvas& canvas) {
    canvas.horizontalHairline(0, bounds().size.width, bounds().size.height, hairlineColor);
}

std::vector<std::string> NavigationBar::drawnTexts() const { return {}; }

}  // namespace uikit

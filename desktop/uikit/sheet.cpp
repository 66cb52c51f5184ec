// Sheets and alerts.
#include "desktop/uikit/sheet.h"

#include "desktop/uikit/application.h"

namespace uikit {
namespace {

constexpr double slideSeconds = 0.3;
constexpr double sheetMargin = 8;
constexpr double buttonHeight = 44;
constexpr double sheetButtonHeight = 50;
constexpr double groupGap = 8;
constexpr double alertWidth = 270;
constexpr double rounding = 7;
constexpr double labelMargin = 16;
constexpr double dimming = 0.4;

bool isAlert(const Sheet::Content& content) { return content.style == Sheet::Style::Alert; }

std::string headline(const Sheet::Content& content) {
    if (content.title.empty() || content.message.empty()) return content.title + content.message;
    return content.title + '\n' + content.message;
}

}  // namespace

void Sheet::define(objc::ClassDefinition<Sheet>& definition) { definition.method<"choose:", &Sheet::choose>(); }

Sheet::~Sheet() { cancelAnimation(animation_); }

objc::Ref<Sheet> Sheet::present(Window* window, Content content, std::function<void(long)> chosen,
                                std::function<void(long)> gone) {
    auto sheet = objc::Ref<Sheet>::make<"initWithFrame:">(Rect{{0, 0}, window->bounds().size});
    sheet->content_ = std::move(content);
    sheet->chosen_ = std::move(chosen);
    sheet->gone_ = std::move(gone);
    sheet->build();
    window->addOverlay(sheet);
    // Laid out and hidden before the first frame, which must not show the panel in its place.
    sheet->layoutIfNeeded();
    sheet->reveal(0);
    Sheet* raw = sheet.get();
    sheet->animation_ = animate(slideSeconds, Curve::EaseOut, [raw](double progress) { raw->reveal(progress); });
    return sheet;
}

void Sheet::build() {
    setAutoresizingMask(flexibleWidth | flexibleHeight);
    panel_ = objc::Ref<View>::make();
    addSubview(panel_);
    label_ = objc::Ref<Label>::make();
    label_->setString(headline(content_));
    label_->setNumberOfLines(0);
    label_->setTextAlignment(1);
    label_->setFontValue(isAlert(content_) ? graphics::Font::boldSystem(16) : graphics::Font::system(13));
    label_->setColorValue(isAlert(content_) ? Color::black() : palette::secondaryText);
    panel_->addSubview(label_);
    constexpr long systemType = 1;
    for (std::size_t i = 0; i < content_.choices.size(); ++i) {
        const Choice& choice = content_.choices[i];
        objc::Ref<Button> button(objc::peerOf<Button>(Button::withType(objc::classOf<Button>(), systemType)));
        button->setTitleForState(nsString(choice.title), normalState);
        button->setTag(static_cast<long>(i));
        button->titleLabel()->setFontValue(choice.role == Role::Cancel ? graphics::Font::boldSystem(19)
                                                                       : graphics::Font::system(19));
        if (choice.role == Role::Destructive) button->setTitleColorForState(uiColor(palette::destructive), normalState);
        button->addTargetActionForControlEvents(object(), objc::selector<"choose:">(), touchUpInside);
        panel_->addSubview(button);
        buttons_.push_back(button);
    }
}

void Sheet::choose(objc::Object button) { dismiss(objc::peerOf<Button>(button)->tag(), true); }

void Sheet::reveal(double amount) {
    shown_ = amount;
    if (isAlert(content_))
        panel_->setAlpha(amount);
    else
        panel_->setDisplacement({0, panelHeight() * (1 - amount)});
    setNeedsDisplay();
}

void Sheet::dismiss(long choice, bool animated) {
    if (std::exchange(leaving_, true)) return;
    setUserInteractionEnabled(false);
    cancelAnimation(animation_);
    const objc::Ref<Sheet> me(this);
    const double from = shown_;
    // Taken first: a panel that leaves its window forgets whom to tell.
    const auto chosen = std::exchange(chosen_, {});
    if (chosen) chosen(choice);
    animation_ = animate(
        animated ? slideSeconds : 0, Curve::EaseIn, [me, from](double progress) { me->reveal(from * (1 - progress)); },
        [me, choice](bool) {
            const auto gone = std::exchange(me->gone_, {});
            me->removeFromSuperview();
            if (gone) gone(choice);
        });
}

void Sheet::windowChanged(Window* window) {
    View::windowChanged(window);
    if (window) return;
    const objc::Ref<Sheet> me(this);
    const auto forgotten = std::pair(std::exchange(chosen_, {}), std::exchange(gone_, {}));
}

double Sheet::panelHeight() { return panel_->frame().size.height; }

void Sheet::layoutSubviews() {
    const Size screen = bounds().size;
    const bool alert = isAlert(content_);
    const double width = alert ? alertWidth : screen.width - 2 * sheetMargin;
    const double rowHeight = alert ? buttonHeight : sheetButtonHeight;
    const bool hasText = !label_->string().empty();
    double y = 0;
    if (hasText) {
        const Size text = label_->sizeThatFits({width - 2 * labelMargin, 0});
        label_->setFrame({{labelMargin, labelMargin}, {width - 2 * labelMargin, text.height}});
        y = text.height + 2 * labelMargin;
    }
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (!alert && content_.choices[i].role == Role::Cancel) y += groupGap;
        buttons_[i]->setFrame({{0, y}, {width, rowHeight}});
        y += rowHeight;
    }
    if (!alert) y += sheetMargin;
    panel_->setFrame(alert ? Rect{{(screen.width - width) / 2, (screen.height - y) / 2}, {width, y}}
                           : Rect{{sheetMargin, screen.height - y}, {width, y}});
}

void Sheet::dim(graphics::Canvas& canvas, const Rect& rect) const {
    canvas.fill(rect, Color::gray(0, dimming * shown_));
}

void Sheet::draw(graphics::Canvas& canvas) {
    dim(canvas, bounds());
    const Rect panel = panel_->frame().translated(panel_->displacement().x, panel_->displacement().y);
    const Color ground = Color::gray(1, isAlert(content_) ? shown_ : 1);
    double groupTop = panel.top();
    auto closeGroup = [&](double bottom) {
        if (bottom > groupTop)
            canvas.fillRounded({{panel.left(), groupTop}, {panel.width(), bottom - groupTop}}, rounding, ground);
    };
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const double top = panel.top() + buttons_[i]->frame().top();
        if (!isAlert(content_) && content_.choices[i].role == Role::Cancel) {
            closeGroup(top - groupGap);
            groupTop = top;
        }
    }
    closeGroup(panel.top() + (buttons_.empty() ? panel.height() : buttons_.back()->frame().bottom()));
    for (const auto& button : buttons_) {
        const double top = panel.top() + button->frame().top();
        // The top button of a group has the group's rounded edge above it.
        if (top > panel.top() && top != groupTop)
            canvas.horizontalHairline(panel.left(), panel.right(), top, palette::separator);
    }
}

std::vector<std::string> Sheet::drawnTexts() const { return {}; }

Sheet* frontSheet() {
    Window* window = Application::shared()->keyWindow();
    if (!window) return nullptr;
    const auto& views = window->subviews();
    for (auto view = views.rbegin(); view != views.rend(); ++view)
        if (auto* sheet = objc::peerIf<Sheet>((*view)->object()); sheet && !sheet->isLeaving()) return sheet;
    return nullptr;
}

}  // namespace uikit

// UITabBarController and its bar.
#include "desktop/uikit/tab_bar_controller.h"

#include <algorithm>

#include "desktop/graphics/text.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/weak/weak.h"

namespace uikit {
namespace {

constexpr double symbolSide = 26;
constexpr double symbolTop = 5;
constexpr double titleTop = 33;
constexpr double titleHeight = 13;
const Color hairlineColor = Color::fromHex(0xB2B2B2);

}  // namespace

objc::Ref<TabBarItem> TabBarItem::make(std::string title, graphics::Symbol symbol) {
    auto item = objc::Ref<TabBarItem>::make();
    item->title = std::move(title);
    item->symbol = symbol;
    return item;
}

void TabBar::setItems(std::vector<objc::Ref<TabBarItem>> items) {
    items_ = std::move(items);
    setNeedsDisplay();
}

void TabBar::setSelected(std::size_t index) {
    selected_ = index;
    setNeedsDisplay();
}

void TabBar::draw(graphics::Canvas& canvas) {
    const double width = bounds().size.width / std::max<double>(1, static_cast<double>(items_.size()));
    const graphics::TextStyle style{graphics::Font::system(10), graphics::Alignment::Centre};
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const double left = width * static_cast<double>(i);
        const Color color = i == selected_ ? palette::brand : palette::secondaryText;
        const Rect symbol{{left + (width - symbolSide) / 2, symbolTop}, {symbolSide, symbolSide}};
        graphics::drawSymbol(canvas, items_[i]->symbol, symbol, color);
        graphics::drawText(canvas, items_[i]->title, {{left, titleTop}, {width, titleHeight}}, style, color);
    }
    canvas.horizontalHairline(0, bounds().size.width, 0, hairlineColor);
}

bool TabBar::touch(const Touch& touch) {
    if (touch.phase != TouchPhase::Ended || items_.empty()) return true;
    const Point point = pointFromWindow(touch.point);
    if (!bounds().contains(point)) return true;
    const auto index = static_cast<std::size_t>(point.x / bounds().size.width * static_cast<double>(items_.size()));
    if (onSelect_) onSelect_(std::min(index, items_.size() - 1));
    return true;
}

std::vector<std::string> TabBar::drawnTexts() const {
    std::vector<std::string> titles;
    for (const auto& item : items_) titles.push_back(item->title);
    return titles;
}

void TabBarController::define(objc::ClassDefinition<TabBarController>& definition) {
    definition.method<"viewControllers", &TabBarController::viewControllers>()
        .method<"setViewControllers:", &TabBarController::setViewControllers>()
        .method<"selectedIndex", &TabBarController::selectedIndex>()
        .method<"setSelectedIndex:", &TabBarController::setSelectedIndex>()
        .method<"selectedViewController", &TabBarController::selectedViewController>();
}

void TabBarController::setViewControllers(objc::Object controllers) {
    const auto count = objc::send<"count", unsigned long>(controllers);
    for (unsigned long i = 0; i < count; ++i) {
        auto* controller = objc::send<"objectAtIndex:", ViewController*>(controllers, i);
        screens_.emplace_back(controller);
        addChildViewController(controller);
    }
    if (isViewLoaded()) showSelected();
}

ViewController* TabBarController::selectedViewController() const {
    return selected_ < screens_.size() ? screens_[selected_].get() : nullptr;
}

void TabBarController::loadView() {
    auto container = objc::Ref<View>::make<"initWithFrame:">(Rect{{0, 0}, screenSize()});
    container->setAutoresizingMask(flexibleWidth | flexibleHeight);
    setView(container);
    bar_ = objc::Ref<TabBar>::make<"initWithFrame:">(
        Rect{{0, screenSize().height - TabBar::height}, {screenSize().width, TabBar::height}});
    bar_->setBackgroundColor(uiColor(Color::fromHex(0xF8F8F8)));
    bar_->setOnSelect(weak::whileAlive(this, [this](std::size_t index) { setSelectedIndex(index); }));
    container->addSubview(bar_);
    showSelected();
}

void TabBarController::showSelected() {
    std::vector<objc::Ref<TabBarItem>> items;
    for (const auto& screen : screens_)
        if (auto item = screen->tabBarItem()) items.emplace_back(objc::peerOf<TabBarItem>(item));
    bar_->setItems(std::move(items));
    bar_->setSelected(selected_);
    if (auto* screen = selectedViewController()) {
        view()->insertSubviewAtIndex(screen->view(), 0);
        layOut();
    }
}

void TabBarController::layOut() {
    if (!bar_) return;
    const Size size = view()->bounds().size;
    bar_->setFrame({{0, size.height - TabBar::height}, {size.width, TabBar::height}});
    if (auto* screen = selectedViewController(); screen && screen->isViewLoaded())
        screen->view()->setFrame({{0, 0}, {size.width, size.height - TabBar::height}});
}

void TabBarController::viewDidLayoutSubviews() { layOut(); }

std::vector<ViewController*> TabBarController::childrenOnScreen() {
    if (auto* screen = selectedViewController()) return {screen};
    return {};
}

void TabBarController::setSelectedIndex(unsigned long index) {
    if (index >= screens_.size() || index == selected_) return;
    if (!isViewLoaded()) {
        selected_ = index;
        return;
    }
    const bool onScreen = appearance() == Appearance::Appeared;
    auto* former = selectedViewController();
    if (onScreen) former->beginDisappearing(false);
    former->view()->removeFromSuperview();
    selected_ = index;
    if (onScreen) selectedViewController()->beginAppearing(false);
    showSelected();
    if (!onScreen) return;
    former->endDisappearing(false);
    selectedViewController()->endAppearing(false);
}

}  // namespace uikit

// What is on the screen.
#include "desktop/phone/screen_probe.h"

#include "desktop/dispatch/clock.h"
#include "desktop/phone/phone_application.h"

namespace phone {

uikit::NavigationController* frontNavigation() {
    auto* application = phoneApplication();
    if (!application || !application->tabs()) return nullptr;
    auto* selected = application->tabs()->selectedViewController();
    return selected ? selected->asNavigationController() : nullptr;
}

uikit::ViewController* frontScreen() {
    auto* navigation = frontNavigation();
    if (!navigation) return nullptr;
    uikit::ViewController* screen = navigation->topViewController();
    for (auto* over = navigation->presentedViewController(); over; over = over->presentedViewController())
        screen = over->asNavigationController() ? over->asNavigationController()->topViewController() : over;
    return screen;
}

uikit::SearchDisplayController* frontSearch() {
    auto* screen = frontScreen();
    if (!screen || !screen->searchDisplayController()) return nullptr;
    return objc::peerOf<uikit::SearchDisplayController>(screen->searchDisplayController());
}

uikit::TableView* frontTable() {
    auto* screen = frontScreen();
    if (!screen) return nullptr;
    if (auto* search = frontSearch(); search && search->isActive()) {
        auto* results = objc::peerOf<uikit::TableView>(search->searchResultsTableView());
        if (results->window()) return results;
    }
    return static_cast<uikit::TableView*>(findView(
        screen->view(), [](uikit::View* view) { return objc::peerIf<uikit::TableView>(view->object()) != nullptr; }));
}

uikit::SegmentedControl* titleSegments() {
    auto* screen = frontScreen();
    if (!screen) return nullptr;
    auto* title = objc::peerOf<uikit::NavigationItem>(screen->navigationItem())->titleView();
    return title ? objc::peerIf<uikit::SegmentedControl>(title->object()) : nullptr;
}

std::vector<std::string> textsOf(const uikit::View* view) {
    if (view->isHidden()) return {};
    std::vector<std::string> texts = view->drawnTexts();
    std::erase(texts, std::string());
    for (const auto& below : view->subviews())
        for (auto& text : textsOf(below.get())) texts.push_back(std::move(text));
    return texts;
}

void tapPoint(uikit::Point point) {
    auto* window = uikit::Application::shared()->keyWindow();
    if (!window) return;
    window->deliver({uikit::TouchPhase::Began, point, dispatch::Clock::now()});
    window->deliver({uikit::TouchPhase::Ended, point, dispatch::Clock::now()});
}

bool tapView(uikit::View* view) {
    auto* window = uikit::Application::shared()->keyWindow();
    if (!window || !view->window()) return false;
    window->layoutIfNeeded();
    const uikit::Rect bounds = view->bounds();
    const uikit::Point middle = view->pointToWindow(bounds.centre());
    uikit::View* hit = window->hitTest(middle);
    if (!hit || !(hit == view || hit->isDescendantOf(view))) return false;
    tapPoint(middle);
    return true;
}

}  // namespace phone

// What is on the screen.
#include "desktop/phone/screen_probe.h"

#include "desktop/dispatch/clock.h"
#include "desktop/phone/phone_application.h"

namespace phone {

namespace {

/// The container in front: the selected tab's, or what is presented over the tabs.
uikit::ViewController* frontContainer() {
    auto* application = phoneApplication();
    if (!application || !application->tabs()) return nullptr;
    uikit::ViewController* container = application->tabs()->selectedViewController();
    for (auto* over = application->tabs()->presentedViewController(); over; over = over->presentedViewController())
        container = over;
    return container;
}

}  // namespace

uikit::NavigationController* frontNavigation() {
    auto* container = frontContainer();
    return container ? container->asNavigationController() : nullptr;
}

uikit::ViewController* frontScreen() {
    auto* navigation = frontNavigation();
    return navigation ? navigation->topViewController() : frontContainer();
}

long rowCount(uikit::TableView* table) {
    long rows = 0;
    for (long section = 0; section < table->numberOfSections(); ++section)
        rows += table->numberOfRowsInSection(section);
    return rows;
}

std::optional<uikit::RowPlace> rowPlace(uikit::TableView* table, long row) {
    if (row < 0) return std::nullopt;
    for (long section = 0; section < table->numberOfSections(); ++section) {
        const long rows = table->numberOfRowsInSection(section);
        if (row < rows) return uikit::RowPlace{section, row};
        row -= rows;
    }
    return std::nullopt;
}

long rowNumber(uikit::TableView* table, uikit::RowPlace place) {
    long row = place.row;
    for (long section = 0; section < place.section; ++section) row += table->numberOfRowsInSection(section);
    return row;
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

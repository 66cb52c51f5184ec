// QVBaseTableViewController.
#include "desktop/quorvel/visual/base_table_controller.h"

#include <algorithm>

#include "desktop/quorvel/visual/sources.h"
#include "desktop/uikit/application.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"

namespace quorvel {
namespace {

constexpr double panelWhite = 247.0 / 255.0;
constexpr float panelOpacity = 0.75F;
constexpr uikit::Rect searchBarFrame{{0, 0}, {320, 88}};

void setBlocked(bool blocked) {
    auto* application = uikit::Application::shared();
    application->setNetworkActivityIndicatorVisible(false);
    if (auto* window = application->keyWindow()) window->setUserInteractionEnabled(!blocked);
}

}  // namespace

void BaseTableController::define(objc::ClassDefinition<BaseTableController>& definition) {
    definition.method<"actionSheet", &BaseTableController::actionSheet>()
        .method<"setActionSheet:", &BaseTableController::setActionSheet>()
        .method<"showHUD:", &BaseTableController::showHud>()
        .method<"showHUD:detailText:delegate:mode:selector:", &BaseTableController::showHudRunning>()
        .method<"hideHUD", &BaseTableController::hideHud>()
        .method<"hudWasHidden:", &BaseTableController::hudWasHidden>();
}

BaseTableController::~BaseTableController() {
    const auto isAnothers = [this](const ProgressHud* each) { return each != hud_.get(); };
    if (hud_ && std::ranges::none_of(visibleIndicators(), isAnothers)) setBlocked(false);
}

void BaseTableController::viewDidLoad() {
    auto bar = objc::Ref<uikit::SearchBar>::make<"initWithFrame:">(searchBarFrame);
    bar->setPlaceholder(uikit::nsString(sources().text("SEARCH_CALL_HISTORY")));
    // The screens made from this one tint the bar's controls white.
    bar->setBarTintColor(uikit::uiColor(uikit::palette::brand));
    auto titles = objc::make<objc::Object>(objc::classNamed<"NSMutableArray">());
    for (const char* title : {"All", "Dialed", "Received", "Missed"})
        objc::send<"addObject:">(titles.get(), uikit::nsString(title));
    objc::send<"setScopeButtonTitles:">(bar->object(), titles.get());
    auto search =
        objc::Ref<uikit::SearchDisplayController>::make<"initWithSearchBar:contentsController:">(bar.get(), this);
    search->setDelegate(object());
    search->setSearchResultsDelegate(object());
    search->setSearchResultsDataSource(object());
    setSearchDisplayController(objc::Object{search->self});
}

void BaseTableController::showHud(objc::Object text) { showHudRunning(text, {}, {}, 0, nullptr); }

void BaseTableController::showHudRunning(objc::Object text, objc::Object detail, objc::Object delegate, int mode,
                                         SEL selector) {
    setBlocked(true);
    auto* navigation = navigationController();
    uikit::View* container = navigation ? navigation->view() : view();
    hud_ = objc::Ref<ProgressHud>(ProgressHud::showAddedTo(objc::classOf<ProgressHud>(), container, true));
    const auto brand = uikit::uiColor(uikit::palette::brand);
    hud_->setColor(uikit::uiColor(uikit::Color::gray(panelWhite)));
    hud_->setLabelColor(brand);
    hud_->setDetailsLabelColor(brand);
    hud_->setLabelText(text);
    hud_->setDetailsLabelText(detail);
    hud_->setDelegate(delegate);
    hud_->setMode(mode);
    hud_->setOpacity(panelOpacity);
    hud_->setActivityIndicatorTintColor(brand);
    if (selector) hud_->showWhileExecuting(selector, delegate, {}, true);
}

void BaseTableController::hideHud() {
    setBlocked(false);
    if (hud_) hud_->hide(true);
}

void BaseTableController::hudWasHidden(objc::Object hud) {
    setBlocked(false);
    auto* gone = objc::peerIf<ProgressHud>(hud);
    if (!gone) return;
    gone->removeFromSuperview();
    if (gone == hud_.get()) hud_ = {};
}

}  // namespace quorvel

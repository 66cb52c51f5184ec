// UISearchDisplayController: how a search begins, what each change of text or scope asks, how it ends.
#include "desktop/uikit/search_display_controller.h"

#include "desktop/uikit/scroll_view.h"

namespace uikit {
namespace {

/// Sends the message where the delegate answers it.
template <objc::Name name>
void tell(const objc::Strong<>& receiver, objc::Object sender) {
    if (receiver && objc::respondsTo(receiver, objc::selector<name>())) objc::send<name>(receiver, sender);
}

}  // namespace

void SearchDisplayController::define(objc::ClassDefinition<SearchDisplayController>& definition) {
    using Self = SearchDisplayController;
    definition.method<"initWithSearchBar:contentsController:", &Self::initWithSearchBarContentsController>()
        .method<"searchBar", &Self::searchBar>()
        .method<"searchContentsController", &Self::searchContentsController>()
        .method<"searchResultsTableView", &Self::searchResultsTableView>()
        .method<"delegate", &Self::delegate>()
        .method<"setDelegate:", &Self::setDelegate>()
        .method<"searchResultsDelegate", &Self::searchResultsDelegate>()
        .method<"setSearchResultsDelegate:", &Self::setSearchResultsDelegate>()
        .method<"searchResultsDataSource", &Self::searchResultsDataSource>()
        .method<"setSearchResultsDataSource:", &Self::setSearchResultsDataSource>()
        .method<"isActive", &Self::isActive>()
        .method<"setActive:", &Self::setActive>()
        .method<"setActive:animated:", &Self::setActiveAnimated>();
}

objc::Object SearchDisplayController::initWithSearchBarContentsController(SearchBar* bar, ViewController* contents) {
    bar_ = objc::Ref<SearchBar>(bar);
    contents_ = contents;
    // The bar may stay in the list of a screen that has let its search go.
    bar_->setListener({weak::whileAlive(this, [this] { setActiveAnimated(true, true); }),
                       weak::whileAlive(this, [this] { textChanged(); }),
                       weak::whileAlive(this, [this](long scope) { scopeChanged(scope); }),
                       weak::whileAlive(this, [this] { setActiveAnimated(false, true); })});
    // Outside a search the bar has the field's row alone.
    bar_->setShowsScopeBar(false);
    bar_->setFrame({bar_->frame().origin, bar_->sizeThatFits(bar_->frame().size)});
    return objc::Object{self};
}

objc::Object SearchDisplayController::searchResultsTableView() {
    if (!results_) {
        results_ = objc::Ref<View>::adopt(
            objc::make<objc::Object, "initWithFrame:">(objc::classNamed<"UITableView">(), Rect{}));
        results_->setBackgroundColor(uiColor(Color::white()));
        objc::send<"setDelegate:">(results_->object(), searchResultsDelegate());
        objc::send<"setDataSource:">(results_->object(), searchResultsDataSource());
    }
    return results_->object();
}

void SearchDisplayController::setSearchResultsDelegate(objc::Object delegate) {
    resultsDelegate_ = delegate;
    if (results_) objc::send<"setDelegate:">(results_->object(), delegate);
}

void SearchDisplayController::setSearchResultsDataSource(objc::Object source) {
    resultsSource_ = source;
    if (results_) objc::send<"setDataSource:">(results_->object(), source);
}

/// The list whose header the bar is, or the contents' view; null once neither is there.
View* SearchDisplayController::list() const {
    for (View* view = bar_->superview(); view; view = view->superview())
        if (objc::peerIf<ScrollView>(view->object())) return view;
    const auto contents = contents_.load();
    return contents ? contents->view() : nullptr;
}

/// The bar's height changed: the list moves its rows below it.
void SearchDisplayController::resizeBar() {
    bar_->setFrame({bar_->frame().origin, bar_->sizeThatFits(bar_->frame().size)});
    View* table = list();
    if (table && objc::respondsTo(table->object(), objc::selector<"setTableHeaderView:">()) &&
        objc::send<"tableHeaderView", View*>(table->object()) == bar_.get())
        objc::send<"setTableHeaderView:">(table->object(), bar_->object());
}

void SearchDisplayController::setActiveAnimated(bool active, bool animated) {
    if (active == active_) return;
    if (active)
        begin(animated);
    else
        end(animated);
}

void SearchDisplayController::begin(bool animated) {
    const auto contents = contents_.load();
    if (!contents) return;
    active_ = true;
    const objc::Object me{self};
    tell<"searchDisplayControllerWillBeginSearch:">(delegate(), me);
    contents->setCoversNavigationBar(true, animated);
    bar_->setShowsScopeBar(true);
    bar_->setShowsCancelButtonAnimated(true, animated);
    resizeBar();
    View* table = list();
    if (auto* scroll = objc::peerIf<ScrollView>(table->object())) {
        offsetBefore_ = scroll->contentOffset();
        scroll->setContentOffsetAnimated({0, scroll->leastOffset()}, false);
        scroll->setScrollEnabled(false);
    }
    const double top = bar_->frame().bottom();
    const Rect below{{0, top}, {table->bounds().size.width, table->bounds().size.height - top}};
    dimming_ = objc::Ref<View>::make<"initWithFrame:">(below);
    dimming_->setBackgroundColor(uiColor(Color::gray(0, 0.35)));
    table->addSubview(dimming_);
    tell<"searchDisplayControllerDidBeginSearch:">(delegate(), me);
}

void SearchDisplayController::end(bool animated) {
    const objc::Object me{self};
    tell<"searchDisplayControllerWillEndSearch:">(delegate(), me);
    active_ = false;
    showResults(false);
    if (dimming_) std::exchange(dimming_, {})->removeFromSuperview();
    bar_->field()->resignFirstResponder();
    bar_->setText({});
    bar_->setShowsCancelButtonAnimated(false, animated);
    bar_->setShowsScopeBar(false);
    resizeBar();
    View* table = list();
    if (auto* scroll = table ? objc::peerIf<ScrollView>(table->object()) : nullptr) {
        scroll->setScrollEnabled(true);
        scroll->setContentOffsetAnimated(offsetBefore_, false);
    }
    if (const auto contents = contents_.load()) contents->setCoversNavigationBar(false, animated);
    tell<"searchDisplayControllerDidEndSearch:">(delegate(), me);
}

void SearchDisplayController::showResults(bool show) {
    if (show == (results_ && results_->superview())) return;
    if (!show) {
        results_->removeFromSuperview();
        return;
    }
    searchResultsTableView();
    results_->setFrame(dimming_->frame());
    results_->setAutoresizingMask(flexibleWidth | flexibleHeight);
    if (View* table = list()) table->addSubview(results_);
}

void SearchDisplayController::textChanged() {
    if (!active_) return;
    showResults(!bar_->field()->text().empty());
    constexpr auto name = objc::Name{"searchDisplayController:shouldReloadTableForSearchString:"};
    bool reload = true;
    if (const auto receiver = delegate(); objc::respondsTo(receiver, objc::selector<name>()))
        reload = objc::send<name, bool>(receiver, objc::Object{self}, bar_->text().get());
    if (reload) objc::send<"reloadData">(searchResultsTableView());
}

void SearchDisplayController::scopeChanged(long scope) {
    if (!active_) return;
    constexpr auto name = objc::Name{"searchDisplayController:shouldReloadTableForSearchScope:"};
    bool reload = true;
    if (const auto receiver = delegate(); objc::respondsTo(receiver, objc::selector<name>()))
        reload = objc::send<name, bool>(receiver, objc::Object{self}, scope);
    if (reload) objc::send<"reloadData">(searchResultsTableView());
}

}  // namespace uikit

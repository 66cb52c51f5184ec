// UISearchDisplayController: a search over a screen's list. While it is active the navigation bar is away, the search
// bar stands at the top with its scopes, and what was found covers the list.
#pragma once

#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/view_controller.h"

namespace uikit {

class SearchDisplayController : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UISearchDisplayController"};
    static void define(objc::ClassDefinition<SearchDisplayController>& definition);

    // Messages of the same names. The contents controller, the delegates and the data source are not retained.
    objc::Object initWithSearchBarContentsController(SearchBar* bar, ViewController* contents);
    SearchBar* searchBar() const { return bar_; }
    ViewController* searchContentsController() const { return contents_; }
    /// A UITableView, made at first use.
    objc::Object searchResultsTableView();
    objc::Object delegate() const { return objc::Object{delegate_}; }
    void setDelegate(objc::Object delegate) { delegate_ = delegate.self; }
    objc::Object searchResultsDelegate() const { return objc::Object{resultsDelegate_}; }
    void setSearchResultsDelegate(objc::Object delegate);
    objc::Object searchResultsDataSource() const { return objc::Object{resultsSource_}; }
    void setSearchResultsDataSource(objc::Object source);
    bool isActive() const { return active_; }
    void setActive(bool active) { setActiveAnimated(active, false); }
    /// On: `searchDisplayControllerWillBeginSearch:`, `...DidBeginSearch:`. Off: `...WillEndSearch:`, the text emptied,
    /// `...DidEndSearch:`.
    void setActiveAnimated(bool active, bool animated);

  private:
    void begin(bool animated);
    void end(bool animated);
    void textChanged();
    void scopeChanged(long scope);
    void showResults(bool show);
    void resizeBar();
    View* list() const;

    objc::Ref<SearchBar> bar_;
    ViewController* contents_ = nullptr;
    objc::Ref<View> results_;
    objc::Ref<View> dimming_;
    id delegate_ = nullptr;
    id resultsDelegate_ = nullptr;
    id resultsSource_ = nullptr;
    bool active_ = false;
    Point offsetBefore_;
};

}  // namespace uikit

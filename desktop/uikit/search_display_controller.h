// UISearchDisplayController: a search over a screen's list. While it is active the navigation bar is away, the search
// bar stands at the top with its scopes, and what was found covers the list.
#pragma once

#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/view_controller.h"
#include "desktop/weak/weak.h"

namespace uikit {

class SearchDisplayController : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UISearchDisplayController"};
    static void define(objc::ClassDefinition<SearchDisplayController>& definition);

    // Messages of the same names. The contents controller, the delegates and the data source are not retained.
    objc::Object initWithSearchBarContentsController(SearchBar* bar, ViewController* contents);
    SearchBar* searchBar() const { return bar_; }
    objc::Strong<> searchContentsController() const { return contents_.load().takeOwner(); }
    /// A UITableView, made at first use.
    objc::Object searchResultsTableView();
    objc::Strong<> delegate() const { return delegate_.load(); }
    void setDelegate(objc::Object delegate) { delegate_ = delegate; }
    objc::Strong<> searchResultsDelegate() const { return resultsDelegate_.load(); }
    void setSearchResultsDelegate(objc::Object delegate);
    objc::Strong<> searchResultsDataSource() const { return resultsSource_.load(); }
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
    weak::Peer<ViewController> contents_;
    objc::Ref<View> results_;
    objc::Ref<View> dimming_;
    weak::Object delegate_;
    weak::Object resultsDelegate_;
    weak::Object resultsSource_;
    bool active_ = false;
    Point offsetBefore_;
};

}  // namespace uikit

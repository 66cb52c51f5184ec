// Searches over a list: every way in and out, what the delegate hears, and what covers the list.
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/table_view.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class SearchDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestSearchDelegate"};
    static void define(objc::ClassDefinition<SearchDelegate>& definition) {
        definition.method<"searchDisplayControllerWillBeginSearch:", &SearchDelegate::willBegin>()
            .method<"searchDisplayControllerDidBeginSearch:", &SearchDelegate::didBegin>()
            .method<"searchDisplayControllerWillEndSearch:", &SearchDelegate::willEnd>()
            .method<"searchDisplayControllerDidEndSearch:", &SearchDelegate::didEnd>()
            .method<"searchDisplayController:shouldReloadTableForSearchString:", &SearchDelegate::text>()
            .method<"searchDisplayController:shouldReloadTableForSearchScope:", &SearchDelegate::scope>();
    }
    void willBegin(SearchDisplayController* search) { say("will begin", search); }
    void didBegin(SearchDisplayController* search) { say("did begin", search); }
    void willEnd(SearchDisplayController* search) { say("will end", search); }
    void didEnd(SearchDisplayController* search) { say("did end", search); }
    bool text(objc::Object, objc::Object string) {
        heard.push_back("text " + utf8(string));
        return reloads;
    }
    bool scope(objc::Object, long index) {
        heard.push_back("scope " + std::to_string(index));
        return reloads;
    }
    objc::Object object() const { return objc::Object{self}; }

    Names heard;
    Names states;
    bool reloads = true;

  private:
    void say(const char* what, SearchDisplayController* search) {
        heard.emplace_back(what);
        states.push_back(std::string(search->isActive() ? "active" : "idle") +
                         (search->searchBar()->showsCancelButton() ? ", cancel" : "") + ", \"" +
                         search->searchBar()->field()->text() + '"');
    }
};

/// Counts how often it is asked for its rows.
class FoundRows : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestFoundRows"};
    static void define(objc::ClassDefinition<FoundRows>& definition) {
        definition.method<"tableView:numberOfRowsInSection:", &FoundRows::count>();
    }
    long count(objc::Object, long) {
        ++asked;
        return 0;
    }
    objc::Object object() const { return objc::Object{self}; }

    int asked = 0;
};

class SearchTest : public ToolkitTest {
  protected:
    SearchTest() {
        objc::registerClasses<SearchDelegate, FoundRows>();
        delegate_ = objc::Ref<SearchDelegate>::make();
        list_ = objc::Ref<TableView>::make<"initWithFrame:">(Rect{{}, {320, 504}});
        bar_ = objc::Ref<SearchBar>::make<"initWithFrame:">(Rect{{}, {320, 44}});
        const auto titles = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        for (const char* title : {"All", "Missed"}) objc::send<"addObject:">(titles, nsString(title));
        bar_->setScopeButtonTitles(titles);
        list_->setTableHeaderView(bar_);
        screen_->setView(list_);
        navigation_ = objc::Ref<NavigationController>::make<"initWithRootViewController:">(screen_->object());
        window().setRootViewController(navigation_);
        window().makeKeyAndVisible();
        search_ = objc::Ref<SearchDisplayController>::make<"initWithSearchBar:contentsController:">(bar_->object(),
                                                                                                    screen_->object());
        search_->setDelegate(delegate_->object());
        window().layoutIfNeeded();
    }
    ~SearchTest() override { search_->setActive(false); }
    Names heard() { return std::exchange(delegate_->heard, {}); }
    View* results() { return objc::peerOf<View>(search_->searchResultsTableView()); }

    objc::Ref<SearchDelegate> delegate_;
    objc::Ref<TableView> list_;
    objc::Ref<SearchBar> bar_;
    objc::Ref<ViewController> screen_ = objc::Ref<ViewController>::make();
    objc::Ref<NavigationController> navigation_;
    objc::Ref<SearchDisplayController> search_;
};

TEST_F(SearchTest, aTouchOnTheFieldBeginsASearchAndHidesTheNavigationBar) {
    SearchField* field = bar_->field();
    tap(field->pointToWindow(field->bounds().centre()));
    EXPECT_TRUE(search_->isActive());
    EXPECT_TRUE(navigation_->isNavigationBarHidden());
    EXPECT_TRUE(bar_->showsCancelButton());
    EXPECT_TRUE(bar_->showsScopeBar());
    EXPECT_EQ(bar_->frame().size.height, 88);
    EXPECT_EQ(heard(), (Names{"will begin", "did begin"}));
}

TEST_F(SearchTest, aMessageBeginsASearchOnceAndEndsItOnce) {
    search_->setActive(true);
    search_->setActive(true);
    search_->setActive(false);
    search_->setActive(false);
    EXPECT_EQ(heard(), (Names{"will begin", "did begin", "will end", "did end"}));
    EXPECT_FALSE(navigation_->isNavigationBarHidden());
    EXPECT_EQ(bar_->frame().size.height, 44);
}

TEST_F(SearchTest, whatIsTypedIsAskedForAndItsResultsCoverTheList) {
    bar_->type("ad");
    EXPECT_EQ(heard(), (Names{"will begin", "did begin", "text ad"}));
    EXPECT_EQ(results()->superview(), list_.get());
    EXPECT_EQ(results()->frame().top(), 88);
    bar_->type("");
    EXPECT_EQ(results()->superview(), nullptr);
    EXPECT_TRUE(search_->isActive());
}

TEST_F(SearchTest, cancelEmptiesTheTextAndEndsTheSearch) {
    bar_->type("ad");
    heard();
    bar_->cancel();
    EXPECT_EQ(heard(), (Names{"will end", "did end"}));
    EXPECT_EQ(bar_->field()->text(), "");
    EXPECT_EQ(results()->superview(), nullptr);
    EXPECT_FALSE(bar_->showsCancelButton());
    EXPECT_FALSE(search_->isActive());
}

TEST_F(SearchTest, aTouchOnAScopeIsAskedForAndAMessageIsNot) {
    search_->setActive(true);
    heard();
    bar_->setSelectedScopeButtonIndex(1);
    EXPECT_EQ(heard(), Names{});
    window().layoutIfNeeded();
    SegmentedControl* scopes = bar_->scopeControl();
    tap(scopes->pointToWindow({scopes->bounds().size.width / 4, scopes->bounds().size.height / 2}));
    EXPECT_EQ(heard(), Names{"scope 0"});
    EXPECT_EQ(bar_->selectedScopeButtonIndex(), 0);
}

TEST_F(SearchTest, theDelegateHearsOfTheBeginningBeforeTheBarUnfoldsAndOfTheEndWhileItIsStillOn) {
    bar_->type("ad");
    bar_->cancel();
    EXPECT_EQ(delegate_->states,
              (Names{"active, \"\"", "active, cancel, \"\"", "active, cancel, \"ad\"", "idle, \"\""}));
}

TEST_F(SearchTest, aMessageThatEndsASearchEmptiesTheTextAndAsksNothing) {
    bar_->type("ad");
    heard();
    search_->setActiveAnimated(false, true);
    EXPECT_EQ(heard(), (Names{"will end", "did end"}));
    EXPECT_EQ(utf8(bar_->text().get()), "");
    EXPECT_FALSE(bar_->field()->isFirstResponder());
}

TEST_F(SearchTest, aDelegateThatAnswersNoKeepsTheFoundRowsAsTheyAre) {
    const auto rows = objc::Ref<FoundRows>::make();
    search_->setSearchResultsDataSource(rows->object());
    const auto askedBy = [&](auto&& change) {
        results()->layoutIfNeeded();
        rows->asked = 0;
        change();
        results()->layoutIfNeeded();
        return rows->asked;
    };
    EXPECT_EQ(askedBy([&] { bar_->type("a"); }), 1);
    EXPECT_EQ(askedBy([&] { bar_->type("ad"); }), 1);
    delegate_->reloads = false;
    EXPECT_EQ(askedBy([&] { bar_->type("ada"); }), 0);
    EXPECT_EQ(heard().back(), "text ada");
    search_->setSearchResultsDataSource({});
}

TEST_F(SearchTest, theFoundRowsAreShownInOneTableForAllSearches) {
    View* first = results();
    bar_->type("ad");
    bar_->cancel();
    bar_->type("bo");
    EXPECT_EQ(results(), first);
    EXPECT_EQ(first->superview(), list_.get());
}

TEST_F(SearchTest, withoutADelegateASearchBeginsAndEndsAllTheSame) {
    search_->setDelegate({});
    bar_->type("ad");
    EXPECT_TRUE(search_->isActive());
    EXPECT_EQ(results()->superview(), list_.get());
    bar_->cancel();
    EXPECT_FALSE(search_->isActive());
}

TEST_F(SearchTest, textThatIsSetByMessageAsksNothing) {
    search_->setActive(true);
    heard();
    bar_->setText(nsString("ad"));
    EXPECT_EQ(heard(), Names{});
    EXPECT_EQ(utf8(bar_->text().get()), "ad");
}

TEST_F(SearchTest, aScreenAboveTheSearchHasItsBarAndTheSearchIsThereAfterwards) {
    bar_->type("ad");
    const auto above = objc::Ref<ViewController>::make();
    navigation_->pushViewControllerAnimated(above, true);
    advance(1);
    EXPECT_FALSE(navigation_->isNavigationBarHidden());
    EXPECT_EQ(above->view()->frame().top(), 64);
    EXPECT_EQ(firstResponder(), nullptr) << "what is typed there is not for a field out of sight";
    navigation_->popViewControllerAnimated(true);
    advance(1);
    EXPECT_TRUE(navigation_->isNavigationBarHidden());
    EXPECT_EQ(list_->frame().top(), 20);
    EXPECT_TRUE(search_->isActive());
    EXPECT_EQ(bar_->field()->text(), "ad");
    bar_->cancel();
    advance(1);
    EXPECT_FALSE(navigation_->isNavigationBarHidden());
}

TEST_F(SearchTest, theCancelButtonIsAsWideAsItsWord) {
    search_->setActive(true);
    window().layoutIfNeeded();
    EXPECT_EQ(bar_->field()->frame().right(), 320 - 8 - 64);
    Button* cancel = nullptr;
    for (const auto& each : bar_->subviews())
        if (auto* button = objc::peerIf<Button>(each->object())) cancel = button;
    ASSERT_NE(cancel, nullptr);
    cancel->setTitleForState(nsString("Abbrechen bitte"), normalState);
    bar_->setNeedsLayout();
    window().layoutIfNeeded();
    EXPECT_GE(cancel->frame().size.width, cancel->sizeThatFits({}).width);
    EXPECT_LE(bar_->field()->frame().right(), cancel->frame().left() + 4);
}

TEST_F(SearchTest, theBarOfAShortListCanBeScrolledOutOfSight) {
    EXPECT_EQ(list_->greatestOffset(), 44);
    list_->setContentOffset({0, 44});
    list_->reloadData();
    window().layoutIfNeeded();
    EXPECT_EQ(list_->contentOffset().y, 44);
    list_->setTableHeaderView(nullptr);
    EXPECT_EQ(list_->greatestOffset(), 0);
}

TEST_F(SearchTest, theListComesBackToWhereItStood) {
    list_->setContentSize({320, 2000});
    list_->setContentOffset({0, 44});
    search_->setActive(true);
    EXPECT_EQ(list_->contentOffset().y, 0);
    EXPECT_FALSE(list_->isScrollEnabled());
    search_->setActive(false);
    EXPECT_EQ(list_->contentOffset().y, 44);
    EXPECT_TRUE(list_->isScrollEnabled());
}

}  // namespace
}  // namespace uikit::test

// Delegates, data sources and targets that go before the views that know them.
#include "desktop/uikit/alert_view.h"
#include "desktop/uikit/bar_items.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/search_display_controller.h"
#include "desktop/uikit/table_view.h"
#include "desktop/uikit/text_field.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

/// A property of a class that refers to an object which it does not own.
struct Property {
    const char* name;
    const char* className;
    const char* setter;
    const char* getter;
};

class WeakProperty : public ToolkitTest, public testing::WithParamInterface<Property> {};

TEST_P(WeakProperty, answersItsObjectUntilThatIsGone) {
    const auto owner = objc::make<objc::Object>(reinterpret_cast<Class>(objc_getClass(GetParam().className)));
    auto object = objc::Ref<Recorder>::make();
    objc::sendSelector(owner.get(), sel_registerName(GetParam().setter), object->object());
    const auto present = [&] {
        const objc::AutoreleasePool pool;
        return objc::sendSelector<objc::Object>(owner.get(), sel_registerName(GetParam().getter)).self;
    };
    EXPECT_EQ(present(), object.self());
    object = {};
    EXPECT_EQ(present(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Of, WeakProperty,
                         testing::Values(Property{"scrollViewDelegate", "UIScrollView", "setDelegate:", "delegate"},
                                         Property{"tableDelegate", "UITableView", "setDelegate:", "delegate"},
                                         Property{"tableDataSource", "UITableView", "setDataSource:", "dataSource"},
                                         Property{"textFieldDelegate", "UITextField", "setDelegate:", "delegate"},
                                         Property{"searchDelegate", "UISearchDisplayController",
                                                  "setDelegate:", "delegate"},
                                         Property{"searchResultsDelegate", "UISearchDisplayController",
                                                  "setSearchResultsDelegate:", "searchResultsDelegate"},
                                         Property{"searchResultsDataSource", "UISearchDisplayController",
                                                  "setSearchResultsDataSource:", "searchResultsDataSource"}),
                         [](const auto& each) { return std::string(each.param.name); });

class WeakReferences : public ToolkitTest {};

TEST_F(WeakReferences, aControlSendsNothingToATargetThatIsGone) {
    const auto control = add<Control>({{100, 100}, {44, 44}});
    const auto stays = objc::Ref<Recorder>::make();
    auto goes = objc::Ref<Recorder>::make();
    for (auto* target : {stays.get(), goes.get()})
        control->addTargetActionForControlEvents(target->object(), objc::selector<"pressed">(), touchUpInside);
    goes = {};
    tap({120, 120});
    EXPECT_EQ(stays->heard, std::vector<std::string>{"pressed"});
    EXPECT_EQ((objc::send<"count", unsigned long>(control->allTargets())), 1u);
}

TEST_F(WeakReferences, aTargetLivesUntilItsActionReturns) {
    const auto control = add<Control>({{100, 100}, {44, 44}});
    auto target = objc::Ref<Recorder>::make();
    std::size_t heard = 0;
    target->onPressed = [&] {
        auto* const self = target.get();
        target = {};
        heard = self->heard.size();
    };
    control->addTargetActionForControlEvents(target->object(), objc::selector<"pressed:">(), touchUpInside);
    tap({120, 120});
    EXPECT_EQ(heard, 1u);
}

TEST_F(WeakReferences, aBarItemSendsNothingToATargetThatIsGone) {
    auto target = objc::Ref<Recorder>::make();
    const auto item = objc::Ref<BarButtonItem>::make<"initWithTitle:style:target:action:">(
        nsString("Edit"), 0L, target->object(), objc::selector<"pressed">());
    EXPECT_EQ(item->target(), objc::Strong<>(target->object()));
    target = {};
    EXPECT_FALSE(item->target());
    item->fire();
}

TEST_F(WeakReferences, anAlertWhoseDelegateIsGoneLeavesAllTheSame) {
    window().makeKeyAndVisible();
    auto delegate = objc::Ref<Recorder>::make();
    const auto alert =
        objc::Ref<AlertView>::make<"initWithTitle:message:delegate:cancelButtonTitle:otherButtonTitles:">(
            nsString("Delete?"), nsString(""), delegate->object(), nsString("Cancel"), objc::Object{});
    alert->show();
    delegate = {};
    frontSheet()->dismiss(0, true);
    advance(1);
    EXPECT_EQ(frontSheet(), nullptr);
}

TEST_F(WeakReferences, aSearchBarOutlivesTheSearchThatListenedToIt) {
    const auto bar = add<SearchBar>({{}, {320, 44}});
    auto screen = objc::Ref<ViewController>::make();
    auto search = objc::Ref<SearchDisplayController>::make<"initWithSearchBar:contentsController:">(bar->object(),
                                                                                                    screen->object());
    search = {};
    bar->type("Anna");
    bar->cancel();
    EXPECT_FALSE(bar->showsCancelButton());
}

TEST_F(WeakReferences, aSearchWhoseScreenIsGoneDoesNotBegin) {
    const auto bar = add<SearchBar>({{}, {320, 44}});
    auto screen = objc::Ref<ViewController>::make();
    const auto search = objc::Ref<SearchDisplayController>::make<"initWithSearchBar:contentsController:">(
        bar->object(), screen->object());
    EXPECT_EQ(search->searchContentsController(), objc::Strong<>(screen->object()));
    screen = {};
    EXPECT_FALSE(search->searchContentsController());
    search->setActive(true);
    EXPECT_FALSE(search->isActive());
}

TEST_F(WeakReferences, aSearchEndsAfterItsScreenIsGone) {
    const auto bar = add<SearchBar>({{}, {320, 44}});
    auto screen = objc::Ref<ViewController>::make();
    const auto search = objc::Ref<SearchDisplayController>::make<"initWithSearchBar:contentsController:">(
        bar->object(), screen->object());
    search->setActive(true);
    ASSERT_TRUE(search->isActive());
    screen = {};
    search->setActive(false);
    EXPECT_FALSE(search->isActive());
    EXPECT_FALSE(bar->showsCancelButton());
}

TEST_F(WeakReferences, aBarOutlivesTheStackThatItLedBackIn) {
    const auto root = objc::Ref<ViewController>::make();
    auto stack = objc::Ref<NavigationController>::make<"initWithRootViewController:">(root->object());
    const objc::Ref<NavigationBar> bar(stack->navigationBar());
    stack->view();
    window().addSubview(bar);
    stack = {};
    bar->goBack();
    objc::send<"setTitle:">(root->object(), nsString("Recents"));
    EXPECT_EQ(bar->superview(), &window());
}

}  // namespace
}  // namespace uikit::test

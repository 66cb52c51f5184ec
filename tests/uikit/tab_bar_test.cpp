// Screens side by side: which one shows, and what it hears.
#include "desktop/uikit/tab_bar_controller.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

class Tab : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"TestTab"};
    static void define(objc::ClassDefinition<Tab>&) {}
    void viewDidAppear(bool) override { heard.push_back(name + " appears"); }
    void viewDidDisappear(bool) override { heard.push_back(name + " disappears"); }

    std::string name;
    static inline Names heard;
};

class TabBarTest : public ToolkitTest {
  protected:
    TabBarTest() {
        const auto screens = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        for (const auto& [tab, name] : {std::pair{first_, "first"}, std::pair{second_, "second"}}) {
            tab->name = name;
            const auto item = TabBarItem::make(name, graphics::Symbol::Add);
            tab->setTabBarItem(objc::Object{item.self()});
            objc::send<"addObject:">(screens, tab->object());
        }
        tabs_->setViewControllers(screens);
        window().setRootViewController(tabs_);
        window().makeKeyAndVisible();
        window().layoutIfNeeded();
    }
    static Names heard() { return std::exchange(Tab::heard, {}); }

    objc::Ref<Tab> first_ = objc::Ref<Tab>::make();
    objc::Ref<Tab> second_ = objc::Ref<Tab>::make();
    objc::Ref<TabBarController> tabs_ = objc::Ref<TabBarController>::make();
};

TEST_F(TabBarTest, theFirstScreenShowsAboveTheBar) {
    EXPECT_EQ(heard(), Names{"first appears"});
    EXPECT_EQ(tabs_->selectedViewController(), first_.get());
    EXPECT_EQ(first_->view()->frame(), (Rect{{}, {320, 519}}));
    EXPECT_EQ(tabs_->tabBar()->drawnTexts(), (Names{"first", "second"}));
}

TEST_F(TabBarTest, aTouchOnAnItemShowsItsScreen) {
    heard();
    tap({240, 540});
    EXPECT_EQ(tabs_->selectedIndex(), 1u);
    EXPECT_EQ(heard(), (Names{"first disappears", "second appears"}));
    EXPECT_EQ(first_->view()->window(), nullptr);
    EXPECT_EQ(second_->tabBarController(), tabs_.get());
}

TEST_F(TabBarTest, anIndexOutOfRangeChangesNothing) {
    heard();
    tabs_->setSelectedIndex(2);
    EXPECT_EQ(tabs_->selectedIndex(), 0u);
    EXPECT_EQ(heard(), Names{});
}

}  // namespace
}  // namespace uikit::test

// UITabBarController: screens side by side behind a bar at the foot.
#pragma once

#include "desktop/graphics/icons.h"
#include "desktop/uikit/view_controller.h"

namespace uikit {

/// UITabBarItem: a title and a symbol.
class TabBarItem : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"UITabBarItem"};
    static void define(objc::ClassDefinition<TabBarItem>&) {}

    static objc::Ref<TabBarItem> make(std::string title, graphics::Symbol symbol);

    std::string title;
    graphics::Symbol symbol{};
};

/// UITabBar: draws the items, calls back for a touch on one.
class TabBar : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UITabBar"};
    static void define(objc::ClassDefinition<TabBar>&) {}

    static constexpr double height = 49;

    void setItems(std::vector<objc::Ref<TabBarItem>> items);
    void setSelected(std::size_t index);
    void setOnSelect(std::function<void(std::size_t)> selected) { onSelect_ = std::move(selected); }

    void draw(graphics::Canvas& canvas) override;
    bool touch(const Touch& touch) override;
    std::vector<std::string> drawnTexts() const override;

  private:
    std::vector<objc::Ref<TabBarItem>> items_;
    std::size_t selected_ = 0;
    std::function<void(std::size_t)> onSelect_;
};

class TabBarController : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"UITabBarController"};
    static void define(objc::ClassDefinition<TabBarController>& definition);

    objc::Object viewControllers() const { return childViewControllers(); }
    void setViewControllers(objc::Object controllers);
    unsigned long selectedIndex() const { return selected_; }
    /// The screen that is left disappears, the other one appears, at once. Out of range: nothing.
    void setSelectedIndex(unsigned long index);
    ViewController* selectedViewController() const;
    TabBar* tabBar() const { return bar_; }

    void loadView() override;
    void viewDidLayoutSubviews() override;
    TabBarController* asTabBarController() override { return this; }
    ViewController* childViewControllerForStatusBarStyle() override { return selectedViewController(); }
    std::vector<ViewController*> childrenOnScreen() override;

  private:
    void showSelected();
    void layOut();

    std::vector<objc::Ref<ViewController>> screens_;
    unsigned long selected_ = 0;
    objc::Ref<TabBar> bar_;
};

}  // namespace uikit

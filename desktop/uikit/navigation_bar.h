// UINavigationBar: the bar over a stack of screens, for the item on top.
#pragma once

#include "desktop/uikit/animation.h"
#include "desktop/uikit/bar_items.h"

namespace uikit {

class NavigationBar : public View {
  public:
    using Super = View;
    static constexpr objc::Name className{"UINavigationBar"};
    static void define(objc::ClassDefinition<NavigationBar>& definition);
    ~NavigationBar() override;

    static constexpr double height = 44;

    objc::Object initWithFrame(Rect frame) override;
    void layoutSubviews() override;
    void drawAbove(graphics::Canvas& canvas) override;
    std::vector<std::string> drawnTexts() const override;

    /// Shows the item, with a back button of that title (empty: none) that calls back.
    void showItem(NavigationItem* item, const std::string& backTitle, bool animated);
    void setBackAction(std::function<void()> action) { backAction_ = std::move(action); }
    void goBack();

    NavigationItem* item() const { return item_; }
    bool isBackShown() const;
    /// The views that stand in the bar now, or null.
    View* leftView() const { return left_; }
    View* rightView() const { return right_; }

  private:
    void rebuild(bool animated);
    void place(View* view, double x);
    objc::Ref<View> makeBackButton();
    void showTitle();
    void fadeIn();

    objc::Ref<NavigationItem> item_;
    std::string backTitle_;
    std::function<void()> backAction_;
    objc::Ref<View> left_;
    objc::Ref<View> right_;
    objc::Ref<View> title_;
    AnimationToken fade_ = 0;
};

}  // namespace uikit

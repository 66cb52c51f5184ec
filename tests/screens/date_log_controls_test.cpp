// What the day's screen builds when its view loads, literally.
#include "desktop/uikit/button.h"
#include "desktop/uikit/color.h"
#include "desktop/uikit/search_bar.h"
#include "desktop/uikit/search_display_controller.h"
#include "tests/screens/fixture.h"

namespace screens {
namespace {

using testing::ElementsAre;

class DateLogControls : public ScreenTest {
  protected:
    void openDay() {
        fill({{.address = "+4930100", .date = noon}});
        setSetting("isGroupByDate", "on");
        start();
        screen_ = objc::make<UIViewController>(objc::classNamed<"QVDateLogViewController">());
        objc::send<"setDateEntry:">(screen_.get(), service().dateCallsList().objectAtIndex<QVCallEntry>(0));
        navigation().pushViewController(screen_.get(), true);
        settle();
    }
    uikit::SearchBar* bar() const {
        return objc::peerOf<uikit::SearchDisplayController>(screen_->searchDisplayController().self)->searchBar();
    }
    uikit::Button* button(long tag) const {
        return objc::peerOf<uikit::Button>(bar()->scopeArea()->viewWithTag(tag)->object());
    }
    std::vector<std::string> actionsOf(uikit::Control* control) const {
        constexpr unsigned long touchUpInside = 64;
        std::vector<std::string> names;
        const auto actions = objc::send<"actionsForTarget:forControlEvent:", NSArray>(
            control->object(), objc::Object(screen_.get()), touchUpInside);
        for (NSUInteger i = 0; i < actions.count(); ++i) names.push_back(utf8(actions.objectAtIndex<NSString>(i)));
        return names;
    }
    static std::string nameOf(objc::Object image) {
        return image ? objc::peerOf<uikit::ImageObject>(image)->name : std::string();
    }

    objc::Strong<UIViewController> screen_;
};

TEST_F(DateLogControls, areBuiltInThisOrder) {
    fill({{.address = "+4930100", .date = noon}});
    setSetting("isGroupByDate", "on");
    start();
    screen_ = objc::make<UIViewController>(objc::classNamed<"QVDateLogViewController">());
    objc::send<"setDateEntry:">(screen_.get(), service().dateCallsList().objectAtIndex<QVCallEntry>(0));
    trace({"QVDateLogViewController", "UINavigationItem", "UITableView"});
    screen_->view();
    std::vector<std::string> steps;
    for (const auto& line : traced())
        for (const char* step :
             {"setRightBarButtonItem:", "setTitleView:", "initDatabase",
              "handleEnableDisableSearchAction:", "prepareSearchBarScopeTitlesAndTintColor", "registerClass:"})
            if (line.starts_with(step)) steps.push_back(step);
    EXPECT_THAT(steps, ElementsAre("setRightBarButtonItem:", "setTitleView:", "initDatabase",
                                   "handleEnableDisableSearchAction:", "prepareSearchBarScopeTitlesAndTintColor",
                                   "registerClass:", "registerClass:", "registerClass:", "registerClass:",
                                   "registerClass:", "registerClass:"));
    settle();
}

TEST_F(DateLogControls, standInATableOfTheStyleThatIsAskedFor) {
    constexpr long grouped = 1;
    start();
    screen_ = objc::make<UIViewController, "initWithStyle:">(objc::classNamed<"QVDateLogViewController">(), grouped);
    ASSERT_TRUE(screen_);
    EXPECT_EQ((objc::send<"style", long>(objc::send<"tableView", objc::Object>(screen_.get()))), grouped);
    settle();
}

TEST_F(DateLogControls, tintTheScopesAndTheItemsInSearchBarsWhite) {
    openDay();
    EXPECT_EQ(uikit::colorOf(bar()->scopeControl()->tintColor()), uikit::Color::white());
    const auto appearance = UIBarButtonItem::appearanceInSearchBars();
    EXPECT_EQ(uikit::colorOf(objc::send<"tintColor", objc::Object>(appearance)), uikit::Color::white());
}

TEST_F(DateLogControls, haveTheirFramesImagesAndActions) {
    constexpr unsigned long selected = 4;
    openDay();
    const auto scope = bar()->scopeControl()->frame();
    EXPECT_EQ(scope.left(), 55);
    EXPECT_EQ(scope.size.width, 210);
    for (unsigned long i = 0; i < 4; ++i) {
        constexpr const char* names[] = {"all_icon", "dialled_icon", "received_icon", "missed_icon"};
        EXPECT_EQ(nameOf(bar()->scopeControl()->imageForSegment(i)), names[i]);
    }
    EXPECT_EQ(button(1)->frame(), (uikit::Rect{{8, 6}, {32, 32}}));
    EXPECT_EQ(nameOf(button(1)->imageForState(0)), "delete_all_icon");
    EXPECT_THAT(actionsOf(button(1)), ElementsAre("deleteAllAction:"));
    EXPECT_TRUE(button(1)->isHidden());
    EXPECT_EQ(button(2)->frame(), (uikit::Rect{{280, 6}, {32, 32}}));
    EXPECT_EQ(nameOf(button(2)->imageForState(0)), "delete_icon");
    EXPECT_EQ(nameOf(button(2)->imageForState(selected)), "cancel");
    EXPECT_THAT(actionsOf(button(2)), ElementsAre("editButtonClicked:"));
}

}  // namespace
}  // namespace screens

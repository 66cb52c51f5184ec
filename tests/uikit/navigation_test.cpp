// Navigation controllers: the stack, the messages of its screens' lives, the bar and its items.
#include "desktop/uikit/navigation_controller.h"

#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

/// A screen that writes its coming and going into one list that all share.
class Page : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"TestPage"};
    static void define(objc::ClassDefinition<Page>&) {}

    void viewWillAppear(bool animated) override { say("willAppear", animated); }
    void viewDidAppear(bool animated) override { say("didAppear", animated); }
    void viewWillDisappear(bool animated) override { say("willDisappear", animated); }
    void viewDidDisappear(bool animated) override { say("didDisappear", animated); }

    static inline Names heard;

  private:
    void say(const char* what, bool animated) {
        heard.push_back(utf8(title()) + " " + what + (animated ? " animated" : ""));
    }
};

class NavigationTest : public ToolkitTest {
  protected:
    NavigationTest() {
        objc::registerClasses<Recorder>();
        navigation_ = objc::Ref<NavigationController>::make<"initWithRootViewController:">(a_->object());
        window().setRootViewController(navigation_);
        window().makeKeyAndVisible();
        heard();
    }
    static objc::Ref<Page> make(const char* title) {
        auto page = objc::Ref<Page>::make();
        page->setTitle(nsString(title));
        return page;
    }
    static Names heard() { return std::exchange(Page::heard, {}); }
    void push(Page* page, bool animated = false) { navigation_->pushViewControllerAnimated(page, animated); }
    Names titles() const {
        Names names;
        for (const auto& each : navigation_->stack()) names.push_back(utf8(each->title()));
        return names;
    }
    static NavigationItem* itemOf(Page* page) { return objc::peerOf<NavigationItem>(page->navigationItem()); }
    NavigationBar& bar() { return *navigation_->navigationBar(); }
    std::string leftTitle() { return utf8(objc::peerOf<Button>(bar().leftView()->object())->currentTitle()); }
    void tapMiddle(View* view) {
        window().layoutIfNeeded();
        tap(view->pointToWindow(view->bounds().centre()));
    }
    static objc::Object array(std::initializer_list<Page*> pages) {
        auto made = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        for (auto* page : pages) objc::send<"addObject:">(made, page->object());
        return made;
    }

    objc::Ref<Page> a_ = make("a");
    objc::Ref<Page> b_ = make("b");
    objc::Ref<Page> c_ = make("c");
    objc::Ref<NavigationController> navigation_;
};

TEST_F(NavigationTest, anAnimatedPushCarriesItsFlagToTheEnd) {
    push(b_, true);
    EXPECT_EQ(heard(), (Names{"a willDisappear animated", "b willAppear animated"}));
    EXPECT_EQ(b_->view()->displacement(), (Point{320, 0}));
    advance(1);
    EXPECT_EQ(heard(), (Names{"a didDisappear animated", "b didAppear animated"}));
    EXPECT_EQ(b_->view()->displacement(), (Point{}));
    EXPECT_EQ(a_->view()->window(), nullptr);
}

TEST_F(NavigationTest, aPushAtOnceSaysSo) {
    push(b_);
    EXPECT_EQ(heard(), (Names{"a willDisappear", "b willAppear", "a didDisappear", "b didAppear"}));
    EXPECT_EQ(b_->navigationController(), navigation_.get());
}

TEST_F(NavigationTest, anAnimatedPopAnswersWhatLeftAndCarriesItsFlag) {
    push(b_);
    heard();
    EXPECT_EQ(navigation_->popViewControllerAnimated(true).self, b_->object().self);
    advance(1);
    EXPECT_EQ(heard(), (Names{"b willDisappear animated", "a willAppear animated", "b didDisappear animated",
                              "a didAppear animated"}));
    EXPECT_EQ(b_->parentViewController(), nullptr);
}

TEST_F(NavigationTest, aPopDuringAPushEndsThePushFirst) {
    push(b_, true);
    advance(0.1);
    heard();
    navigation_->popViewControllerAnimated(false);
    EXPECT_EQ(heard(), (Names{"a didDisappear animated", "b didAppear animated", "b willDisappear", "a willAppear",
                              "b didDisappear", "a didAppear"}));
}

TEST_F(NavigationTest, theRootNeverLeavesByAPop) {
    EXPECT_FALSE(navigation_->popViewControllerAnimated(true));
    EXPECT_EQ(titles(), Names{"a"});
    EXPECT_EQ(heard(), Names{});
}

TEST_F(NavigationTest, aPopToTheRootAnswersAllThatLeftAndPassesOverTheOnesBetween) {
    push(b_);
    push(c_);
    heard();
    const auto left = navigation_->popToRootViewControllerAnimated(false);
    EXPECT_EQ((objc::send<"count", unsigned long>(left)), 2u);
    EXPECT_EQ(titles(), Names{"a"});
    EXPECT_EQ(heard(), (Names{"c willDisappear", "a willAppear", "c didDisappear", "a didAppear"}));
}

TEST_F(NavigationTest, anAnimatedPopToTheRootKeepsTheScreensUntilTheyHaveLeft) {
    push(b_);
    push(c_);
    heard();
    navigation_->popToRootViewControllerAnimated(true);
    EXPECT_EQ(heard(), (Names{"c willDisappear animated", "a willAppear animated"}));
    EXPECT_EQ(titles(), Names{"a"});
    EXPECT_EQ(c_->parentViewController(), navigation_.get());
    advance(1);
    EXPECT_EQ(heard(), (Names{"c didDisappear animated", "a didAppear animated"}));
    EXPECT_EQ(b_->parentViewController(), nullptr);
    EXPECT_EQ(c_->parentViewController(), nullptr);
}

TEST_F(NavigationTest, aPopToTheRootAtTheRootTellsNobody) {
    EXPECT_EQ((objc::send<"count", unsigned long>(navigation_->popToRootViewControllerAnimated(true))), 0u);
    EXPECT_EQ(heard(), Names{});
}

TEST_F(NavigationTest, aPopToTheRootDuringAPushEndsThePushFirst) {
    push(b_, true);
    advance(0.1);
    heard();
    navigation_->popToRootViewControllerAnimated(false);
    EXPECT_EQ(heard(), (Names{"a didDisappear animated", "b didAppear animated", "b willDisappear", "a willAppear",
                              "b didDisappear", "a didAppear"}));
    EXPECT_EQ(b_->view()->window(), nullptr);
}

TEST_F(NavigationTest, aPopToAScreenStopsThereAndToAStrangerDoesNothing) {
    push(b_);
    push(c_);
    const auto stranger = make("d");
    EXPECT_EQ((objc::send<"count", unsigned long>(navigation_->popToViewControllerAnimated(stranger, false))), 0u);
    EXPECT_EQ(titles(), (Names{"a", "b", "c"}));
    EXPECT_EQ((objc::send<"count", unsigned long>(navigation_->popToViewControllerAnimated(b_, false))), 1u);
    EXPECT_EQ(titles(), (Names{"a", "b"}));
}

TEST_F(NavigationTest, aStackThatIsSetReplacesTheOneThatWas) {
    push(b_);
    heard();
    navigation_->setViewControllers(array({b_, c_}));
    EXPECT_EQ(titles(), (Names{"b", "c"}));
    EXPECT_EQ(heard(), (Names{"b willDisappear", "c willAppear", "b didDisappear", "c didAppear"}));
    EXPECT_EQ(a_->parentViewController(), nullptr);
}

TEST_F(NavigationTest, aStackThatIsSetSlidesInFromTheRightUnlessItsTopWasThereAlready) {
    push(b_);
    heard();
    navigation_->setViewControllersAnimated(array({a_, c_}), true);
    EXPECT_EQ(c_->view()->displacement(), (Point{320, 0}));
    advance(1);
    EXPECT_EQ(heard(), (Names{"b willDisappear animated", "c willAppear animated", "b didDisappear animated",
                              "c didAppear animated"}));
    navigation_->setViewControllersAnimated(array({a_}), true);
    EXPECT_EQ(a_->view()->displacement(), (Point{-96, 0}));
}

TEST_F(NavigationTest, anEmptiedStackLetsItsTopGo) {
    navigation_->setViewControllers(array({}));
    EXPECT_EQ(heard(), (Names{"a willDisappear", "a didDisappear"}));
    EXPECT_EQ(navigation_->topViewController(), nullptr);
    push(b_);
    EXPECT_EQ(heard(), (Names{"b willAppear", "b didAppear"}));
}

TEST_F(NavigationTest, aStackThatIsSetOutOfSightTellsNobodyUntilItIsShown) {
    const auto hidden = objc::Ref<NavigationController>::make<"initWithRootViewController:">(b_->object());
    hidden->setViewControllers(array({b_, c_}));
    EXPECT_EQ(heard(), Names{});
    window().setRootViewController(hidden);
    EXPECT_EQ(heard(), (Names{"a willDisappear", "a didDisappear", "c willAppear", "c didAppear"}));
}

TEST_F(NavigationTest, aStackWithTheSameTopTellsNobody) {
    push(b_);
    heard();
    navigation_->setViewControllers(array({b_}));
    EXPECT_EQ(heard(), Names{});
    EXPECT_FALSE(bar().isBackShown());
}

TEST_F(NavigationTest, theBackButtonHasTheTitleOfTheScreenBelowAndPops) {
    EXPECT_FALSE(bar().isBackShown());
    push(b_);
    EXPECT_TRUE(bar().isBackShown());
    EXPECT_EQ(leftTitle(), "a");
    tapMiddle(bar().leftView());
    advance(1);
    EXPECT_EQ(titles(), Names{"a"});
    EXPECT_FALSE(bar().isBackShown());
}

TEST_F(NavigationTest, aLeftItemOrItsOwnWishTakesTheBackButtonAway) {
    push(b_);
    itemOf(b_)->setHidesBackButton(true);
    EXPECT_EQ(bar().leftView(), nullptr);
    itemOf(b_)->setHidesBackButton(false);
    EXPECT_TRUE(bar().isBackShown());
    const auto left = objc::Ref<BarButtonItem>::make();
    itemOf(b_)->setLeftBarButtonItem(left);
    EXPECT_FALSE(bar().isBackShown());
}

TEST_F(NavigationTest, besideAWideTitleViewTheBackButtonIsTheArrowAlone) {
    a_->setTitle(nsString("Everything"));
    const auto wide = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {220, 30}});
    itemOf(b_)->setTitleView(wide);
    push(b_);
    window().layoutIfNeeded();
    EXPECT_EQ(leftTitle(), "");
    EXPECT_EQ(wide->frame(), (Rect{{50, 7}, {220, 30}}));
    EXPECT_LE(bar().leftView()->frame().right(), 50);
}

TEST_F(NavigationTest, aTitleViewGivesWayToALongButton) {
    const auto wide = objc::Ref<View>::make<"initWithFrame:">(Rect{{}, {160, 30}});
    itemOf(a_)->setTitleView(wide);
    window().layoutIfNeeded();
    EXPECT_EQ(wide->frame().left(), 80);
    const auto item = objc::Ref<BarButtonItem>::make<"initWithTitle:style:target:action:">(
        nsString("Einstellungen"), 0L, objc::Object{}, objc::selector<"pressed:">());
    itemOf(a_)->setRightBarButtonItem(item);
    window().layoutIfNeeded();
    EXPECT_LT(wide->frame().left(), 80);
    EXPECT_EQ(wide->frame().size.width, 160);
    EXPECT_EQ(wide->frame().right() + 8, bar().rightView()->frame().left());
}

TEST_F(NavigationTest, aBarItemSendsItsActionUnlessItIsDisabled) {
    const auto recorder = objc::Ref<Recorder>::make();
    const auto item = objc::Ref<BarButtonItem>::make<"initWithTitle:style:target:action:">(
        nsString("Go"), 0L, recorder->object(), objc::selector<"pressed:">());
    itemOf(a_)->setRightBarButtonItem(item);
    tapMiddle(bar().rightView());
    EXPECT_EQ(recorder->heard, Names{"pressed:"});
    EXPECT_EQ(recorder->lastSender.self, objc::Object{item.self()}.self);
    item->setEnabled(false);
    item->fire();
    EXPECT_EQ(recorder->heard.size(), 1u);
}

}  // namespace
}  // namespace uikit::test

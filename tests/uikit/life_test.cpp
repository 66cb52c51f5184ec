// The messages of a screen's life, in order.
#include "desktop/uikit/label.h"
#include "desktop/uikit/view_controller.h"
#include "tests/uikit/fixture.h"

namespace uikit::test {
namespace {

using Names = std::vector<std::string>;

/// Writes its life into one list that all share.
class Living : public ViewController {
  public:
    using Super = ViewController;
    static constexpr objc::Name className{"TestLiving"};
    static void define(objc::ClassDefinition<Living>&) {}
    ~Living() override { heard.push_back(name + " gone"); }

    void loadView() override {
        heard.push_back(name + " loadView");
        ViewController::loadView();
    }
    void viewDidLoad() override { heard.push_back(name + " didLoad"); }
    void viewWillAppear(bool animated) override { say("willAppear", animated); }
    void viewDidAppear(bool animated) override { say("didAppear", animated); }
    void viewWillDisappear(bool animated) override { say("willDisappear", animated); }
    void viewDidDisappear(bool animated) override { say("didDisappear", animated); }

    std::string name = "a";
    static inline Names heard;

  private:
    void say(const char* what, bool animated) { heard.push_back(name + " " + what + (animated ? " animated" : "")); }
};

class LifeTest : public ToolkitTest {
  protected:
    LifeTest() { Living::heard.clear(); }
    static objc::Ref<Living> make(const char* name) {
        auto made = objc::Ref<Living>::make();
        made->name = name;
        return made;
    }
    static Names heard() { return std::exchange(Living::heard, {}); }
};

TEST_F(LifeTest, theViewIsLoadedAtItsFirstUseAndOnce) {
    const auto a = make("a");
    EXPECT_FALSE(a->isViewLoaded());
    EXPECT_EQ(a->view()->frame(), (Rect{{}, {320, 568}}));
    EXPECT_EQ(a->view()->controller(), a.get());
    a->view();
    EXPECT_EQ(heard(), (Names{"a loadView", "a didLoad"}));
}

TEST_F(LifeTest, theRootAppearsWhenItsWindowBecomesKey) {
    const auto a = make("a");
    window().setRootViewController(a);
    EXPECT_EQ(heard(), (Names{"a loadView", "a didLoad"}));
    window().makeKeyAndVisible();
    EXPECT_EQ(heard(), (Names{"a willAppear", "a didAppear"}));
    window().makeKeyAndVisible();
    EXPECT_EQ(heard(), Names{});
    EXPECT_EQ(Application::shared()->keyWindow(), &window());
}

TEST_F(LifeTest, replacingTheRootLetsTheOldOneGo) {
    window().setRootViewController(make("a"));
    window().makeKeyAndVisible();
    heard();
    window().setRootViewController(make("b"));
    EXPECT_EQ(heard(), (Names{"a willDisappear", "a didDisappear", "a gone", "b loadView", "b didLoad", "b willAppear",
                              "b didAppear"}));
}

TEST_F(LifeTest, childrenOnTheScreenLiveWithTheirParent) {
    const auto a = make("a");
    const auto b = make("b");
    a->addChildViewController(b);
    a->view()->addSubview(b->view());
    a->addChildViewController(make("c"));
    heard();
    a->beginAppearing(true);
    a->endAppearing(true);
    a->beginDisappearing(false);
    a->endDisappearing(false);
    EXPECT_EQ(heard(),
              (Names{"a willAppear animated", "b willAppear animated", "a didAppear animated", "b didAppear animated",
                     "a willDisappear", "b willDisappear", "a didDisappear", "b didDisappear"}));
}

TEST_F(LifeTest, aPresentedScreenSlidesUpAndTheOneBelowLeavesAfterwards) {
    const auto a = make("a");
    const auto b = make("b");
    window().setRootViewController(a);
    window().makeKeyAndVisible();
    heard();
    int completed = 0;
    const objc::Block<void()> completion([&completed] { ++completed; });
    objc::send<"presentViewController:animated:completion:">(a->object(), b->object(), true,
                                                             objc::Object{completion.self()});
    EXPECT_EQ(heard(), (Names{"b loadView", "b didLoad", "a willDisappear animated", "b willAppear animated"}));
    EXPECT_EQ(b->view()->displacement(), (Point{0, 568}));
    advance(1);
    EXPECT_EQ(heard(), (Names{"b didAppear animated", "a didDisappear animated"}));
    EXPECT_EQ(b->view()->displacement(), (Point{0, 0}));
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(a->view()->window(), nullptr);
    EXPECT_EQ(a->presentedViewController(), b.get());
    EXPECT_EQ(b->presentingViewController(), a.get());

    objc::send<"dismissViewControllerAnimated:completion:">(b->object(), false, objc::Object{completion.self()});
    EXPECT_EQ(heard(), (Names{"b willDisappear", "a willAppear", "b didDisappear", "a didAppear"}));
    EXPECT_EQ(completed, 2);
    EXPECT_EQ(a->view()->window(), &window());
    EXPECT_EQ(b->view()->window(), nullptr);
    EXPECT_EQ(a->presentedViewController(), nullptr);
}

TEST_F(LifeTest, aScreenThatIsDismissedOnItsWayUpGoesAwayForGood) {
    const auto a = make("a");
    const auto b = make("b");
    window().setRootViewController(a);
    window().makeKeyAndVisible();
    a->presentViewControllerAnimatedCompletion(b, true, {});
    advance(0.1);
    heard();
    a->dismissViewControllerAnimatedCompletion(true, {});
    advance(1);
    EXPECT_EQ(heard(), (Names{"b willDisappear animated", "a willAppear animated", "b didDisappear animated",
                              "a didAppear animated"}));
    EXPECT_EQ(b->view()->window(), nullptr);
    EXPECT_EQ(a->view()->window(), &window());
}

TEST_F(LifeTest, controllersAndTheirViewsGoTogether) {
    {
        const objc::AutoreleasePool pool;
        const auto a = make("a");
        a->addChildViewController(make("b"));
        a->view()->addSubview(objc::Ref<Label>::make());
        heard();
    }
    EXPECT_EQ(heard(), (Names{"a gone", "b gone"}));
}

TEST_F(LifeTest, editingGoesThroughTheFormThatIsOverridden) {
    const auto a = make("a");
    objc::send<"setEditing:">(a->object(), true);
    EXPECT_TRUE(a->isEditing());
    objc::send<"setEditing:animated:">(a->object(), false, true);
    EXPECT_FALSE((objc::send<"isEditing", bool>(a->object())));
}

}  // namespace
}  // namespace uikit::test

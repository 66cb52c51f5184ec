// The indicator's life on a clock that is turned by hand, and what its delegate is told.
#include <thread>

#include "desktop/quorvel/visual/progress_hud.h"
#include "tests/quorvel_visual/fixture.h"

namespace quorvel::test {
namespace {

/// Works for an indicator and writes down what it is sent, from which thread.
class Worker : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestIndicatorWorker"};
    static void define(objc::ClassDefinition<Worker>& definition) {
        definition.method<"work:", &Worker::work>().method<"hudWasHidden:", &Worker::hidden>();
    }
    void work(objc::Object object) {
        thread = std::this_thread::get_id();
        argument = object;
        heard.push_back("work:");
    }
    void hidden(objc::Object hud) {
        lastHidden = hud;
        wasOnScreen = objc::peerOf<ProgressHud>(hud)->superview() != nullptr;
        heard.push_back("hudWasHidden:");
    }
    objc::Object object() const { return objc::Object{self}; }

    Texts heard;
    std::thread::id thread;
    objc::Object argument;
    objc::Object lastHidden;
    bool wasOnScreen = false;
};

class IndicatorTest : public VisualTest {
  protected:
    objc::Ref<ProgressHud> show() {
        return objc::Ref<ProgressHud>(ProgressHud::showAddedTo(objc::classOf<ProgressHud>(), window(), true));
    }
    objc::Ref<Worker> worker_ = objc::Ref<Worker>::make();
};

TEST_F(IndicatorTest, itCoversTheViewAndFadesIn) {
    const auto hud = show();
    EXPECT_EQ(hud->superview(), window());
    EXPECT_EQ(hud->frame(), (uikit::Rect{{}, {320, 568}}));
    EXPECT_EQ(hud->alpha(), 0);
    advance(1);
    EXPECT_EQ(hud->alpha(), 1);
}

TEST_F(IndicatorTest, withoutAViewThereIsNone) {
    EXPECT_EQ(ProgressHud::showAddedTo(objc::classOf<ProgressHud>(), nullptr, true), nullptr);
}

TEST_F(IndicatorTest, itLeavesTheViewAfterItsFadeAndTellsItsDelegateOnce) {
    const auto hud = show();
    hud->setDelegate(worker_->object());
    advance(1);
    hud->hide(true);
    EXPECT_TRUE(hud->isLeaving());
    EXPECT_EQ(hud->superview(), window());
    hud->hide(true);
    advance(1);
    EXPECT_EQ(hud->superview(), nullptr);
    EXPECT_EQ(worker_->heard, Texts{"hudWasHidden:"});
    EXPECT_TRUE(worker_->lastHidden == hud->object());
    EXPECT_TRUE(worker_->wasOnScreen);
}

TEST_F(IndicatorTest, itLeavesTheViewAfterItsDelegateIsGone) {
    const auto hud = show();
    hud->setDelegate(worker_->object());
    EXPECT_EQ(hud->delegate(), objc::Strong<>(worker_->object()));
    advance(1);
    hud->hide(true);
    worker_ = {};
    EXPECT_FALSE(hud->delegate());
    advance(1);
    EXPECT_EQ(hud->superview(), nullptr);
}

TEST_F(IndicatorTest, aDelegateThatDoesNotAnswerIsNotAsked) {
    const auto hud = show();
    hud->setDelegate(uikit::nsString("no delegate"));
    hud->hide(false);
    advance(1);
    EXPECT_EQ(hud->superview(), nullptr);
}

TEST_F(IndicatorTest, itHidesOnceTheDelayHasPassed) {
    const auto hud = show();
    hud->hideAfterDelay(true, 2);
    advance(1.9);
    EXPECT_FALSE(hud->isLeaving());
    advance(0.2);
    EXPECT_TRUE(hud->isLeaving());
    advance(1);
    EXPECT_EQ(hud->superview(), nullptr);
}

TEST_F(IndicatorTest, theWorkRunsOnAThreadOfItsOwnAndThenTheIndicatorHides) {
    const auto hud = show();
    const objc::Strong<> argument(uikit::nsString("argument"));
    hud->setDelegate(worker_->object());
    hud->showWhileExecuting(objc::selector<"work:">(), worker_->object(), argument.get(), true);
    ASSERT_TRUE(settle());
    advance(1);
    EXPECT_EQ(worker_->heard, (Texts{"work:", "hudWasHidden:"}));
    EXPECT_NE(worker_->thread, std::this_thread::get_id());
    EXPECT_TRUE(worker_->argument == argument.get());
    EXPECT_EQ(hud->superview(), nullptr);
}

TEST_F(IndicatorTest, theWorkersTargetLivesUntilItsWorkIsDone) {
    const auto hud = show();
    hud->setDelegate(worker_->object());
    auto target = objc::Ref<Worker>::make();
    hud->showWhileExecuting(objc::selector<"work:">(), target->object(), {}, true);
    target = {};
    ASSERT_TRUE(settle());
    advance(1);
    EXPECT_EQ(worker_->heard, Texts{"hudWasHidden:"});
}

TEST_F(IndicatorTest, aSecondOneLeavesTheFirstOnTheScreen) {
    const auto first = show();
    const auto second = show();
    EXPECT_EQ(visibleIndicators(), (std::vector<ProgressHud*>{first, second}));
    second->hide(true);
    EXPECT_EQ(visibleIndicators(), std::vector<ProgressHud*>{first});
    advance(1);
    EXPECT_EQ(first->superview(), window());
    EXPECT_EQ(first->alpha(), 1);
}

TEST_F(IndicatorTest, shownAgainWhileItLeavesItStays) {
    const auto hud = show();
    advance(1);
    hud->hide(true);
    hud->show(true);
    advance(1);
    EXPECT_EQ(hud->superview(), window());
    EXPECT_EQ(hud->alpha(), 1);
    EXPECT_FALSE(hud->isLeaving());
}

TEST_F(IndicatorTest, itTakesTheTouchesOfWhatItCovers) {
    const auto hud = show();
    advance(1);
    EXPECT_EQ(window()->hitTest({160, 100}), hud.get());
}

TEST_F(IndicatorTest, itSaysItsTextAndTheDetailBelow) {
    const auto hud = show();
    hud->setLabelText(uikit::nsString("Loading"));
    hud->setDetailsLabelText(uikit::nsString("All calls"));
    EXPECT_EQ(uikit::utf8(hud->labelText()), "Loading");
    EXPECT_EQ(uikit::utf8(hud->detailsLabelText()), "All calls");
    window()->layoutIfNeeded();
    EXPECT_LT(hud->subviews()[0]->frame().bottom(), hud->subviews()[1]->frame().top());
}

}  // namespace
}  // namespace quorvel::test

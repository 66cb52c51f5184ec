// The sheet of blocks, the additions to the toolkit, the screens' base, the person's header and the load-more row.
#include <memory>

#include "desktop/quorvel/visual/base_table_controller.h"
#include "desktop/quorvel/visual/load_more_cell.h"
#include "desktop/quorvel/visual/person_header.h"
#include "desktop/uikit/navigation_controller.h"
#include "desktop/uikit/sheet.h"
#include "tests/quorvel_visual/fixture.h"

namespace quorvel::test {
namespace {

using uikit::nsString;

class SheetTest : public VisualTest {
  protected:
    objc::Ref<BlockActionSheet> show() {
        auto sheet = objc::Ref<BlockActionSheet>::make<"initWithTitle:">(nsString("All calls will be deleted."));
        const objc::Block<void()> destroy([this] { heard_.push_back("delete"); });
        const objc::Block<void()> other([this] { heard_.push_back("other"); });
        sheet->setDestructiveButton(nsString("Delete all"), destroy.get());
        sheet->setCancelButton(nsString("Cancel"), nullptr);
        sheet->addButton(nsString("Other"), other.get());
        sheet->showInView(window());
        return sheet;
    }
    Texts heard_;
};

TEST_F(SheetTest, itShowsItsTitleAndItsButtons) {
    const auto sheet = show();
    ASSERT_TRUE(uikit::frontSheet());
    const auto& content = uikit::frontSheet()->content();
    EXPECT_EQ(content.title, "All calls will be deleted.");
    ASSERT_EQ(content.choices.size(), 3U);
    EXPECT_EQ(content.choices[0].title, "Delete all");
    EXPECT_EQ(content.choices[0].role, uikit::Sheet::Role::Destructive);
    EXPECT_EQ(content.choices[1].title, "Cancel");
    EXPECT_EQ(content.choices[1].role, uikit::Sheet::Role::Cancel);
}

TEST_F(SheetTest, aButtonsBlockRunsOnce) {
    const auto sheet = show();
    sheet->dismissWithClickedButtonIndexAnimated(0, false);
    sheet->dismissWithClickedButtonIndexAnimated(0, false);
    advance(1);
    EXPECT_EQ(heard_, Texts{"delete"});
    EXPECT_FALSE(uikit::frontSheet());
}

TEST_F(SheetTest, endedWithoutAButtonNoBlockRuns) {
    const auto sheet = show();
    sheet->dismissWithClickedButtonIndexAnimated(-1, true);
    advance(1);
    EXPECT_EQ(heard_, Texts{});
    EXPECT_FALSE(uikit::frontSheet());
}

TEST_F(SheetTest, aButtonWithoutABlockOnlyEndsIt) {
    show()->dismissWithClickedButtonIndexAnimated(1, true);
    advance(1);
    EXPECT_EQ(heard_, Texts{});
    EXPECT_FALSE(uikit::frontSheet());
}

TEST_F(SheetTest, itKeepsItselfWhileItShows) {
    show();
    uikit::frontSheet()->dismiss(2, true);
    advance(1);
    EXPECT_EQ(heard_, Texts{"other"});
}

TEST_F(SheetTest, aPanelThatIsTakenAwayEndsTheSheet) {
    const auto sheet = show();
    uikit::frontSheet()->removeFromSuperview();
    EXPECT_FALSE(uikit::frontSheet());
    sheet->dismissWithClickedButtonIndexAnimated(0, false);
    EXPECT_EQ(heard_, Texts{});
}

TEST_F(SheetTest, aScreenThatItsBlocksHoldIsFreedOnceTheQuestionIsOver) {
    enum class End { answered, dismissed, takenAway };
    for (const End end : {End::answered, End::dismissed, End::takenAway}) {
        auto held = std::make_shared<int>(1);
        const std::weak_ptr<int> screen = held;
        const auto sheet = objc::Ref<BlockActionSheet>::make<"initWithTitle:">(nsString("Delete?"));
        {
            const objc::Block<void()> destroy([held] { ++*held; });
            sheet->setDestructiveButton(nsString("Delete"), destroy.get());
        }
        held.reset();
        sheet->showInView(window());
        EXPECT_FALSE(screen.expired());
        if (end == End::takenAway)
            uikit::frontSheet()->removeFromSuperview();
        else
            sheet->dismissWithClickedButtonIndexAnimated(end == End::answered ? 0 : -1, true);
        advance(1);
        EXPECT_TRUE(screen.expired());
    }
}

class AdditionsTest : public VisualTest {};

TEST_F(AdditionsTest, aColourIsMadeOfTwentyFourBitsRedFirst) {
    const auto color = objc::sendClass<"UIColor", "colorWithHex:", objc::Object>(214111L);
    EXPECT_EQ(uikit::colorOf(color), (uikit::Color{3 / 255.0, 68 / 255.0, 95 / 255.0, 1}));
}

TEST_F(AdditionsTest, bitsAboveTheColourAreLeftOut) {
    const auto color = objc::sendClass<"UIColor", "colorWithHex:", objc::Object>(0x7F03445FL);
    EXPECT_EQ(uikit::colorOf(color), uikit::palette::brand);
}

/// A screen of the companion's kind.
class Screen : public BaseTableController {
  public:
    using Super = BaseTableController;
    static constexpr objc::Name className{"TestBaseScreen"};
    static void define(objc::ClassDefinition<Screen>& definition) {
        definition.method<"work", &Screen::work>();
        definition.method<"tableView:numberOfRowsInSection:", &Screen::rows>();
    }
    void work() { hasWorked = true; }
    long rows(objc::Object, long) { return 0; }
    std::atomic<bool> hasWorked{false};
};

class BaseControllerTest : public VisualTest {
  protected:
    BaseControllerTest() {
        screen_ = objc::Ref<Screen>::make();
        window()->setRootViewController(screen_);
        advance(1);
    }
    objc::Ref<Screen> screen_;
};

TEST_F(BaseControllerTest, itsViewIsATableThatAsksIt) {
    EXPECT_EQ(screen_->view(), screen_->tableView());
    EXPECT_TRUE(screen_->tableView()->dataSource() == screen_->object());
}

TEST_F(BaseControllerTest, itKeepsItsSheet) {
    EXPECT_FALSE(screen_->actionSheet());
    screen_->setActionSheet(objc::Object{objc::Ref<BlockActionSheet>::make().self()});
    EXPECT_TRUE(objc::isKindOf(screen_->actionSheet(), objc::classOf<BlockActionSheet>()));
    screen_->setActionSheet({});
    EXPECT_FALSE(screen_->actionSheet());
}

TEST_F(BaseControllerTest, theIndicatorBlocksTheWindowUntilItIsHidden) {
    screen_->showHud(nsString("Loading"));
    EXPECT_FALSE(window()->isUserInteractionEnabled());
    ASSERT_EQ(visibleIndicators().size(), 1U);
    EXPECT_EQ(uikit::utf8(visibleIndicators()[0]->labelText()), "Loading");
    screen_->hideHud();
    EXPECT_TRUE(window()->isUserInteractionEnabled());
    EXPECT_TRUE(visibleIndicators().empty());
}

TEST_F(BaseControllerTest, hidingWithoutAnIndicatorUnblocksTheWindow) {
    window()->setUserInteractionEnabled(false);
    screen_->hideHud();
    EXPECT_TRUE(window()->isUserInteractionEnabled());
}

TEST_F(BaseControllerTest, aSecondIndicatorIsTheOneThatIsHidden) {
    screen_->showHud(nsString("one"));
    screen_->showHud(nsString("two"));
    screen_->hideHud();
    advance(1);
    ASSERT_EQ(visibleIndicators().size(), 1U);
    EXPECT_EQ(uikit::utf8(visibleIndicators()[0]->labelText()), "one");
}

TEST_F(BaseControllerTest, theSelectorRunsUnderTheIndicatorAndTheEndUnblocks) {
    screen_->showHudRunning(nsString("Deleting"), nsString("All"), screen_->object(), 0, objc::selector<"work">());
    EXPECT_FALSE(window()->isUserInteractionEnabled());
    ASSERT_TRUE(screen_->hud());
    EXPECT_EQ(uikit::utf8(screen_->hud()->detailsLabelText()), "All");
    ASSERT_TRUE(settle());
    advance(1);
    EXPECT_TRUE(screen_->hasWorked);
    EXPECT_TRUE(window()->isUserInteractionEnabled());
    EXPECT_FALSE(screen_->hud());
    EXPECT_TRUE(visibleIndicators().empty());
}

/// Hears the header's buttons.
class HeaderDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestHeaderDelegate"};
    static void define(objc::ClassDefinition<HeaderDelegate>& definition) {
        definition.method<"showLogAction:", &HeaderDelegate::showLog>()
            .method<"detailsButotnClicked", &HeaderDelegate::details>();
    }
    void showLog(objc::Object) { heard.push_back("showLogAction:"); }
    void details() { heard.push_back("detailsButotnClicked"); }
    Texts heard;
};

class HeaderTest : public VisualTest {
  protected:
    objc::Ref<PersonHeader> header(std::initializer_list<Entry::Fields> calls) {
        const auto records = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        for (const auto& each : calls) objc::send<"addObject:">(records, Entry::make(each)->object());
        auto made = objc::Ref<PersonHeader>::make<"initWithFrame:">(uikit::Rect{});
        made->setCallRecords(records);
        window()->addSubview(made);
        window()->layoutIfNeeded();
        return made;
    }
    static std::vector<uikit::Button*> buttonsOf(PersonHeader* header) {
        std::vector<uikit::Button*> found;
        for (const auto& view : header->subviews())
            if (auto* button = objc::peerIf<uikit::Button>(view->object())) found.push_back(button);
        return found;
    }
};

TEST_F(HeaderTest, itSaysTheDayAndEachCallsTimeAndLength) {
    const auto made = header({{.date = now, .duration = 61}, {.date = now - hour, .missed = true}});
    EXPECT_EQ(made->drawnTexts(), (Texts{"Today", "15:00", "1:01", "14:00"}));
}

TEST_F(HeaderTest, itIsAsWideAsTheScreenAndAsHighAsItsCallsNeed) {
    EXPECT_EQ(header({})->frame().size.width, 320);
    const double one = header({{.date = now}})->frame().size.height;
    const double two = header({{.date = now}, {.date = now}})->frame().size.height;
    EXPECT_EQ(two - one, 25);
}

TEST_F(HeaderTest, callsBeyondTheFifthAreCounted) {
    const Entry::Fields call{.date = now, .duration = 1};
    const auto made = header({call, call, call, call, call, call, call});
    EXPECT_EQ(made->drawnTexts().size(), 12U);
    EXPECT_EQ(made->drawnTexts().back(), "+2");
}

TEST_F(HeaderTest, itsButtonsTellTheDelegate) {
    const auto made = header({{.date = now}});
    const auto delegate = objc::Ref<HeaderDelegate>::make();
    made->setDelegate(objc::Object{delegate.self()});
    ASSERT_EQ(buttonsOf(made).size(), 2U);
    for (auto* button : buttonsOf(made)) button->sendActionsForControlEvents(uikit::touchUpInside);
    EXPECT_EQ(delegate->heard, (Texts{"showLogAction:", "detailsButotnClicked"}));
}

TEST_F(HeaderTest, aDelegateThatAnswersNothingIsSentNothing) {
    const auto made = header({{.date = now}});
    for (const auto delegate : {objc::Object{}, nsString("no delegate")}) {
        made->setDelegate(delegate);
        for (auto* button : buttonsOf(made)) button->sendActionsForControlEvents(uikit::touchUpInside);
        EXPECT_TRUE(made->delegate() == delegate);
    }
}

class LoadMoreTest : public VisualTest {};

TEST_F(LoadMoreTest, theLabelStaysInTheMiddleOfTheRow) {
    const auto cell = objc::Ref<LoadMoreCell>::make<"initWithStyle:reuseIdentifier:">(0L, objc::Object{});
    const auto label = objc::Ref<uikit::Label>::make<"initWithFrame:">(cell->bounds());
    label->setTag(1);
    cell->contentView()->addSubview(label);
    cell->setFrame({{}, {320, 50}});
    cell->setAccessoryView(objc::Ref<uikit::View>::make<"initWithFrame:">(uikit::Rect{{}, {20, 20}}));
    window()->addSubview(cell);
    window()->layoutIfNeeded();
    EXPECT_EQ(label->frame().centre(), (uikit::Point{160, 25}));
    EXPECT_EQ(cell->selectionStyle(), 0);
}

}  // namespace
}  // namespace quorvel::test

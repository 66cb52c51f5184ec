// The history screen's lists, texts, rows and segments.
#include "desktop/uikit/application.h"
#include "desktop/uikit/table_view.h"
#include "tests/screens/history_fixture.h"

namespace screens {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

int appearancesOfTheBase = 0;
int disappearancesOfTheBase = 0;
void countAppearance(objc::Object, bool) { ++appearancesOfTheBase; }
void countDisappearance(objc::Object, bool) { ++disappearancesOfTheBase; }

TEST_F(HistoryTest, opensOnAllCallsOfTheNumberNewestFirst) {
    fill(oneOfEach());
    open();
    EXPECT_THAT(stack(), ElementsAre("PHRecentsViewController", "QVLogViewController"));
    EXPECT_EQ(screen_->filterType(), 1);
    EXPECT_EQ(screen_->rows(), 4);
    EXPECT_EQ(screen_->history().count(), 4U);
    std::vector<int> durations;
    for (NSUInteger i = 0; i < 4; ++i)
        durations.push_back(screen_->logInfoList().objectAtIndex<QVCallEntry>(i).duration());
    EXPECT_THAT(durations, ElementsAre(0, 30, 60, 0));
}

TEST_F(HistoryTest, hasFourSegmentsInTheTitleATrashButtonAndNoTitle) {
    fill(oneOfEach());
    open();
    auto control = objc::send<"titleView", UISegmentedControl>(screen_->navigationItem());
    EXPECT_EQ((objc::send<"numberOfSegments", unsigned long>(control)), 4U);
    EXPECT_EQ(control.selectedSegmentIndex(), 0);
    EXPECT_EQ(control.frame().size.width, 200.0);
    EXPECT_EQ((objc::send<"title", objc::Object>(screen_.get())).self, nullptr);
    EXPECT_TRUE(screen_->rightItem());
}

TEST_F(HistoryTest, eachSegmentShowsTheCallsOfItsKind) {
    fill(oneOfEach());
    open();
    const NSInteger expected[] = {4, 2, 1, 1};  // dialled takes every outgoing call
    for (NSInteger segment : {1, 2, 3, 0}) {
        screen_->chooseSegment(segment);
        EXPECT_EQ(screen_->filterType(), segment + 1);
        EXPECT_EQ(screen_->rows(), expected[segment]) << segment;
        EXPECT_EQ(screen_->history().count(), 4U);
    }
}

TEST_F(HistoryTest, aSegmentDoesNotAskTheCompanionForCallsAgain) {
    fill(oneOfEach());
    open();
    trace({"QVDataController"});
    screen_->chooseSegment(2);
    settle();
    EXPECT_THAT(traced(), Not(Contains(testing::StartsWith("getHistoryForContact:"))));
}

TEST_F(HistoryTest, withoutMissedCallsTheirFilterHasNoRowsAndNoEdges) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing, .duration = 5}});
    open();
    screen_->chooseSegment(3);
    EXPECT_EQ(screen_->rows(), 0);
    EXPECT_EQ(screen_->headerHeight(), 0.0);
    EXPECT_EQ(screen_->footerHeight(), 0.0);
    EXPECT_FALSE(screen_->header());
    EXPECT_FALSE(screen_->footer());
    EXPECT_EQ(utf8(screen_->footerInfo()), "0 calls");
}

TEST_F(HistoryTest, missedCallsHaveNoDurationInTheFooterAndTheOthersAlwaysHaveOne) {
    fill({{.address = "+4930100", .date = noon - 60, .flags = outgoing, .duration = 0},
          {.address = "+4930100", .date = noon, .flags = incoming, .duration = 0}});
    open();
    EXPECT_EQ(utf8(screen_->footer()), "2 calls, 0:00:00");
    screen_->chooseSegment(1);
    EXPECT_EQ(utf8(screen_->footer()), "1 call, 0:00:00");
    screen_->chooseSegment(2);
    EXPECT_EQ(utf8(screen_->footerInfo()), "0 calls, 0:00:00");
    screen_->chooseSegment(3);
    EXPECT_EQ(utf8(screen_->footer()), "1 call");
}

TEST_F(HistoryTest, theHeaderSaysWhatIsShownUnlessItIsSwitchedOff) {
    fill(oneOfEach());
    open();
    EXPECT_EQ(screen_->headerHeight(), 22.0);
    EXPECT_EQ(screen_->footerHeight(), 22.0);
    EXPECT_EQ(utf8(screen_->header()), "Showing 4 calls");
    screen_->chooseSegment(1);
    EXPECT_EQ(utf8(screen_->header()), "Showing 2 dialed calls");
    screen_->chooseSegment(2);
    EXPECT_EQ(utf8(screen_->header()), "Showing 1 received call");
    screen_->chooseSegment(3);
    EXPECT_EQ(utf8(screen_->header()), "Showing 1 missed call");
    setSetting("isShowHeader_Call", "off");
    EXPECT_FALSE(screen_->header());
    EXPECT_TRUE(screen_->footer());
    setSetting("isShowFooter_Call", "off");
    EXPECT_FALSE(screen_->footer());
}

TEST_F(HistoryTest, everyRowIsDeletableAndFiftyPointsHigh) {
    fill(oneOfEach());
    open();
    auto table = screen_->tableView();
    EXPECT_EQ((objc::send<"tableView:heightForRowAtIndexPath:", double>(screen_.get(), table, rowPath(0))), 50.0);
    EXPECT_TRUE((objc::send<"tableView:canEditRowAtIndexPath:", bool>(screen_.get(), table, rowPath(99))));
    EXPECT_EQ((objc::send<"tableView:editingStyleForRowAtIndexPath:", long>(screen_.get(), table, rowPath(3))), 1);
    EXPECT_EQ((objc::send<"numberOfSectionsInTableView:", long>(screen_.get(), table)), 1);
    auto cell = objc::send<"tableView:cellForRowAtIndexPath:", objc::Object>(screen_.get(), table, rowPath(0));
    EXPECT_STREQ(object_getClassName(cell.self), "QVUITableViewCell");
}

TEST_F(HistoryTest, appearingTwiceWithoutLeavingDoublesTheHistory) {
    fill(oneOfEach());
    open();
    objc::send<"viewWillAppear:">(screen_.get(), false);
    EXPECT_EQ(screen_->history().count(), 8U);
    EXPECT_EQ(screen_->rows(), 8);
}

TEST_F(HistoryTest, leavingEmptiesTheListsAndReturningReadsThemAgainUnderTheSameFilter) {
    fill(oneOfEach());
    open();
    screen_->chooseSegment(2);
    auto above = objc::make<UIViewController>(objc::classNamed<"UIViewController">());
    navigation().pushViewController(above.get(), true);
    settle();
    EXPECT_FALSE(screen_->history());
    EXPECT_FALSE(screen_->logInfoList());
    EXPECT_FALSE(screen_->footerInfo());
    navigation().popViewController(true);
    settle();
    EXPECT_EQ(screen_->history().count(), 4U);
    EXPECT_EQ(screen_->filterType(), 3);
    EXPECT_EQ(screen_->rows(), 1);
}

TEST_F(HistoryTest, theBaseIsNotToldOfAppearingAndOfHavingDisappeared) {
    fill(oneOfEach());
    Class base = objc::classNamed<"QVBaseTableViewController">();
    ASSERT_TRUE((objc::addMethod<"viewWillAppear:", &countAppearance>(base)));
    ASSERT_TRUE((objc::addMethod<"viewDidDisappear:", &countDisappearance>(base)));
    open();
    navigation().popViewController(true);
    settle();
    EXPECT_EQ(appearancesOfTheBase, 0);
    EXPECT_EQ(disappearancesOfTheBase, 0);
}

TEST_F(HistoryTest, withoutCallOnTapNoRowCanBeSelected) {
    fill(oneOfEach());
    open();
    auto willSelect = [&] {
        return objc::send<"tableView:willSelectRowAtIndexPath:", objc::Object>(screen_.get(), screen_->tableView(),
                                                                               rowPath(1));
    };
    EXPECT_FALSE(willSelect());
    auto* table = objc::peerOf<uikit::TableView>(screen_->tableView());
    EXPECT_TRUE(table->tapRow(1, 0));
    EXPECT_FALSE(objc::peerOf<uikit::TableViewCell>(table->cellAtPath(rowPath(1)))->isHighlighted());
    setSetting("isCallOnTap_Call", "on");
    EXPECT_TRUE(willSelect());
}

class HistoryTap : public HistoryTest {
  protected:
    void openTapping() {
        setSetting("isCallOnTap_Call", "on");
        open();
        uikit::Application::shared()->setUrlOpener([this](const std::string& address) {
            addresses_.push_back(address);
            return true;
        });
    }
    void tapRow(long row) {
        objc::send<"tableView:didSelectRowAtIndexPath:">(screen_.get(), screen_->tableView(), rowPath(row));
    }

    std::vector<std::string> addresses_;
};

TEST_F(HistoryTap, callsBackTheWayTheCallCame) {
    constexpr int faceTime = 16;
    constexpr int audio = 32;
    fill({{.address = "+4930100", .date = noon - 2, .flags = outgoing | faceTime | audio},
          {.address = "+4930100", .date = noon - 1, .flags = outgoing | faceTime},
          {.address = "+4930100", .date = noon, .flags = outgoing}});
    openTapping();
    for (long row : {0, 1, 2}) tapRow(row);
    setSetting("isFaceTimeEnabled", "off");
    tapRow(1);
    EXPECT_THAT(addresses_,
                ElementsAre("tel://+4930100", "facetime://+4930100", "facetime-audio://+4930100", "tel://+4930100"));
}

TEST_F(HistoryTap, withoutANumberOrARowDoesNothing) {
    fill(oneOfEach());
    openTapping();
    tapRow(4);
    tapRow(-1);
    auto call = screen_->logInfoList().objectAtIndex<QVCallEntry>(0);
    objc::send<"setPhoneNumber:">(call, objc::Object{});
    tapRow(0);
    EXPECT_THAT(addresses_, testing::IsEmpty());
}

TEST_F(HistoryTap, isIgnoredWithoutCallOnTap) {
    fill(oneOfEach());
    openTapping();
    setSetting("isCallOnTap_Call", "off");
    tapRow(0);
    EXPECT_THAT(addresses_, testing::IsEmpty());
}

}  // namespace
}  // namespace screens

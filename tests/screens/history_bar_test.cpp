// The history's navigation bar, message by message: which change is animated, and in which order they come.
#include "tests/screens/history_fixture.h"

namespace screens {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class HistoryBar : public HistoryTest {
  protected:
    /// What the bar is sent for the state.
    std::vector<std::string> sent(bool editing, bool groupEdit) {
        trace({"UINavigationItem"});
        objc::send<"updateNavigationBarButtonItems:groupEdit:">(screen_.get(), editing, groupEdit);
        std::vector<std::string> set;
        for (const auto& line : traced())
            if (line.starts_with("set")) set.push_back(line);
        return set;
    }
};

TEST_F(HistoryBar, inGroupEditHidesBackAtOnceAndBringsTwoButtons) {
    fill(oneOfEach());
    open();
    EXPECT_THAT(sent(true, true), ElementsAre("setHidesBackButton:animated: YES NO",
                                              "setLeftBarButtonItem:animated: <UIBarButtonItem> YES",
                                              "setRightBarButtonItem:animated: <UIBarButtonItem> YES"));
    EXPECT_TRUE(screen_->isLogEditing());
}

TEST_F(HistoryBar, whileARowIsSwipedHidesBackTwiceOnPurposeAndBringsOneButton) {
    fill(oneOfEach());
    open();
    EXPECT_THAT(sent(true, false),
                ElementsAre("setHidesBackButton:animated: YES NO", "setHidesBackButton:animated: YES YES",
                            "setRightBarButtonItem:animated: <UIBarButtonItem> YES"));
    EXPECT_TRUE(screen_->isLogEditing());
}

TEST_F(HistoryBar, outsideEditModeBringsTheTrashAndBack) {
    fill(oneOfEach());
    open();
    EXPECT_THAT(sent(false, true), ElementsAre("setLeftBarButtonItem:animated: nil NO",
                                               "setRightBarButtonItem:animated: <UIBarButtonItem> YES",
                                               "setHidesBackButton:animated: NO YES"));
    EXPECT_FALSE(screen_->isLogEditing());
}

TEST_F(HistoryBar, ofAnEmptyListHasNoTrash) {
    fill({{.address = "+4930100", .date = noon, .flags = outgoing}});
    open();
    screen_->chooseSegment(3);
    EXPECT_THAT(sent(false, false),
                ElementsAre("setLeftBarButtonItem:animated: nil NO", "setRightBarButtonItem:animated: nil YES",
                            "setHidesBackButton:animated: NO YES"));
    EXPECT_THAT(sent(true, true), ElementsAre("setRightBarButtonItem:animated: nil YES"));
    EXPECT_TRUE(screen_->isLogEditing());
}

}  // namespace
}  // namespace screens

// Edit mode: the buttons of the two bars in each state.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsEditing : public RecentsMessages {
  protected:
    void openWith(int rows) {
        companion().setRows(1, people(rows));
        open();
    }
    void update(bool editing, bool groupEdit) {
        send<"updateNavigationBarButtonItems:groupEdit:">(editing, groupEdit);
        settle();
    }
    void beginSwipe(long row) {
        send<"tableView:willBeginEditingRowAtIndexPath:">(
            table()->object(), objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(row, 0L));
        settle();
    }
    void endSwipe(long row) {
        send<"tableView:didEndEditingRowAtIndexPath:">(
            table()->object(), objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(row, 0L));
        settle();
    }
    std::string deleteAllTitle() const { return titleOf(send<"getDeleteAllButtonText", objc::Object>()); }
    static std::string titleOf(objc::Object text) { return objc::send<"UTF8String", const char*>(text); }
};

TEST_F(RecentsEditing, theTrashButtonEntersGroupEditAndTheStopButtonLeavesIt) {
    openWith(3);
    EXPECT_EQ(right(), "trash");
    // The trash button is made once for the process; its action is this.
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_TRUE((send<"isEditing", bool>()));
    ASSERT_NE(bar()->leftBarButtonItem(), nullptr);
    EXPECT_EQ(left(), "delete_all_icon");
    EXPECT_EQ(bar()->leftBarButtonItem()->style(), 2);
    EXPECT_EQ(right(), "stop");
    EXPECT_FALSE(bar()->hidesBackButton());
    bar()->rightBarButtonItem()->fire();
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    EXPECT_EQ(left(), "-");
    EXPECT_EQ(right(), "trash");
    EXPECT_FALSE(bar()->hidesBackButton());
}

TEST_F(RecentsEditing, withoutRowsNoButtonChanges) {
    openWith(0);
    const auto before = right();
    update(true, true);
    EXPECT_EQ(left(), "-");
    EXPECT_EQ(right(), before);
}

TEST_F(RecentsEditing, inASearchThatFoundNothingNoButtonChanges) {
    openWith(3);
    type("nobody");
    settle();
    button(1)->setHidden(false);
    button(2)->setHidden(false);
    update(true, true);
    EXPECT_FALSE(button(1)->isHidden());
    EXPECT_FALSE(button(2)->isHidden());
    EXPECT_FALSE(button(2)->isSelected());
}

TEST_F(RecentsEditing, aSwipedRowHidesTheBackButtonAndOffersStop) {
    openWith(3);
    beginSwipe(1);
    EXPECT_EQ(left(), "-");
    EXPECT_EQ(right(), "stop");
    EXPECT_TRUE(bar()->hidesBackButton());
    endSwipe(1);
    EXPECT_EQ(right(), "trash");
    EXPECT_FALSE(bar()->hidesBackButton());
}

TEST_F(RecentsEditing, aTapWhileARowIsSwipedEndsEditModeRatherThanEnteringGroupEdit) {
    openWith(3);
    beginSwipe(1);
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_FALSE((send<"isEditing", bool>()));
    EXPECT_EQ(left(), "-");
    EXPECT_EQ(right(), "trash");
    endSwipe(1);
}

TEST_F(RecentsEditing, theTrashButtonLeavesWithTheLastRow) {
    openWith(1);
    send<"editButtonClicked:">(objc::Object{});
    settle();
    companion().lists[0].load()->removeAllObjects();
    companion().setRows(1, {});
    companion().counts[0] = 0;
    send<"initializeCallList">();
    update(false, false);
    EXPECT_EQ(right(), "-");
    EXPECT_EQ(left(), "-");
}

TEST_F(RecentsEditing, inASearchTheScopeButtonsTakeTheBarsPlace) {
    openWith(3);
    type("person");
    settle();
    EXPECT_TRUE(button(1)->isHidden());
    EXPECT_FALSE(button(2)->isHidden());
    EXPECT_FALSE(button(2)->isSelected());
    const auto before = right();
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_TRUE(results()->isEditing());
    EXPECT_FALSE((send<"isEditing", bool>())) << "the screen itself stays out of edit mode";
    EXPECT_FALSE(button(1)->isHidden());
    EXPECT_TRUE(button(2)->isSelected());
    EXPECT_EQ(right(), before);
    send<"editButtonClicked:">(objc::Object{});
    settle();
    EXPECT_FALSE(results()->isEditing());
    EXPECT_TRUE(button(1)->isHidden());
    EXPECT_FALSE(button(2)->isSelected());
    EXPECT_FALSE(button(2)->isHidden());
}

TEST_F(RecentsEditing, theButtonsFollowTheStateOfTheMomentTheyAreChanged) {
    openWith(3);
    send<"updateNavigationBarButtonItems:groupEdit:">(true, true);
    EXPECT_EQ(right(), "trash") << "nothing changes before the main queue's turn";
    companion().lists[0].load()->removeAllObjects();
    companion().setRows(1, {});
    companion().counts[0] = 0;
    send<"initializeCallList">();
    settle();
    EXPECT_EQ(right(), "trash") << "by then there was no row";
}

TEST_F(RecentsEditing, theDeleteAllTitleNamesTheFilterAndTheSearchFirst) {
    openWith(3);
    EXPECT_EQ(deleteAllTitle(), "DEL_ALL");
    for (const auto& [segment, title] : {std::pair{1, "DEL_ALL_DLD"}, {2, "DEL_ALL_RCD"}, {3, "DEL_ALL_MSD"}}) {
        pick(segment);
        settle();
        EXPECT_EQ(deleteAllTitle(), title);
    }
    type("person");
    EXPECT_EQ(deleteAllTitle(), "DEL_ALL_SEARCHED");
}

}  // namespace
}  // namespace recentsmessages

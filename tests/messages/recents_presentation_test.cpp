// What the Recents table shows of its list: cells, heights, titles, pictures, and the order of a swiped row's messages.
#include "tests/messages/recents_screen.h"

namespace recentsmessages {
namespace {

class RecentsPresentation : public RecentsMessages {
  protected:
    objc::Object path(long row) const {
        return objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(row, 0L);
    }
    objc::Object cell(long row) const {
        return send<"tableView:cellForRowAtIndexPath:", objc::Object>(table()->object(), path(row));
    }
    double height(long row) const {
        return send<"tableView:heightForRowAtIndexPath:", double>(table()->object(), path(row));
    }
    bool canEdit(long row) const {
        return send<"tableView:canEditRowAtIndexPath:", bool>(table()->object(), path(row));
    }
    /// Shows the calls of the filter, which are also its database.
    void show(int filter, const std::vector<Call>& calls) {
        companion().setRows(filter, calls);
        companion().durations[static_cast<std::size_t>(filter - 1)] = 90;
        if (filter != 1) companion().setRows(1, people(1));
        open();
        if (filter == 1) return;
        pick(filter - 1);
        settle();
    }
    void showDays(int count) {
        companion().isGroupByDate = true;
        companion().setRows(5, people(count));
        open();
    }
};

TEST_F(RecentsPresentation, aCallsCellIsGivenEverythingInThisOrderAndEndsWithTheDetailButtonOnPurpose) {
    companion().isGroupContacts = true;
    showDays(3);
    trace({"QVUITableViewCell"});
    const objc::AutoreleasePool pool;
    const auto made = cell(1);
    std::vector<std::string> settings;
    for (const auto& line : log().lines())
        if (line.starts_with("main: set")) settings.push_back(line.substr(6));
    EXPECT_THAT(settings, ElementsAre("setAccessoryType:", "setShowGroupByDateCell:", "setAccessoryType:",
                                      "setCallEntry:", "setShowGroupCount:"));
    constexpr long detailButton = 4;
    EXPECT_EQ((objc::send<"accessoryType", long>(made)), detailButton);
}

TEST_F(RecentsPresentation, rowsOfDaysAreHigherThanThoseOfCalls) {
    companion().pageSize = 2;
    show(1, people(3));
    EXPECT_EQ(height(0), 50);
    EXPECT_EQ(height(2), 50) << "the load-more row";
    showDays(3);
    EXPECT_EQ(height(0), 95);
    EXPECT_EQ(height(2), 50) << "the load-more row";
}

TEST_F(RecentsPresentation, everyRowButTheLoadMoreRowCanBeSwiped) {
    companion().pageSize = 2;
    show(1, people(3));
    EXPECT_TRUE(canEdit(0));
    EXPECT_TRUE(canEdit(1));
    EXPECT_FALSE(canEdit(2));
}

TEST_F(RecentsPresentation, theTitlesFollowTheFilter) {
    struct Case {
        int filter;
        const char* header;
        const char* footer;
    };
    constexpr Case cases[] = {{1, "3 shown", "of 3, 90 s"},
                              {2, "3 of DLD shown", "of 3, 90 s"},
                              {3, "3 of RCD shown", "of 3, 90 s"},
                              {4, "3 of MSD shown", "of 3"}};
    for (const auto& each : cases) {
        show(each.filter, people(3));
        EXPECT_EQ(header(), each.header);
        EXPECT_EQ(footer(), each.footer);
    }
}

TEST_F(RecentsPresentation, theFooterCountsDaysWhileGroupedByDate) {
    companion().durations[0] = 90;
    showDays(3);
    EXPECT_EQ(header(), "3 shown");
    EXPECT_EQ(footer(), "of 3 days, 90 s");
}

TEST_F(RecentsPresentation, theHeaderAsksItsSettingAndTheFooterNoneOnPurpose) {
    show(1, people(3));
    companion().isHeaderShown = false;
    EXPECT_EQ(header(), "");
    EXPECT_EQ(footer(), "of 3, 90 s");
}

TEST_F(RecentsPresentation, aSearchThatHasFoundNothingYetShowsTheLoadMoreRowWhichLoads) {
    companion().pageSize = 2;
    show(1, people(5));
    type("nobody at all");
    EXPECT_EQ(rows(), 1);
    log().clear();
    trace();
    const objc::AutoreleasePool pool;
    cell(0);
    EXPECT_EQ(log().linesWith("handleLoadMoreRecordsAction:").size(), 1U);
    settle();
    EXPECT_EQ(rows(), 0);
}

TEST_F(RecentsPresentation, aContactsPictureComesFromTheCacheWhereItIs) {
    companion().areImagesShown = true;
    companion().cachedImages = {7};
    show(1, {{.id = 1, .name = "Ada", .contact = 7}});
    const objc::AutoreleasePool pool;
    log().clear();
    cell(0);
    settle();
    EXPECT_THAT(log().lines(), ElementsAre("main: picture of 7 in the cache?"));
}

TEST_F(RecentsPresentation, aPictureThatIsNotInTheCacheIsLoadedInTheBackgroundAndRedrawsItsCell) {
    companion().areImagesShown = true;
    companion().images = {7};
    show(1, {{.id = 1, .name = "Ada", .contact = 7}});
    const objc::AutoreleasePool pool;
    trace({"QVUITableViewCell"});
    cell(0);
    settle();
    EXPECT_THAT(log().linesWith("picture"),
                ElementsAre("main: picture of 7 in the cache?", "background: picture of 7"));
    EXPECT_EQ(log().lines().back(), "main: setNeedsDisplay");
}

TEST_F(RecentsPresentation, aContactWithoutAPictureRedrawsNothing) {
    companion().areImagesShown = true;
    show(1, {{.id = 1, .name = "Ada", .contact = 7}});
    const objc::AutoreleasePool pool;
    trace({"QVUITableViewCell"});
    cell(0);
    settle();
    EXPECT_EQ(log().linesWith("background: picture of 7").size(), 1U);
    EXPECT_THAT(log().linesWith("setNeedsDisplay"), IsEmpty());
}

TEST_F(RecentsPresentation, noPictureIsLookedUpForACallWithoutAContactOrWithPicturesOff) {
    companion().areImagesShown = true;
    show(1, {{.id = 1, .name = "", .contact = -1}, {.id = 2, .name = "", .contact = 0}});
    const objc::AutoreleasePool pool;
    log().clear();
    cell(0);
    cell(1);
    companion().areImagesShown = false;
    companion().setRows(1, {{.id = 1, .name = "Ada", .contact = 7}});
    open();
    cell(0);
    settle();
    EXPECT_THAT(log().linesWith("picture"), IsEmpty());
}

TEST_F(RecentsPresentation, aSwipedRowLeavesTheTableBeforeTheDatabaseAndTheLastOneRefreshesTheList) {
    show(1, people(2));
    trace({"PHRecentsViewController", "UITableView"});
    const auto steps = [] {
        std::vector<std::string> taken;
        for (const auto& line : log().lines())
            for (const char* step : {"beginUpdates", "deleteRowsAtIndexPaths:", "endUpdates",
                                     "removeRowData:", "reloadSections:", "refreshTableData"})
                if (line.starts_with(std::string("main: ") + step)) taken.push_back(step);
        return taken;
    };
    log().clear();
    swipe(1);
    EXPECT_THAT(steps(), ElementsAre("beginUpdates", "deleteRowsAtIndexPaths:", "endUpdates",
                                     "removeRowData:", "reloadSections:"));
    settle();
    log().clear();
    swipe(0);
    EXPECT_THAT(steps(), ElementsAre("beginUpdates", "deleteRowsAtIndexPaths:", "endUpdates",
                                     "removeRowData:", "reloadSections:", "refreshTableData"));
    settle();
    EXPECT_EQ(rows(), 0);
}

}  // namespace
}  // namespace recentsmessages

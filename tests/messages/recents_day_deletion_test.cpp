// Deleting the calls of one day, by the messages: what is done to the lists and to the day's entry before anything is
// read again.
#include "tests/messages/day_screen.h"

namespace recentsmessages {
namespace {

class DayDeletion : public DayMessages {
  protected:
    /// The day's calls: two dialled ones, of which one was cancelled, one received and three missed ones.
    void openCalls(int segment) {
        companion().setRows(1, {{.id = 1, .name = "a", .number = "1", .isDialed = true},
                                {.id = 2, .name = "b", .number = "2", .isCanceled = true},
                                {.id = 3, .name = "c", .number = "3", .isReceived = true},
                                {.id = 4, .name = "d", .number = "4", .isMissed = true},
                                {.id = 5, .name = "e", .number = "5", .isMissed = true},
                                {.id = 6, .name = "f", .number = "6", .isMissed = true}});
        for (const int filter : {2, 3, 4}) companion().setRows(filter, people(9));
        openDay();
        if (segment != 0) pickOfDay(segment);
        log().clear();
    }
    /// What the lists are when the first of them is dropped: after the database, before anything is read again.
    void beforeTheReload(std::function<void()> look) {
        companion().duringDropping = [look = std::move(look), isOver = false]() mutable {
            if (!std::exchange(isOver, true)) look();
        };
    }
    std::vector<std::int64_t> countsOfDay() const {
        return {dayEntry().dldCallsCnt(), dayEntry().rcdCallsCnt(), dayEntry().msdCallsCnt(),
                dayEntry().dldCallsDuration(), dayEntry().rcdCallsDuration()};
    }
    std::vector<int> allCalls() const { return callcompanion::idsIn(companion().list(1)); }
};

TEST_F(DayDeletion, isOfTheScreensFilterOnItsDay) {
    for (int segment = 0; segment < 4; ++segment) {
        openCalls(segment);
        sendDay<"removeAllRecordsInBackGround">();
        settle();
        EXPECT_THAT(log().linesWith("delete"),
                    ElementsAre("worker: delete filter " + std::to_string(segment + 1) + " on 2024-06-15"));
        EXPECT_THAT(log().linesWith("indicator"), ElementsAre("main: indicator \"Deleting\""));
    }
}

TEST_F(DayDeletion, clearsTheCountsAndDurationsOfItsKindAlone) {
    struct Case {
        int segment;
        std::vector<std::int64_t> left;
    };
    const Case cases[] = {{0, {0, 0, 0, 0, 0}}, {1, {0, 5, 6, 0, 50}}, {2, {4, 0, 6, 40, 0}}, {3, {4, 5, 0, 40, 50}}};
    for (const auto& [segment, left] : cases) {
        openCalls(segment);
        sendDay<"removeAllRecords">();
        settle();
        EXPECT_EQ(countsOfDay(), left) << segment;
    }
}

TEST_F(DayDeletion, takesTheCallsOfItsKindFromTheListOfAllAndLowersRowsAndTotalByThem) {
    struct Case {
        int segment;
        std::vector<int> left;
        const char* header;
        const char* footer;
    };
    const Case cases[] = {{1, {3, 4, 5, 6}, "7 of DLD shown", "of 7, 270 s"},
                          {2, {1, 2, 4, 5, 6}, "8 of RCD shown", "of 8, 270 s"},
                          {3, {1, 2, 3}, "6 of MSD shown", "of 6"}};
    for (const auto& each : cases) {
        openCalls(each.segment);
        EXPECT_THAT(headerOfDay(), HasSubstr("9 of"));
        const auto all = companion().lists[0].load();
        trace({"QVDateLogViewController"});
        bool hasLooked = false;
        beforeTheReload([&] {
            hasLooked = true;
            EXPECT_EQ(headerOfDay(), each.header);
            EXPECT_EQ(footerOfDay(), each.footer);
            EXPECT_THAT(log().linesWith("updateDateEntry"), ElementsAre("main: updateDateEntry"));
            EXPECT_EQ(callcompanion::idsIn(all.get()), each.left);
        });
        sendDay<"removeAllRecords">();
        settle();
        EXPECT_TRUE(hasLooked);
    }
}

TEST_F(DayDeletion, ofAllCallsWalksNoList) {
    openCalls(0);
    const auto all = companion().lists[0].load();
    trace({"QVDateLogViewController"});
    sendDay<"removeAllRecords">();
    EXPECT_THAT(log().linesWith("updateDateEntry"), IsEmpty());
    EXPECT_EQ(all->count(), 0U);
    settle();
}

TEST_F(DayDeletion, emptiesTheListThatIsShownLetsItGoAndDropsTheCompanionsFour) {
    for (int segment = 0; segment < 4; ++segment) {
        openCalls(segment);
        const auto shown = listOfDay();
        ASSERT_GT(shown->count(), 0U);
        companion().isGroupByDate = segment % 2 == 0;
        bool hasLooked = false;
        beforeTheReload([&] {
            hasLooked = true;
            EXPECT_EQ(shown->count(), 0U);
            EXPECT_FALSE(listOfDay());
        });
        sendDay<"removeAllRecords">();
        EXPECT_TRUE(hasLooked);
        EXPECT_THAT(log().linesWith("dropped"), ElementsAre("main: list 1 dropped", "main: list 2 dropped",
                                                            "main: list 3 dropped", "main: list 4 dropped"));
        settle();
        companion().isGroupByDate = false;
    }
}

TEST_F(DayDeletion, readsTheDayAgainAndShowsItWhetherItSucceededOrNot) {
    for (const bool refuses : {false, true}) {
        openCalls(1);
        companion().refusesDeletions = refuses;
        trace({"QVDateLogViewController"});
        sendDay<"removeAllRecords">();
        settle();
        EXPECT_EQ(log().linesWith("initializeCallList").size(), 1U);
        EXPECT_EQ(log().linesWith("refreshTableData").size(), 1U);
        EXPECT_EQ(log().linesWith("clearCallLists").size(), refuses ? 0U : 1U);
        EXPECT_EQ(log().linesWith("of 2 on 2024-06-15").size(), refuses ? 0U : 1U);
        EXPECT_EQ(rowsOfDay(), 9);
        EXPECT_EQ(dayEntry().dldCallsCnt(), refuses ? 4 : 0);
        EXPECT_EQ(allCalls().size(), refuses ? 6U : 0U);
        endTrace();
    }
}

TEST_F(DayDeletion, goesBackToTheRootFromADayWithoutCallsAndStaysOtherwise) {
    openCalls(1);
    sendDay<"removeAllRecords">();
    settle();
    EXPECT_EQ(navigation()->stack().size(), 2U);
    pickOfDay(0);
    sendDay<"removeAllRecords">();
    settle();
    EXPECT_EQ(navigation()->stack().size(), 1U);
}

TEST_F(DayDeletion, thatLeavesFewerThanNoneCallsGoesBackToo) {
    openCalls(3);
    dayEntry().setDldCallsCnt(-2);
    dayEntry().setRcdCallsCnt(1);
    sendDay<"removeAllRecords">();
    settle();
    EXPECT_EQ(navigation()->stack().size(), 1U);
}

TEST_F(DayDeletion, ofARowThatIsRefusedPutsTheRowBack) {
    openCalls(3);
    companion().refusesDeletions = true;
    const auto before = callcompanion::idsIn(listOfDay());
    const auto path = objc::sendClass<"NSIndexPath", "indexPathForRow:inSection:", objc::Object>(4L, 0L);
    constexpr long deleteStyle = 1;
    companion().duringDeletion = [this] {
        EXPECT_EQ(listOfDay()->count(), 8U);
        EXPECT_EQ(rowsOfDay(), 8);
    };
    sendDay<"tableView:commitEditingStyle:forRowAtIndexPath:">(tableOfDay()->object(), deleteStyle, path);
    settle();
    EXPECT_THAT(log().linesWith("delete"), ElementsAre("default: delete filter 4 on 2024-06-15"));
    EXPECT_EQ(rowsOfDay(), 9);
    EXPECT_EQ(callcompanion::idsIn(listOfDay()), before);
    EXPECT_EQ(dayEntry().callsOfDay(), 15);
}

TEST_F(DayDeletion, itsEntryTakesOverARecordThatIsAnotherOne) {
    openCalls(0);
    struct Case {
        Call newest;
        bool isTaken;
    };
    const Case cases[] = {{{.id = 17, .name = "day", .number = "day", .record = 900}, false},
                          {{.id = 900, .name = "day", .number = "day", .record = 17}, true},
                          {{.id = 17, .name = "night", .number = "day", .record = 900}, true},
                          {{.id = 17, .name = "day", .number = "night", .record = 900}, true}};
    for (const auto& [newest, isTaken] : cases) {
        companion().lists[0].store(callcompanion::arrayOf({newest}));
        trace({"QVCallEntry"});
        sendDay<"updateDateEntry">();
        std::vector<std::string> set;
        for (const auto& line : log().linesWith("main: set")) set.push_back(line.substr(6));
        if (isTaken)
            EXPECT_THAT(set, ElementsAre("setILogOID:", "setROWID:", "setPhoneNumber:", "setDate:", "setDuration:",
                                         "setFlag:", "setAbRecID:", "setPhoneLabel:", "setIsDeleted:", "setName:"));
        else
            EXPECT_THAT(set, IsEmpty());
        endTrace();
        log().clear();
    }
}

}  // namespace
}  // namespace recentsmessages

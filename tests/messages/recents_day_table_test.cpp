// What the head and the foot of a day's list say, and what its deletion asks.
#include "desktop/uikit/text.h"
#include "tests/messages/day_screen.h"

namespace recentsmessages {
namespace {

class DayTable : public DayMessages {
  protected:
    void SetUp() override {
        DayMessages::SetUp();
        for (const int filter : {1, 2, 3, 4}) companion().setRows(filter, people(3));
        openDay();
    }
    void typeOfDay(const char* text) {
        auto* controller =
            objc::peerOf<uikit::SearchDisplayController>(sendDay<"searchDisplayController", objc::Object>().self);
        controller->setActive(true);
        controller->searchBar()->type(text);
        settle();
    }
};

TEST_F(DayTable, hasAHeadWhileASearchMayFindMore) {
    typeOfDay("person");
    sendDay<"initializeCallList">();
    EXPECT_EQ(rowsOfDay(), 1) << "the load-more row alone";
    EXPECT_EQ(headerOfDay(), "0 shown");
    EXPECT_EQ(footerOfDay(), "of 3, 90 s");
}

TEST_F(DayTable, hasAHeadWhenASearchHasFoundAll) {
    typeOfDay("person");
    sendDay<"loadMoreSearchedRecords">();
    EXPECT_EQ(rowsOfDay(), 3);
    EXPECT_EQ(headerOfDay(), "3 shown");
    EXPECT_EQ(footerOfDay(), "of 3, 90 s");
}

TEST_F(DayTable, hasNoHeadWhenASearchHasFoundNothing) {
    typeOfDay("nobody");
    sendDay<"loadMoreSearchedRecords">();
    EXPECT_EQ(rowsOfDay(), 0);
    EXPECT_EQ(headerOfDay(), "");
    EXPECT_EQ(footerOfDay(), "");
}

TEST_F(DayTable, asksBeforeItDeletesInTheWordsOfItsFilterAndNamesTheDayAmongDays) {
    const char* const prefixes[] = {"ALL", "DLD", "RCD", "MSD"};
    for (int segment = 0; segment < 4; ++segment) {
        pickOfDay(segment);
        for (const bool byDate : {false, true}) {
            companion().isGroupByDate = byDate;
            log().clear();
            sendDay<"deleteAllAction:">(objc::Object{});
            const std::string question =
                prefixes[segment] +
                std::string(byDate ? "_DEL_ALL_CONTACT_CONFIRM_MSG 2024-06-15" : "_DEL_ALL_CONFIRM_MSG");
            EXPECT_THAT(log().linesWith("sheet \""), ElementsAre("main: sheet \"" + question + '"'));
        }
        companion().isGroupByDate = false;
    }
}

TEST_F(DayTable, takesAndAnswersItsProperties) {
    const auto list = callcompanion::arrayOf(people(2));
    sendDay<"setSrcList:">(list.get());
    EXPECT_EQ((sendDay<"srcList", objc::Object>()), list.get());
    sendDay<"setTotalDuration:">(objc::Object(uikit::nsString("seven")));
    EXPECT_EQ(uikit::utf8(sendDay<"totalDuration", objc::Object>()), "seven");
    sendDay<"setFilterType:">(std::int64_t{3});
    EXPECT_EQ((sendDay<"filterType", std::int64_t>()), 3);
    EXPECT_EQ((sendDay<"dateEntry", objc::Object>()), dayEntry());
}

}  // namespace
}  // namespace recentsmessages

// Taps on the rows of a day, and what differs there from the Recents screen.
#include <algorithm>

#include "tests/messages/rows_screens.h"

namespace rowsmessages {
namespace {

using testing::Contains;

constexpr const char* personCard = "ABPersonViewController_Modern";
constexpr const char* unknownPersonCard = "ABUnknownPersonViewController_Modern";
constexpr const char* dayScreen = "QVDateLogViewController";

class Day : public RowsMessages {
  protected:
    /// A day with those calls is open above the days.
    void openDay(const std::vector<Call>& calls) {
        companion().isGroupByDate = true;
        load({{}});
        tap(0);
        ASSERT_THAT(opened(), ElementsAre(dayScreen));
        day_ = objc::Strong(top());
        auto list = NSMutableArray::make();
        for (const auto& each : calls) list->addObject(entryOf(each).get());
        companion().calls = list;
        objc::send<"initializeCallList">(day_.get());
        events().clear();
    }
    UIViewController day() const { return day_; }
    void tapInDay(long row) const { objc::send<"tableView:didSelectRowAtIndexPath:">(day(), table(), path(row)); }
    void tapDetailInDay(long row) const {
        objc::send<"tableView:accessoryButtonTappedForRowWithIndexPath:">(day(), table(), path(row));
    }
    void resolveInDay(ABPerson person) const {
        objc::send<"unknownPersonViewController:didResolveToPerson:">(day(), top(), person);
    }

  private:
    objc::Strong<UIViewController> day_;
};

TEST_F(Day, callsBackByATapThoughCallsAreGroupedByDate) {
    companion().isCallOnTap = true;
    openDay({{.number = "+4930200"}});
    tapInDay(0);
    EXPECT_THAT(addresses(), ElementsAre("tel://+4930200"));
    EXPECT_THAT(opened(), ElementsAre(dayScreen));
}

TEST_F(Day, opensTheContactOfACallNotAnotherDay) {
    companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
    openDay({{.record = 7}, {}});
    tapInDay(0);
    EXPECT_THAT(opened(), ElementsAre(dayScreen, personCard));
    EXPECT_EQ(ask<"personViewDelegate">(top()), day());
    EXPECT_EQ(ask<"delegate">(card().personHeaderView()), day());
}

TEST_F(Day, opensTheContactByTheDetailButtonWhateverTapsDo) {
    companion().isCallOnTap = true;
    openDay({{}});
    tapDetailInDay(0);
    EXPECT_THAT(opened(), ElementsAre(dayScreen, unknownPersonCard));
    EXPECT_THAT(addresses(), IsEmpty());
}

TEST_F(Day, doesNothingOnTheLoadMoreRow) {
    companion().pageSize = 1;
    openDay({{}, {}});
    tapInDay(1);
    EXPECT_THAT(opened(), ElementsAre(dayScreen));
}

TEST_F(Day, givesTheNewContactsCardTheCompanionsBookBetweenCancelAndHighlight) {
    openDay({{.number = "+4930200"}});
    tapInDay(0);
    traceCards();
    resolveInDay(addPerson(12, "Anna Berg"));
    const auto place = std::find(events().begin(), events().end(), "setAllowsCancel: YES");
    ASSERT_LE(place + 4, events().end());
    EXPECT_THAT(
        std::vector<std::string>(place, place + 4),
        ElementsAre("setAllowsCancel: YES", "setAddressBook: <NSObject>",
                    "setHighlightedItemForProperty:withIdentifier: 3 0", "setViewControllers: <GSMutableArray>"));
    EXPECT_THAT(opened(), ElementsAre(dayScreen, personCard));
    EXPECT_EQ(call(0).abRecID(), 12);
}

TEST_F(Day, givesAKnownPersonsCardNoBook) {
    companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
    openDay({{.record = 7}});
    traceCards();
    tapInDay(0);
    EXPECT_THAT(events(), testing::Not(Contains("setAddressBook: <NSObject>")));
    EXPECT_THAT(events(), Contains("setAllowsDeletion: YES"));
}

TEST_F(Day, hasItsOwnEntryThatWasOpenedLast) {
    openDay({{.number = "+4930200"}});
    tapInDay(0);
    objc::send<"detailsButotnClicked">(day());
    ASSERT_EQ(opened().back(), "QVLogViewController");
    EXPECT_EQ(ask<"entry">(top()), call(0));
    EXPECT_EQ(ask<"delegate">(top()), day());
    // The Recents screen's own is the day.
    send<"showLogAction:">(objc::Object{});
    EXPECT_EQ(ask<"entry">(top()), ask<"dateEntry">(day()));
}

TEST_F(Day, isKeptWithItsEntryUntilStoredCallsAreLinked) {
    openDay({{.number = "+4930200"}});
    tapInDay(0);
    resolveInDay(addPerson(12, "Anna Berg"));
    navigation().popToRootViewController(false);
    events().clear();
    runHeldWork();
    EXPECT_THAT(events(), ElementsAre("updateQuorvelCallsHistory: Anna Berg 12", "getContactImage: 12"));
}

TEST_F(Day, splitsAnEntrysCallsByDirection) {
    openDay({{}});
    companion().result = [](const std::string&) {
        return std::vector<Call>{{.number = "a", .isOutgoing = true}, {.number = "b"}};
    };
    auto found = objc::send<"callListForTheDay:", NSMutableDictionary>(day(), entryOf({.record = 7}).get());
    auto outgoing = found.objectForKey<NSArray>(text<"OUT_CALLS">());
    auto incoming = found.objectForKey<NSArray>(text<"INC_CALLS">());
    ASSERT_EQ(outgoing.count(), 1U);
    ASSERT_EQ(incoming.count(), 1U);
    EXPECT_EQ(utf8(outgoing.objectAtIndex<QVCallEntry>(0).phoneNumber()), "a");
    EXPECT_EQ(utf8(incoming.objectAtIndex<QVCallEntry>(0).phoneNumber()), "b");
    EXPECT_THAT(events(), ElementsAre("getResult: select ROWID, date, duration, flags from call where id=7 and "
                                      "datetime='2024-06-15' order by date desc"));
}

TEST_F(Day, showsTheRemainingCallsOnItsCardAfterADeletion) {
    openDay({{.number = "+4930200"}});
    tapInDay(0);
    companion().result = [](const std::string&) { return std::vector<Call>{{}, {}, {}}; };
    objc::send<"entryDeleted:">(day(), call(0));
    EXPECT_EQ(recordsAbove(card()).count(), 3U);
}

}  // namespace
}  // namespace rowsmessages

// The two contact cards: what they are given, in order.
#include "tests/messages/rows_screens.h"

namespace rowsmessages {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class Cards : public RowsMessages {
  protected:
    void open(const Call& call) {
        load({call});
        traceCards();
        tap(0);
    }
    void openKnown(Call call = {}) {
        companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
        call.record = 7;
        open(call);
    }
};

constexpr const char* dayOfNumber =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where address='+4930100' "
    "and datetime='2024-06-15' order by date desc";
constexpr const char* latestOfNumber =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where address='+4930100' "
    "order by date desc LIMIT 1";
constexpr const char* dayOfContact =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=7 and "
    "datetime='2024-06-15' order by date desc";
constexpr const char* latestOfContact =
    "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=7 order by date "
    "desc LIMIT 1";

TEST_F(Cards, ofAPersonIsGivenEverythingInThisOrder) {
    openKnown();
    EXPECT_THAT(
        events(),
        ElementsAre("getPersonRecordFromDB: 7", "header initWithFrame: {{0, 0}, {0, 0}}", dayOfContact, latestOfContact,
                    "header setCallRecords: <GSMutableArray>", "header setDelegate: <PHRecentsViewController>",
                    "initWithNibName:bundle:addressBook:style: nil nil nil 3", "setDisplayedPerson: <RowsTestPerson>",
                    "setPersonHeaderView: <QVRecentsPersonPhoneHeaderView>",
                    "setPersonViewDelegate: <PHRecentsViewController>", "setAllowsEditing: YES",
                    "setAllowsActions: YES", "setAllowsSharing: YES", "setShouldShowLinkedPeople: YES",
                    "setAllowsContactBlocking: YES", "setAllowsDeletion: YES", "setAllowsAddToFavorites: YES",
                    "setAllowsCancel: YES", "setHighlightedItemForProperty:withIdentifier: 3 0",
                    "pushViewController:animated: <ABPersonViewController_Modern> YES"));
}

TEST_F(Cards, ofAPersonBeforeBlockingOffersNeitherBlockingNorDeletion) {
    companion().isIOS7 = false;
    openKnown();
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsContactBlocking:"))));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsDeletion:"))));
    EXPECT_THAT(events(), Contains("setAllowsSharing: YES"));
}

TEST_F(Cards, ofAPersonBeforeLinkedPeopleOffersNeitherThemNorSharing) {
    companion().isIOS7 = false;
    companion().isPreIOS4 = true;
    openKnown();
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsSharing:"))));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setShouldShowLinkedPeople:"))));
    EXPECT_THAT(events(), Contains("setAllowsAddToFavorites: YES"));
}

TEST_F(Cards, ofAPersonHighlightsTheNumberOfTheCall) {
    companion().numberIndex = 2;
    companion().emailIndex = 1;
    openKnown();
    EXPECT_THAT(events(), Contains("setHighlightedItemForProperty:withIdentifier: 3 2"));
}

TEST_F(Cards, ofAPersonHighlightsTheAddressWhereNoNumberIsTheCalls) {
    companion().numberIndex = -1;
    companion().emailIndex = 1;
    openKnown();
    EXPECT_THAT(events(), Contains("setHighlightedItemForProperty:withIdentifier: 4 1"));
}

TEST_F(Cards, ofAPersonHighlightsNoAddressWhereNothingIsTheCalls) {
    companion().numberIndex = -1;
    companion().emailIndex = -1;
    openKnown();
    EXPECT_THAT(events(), Contains("setHighlightedItemForProperty:withIdentifier: 4 -1"));
}

TEST_F(Cards, ofAPersonHighlightsAMissedCallAsImportant) {
    openKnown({.isMissed = true});
    EXPECT_THAT(events(), Contains("setHighlightedItemForProperty:withIdentifier:important: 3 0 YES"));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("withIdentifier: "))));
}

TEST_F(Cards, ofNobodyIsGivenEverythingInThisOrder) {
    open({.number = "+4930100", .name = "+49 30 100", .location = "Berlin"});
    EXPECT_THAT(
        events(),
        ElementsAre("header initWithFrame: {{0, 0}, {0, 0}}", dayOfNumber, latestOfNumber,
                    "header setCallRecords: <GSMutableArray>", "header setDelegate: <PHRecentsViewController>", "init",
                    "setPersonHeaderView: <QVRecentsPersonPhoneHeaderView>",
                    "setUnknownPersonViewDelegate: <PHRecentsViewController>", "ABPersonCreate",
                    "ABMultiValueCreateMutable 257", "ABMultiValueAddValueAndLabel +4930100 _$!<Mobile>!$_",
                    "ABRecordSetValue 3", "setPrimaryProperty: 3", "setDisplayedPerson: <RowsTestPerson>",
                    "setAllowsSendingTextMessage: NO", "setAlternateName: \"+49 30 100\"", "setMessage: \"Berlin\"",
                    "setAllowsActions: YES", "setAllowsContactBlocking: YES", "setAllowsOnlyPhoneActions: YES",
                    "pushViewController:animated: <ABUnknownPersonViewController_Modern> YES"));
}

TEST_F(Cards, ofNobodyHasAnAddressAsItsHomesEmail) {
    open({.number = "anna@example.com"});
    EXPECT_THAT(events(), Contains("ABMultiValueAddValueAndLabel anna@example.com _$!<Home>!$_"));
    EXPECT_THAT(events(), Contains("ABRecordSetValue 4"));
    EXPECT_THAT(events(), Contains("setPrimaryProperty: 4"));
    EXPECT_EQ(valueOf(objc::as<ABPerson>(ask<"displayedPerson">(top()))), "anna@example.com _$!<Home>!$_");
}

TEST_F(Cards, ofNobodySaysUnknownWhereNoLocationIs) {
    open({.location = nullptr});
    EXPECT_THAT(events(), Contains("setMessage: \"UNKNOWN\""));
}

TEST_F(Cards, ofNobodySaysAnEmptyLocationAsItIs) {
    open({.location = ""});
    EXPECT_THAT(events(), Contains("setMessage: \"\""));
}

TEST_F(Cards, ofNobodyWithoutANameHasNoAlternateName) {
    open({.name = nullptr});
    EXPECT_THAT(events(), Contains("setAlternateName: nil"));
}

TEST_F(Cards, ofNobodyBeforeBlockingOffersToShareANumber) {
    companion().isIOS7 = false;
    open({.number = "+4930100"});
    EXPECT_THAT(events(), Contains("setAllowsSharing: YES"));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsContactBlocking:"))));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsOnlyPhoneActions:"))));
}

TEST_F(Cards, ofNobodyBeforeBlockingSharesNoNumberThatIsNotThere) {
    companion().isIOS7 = false;
    open({.number = ""});
    EXPECT_THAT(events(), Contains("setAllowsSharing: NO"));
    open({.number = nullptr});
    EXPECT_THAT(events(), Contains("setAllowsSharing: NO"));
}

TEST_F(Cards, ofNobodyBeforeLinkedPeopleSaysNothingOfSharing) {
    companion().isIOS7 = false;
    companion().isPreIOS4 = true;
    open({});
    EXPECT_THAT(events(), Not(Contains(HasSubstr("setAllowsSharing:"))));
}

TEST_F(Cards, ofAWithheldNumberHasAPersonWithoutAnyValue) {
    open({.number = nullptr});
    EXPECT_THAT(opened(), ElementsAre("ABUnknownPersonViewController_Modern"));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("ABMultiValueAddValueAndLabel"))));
}

TEST_F(Cards, ofNobodyAloneKeepsTheNewPerson) {
    {
        const objc::AutoreleasePool pool;
        open({});
        EXPECT_EQ(createdPersonsAlive(), 1);
        objc::send<"setDisplayedPerson:">(top(), objc::Object{});
    }
    EXPECT_EQ(createdPersonsAlive(), 0);
}

TEST_F(Cards, haveTheCallsOfTheDayAboveThem) {
    companion().result = [](const std::string&) { return std::vector<Call>{{.number = "a"}, {.number = "b"}}; };
    open({});
    ASSERT_EQ(recordsAbove(card()).count(), 2U);
    EXPECT_EQ(utf8(recordsAbove(card()).objectAtIndex<QVCallEntry>(1).phoneNumber()), "b");
    EXPECT_EQ(ask<"delegate">(card().personHeaderView()), screen());
}

TEST_F(Cards, leaveEveryDefaultActionToTheSystem) {
    openKnown();
    for (int property : {3, 4, -1})
        EXPECT_TRUE((send<"personViewController:shouldPerformDefaultActionForPerson:property:identifier:", bool>(
            top(), ask<"displayedPerson">(top()), property, 0)));
}

}  // namespace
}  // namespace rowsmessages

// The list screen as the cards' delegate: the way to the history, and an unknown number that becomes a contact's.
#include "tests/messages/rows_screens.h"

namespace rowsmessages {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr const char* personCard = "ABPersonViewController_Modern";
constexpr const char* unknownPersonCard = "ABUnknownPersonViewController_Modern";
constexpr const char* history = "QVLogViewController";

class NewContact : public RowsMessages {
  protected:
    /// An unknown number's card is open.
    void SetUp() override {
        RowsMessages::SetUp();
        load({{.number = "+4930100", .name = "+49 30 100"}});
        tap(0);
        events().clear();
    }
    QVCallEntry entry() const { return call(0); }
};

TEST_F(NewContact, thatWasCancelledChangesNothing) {
    resolve({});
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_THAT(heldWork(), IsEmpty());
    EXPECT_THAT(opened(), ElementsAre(unknownPersonCard));
    EXPECT_EQ(entry().abRecID(), -1);
    EXPECT_EQ(utf8(entry().name()), "+49 30 100");
}

TEST_F(NewContact, givesTheEntryItsRecordAndName) {
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_EQ(entry().abRecID(), 12);
    EXPECT_EQ(utf8(entry().name()), "Anna Berg");
    EXPECT_FALSE(entry().phoneLabel());
}

TEST_F(NewContact, isLookedUpAgainInTheCompanionsBook) {
    auto inTheBook = addPerson(12, "Anna Berg");
    resolve(makePersonOutsideTheBook(12, "another copy"));
    EXPECT_THAT(events(), Contains("ABAddressBookGetPersonWithRecordID 12"));
    EXPECT_EQ(utf8(entry().name()), "Anna Berg");
    EXPECT_EQ(ask<"displayedPerson">(top()), inTheBook.get());
}

TEST_F(NewContact, withoutACompositeNameIsNamedByTheFormattedNumber) {
    resolve(addPerson(12, nullptr));
    EXPECT_EQ(entry().abRecID(), 12);
    EXPECT_EQ(utf8(entry().name()), "formatted +4930100");
}

TEST_F(NewContact, hasTheListsLoadedAgainAndItsCallsLinkedInTheBackground) {
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(events(), Contains("setIsNeedToLoadData: YES"));
    ASSERT_THAT(heldWork(), ElementsAre("default"));
    EXPECT_THAT(events(), Not(Contains(HasSubstr("updateQuorvelCallsHistory:"))));
    events().clear();
    runHeldWork();
    EXPECT_THAT(events(), ElementsAre("updateQuorvelCallsHistory: Anna Berg 12", "getContactImage: 12"));
}

TEST_F(NewContact, hasNoPictureLoadedForARecordBelow1) {
    resolve(addPerson(0, "Nobody"));
    events().clear();
    runHeldWork();
    EXPECT_THAT(events(), ElementsAre("updateQuorvelCallsHistory: Nobody 0"));
}

TEST_F(NewContact, isLinkedAsEntryAndContactAreWhenTheWorkRunsOnPurpose) {
    resolve(addPerson(12, "Anna Berg"));
    companion().person = [](int record) { return addPerson(record, "Ben Carl"); };
    companion().calls->addObject(entryOf({.record = 30}).get());
    send<"initializeCallList">();
    tap(1);
    events().clear();
    runHeldWork();
    EXPECT_THAT(events(), ElementsAre("updateQuorvelCallsHistory: Ben Carl 30", "getContactImage: 30"));
}

TEST_F(NewContact, takesThePlaceOfTheUnknownPerson) {
    auto person = addPerson(12, "Anna Berg");
    resolve(person);
    ASSERT_THAT(opened(), ElementsAre(personCard));
    EXPECT_EQ(ask<"displayedPerson">(top()), person.get());
    EXPECT_EQ(ask<"personViewDelegate">(top()), screen());
    EXPECT_EQ(navigation().viewControllers().objectAtIndex(0), screen());
}

TEST_F(NewContact, takesThePlaceBelowWhatIsOpenAboveIt) {
    send<"showLogAction:">(objc::Object{});
    ASSERT_THAT(opened(), ElementsAre(unknownPersonCard, history));
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(opened(), ElementsAre(personCard, history));
}

TEST_F(NewContact, takesThePlaceOfTheTopmostUnknownPersonAlone) {
    tapDetail(0);
    ASSERT_THAT(opened(), ElementsAre(unknownPersonCard, unknownPersonCard));
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(opened(), ElementsAre(unknownPersonCard, personCard));
}

TEST_F(NewContact, takesTheTopmostScreenAwayOnTheOldestSystemOnPurpose) {
    companion().isPreIOS4 = true;
    send<"showLogAction:">(objc::Object{});
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(opened(), ElementsAre(personCard, unknownPersonCard));
}

TEST_F(NewContact, hasACardWithEverythingInThisOrderButDeletion) {
    traceCards();
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(
        events(),
        ElementsAre(
            "ABAddressBookGetPersonWithRecordID 12", "setIsNeedToLoadData: YES",
            "header initWithFrame: {{0, 0}, {0, 0}}",
            "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=12 and "
            "datetime='2024-06-15' order by date desc",
            "getResult: select ROWID, date, duration, flags, face_time_data_size, location from call where id=12 "
            "order by date desc LIMIT 1",
            "header setCallRecords: <GSMutableArray>", "header setDelegate: <PHRecentsViewController>",
            "initWithNibName:bundle:addressBook:style: nil nil nil 3", "setDisplayedPerson: <RowsTestPerson>",
            "setPersonHeaderView: <QVRecentsPersonPhoneHeaderView>", "setPersonViewDelegate: <PHRecentsViewController>",
            "setAllowsEditing: YES", "setAllowsActions: YES", "setAllowsSharing: YES", "setShouldShowLinkedPeople: YES",
            "setAllowsContactBlocking: YES", "setAllowsAddToFavorites: YES", "setAllowsCancel: YES",
            "setHighlightedItemForProperty:withIdentifier: 3 0", "setViewControllers: <GSMutableArray>"));
}

TEST_F(NewContact, thatIsNotFoundAgainLeavesTheEntryAndTheCardButTellsTheCompanion) {
    resolve(makePersonOutsideTheBook(12, "Anna Berg"));
    EXPECT_EQ(entry().abRecID(), -1);
    EXPECT_EQ(utf8(entry().name()), "+49 30 100");
    EXPECT_THAT(opened(), ElementsAre(unknownPersonCard));
    EXPECT_THAT(events(), Contains("setIsNeedToLoadData: YES"));
    events().clear();
    runHeldWork();
    EXPECT_THAT(events(), ElementsAre("updateQuorvelCallsHistory: nil -1"));
}

TEST_F(NewContact, whoseCardIsGoneMeanwhileOpensNone) {
    navigation().popToRootViewController(false);
    resolve(addPerson(12, "Anna Berg"));
    EXPECT_THAT(opened(), IsEmpty());
    EXPECT_EQ(entry().abRecID(), 12);
    EXPECT_THAT(heldWork(), ElementsAre("default"));
}

TEST_F(NewContact, thatIsTakenAwayMakesTheEntryNobodysAgain) {
    resolve(addPerson(12, "Anna Berg"));
    send<"updateCallEntry:">(objc::Object{});
    EXPECT_EQ(entry().abRecID(), -1);
    EXPECT_EQ(utf8(entry().name()), "formatted +4930100");
    EXPECT_EQ(utf8(entry().phoneLabel()), "UNKNOWN");
}

class History : public NewContact {};

TEST_F(History, opensForTheEntryThatWasOpenedLast) {
    send<"showLogAction:">(text<"a button">());
    ASSERT_THAT(opened(), ElementsAre(unknownPersonCard, history));
    EXPECT_EQ(ask<"entry">(top()), entry());
    EXPECT_EQ(ask<"delegate">(top()), screen());
}

TEST_F(History, isTheSameByTheDetailsButton) {
    send<"detailsButotnClicked">();
    ASSERT_THAT(opened(), ElementsAre(unknownPersonCard, history));
    EXPECT_EQ(ask<"entry">(top()), entry());
    EXPECT_EQ(ask<"delegate">(top()), screen());
}

TEST_F(History, thatDeletedACallHasTheRemainingShownOnTheCard) {
    send<"showLogAction:">(objc::Object{});
    companion().result = [](const std::string&) { return std::vector<Call>{{.number = "left"}}; };
    auto shown = entryOf({.number = "+4930200"});
    send<"entryDeleted:">(shown.get());
    EXPECT_THAT(events(), ElementsAre(HasSubstr("where address='+4930200' and datetime='2024-06-15'")));
    auto records = recordsAbove(objc::as<ABContactScreen>(navigation().viewControllers().objectAtIndex(1)));
    ASSERT_EQ(records.count(), 1U);
    EXPECT_EQ(utf8(records.objectAtIndex<QVCallEntry>(0).phoneNumber()), "left");
}

TEST_F(History, thatDeletedACallChangesTheLowestOfSeveralCards) {
    companion().person = [](int record) { return addPerson(record, "Anna Berg"); };
    companion().calls->addObject(entryOf({.record = 7}).get());
    send<"initializeCallList">();
    tap(1);
    ASSERT_THAT(opened(), ElementsAre(unknownPersonCard, personCard));
    companion().result = [](const std::string&) { return std::vector<Call>{{}, {}}; };
    send<"entryDeleted:">(entry());
    EXPECT_EQ(recordsAbove(objc::as<ABContactScreen>(navigation().viewControllers().objectAtIndex(1))).count(), 2U);
    EXPECT_EQ(recordsAbove(card()).count(), 1U);
}

TEST_F(History, thatDeletedACallWithoutAnyCardOnTheStackChangesNothing) {
    navigation().popToRootViewController(false);
    send<"entryDeleted:">(entry());
    EXPECT_THAT(events(), IsEmpty());
}

}  // namespace
}  // namespace rowsmessages

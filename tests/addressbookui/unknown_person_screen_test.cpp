// The card of a number that is nobody's: its flags, and how it becomes somebody's.
#include "desktop/addressbookui/unknown_person_screen.h"

#include "desktop/addressbookui/people_picker.h"
#include "desktop/addressbookui/person_screen.h"
#include "tests/addressbookui/fixture.h"

namespace addressbookui::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class UnknownPersonTest : public ContactScreenTest {
  protected:
    UnknownPersonTest() {
        objc::registerClasses<CardDelegate>();
        delegate_ = objc::Ref<CardDelegate>::make();
        person_ = addressbook::Record::of(personOfNumber("+442079460000"));
        delegate_->expected = person_.self();
        card_ = objc::Ref<ModernUnknownPersonScreen>::make();
        card_->setUnknownPersonViewDelegate(delegate_->object());
        card_->setPrimaryProperty(kABPersonPhoneProperty);
        card_->setDisplayedPerson(person_.self());
        card_->setAllowsSendingTextMessage(false);
        card_->setMessage(uikit::nsString("London"));
        card_->setAllowsActions(true);
    }

    PeopleList* list() { return objc::peerIf<PeopleList>(front()->object()); }

    objc::Ref<addressbook::Record> person_;
    objc::Ref<CardDelegate> delegate_;
    objc::Ref<ModernUnknownPersonScreen> card_;
};

TEST_F(UnknownPersonTest, showsTheNumberAndTheWaysToKeepIt) {
    push(card_);
    EXPECT_THAT(rowsOf(card_), ElementsAre("mobile: +44 20 7946 0000", "Create New Contact", "Add to Existing Contact",
                                           "FaceTime", "FaceTime Audio"));
    EXPECT_THAT(card_->tableView()->tableHeaderView()->drawnTexts(), ElementsAre("+44 20 7946 0000", "London"));
}

TEST_F(UnknownPersonTest, itsAlternateNameStandsInForTheName) {
    card_->setAlternateName(uikit::nsString("Harbour Office"));
    push(card_);
    EXPECT_THAT(card_->tableView()->tableHeaderView()->drawnTexts(), ElementsAre("Harbour Office", "London"));
}

TEST_F(UnknownPersonTest, ofAWithheldNumberIsNobodysAndHasNothingToTap) {
    const auto nobody = addressbook::Record::of(personOfNumber(""));
    card_->setDisplayedPerson(nobody.self());
    card_->setAllowsContactBlocking(true);
    card_->setMessage(uikit::nsString("Unknown"));
    push(card_);
    auto* header = objc::peerOf<CardHeader>(card_->tableView()->tableHeaderView()->object());
    EXPECT_THAT(header->drawnTexts(), ElementsAre("Unknown"));
    EXPECT_EQ(header->content().initials, "");
    EXPECT_THAT(rowsOf(card_), ElementsAre());
}

TEST_F(UnknownPersonTest, ofAWithheldNumberSaysTheNameAndThePlaceThatAreKnown) {
    const auto nobody = addressbook::Record::of(personOfNumber(""));
    card_->setDisplayedPerson(nobody.self());
    card_->setAlternateName(uikit::nsString("Harbour Office"));
    push(card_);
    auto* header = objc::peerOf<CardHeader>(card_->tableView()->tableHeaderView()->object());
    EXPECT_THAT(header->drawnTexts(), ElementsAre("Harbour Office", "London"));
    EXPECT_EQ(header->content().initials, "HO");
}

TEST_F(UnknownPersonTest, saysThatANumberIsUnknownAndNotThatANameIs) {
    card_->setMessage(uikit::nsString("Unknown"));
    push(card_);
    EXPECT_THAT(card_->tableView()->tableHeaderView()->drawnTexts(), ElementsAre("+44 20 7946 0000", "Unknown"));
    card_->setAlternateName(uikit::nsString("Otto"));
    EXPECT_THAT(card_->tableView()->tableHeaderView()->drawnTexts(), ElementsAre("Otto"));
}

TEST_F(UnknownPersonTest, eachFlagBringsOrTakesItsRow) {
    push(card_);
    card_->setAllowsContactBlocking(true);
    EXPECT_THAT(rowsOf(card_), Contains("Block this Caller"));
    card_->setAllowsSharing(true);
    EXPECT_THAT(rowsOf(card_), Contains("Share Contact"));
    card_->setAllowsSendingTextMessage(true);
    EXPECT_THAT(rowsOf(card_), Contains("Send Message"));
    card_->setAllowsOnlyPhoneActions(true);
    EXPECT_THAT(rowsOf(card_), Not(Contains("Send Message")));
    card_->setAllowsAddingToAddressBook(false);
    EXPECT_THAT(rowsOf(card_), Not(Contains("Create New Contact")));
    card_->setAllowsActions(false);
    EXPECT_THAT(rowsOf(card_), ElementsAre("mobile: +44 20 7946 0000", "Block this Caller"));
}

TEST_F(UnknownPersonTest, aTapCallsOnceTheDelegateAgrees) {
    push(card_);
    tapRow(card_, "+44 20 7946 0000");
    EXPECT_EQ(delegate_->heard, (Texts{"perform 3 0"}));
    EXPECT_EQ(opened, (Texts{"tel://+442079460000"}));
}

TEST_F(UnknownPersonTest, becomesANewContact) {
    push(card_);
    tapRow(card_, "Create New Contact");
    fill(0, 0, "Ada");
    fill(0, 1, "Lovelace");
    press(bar(form())->rightBarButtonItem());
    const int record = Book::shared().newestRecord();
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to " + std::to_string(record)}));
    const auto saved = Book::shared().contact(record);
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(contacts::compositeName(*saved), "Ada Lovelace");
    EXPECT_EQ(saved->list(Property::phone)[0].text, "+442079460000");
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    // Nobody has put another card in its place: it shows the person, and adds nothing any more.
    EXPECT_THAT(rowsOf(card_), Not(Contains("Create New Contact")));
    EXPECT_EQ(ABRecordGetRecordID(card_->displayedPerson()), record);
}

TEST_F(UnknownPersonTest, tellsNobodyWhenTheFormIsCancelled) {
    push(card_);
    tapRow(card_, "Create New Contact");
    fill(0, 0, "Ada");
    press(bar(form())->leftBarButtonItem());
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to nobody"}));
    EXPECT_TRUE(Book::shared().all()->empty());
    EXPECT_EQ(navigation().topViewController(), card_.get());
    EXPECT_THAT(rowsOf(card_), Contains("Create New Contact"));
}

TEST_F(UnknownPersonTest, theDelegateMayPutAnotherScreenInItsPlace) {
    push(card_);
    auto other = objc::Ref<ModernPersonScreen>::make();
    delegate_->whenResolved = [&] {
        const auto stack = objc::sendClass<"NSMutableArray", "array", objc::Object>();
        objc::send<"addObject:">(stack, navigation().stack().front()->object());
        objc::send<"addObject:">(stack, other->object());
        navigation().setViewControllers(stack);
    };
    tapRow(card_, "Create New Contact");
    press(bar(form())->rightBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    EXPECT_EQ(navigation().topViewController(), other.get());
    EXPECT_NE(other->view()->window(), nullptr);
    EXPECT_EQ(other->appearance(), uikit::ViewController::Appearance::Appeared);
    EXPECT_EQ(card_->appearance(), uikit::ViewController::Appearance::Disappeared);
}

TEST_F(UnknownPersonTest, isAddedToTheContactThatIsChosen) {
    const int record = save(anna());
    push(card_);
    tapRow(card_, "Add to Existing Contact");
    ASSERT_NE(list(), nullptr);
    ASSERT_TRUE(list()->tableView()->tapRow(0, 0));
    settle();
    ASSERT_NE(form(), nullptr);
    EXPECT_EQ(form()->edit().values(Property::phone).size(), 3U);
    press(bar(form())->rightBarButtonItem());
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to " + std::to_string(record)}));
    EXPECT_EQ(Book::shared().contact(record)->list(Property::phone)[2].text, "+442079460000");
    EXPECT_EQ(Book::shared().contact(record)->others, anna().others);
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(UnknownPersonTest, tellsNobodyWhenThePickerIsCancelled) {
    save(anna());
    push(card_);
    tapRow(card_, "Add to Existing Contact");
    press(bar(front())->rightBarButtonItem());
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to nobody"}));
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

/// The stack goes back to its root, without the card, as it does when the Phone leaves the screen.
class ResolvedOutsideItsStack : public UnknownPersonTest {
  protected:
    void leave() {
        objc::send<"popToRootViewControllerAnimated:", objc::Object>(navigation().object(), false);
        settle();
        ASSERT_EQ(card_->parentViewController(), nullptr);
    }
    std::size_t contacts() { return Book::shared().all()->size(); }
};

TEST_F(ResolvedOutsideItsStack, theFormClosesItselfWhenItIsCancelled) {
    push(card_);
    tapRow(card_, "Create New Contact");
    leave();
    press(bar(form())->leftBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to nobody"}));
}

TEST_F(ResolvedOutsideItsStack, theFormSavesOnceAndClosesItself) {
    push(card_);
    tapRow(card_, "Create New Contact");
    fill(0, 0, "Ada");
    leave();
    const objc::Ref<uikit::BarButtonItem> done(bar(form())->rightBarButtonItem());
    done->fire();
    // It can be tapped until it is out of sight.
    done->fire();
    settle();
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    EXPECT_EQ(contacts(), 1u);
    EXPECT_EQ(delegate_->heard.size(), 1u);
}

TEST_F(ResolvedOutsideItsStack, thePickerClosesItselfWhenItIsCancelled) {
    push(card_);
    tapRow(card_, "Add to Existing Contact");
    leave();
    const objc::Ref<uikit::BarButtonItem> cancel(bar(front())->rightBarButtonItem());
    cancel->fire();
    cancel->fire();
    settle();
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    EXPECT_EQ(delegate_->heard, (Texts{"resolved to nobody"}));
}

TEST_F(ResolvedOutsideItsStack, thePickersFormClosesBoth) {
    save(anna());
    push(card_);
    tapRow(card_, "Add to Existing Contact");
    ASSERT_TRUE(list()->tableView()->tapRow(0, 0));
    settle();
    leave();
    press(bar(form())->rightBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(ResolvedOutsideItsStack, nobodyIsToldOnceTheDelegateIsGone) {
    push(card_);
    EXPECT_EQ(card_->unknownPersonViewDelegate(), objc::Strong<>(delegate_->object()));
    tapRow(card_, "Create New Contact");
    leave();
    delegate_ = {};
    EXPECT_FALSE(card_->unknownPersonViewDelegate());
    press(bar(form())->leftBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(UnknownPersonTest, aDeniedBookSaysSoInsteadOfShowingAForm) {
    push(card_);
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    tapRow(card_, "Create New Contact");
    EXPECT_EQ(form(), nullptr);
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_THAT(uikit::frontSheet()->content().message, testing::HasSubstr("quorvelctl contacts allow"));
    EXPECT_TRUE(delegate_->heard.empty());
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
}

TEST_F(UnknownPersonTest, aDeniedBookSaysSoInsteadOfShowingThePicker) {
    save(anna());
    push(card_);
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    tapRow(card_, "Add to Existing Contact");
    EXPECT_EQ(list(), nullptr);
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_THAT(uikit::frontSheet()->content().message, testing::HasSubstr("quorvelctl contacts allow"));
    EXPECT_TRUE(delegate_->heard.empty());
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
}

TEST_F(UnknownPersonTest, anUnknownNumberIsBlockedOnceConfirmedAndShared) {
    card_->setAllowsContactBlocking(true);
    card_->setAllowsSharing(true);
    push(card_);
    tapRow(card_, "Block this Caller");
    take("Block Contact");
    EXPECT_TRUE(Book::shared().isBlocked("0044 20 7946 0000"));
    tapRow(card_, "Unblock this Caller");
    EXPECT_FALSE(Book::shared().isBlocked("0044 20 7946 0000"));
    tapRow(card_, "Share Contact");
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_EQ(uikit::frontSheet()->content().message,
              "The card was written to " + (folder() / "shared/+442079460000.vcf").string() + ".");
}

TEST_F(UnknownPersonTest, thePickerFindsPeopleByTheBeginningOfAnyWord) {
    save(anna());
    Contact other;
    other.setText(Property::firstName, "Jürgen");
    other.setText(Property::lastName, "Öztürk");
    save(other);
    push(card_);
    tapRow(card_, "Add to Existing Contact");
    auto* search = objc::peerOf<uikit::SearchDisplayController>(list()->searchDisplayController());
    search->setActive(true);
    search->searchBar()->type("ozt");
    settle();
    const auto results = search->searchResultsTableView();
    EXPECT_EQ(list()->numberOfRows(results, 0), 1);
    auto* cell = objc::peerOf<uikit::TableViewCell>(list()->cellForRow(results, uikit::indexPath({0, 0})));
    EXPECT_EQ(cell->textLabel()->string(), "Jürgen Öztürk");
    search->searchBar()->type("zzz");
    settle();
    cell = objc::peerOf<uikit::TableViewCell>(list()->cellForRow(results, uikit::indexPath({0, 0})));
    EXPECT_EQ(cell->textLabel()->string(), "No Contacts");
}

}  // namespace
}  // namespace addressbookui::test

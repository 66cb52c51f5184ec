// The card of a contact: every flag, the highlighted value, the delegate, editing and deleting.
#include "desktop/addressbookui/person_screen.h"

#include "tests/addressbookui/fixture.h"

namespace addressbookui::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class PersonScreenTest : public ContactScreenTest {
  protected:
    PersonScreenTest() {
        objc::registerClasses<CardDelegate>();
        record_ = save(anna());
        delegate_ = objc::Ref<CardDelegate>::make();
        card_ =
            objc::Ref<ModernPersonScreen>::adopt(objc::make<objc::Object, "initWithNibName:bundle:addressBook:style:">(
                objc::classNamed<"ABPersonViewController_Modern">(), objc::Object{}, objc::Object{}, objc::Object{},
                3L));
        person_ = person(record_);
        delegate_->expected = person_.self();
        card_->setDisplayedPerson(person_.self());
        card_->setPersonViewDelegate(delegate_->object());
    }

    void show() { push(card_); }
    void startEditing() {
        card_->setAllowsEditing(true);
        show();
        press(bar(card_)->rightBarButtonItem());
        ASSERT_NE(form(), nullptr);
    }
    Contact saved() { return *Book::shared().contact(record_); }

    int record_ = 0;
    objc::Ref<addressbook::Record> person_;
    objc::Ref<CardDelegate> delegate_;
    objc::Ref<ModernPersonScreen> card_;
};

TEST_F(PersonScreenTest, showsValuesAndNothingElseWithoutFlags) {
    card_->setAllowsActions(false);
    show();
    EXPECT_EQ(rowsOf(card_).size(), 7U);
    EXPECT_EQ(bar(card_)->rightBarButtonItem(), nullptr);
    EXPECT_EQ(card_->style(), 3);
}

TEST_F(PersonScreenTest, eachFlagBringsItsRow) {
    card_->setAllowsActions(false);
    show();
    card_->setAllowsActions(true);
    EXPECT_THAT(rowsOf(card_), Contains("Send Message"));
    EXPECT_THAT(rowsOf(card_), Contains("FaceTime"));
    EXPECT_THAT(rowsOf(card_), Not(Contains("Share Contact")));
    card_->setAllowsSharing(true);
    EXPECT_THAT(rowsOf(card_), Contains("Share Contact"));
    card_->setAllowsAddToFavorites(true);
    EXPECT_THAT(rowsOf(card_), Contains("Add to Favorites"));
    card_->setAllowsContactBlocking(true);
    EXPECT_THAT(rowsOf(card_), Contains("Block this Caller"));
    card_->setAllowsSendingTextMessage(false);
    EXPECT_THAT(rowsOf(card_), Not(Contains("Send Message")));
    card_->setAllowsEditing(true);
    EXPECT_NE(bar(card_)->rightBarButtonItem(), nullptr);
}

TEST_F(PersonScreenTest, displaysTheAskedPropertiesAlone) {
    card_->setAllowsActions(false);
    const auto wanted = objc::sendClass<"NSArray", "arrayWithObject:", objc::Object>(
        objc::sendClass<"NSNumber", "numberWithInt:", objc::Object>(kABPersonEmailProperty));
    card_->setDisplayedProperties(wanted);
    show();
    EXPECT_THAT(rowsOf(card_), ElementsAre("home: anna@example.org"));
}

TEST_F(PersonScreenTest, highlightsTheValueAtTheGivenPlace) {
    objc::send<"setHighlightedItemForProperty:withIdentifier:">(card_->object(), kABPersonPhoneProperty, 1);
    show();
    EXPECT_EQ(cardRows(card_)[0].emphasis, CardRow::Emphasis::none);
    EXPECT_EQ(cardRows(card_)[1].emphasis, CardRow::Emphasis::highlighted);
    objc::send<"setHighlightedItemForProperty:withIdentifier:important:">(card_->object(), kABPersonEmailProperty, 0,
                                                                          true);
    EXPECT_EQ(cardRows(card_)[1].emphasis, CardRow::Emphasis::none);
    EXPECT_EQ(cardRows(card_)[2].emphasis, CardRow::Emphasis::important);
}

TEST_F(PersonScreenTest, aNegativePlaceHighlightsNothing) {
    objc::send<"setHighlightedItemForProperty:withIdentifier:important:">(card_->object(), kABPersonEmailProperty, -1,
                                                                          true);
    show();
    for (const auto& row : cardRows(card_)) EXPECT_EQ(row.emphasis, CardRow::Emphasis::none);
}

TEST_F(PersonScreenTest, aTapCallsOnceTheDelegateAgrees) {
    show();
    tapRow(card_, "030 123456");
    EXPECT_EQ(delegate_->heard, (Texts{"perform 3 7"}));
    EXPECT_EQ(opened, (Texts{"tel://+4930123456"}));
    delegate_->allows = false;
    tapRow(card_, "anna@example.org");
    EXPECT_EQ(delegate_->heard, (Texts{"perform 3 7", "perform 4 0"}));
    EXPECT_EQ(opened, (Texts{"tel://+4930123456"}));
}

TEST_F(PersonScreenTest, aTapCallsOnceTheDelegateIsGone) {
    EXPECT_EQ(card_->personViewDelegate(), objc::Strong<>(delegate_->object()));
    delegate_ = {};
    EXPECT_FALSE(card_->personViewDelegate());
    show();
    tapRow(card_, "01512 3456789");
    EXPECT_EQ(opened, (Texts{"tel://+4915123456789"}));
}

TEST_F(PersonScreenTest, asksWhichOfSeveralAddressesAMessageGoesTo) {
    show();
    tapRow(card_, "Send Message");
    EXPECT_THAT(choices(),
                ElementsAre("mobile: 01512 3456789", "work: 030 123456", "home: anna@example.org", "Cancel"));
    take("home: anna@example.org");
    EXPECT_EQ(opened, (Texts{"sms:anna@example.org"}));
}

TEST_F(PersonScreenTest, theHeaderStandsAboveTheValuesAndMayGrow) {
    auto header = objc::Ref<uikit::View>::make<"initWithFrame:">(uikit::Rect{{}, {0, 50}});
    card_->setPersonHeaderView(header);
    show();
    const auto set = objc::send<"personHeaderView", objc::Object>(card_->object());
    EXPECT_EQ(set.self, header.self());
    auto* above = card_->tableView()->tableHeaderView();
    const double before = above->frame().height();
    EXPECT_EQ(header->frame().bottom(), before);
    EXPECT_EQ(header->frame().width(), 320);
    header->setFrame({{}, {320, 90}});
    card_->viewWillAppear(false);
    window().layoutIfNeeded();
    EXPECT_EQ(above->frame().height(), before + 40);
    EXPECT_EQ(header->frame().bottom(), before + 40);
}

TEST_F(PersonScreenTest, saysMessageAndAlternateNameBelowTheName) {
    card_->setAlternateName(uikit::nsString("Annie"));
    card_->setMessage(uikit::nsString("Berlin"));
    show();
    EXPECT_THAT(card_->tableView()->tableHeaderView()->drawnTexts(),
                ElementsAre("Anna Berg", "Annie", "Harbour Museum", "Berlin"));
}

TEST_F(PersonScreenTest, blocksEveryAddressOnceConfirmed) {
    card_->setAllowsContactBlocking(true);
    show();
    tapRow(card_, "Block this Caller");
    take("Cancel");
    EXPECT_FALSE(Book::shared().isBlocked("030 123456"));
    tapRow(card_, "Block this Caller");
    take("Block Contact");
    EXPECT_TRUE(Book::shared().isBlocked("030 123456"));
    EXPECT_TRUE(Book::shared().isBlocked("anna@example.org"));
    tapRow(card_, "Unblock this Caller");
    EXPECT_FALSE(Book::shared().isBlocked("030 123456"));
}

TEST_F(PersonScreenTest, aFavouriteCanBeTakenBack) {
    card_->setAllowsAddToFavorites(true);
    show();
    tapRow(card_, "Add to Favorites");
    take("work: 030 123456");
    EXPECT_THAT(Book::shared().favourites(), ElementsAre(contacts::Favourite{record_, "+49 30 123456"}));
    tapRow(card_, "Remove from Favorites");
    EXPECT_THAT(Book::shared().favourites(), IsEmpty());
}

TEST_F(PersonScreenTest, sharingWritesACardAndSaysWhere) {
    card_->setAllowsSharing(true);
    show();
    tapRow(card_, "Share Contact");
    const auto file = folder() / "shared/Anna Berg.vcf";
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_EQ(uikit::frontSheet()->content().message, "The card was written to " + file.string() + ".");
    std::ifstream stream(file);
    const std::string card((std::istreambuf_iterator<char>(stream)), {});
    EXPECT_THAT(card, testing::HasSubstr("TEL;TYPE=WORK:+49 30 123456"));
    take("OK");
    tapRow(card_, "Share Contact");
    EXPECT_TRUE(std::filesystem::exists(folder() / "shared/Anna Berg 2.vcf"));
}

TEST_F(PersonScreenTest, sharingThatFailsSaysWhy) {
    std::ofstream(folder() / "file") << "x";
    setShareFolder(folder() / "file");
    card_->setAllowsSharing(true);
    show();
    tapRow(card_, "Share Contact");
    EXPECT_EQ(uikit::frontSheet()->content().title, "Contact Not Shared");
    EXPECT_THAT(uikit::frontSheet()->content().message, testing::HasSubstr("Check that the folder"));
}

TEST_F(PersonScreenTest, linkedPeopleOpenTheirCards) {
    Contact other;
    other.setText(Property::firstName, "Anna");
    other.setText(Property::lastName, "Berg");
    const int linked = save(other);
    card_->setShouldShowLinkedPeople(true);
    show();
    tapRow(card_, "Anna Berg");
    auto* linkedCard = objc::peerIf<PersonScreen>(navigation().topViewController()->object());
    ASSERT_NE(linkedCard, nullptr);
    EXPECT_EQ(ABRecordGetRecordID(linkedCard->displayedPerson()), linked);
}

TEST_F(PersonScreenTest, editingChangesTheContactAndTheCard) {
    startEditing();
    fill(0, 0, "Anne");
    fill(1, 0, "+49 160 1234567");
    press(bar(form())->rightBarButtonItem());
    Contact expected = anna();
    EXPECT_EQ(saved().text(Property::firstName), "Anne");
    EXPECT_EQ(saved().list(Property::phone)[0].text, "+49 160 1234567");
    EXPECT_EQ(saved().list(Property::address), expected.list(Property::address));
    EXPECT_EQ(saved().text(Property::note), "Plays the viola.");
    EXPECT_EQ(saved().others, expected.others);
    EXPECT_EQ(form(), nullptr);
    EXPECT_EQ(rowsOf(card_)[0], "mobile: 0160 1234567");
}

TEST_F(PersonScreenTest, cancellingChangesNothing) {
    startEditing();
    const Contact before = saved();
    fill(0, 0, "Anne");
    auto* shown = form();
    shown->commitEditing({}, 1, uikit::indexPath({1, 0}));
    settle();
    press(bar(form())->leftBarButtonItem());
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(form(), nullptr);
    EXPECT_EQ(rowsOf(card_)[0], "mobile: 01512 3456789");
}

TEST_F(PersonScreenTest, withoutCancelTheFormEndsWithDoneAlone) {
    card_->setAllowsCancel(false);
    startEditing();
    EXPECT_EQ(bar(form())->leftBarButtonItem(), nullptr);
}

TEST_F(PersonScreenTest, theFormDeletesOnlyWhereThatIsAllowed) {
    startEditing();
    EXPECT_EQ(form()->numberOfSections({}), 3);
    press(bar(form())->leftBarButtonItem());
    card_->setAllowsDeletion(true);
    press(bar(card_)->rightBarButtonItem());
    EXPECT_EQ(form()->numberOfSections({}), 4);
}

TEST_F(PersonScreenTest, deletingAsksFirstAndTakesTheCardAway) {
    card_->setAllowsDeletion(true);
    startEditing();
    ASSERT_TRUE(form()->tableView()->tapRow(0, 3));
    settle();
    take("Cancel");
    EXPECT_TRUE(Book::shared().contact(record_).has_value());
    ASSERT_TRUE(form()->tableView()->tapRow(0, 3));
    settle();
    take("Delete Contact");
    EXPECT_FALSE(Book::shared().contact(record_).has_value());
    EXPECT_EQ(navigation().stack().size(), 1U);
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(PersonScreenTest, theFormClosesItselfAfterTheCardHasLeftItsStack) {
    startEditing();
    fill(0, 0, "Anne");
    objc::send<"popToRootViewControllerAnimated:", objc::Object>(navigation().object(), false);
    settle();
    press(bar(form())->rightBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
    EXPECT_EQ(saved().text(Property::firstName), "Anne");
}

TEST_F(PersonScreenTest, aFormWhoseDelegateIsGoneClosesItself) {
    auto form = objc::Ref<ContactForm>::make();
    {
        auto delegate = objc::Ref<CardDelegate>::make();
        form->setNewPersonViewDelegate(delegate->object());
        EXPECT_EQ(form->newPersonViewDelegate(), objc::Strong<>(delegate->object()));
    }
    EXPECT_FALSE(form->newPersonViewDelegate());
    auto stack = objc::Ref<uikit::NavigationController>::make<"initWithRootViewController:">(form->object());
    objc::send<"presentViewController:animated:completion:">(navigation().object(), stack->object(), false,
                                                             objc::Object{});
    settle();
    press(bar(form)->leftBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(PersonScreenTest, aContactThatCannotBeSavedKeepsTheFormOpen) {
    startEditing();
    fill(0, 0, "Anne");
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    press(bar(form())->rightBarButtonItem());
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_EQ(uikit::frontSheet()->content().title, "Contact Not Saved");
    ASSERT_NE(form(), nullptr);
    EXPECT_EQ(form()->edit().text(Property::firstName), "Anne");
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
    EXPECT_EQ(saved().text(Property::firstName), "Anna");
}

TEST_F(PersonScreenTest, aContactThatCannotBeDeletedStaysAndTheFormSaysWhy) {
    card_->setAllowsDeletion(true);
    startEditing();
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    ASSERT_TRUE(form()->tableView()->tapRow(0, 3));
    settle();
    take("Delete Contact");
    ASSERT_NE(uikit::frontSheet(), nullptr);
    EXPECT_THAT(uikit::frontSheet()->content().message, testing::HasSubstr("quorvelctl contacts allow"));
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
    EXPECT_TRUE(Book::shared().contact(record_).has_value());
}

TEST_F(PersonScreenTest, leavingAQuestionUnansweredBlocksAndMarksNobody) {
    card_->setAllowsContactBlocking(true);
    card_->setAllowsAddToFavorites(true);
    show();
    tapRow(card_, "Block this Caller");
    take("Cancel");
    tapRow(card_, "Add to Favorites");
    take("Cancel");
    EXPECT_FALSE(Book::shared().isBlocked("anna@example.org"));
    EXPECT_THAT(Book::shared().favourites(), IsEmpty());
    EXPECT_THAT(rowsOf(card_), testing::AllOf(Contains("Block this Caller"), Contains("Add to Favorites")));
}

TEST_F(PersonScreenTest, aSharedCardHoldsThePictureAndWhatNobodyShows) {
    Contact pictured = saved();
    pictured.picture = "\xFF\xD8\xFF picture";
    save(pictured);
    card_->setAllowsSharing(true);
    show();
    tapRow(card_, "Share Contact");
    std::ifstream stream(folder() / "shared/Anna Berg.vcf");
    const std::string card((std::istreambuf_iterator<char>(stream)), {});
    EXPECT_THAT(card, testing::AllOf(testing::HasSubstr("PHOTO"), testing::HasSubstr("X-HOBBY:viola")));
}

TEST_F(PersonScreenTest, showsWhatAnotherProgramChangedWhenItComesBack) {
    show();
    Contact changed = saved();
    changed.setText(Property::note, "Moved.");
    save(changed);
    card_->viewWillAppear(false);
    EXPECT_THAT(rowsOf(card_), Contains("Notes: Moved."));
}

}  // namespace
}  // namespace addressbookui::test

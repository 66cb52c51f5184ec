// Choosing a person: what its delegate is asked and told, and what it shows while the contacts are closed.
#include "desktop/addressbookui/people_picker.h"

#include "desktop/addressbookui/person_screen.h"
#include "tests/addressbookui/fixture.h"

namespace addressbookui::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Writes down what a picker asks and answers as it is told.
class PickerDelegate : public objc::PeerBase {
  public:
    using Super = objc::Foreign<"NSObject">;
    static constexpr objc::Name className{"TestPickerDelegate"};
    static void define(objc::ClassDefinition<PickerDelegate>& definition) {
        definition.method<"peoplePickerNavigationControllerDidCancel:", &PickerDelegate::cancelled>()
            .method<"peoplePickerNavigationController:shouldContinueAfterSelectingPerson:", &PickerDelegate::selected>()
            .method<"peoplePickerNavigationController:shouldContinueAfterSelectingPerson:property:identifier:",
                    &PickerDelegate::selectedValue>();
    }
    void cancelled(objc::Object) { heard.push_back("cancelled"); }
    bool selected(objc::Object, const void* person) {
        heard.push_back("person " + std::to_string(ABRecordGetRecordID(person)));
        return continues;
    }
    bool selectedValue(objc::Object, const void* person, int property, int identifier) {
        heard.push_back("value " + std::to_string(ABRecordGetRecordID(person)) + ' ' + std::to_string(property) + ' ' +
                        std::to_string(identifier));
        return continues;
    }

    Texts heard;
    bool continues = true;
};

class PeoplePickerTest : public ContactScreenTest {
  protected:
    PeoplePickerTest() {
        objc::registerClasses<PickerDelegate>();
        record_ = save(anna());
        delegate_ = objc::Ref<PickerDelegate>::make();
        picker_ = objc::Ref<PeoplePicker>::make();
        picker_->setPeoplePickerDelegate(objc::Object{delegate_.self()});
    }
    ~PeoplePickerTest() override {
        objc::send<"dismissViewControllerAnimated:completion:">(navigation().object(), false, objc::Object{});
        settle();
    }
    void show() {
        objc::send<"presentViewController:animated:completion:">(navigation().object(), picker_->object(), false,
                                                                 objc::Object{});
        settle();
    }
    PeopleList* list() { return objc::peerIf<PeopleList>(front()->object()); }
    void choose(long row) {
        ASSERT_NE(list(), nullptr);
        list()->tableView()->tapRow(row, 0);
        settle();
    }
    Texts names() {
        Texts names;
        for (const auto& each : list()->tableView()->visibleRows()) names.push_back(each.cell->textLabel()->string());
        return names;
    }

    int record_ = 0;
    objc::Ref<PickerDelegate> delegate_;
    objc::Ref<PeoplePicker> picker_;
};

TEST_F(PeoplePickerTest, showsEverybodyByTheirLastNames) {
    Contact first;
    first.setText(Property::firstName, "Zoe");
    first.setText(Property::lastName, "Abel");
    save(first);
    save(personOfNumber("110"));
    show();
    EXPECT_THAT(names(), ElementsAre("110", "Zoe Abel", "Anna Berg"));
}

TEST_F(PeoplePickerTest, aDelegateThatEndsThereSeesTheChosenPersonAlone) {
    delegate_->continues = false;
    show();
    choose(0);
    EXPECT_THAT(delegate_->heard, ElementsAre("person " + std::to_string(record_)));
    EXPECT_NE(list(), nullptr);
}

TEST_F(PeoplePickerTest, aDelegateThatContinuesIsAskedForAValueOfTheCard) {
    show();
    choose(0);
    auto* card = objc::peerIf<PersonScreen>(front()->object());
    ASSERT_NE(card, nullptr);
    delegate_->continues = false;
    tapRow(card, "030 123456");
    EXPECT_THAT(delegate_->heard,
                ElementsAre("person " + std::to_string(record_), "value " + std::to_string(record_) + " 3 7"));
    EXPECT_THAT(opened, IsEmpty());
    delegate_->continues = true;
    tapRow(card, "030 123456");
    EXPECT_THAT(opened, ElementsAre("tel://+4930123456"));
}

TEST_F(PeoplePickerTest, tellsItsDelegateOfACancel) {
    show();
    press(bar(front())->rightBarButtonItem());
    EXPECT_THAT(delegate_->heard, ElementsAre("cancelled"));
}

TEST_F(PeoplePickerTest, withoutADelegateChoosesNobodyAndClosesItself) {
    delegate_ = {};
    EXPECT_FALSE(picker_->peoplePickerDelegate());
    show();
    choose(0);
    EXPECT_NE(list(), nullptr);
    press(bar(front())->rightBarButtonItem());
    EXPECT_EQ(navigation().presentedViewController(), nullptr);
}

TEST_F(PeoplePickerTest, whoWasRemovedMeanwhileCannotBeChosen) {
    show();
    ASSERT_TRUE(Book::shared().write({}, {record_}));
    choose(0);
    EXPECT_THAT(delegate_->heard, IsEmpty());
    EXPECT_NE(list(), nullptr);
}

TEST_F(PeoplePickerTest, anEmptyBookSaysSoInARowThatChoosesNobody) {
    ASSERT_TRUE(Book::shared().write({}, {record_}));
    show();
    EXPECT_THAT(names(), ElementsAre("No Contacts"));
    choose(0);
    EXPECT_THAT(delegate_->heard, IsEmpty());
}

TEST_F(PeoplePickerTest, aDeniedBookShowsNobodyAndSaysHowToOpenIt) {
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    show();
    EXPECT_THAT(names(), ElementsAre(HasSubstr("quorvelctl contacts allow")));
    choose(0);
    EXPECT_THAT(delegate_->heard, IsEmpty());
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
}

}  // namespace
}  // namespace addressbookui::test

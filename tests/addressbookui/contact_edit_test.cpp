// Changing a contact: what becomes of what is shown, and of what is not.
#include "desktop/addressbookui/contact_edit.h"

#include "tests/addressbookui/fixture.h"

namespace addressbookui::test {
namespace {

TEST(ContactEdit, withoutAChangeIsTheContactAsItWas) {
    const ContactEdit edit(anna());
    EXPECT_EQ(edit.result(), anna());
    EXPECT_FALSE(edit.isChanged());
}

TEST(ContactEdit, keepsWhatTheFormDoesNotShow) {
    ContactEdit edit(anna());
    edit.setText(Property::firstName, "Anne");
    edit.setValue(Property::phone, 0, "+49 160 1");
    Contact expected = anna();
    expected.setText(Property::firstName, "Anne");
    expected.lists[Property::phone][0].text = "+49 160 1";
    EXPECT_EQ(edit.result(), expected);
}

TEST(ContactEdit, givesNewValuesIdentifiersThatNoOtherHasHad) {
    ContactEdit edit(anna());
    edit.removeValue(Property::phone, 1);
    edit.addValue(Property::phone, "110");
    const auto phones = edit.result().list(Property::phone);
    ASSERT_EQ(phones.size(), 2U);
    EXPECT_EQ(phones[0].identifier, 3);
    EXPECT_EQ(phones[1].identifier, 8);
}

TEST(ContactEdit, labelsNewValuesWithTheFirstUsualLabelThatIsFree) {
    ContactEdit edit(anna());
    edit.addValue(Property::phone, "1");
    edit.addValue(Property::phone, "2");
    EXPECT_EQ(edit.values(Property::phone)[2].label, "iPhone");
    EXPECT_EQ(edit.values(Property::phone)[3].label, "_$!<Home>!$_");
}

TEST(ContactEdit, leavesOutValuesWithoutText) {
    ContactEdit edit(anna());
    edit.setValue(Property::email, 0, " ");
    edit.addValue(Property::phone);
    EXPECT_EQ(edit.result().lists.count(Property::email), 0U);
    EXPECT_EQ(edit.result().list(Property::phone).size(), 2U);
}

TEST(ContactEdit, isEmptyWhenNothingIsLeft) {
    ContactEdit edit({}, personOfNumber("112"));
    EXPECT_FALSE(edit.isEmpty());
    edit.removeValue(Property::phone, 0);
    EXPECT_TRUE(edit.isEmpty());
}

TEST(ContactEdit, offersALabelOfTheUsersOwnBesideTheUsualOnes) {
    ContactEdit edit(anna());
    edit.setLabel(Property::email, 0, "Chess club");
    EXPECT_EQ(edit.labels(Property::email, 0), (Texts{"_$!<Home>!$_", "_$!<Work>!$_", "_$!<Other>!$_", "Chess club"}));
}

TEST(ContactEdit, joiningAddsTheNumberOnceHoweverItIsSpelt) {
    contacts::setHomeRegion("DE");
    EXPECT_EQ(withValuesOf(anna(), personOfNumber("0049 30 123456")), anna());
    const auto joined = withValuesOf(anna(), personOfNumber("+44 20 7946 0000")).list(Property::phone);
    ASSERT_EQ(joined.size(), 3U);
    EXPECT_EQ(joined[2].text, "+44 20 7946 0000");
    EXPECT_EQ(joined[2].identifier, 8);
}

}  // namespace
}  // namespace addressbookui::test

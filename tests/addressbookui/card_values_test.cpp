// What a card lists, and what a tap on a value opens.
#include "desktop/addressbookui/card_values.h"

#include "desktop/addressbookui/addresses.h"
#include "desktop/addressbookui/words.h"
#include "tests/addressbookui/fixture.h"

namespace addressbookui::test {
namespace {

class CardValues : public testing::Test {
  protected:
    CardValues() {
        contacts::setLanguage("en");
        contacts::setHomeRegion("DE");
    }
    static Texts texts(const Contact& contact, const std::vector<Property>& displayed = {}) {
        Texts lines;
        for (const auto& value : cardValues(contact, displayed)) lines.push_back(value.label + ": " + value.text);
        return lines;
    }
};

TEST_F(CardValues, standInTheCardsOrderUnderTheirLabels) {
    EXPECT_EQ(texts(anna()),
              (Texts{"mobile: 01512 3456789", "work: 030 123456", "home: anna@example.org", "home page: example.org",
                     "home: Lindenstr. 5\n10969 Berlin", "Birthday: February 28, 1984", "Notes: Plays the viola."}));
}

TEST_F(CardValues, areThoseOfTheDisplayedPropertiesAlone) {
    EXPECT_EQ(texts(anna(), {Property::email, Property::note}),
              (Texts{"home: anna@example.org", "Notes: Plays the viola."}));
}

TEST_F(CardValues, nameTheirPropertyWhereTheyHaveNoLabel) {
    Contact contact;
    contact.lists[Property::phone] = {{0, "", "112", {}}};
    EXPECT_EQ(texts(contact), (Texts{"Phone: 112"}));
}

TEST_F(CardValues, sayABirthdayWithoutAYearWithoutOne) {
    Contact contact;
    contact.setText(Property::birthday, "--02-29");
    EXPECT_EQ(texts(contact), (Texts{"Birthday: February 29"}));
}

TEST_F(CardValues, openByWhatTheyAre) {
    Texts addresses;
    for (const auto& value : cardValues(anna(), {})) addresses.push_back(addressToOpen(value));
    EXPECT_EQ(addresses, (Texts{"tel://+4915123456789", "tel://+4930123456", "mailto:anna@example.org",
                                "http://example.org", "geo:0,0?q=Lindenstr.%205%2010969%20Berlin", "", ""}));
}

TEST_F(CardValues, callersByAnEMailAddressAreCalledWithFaceTime) {
    EXPECT_EQ(addressToOpen({Property::phone, 0, 0, "", "", "anna@example.org"}), "facetime-audio://anna@example.org");
}

TEST_F(CardValues, peopleOfTheSameNameAreLinkedAndPeopleWithoutOneAreNot) {
    Contact other = anna();
    other.record = 2;
    Contact nameless = personOfNumber("1");
    nameless.record = 3;
    Contact me = anna();
    me.record = 1;
    const auto linked = linkedPeople(me, {me, other, nameless});
    ASSERT_EQ(linked.size(), 1U);
    EXPECT_EQ(linked[0].record, 2);
    EXPECT_TRUE(linkedPeople(nameless, {me, other, personOfNumber("1")}).empty());
}

TEST(Addresses, keepOfANumberWhatIsDialled) {
    EXPECT_EQ(callAddress("+49 (0)30 / 12-34"), "tel://+490301234");
    EXPECT_EQ(callAddress("*100#"), "tel://*100%23");
    EXPECT_EQ(callAddress("unknown"), "");
    EXPECT_EQ(messageAddress("0170 1"), "sms:01701");
    EXPECT_EQ(faceTimeAddress("a b@example.org", FaceTime::video), "");
    EXPECT_EQ(mailAddress("ä@example.org"), "mailto:%C3%A4@example.org");
    EXPECT_EQ(pageAddress("https://example.org/a b"), "https://example.org/a%20b");
}

TEST(Words, areThereInEveryLanguage) {
    for (const char* language : {"en", "de", "es", "ru", "ar", "xx"}) {
        contacts::setLanguage(language);
        for (int word = 0; word <= static_cast<int>(Word::noAccess); ++word)
            EXPECT_FALSE(say(static_cast<Word>(word)).empty()) << language << ' ' << word;
    }
    contacts::setLanguage("de_AT");
    EXPECT_EQ(say(Word::cardWrittenTo, "/x/Ä.vcf"), "Die Karte liegt in /x/Ä.vcf.");
    contacts::setLanguage("en");
}

}  // namespace
}  // namespace addressbookui::test

// Contacts of vCards and vCards of contacts.
#include "desktop/addressbook/contact_vcard.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>

#include "desktop/addressbook/vcard_writer.h"
#include "vcard_support.h"

namespace contacts::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vcard::Version;
using vcard::test::readSample;
using vcard::test::readText;

Contact contactOfLines(const std::string& lines) {
    const auto outcome = readText("BEGIN:VCARD\nVERSION:3.0\n" + lines + "END:VCARD\n");
    return contactOf(outcome.cards.at(0));
}

/// "label: text" of the list.
std::vector<std::string> shown(const Contact& contact, Property property) {
    std::vector<std::string> all;
    for (const auto& value : contact.list(property)) {
        std::string text = value.label + ": " + value.text;
        for (const auto& [key, part] : value.parts) text += key + "=" + part + "|";
        all.push_back(text);
    }
    return all;
}

TEST(ContactOfCard, hasThePartsOfItsName) {
    const auto contact = contactOf(readSample("ez-vcard/John_Doe_EVOLUTION.vcf").cards.at(0));
    EXPECT_EQ(contact.text(Property::lastName), "Doe");
    EXPECT_EQ(contact.text(Property::firstName), "John");
    EXPECT_EQ(contact.text(Property::middleName), "Richter, James");
    EXPECT_EQ(contact.text(Property::prefix), "Mr.");
    EXPECT_EQ(contact.text(Property::organization), "IBM");
    EXPECT_EQ(contact.text(Property::department), "Accounting, Dungeon");
    EXPECT_EQ(compositeName(contact), "Mr. John Richter, James Doe Sr.");
    EXPECT_THAT(shown(contact, Property::instantMessage),
                ElementsAre("_$!<Home>!$_: service=AIM|username=johnny5@aol.com|"));
}

TEST(ContactOfCard, labelsComeFromTypesAndFromTheirOwnLines) {
    const auto contact = contactOf(readSample("ez-vcard/John_Doe_IPHONE.vcf").cards.at(0));
    EXPECT_THAT(shown(contact, Property::phone),
                ElementsAre("_$!<Mobile>!$_: 905-555-1234", "_$!<Home>!$_: 905-666-1234", "_$!<Work>!$_: 905-777-1234",
                            "_$!<HomeFAX>!$_: 905-888-1234", "_$!<WorkFAX>!$_: 905-999-1234",
                            "_$!<Pager>!$_: 905-111-1234", "_$!<AssistantPhone>!$_: 905-222-1234"));
    EXPECT_THAT(shown(contact, Property::url), ElementsAre("_$!<HomePage>!$_: http://www.ibm.com"));
    EXPECT_EQ(contact.text(Property::birthday), "2012-06-06");
    EXPECT_EQ(contact.picture->size(), 32531U);
    EXPECT_EQ(contact.list(Property::address)[1].parts.at("Street"), "Street4\nBuilding 6\nFloor 8");
}

TEST(ContactOfCard, ownTypesAndOwnLabelsAreKept) {
    const auto contact = contactOf(readSample("ez-vcard/fullcontact.vcf").cards.at(0));
    EXPECT_THAT(
        shown(contact, Property::email),
        ElementsAre("_$!<Home>!$_: home@example.com", "_$!<Work>!$_: work@example.com", "school: school@example.com",
                    "_$!<Other>!$_: other@example.com", "customtype: custom@example.com"));
    EXPECT_EQ(shown(contactOf(readSample("ez-vcard/gmail-single.vcf").cards.at(0)), Property::phone)[1],
              "GRAND_CENTRAL: 555 555 2222");
}

TEST(ContactOfCard, thePreferredValueIsTheFirst) {
    EXPECT_THAT(shown(contactOfLines("TEL:1\nTEL;TYPE=PREF:2\nTEL:3\n"), Property::phone),
                ElementsAre(": 2", ": 1", ": 3"));
    EXPECT_THAT(shown(contactOfLines("TEL;PREF=50:1\nTEL;PREF=2:2\nTEL;PREF=x:3\n"), Property::phone),
                ElementsAre(": 2", ": 1", ": 3"));
}

TEST(ContactOfCard, numbersInAddressesAreNumbers) {
    EXPECT_THAT(shown(contactOf(readSample("ez-vcard/rfc6350-example.vcf").cards.at(0)), Property::phone),
                ElementsAre("_$!<Work>!$_: +1-418-656-9254 ext. 102", "_$!<Mobile>!$_: +1-418-262-6501"));
    EXPECT_THAT(
        shown(contactOfLines("TEL:TEL:+49%2030;x=1\nTEL:sip:a@b.example\nTEL:\nTEL:1234p5678w9\n"), Property::phone),
        ElementsAre(": +49 30", ": sip:a@b.example", ": 1234p5678w9"));
}

TEST(ContactOfCard, aNameWithoutPartsIsTheFirstName) {
    EXPECT_EQ(contactOfLines("FN:Frank Dawson\n").text(Property::firstName), "Frank Dawson");
    EXPECT_EQ(contactOfLines("FN:Firm\nORG:Firm\n").texts.size(), 1U);
    EXPECT_EQ(contactOfLines("FN:+1\nTEL:+1\n").texts.size(), 0U);
    EXPECT_EQ(contactOfLines("N:;;;;\nFN:Anna\n").text(Property::firstName), "Anna");
}

TEST(ContactOfCard, daysAreReadInEveryForm) {
    EXPECT_EQ(dayOf("19800321"), "1980-03-21");
    EXPECT_EQ(dayOf("1980-03-21T10:00:00Z"), "1980-03-21");
    EXPECT_EQ(dayOf("--0203"), "--02-03");
    EXPECT_EQ(dayOf("--02-29"), "--02-29");
    for (const char* none : {"", "1980", "1980-13-01", "--0230", "circa 1800", "1980-00-01", "---12"})
        EXPECT_EQ(dayOf(none), "") << none;
}

TEST(ContactOfCard, whatNoPropertyStandsForIsKept) {
    const auto contact = contactOfLines(
        "UID:u\nX-FUTURE;P=1:a\\,b\nitem1.X-OWN:x\nitem1.X-ABLabel:Mine\n"
        "BDAY:circa 1800\nPHOTO;VALUE=uri:http://x.example/a.png\nREV:1\nPRODID:p\n");
    EXPECT_THAT(contact.others,
                ElementsAre("UID:u", "X-FUTURE;P=1:a\\,b", "other-item1.X-OWN:x", "other-item1.X-ABLABEL:Mine",
                            "BDAY:circa 1800", "PHOTO;VALUE=uri:http://x.example/a.png"));
    const auto again = contactOf(readText(vcard::write(cardOf(contact), Version::v30)).cards.at(0));
    EXPECT_EQ(again.others, contact.others);
}

TEST(ContactOfCard, aPictureThatCannotBeShownIsKept) {
    EXPECT_THAT(contactOfLines("PHOTO;ENCODING=b:AA==\n").others, ElementsAre("PHOTO;ENCODING=b:AA=="));
    EXPECT_EQ(contactOfLines("PHOTO;ENCODING=b:AA==\n").picture, std::nullopt);
}

TEST(ContactOfCard, entriesOfACallListAreToldFromContacts) {
    EXPECT_TRUE(isCallRecord(
        readText("BEGIN:VCARD\nVERSION:2.1\nTEL:1\nX-IRMC-CALL-DATETIME;DIALED:20220913T110607\nEND:VCARD\n")
            .cards[0]));
    EXPECT_FALSE(isCallRecord(readText("BEGIN:VCARD\nTEL:1\nEND:VCARD\n").cards[0]));
}

std::string text() {
    static const std::vector<std::string> words = {"Anna",       "Zoë", "中文",   "a;b",   "c,d", "e\\f",
                                                   "two\nlines", "x:y", "100%25", "\"q\"", "^n",  "END:VCARD"};
    return *rc::gen::elementOf(words);
}

std::vector<LabelledValue> list(Property property) {
    std::vector<LabelledValue> values;
    const int count = *rc::gen::inRange(0, 4);
    for (int i = 0; i < count; ++i) {
        LabelledValue value;
        value.identifier = i;
        value.label = *rc::gen::element<std::string>("", "_$!<Home>!$_", "_$!<Work>!$_", "_$!<Mobile>!$_", "iPhone",
                                                     "_$!<HomeFAX>!$_", "_$!<Spouse>!$_", "Boot; mein", "HOME");
        switch (property) {
            case Property::address:
                value.parts = {{"Street", text()}, {"City", text()}};
                if (*rc::gen::arbitrary<bool>()) value.parts["CountryCode"] = "de";
                break;
            case Property::instantMessage:
                value.parts = {{"username", text()}, {"service", "Skype"}};
                break;
            case Property::socialProfile:
                value.label.clear();
                value.parts = {{"url", text()}, {"service", "twitter"}};
                break;
            case Property::date:
                value.text = *rc::gen::element<std::string>("2001-02-03", "--12-31");
                break;
            default:
                value.text = text();
        }
        values.push_back(value);
    }
    return values;
}

void expectRoundTrip(Version version) {
    EXPECT_TRUE(rc::check([version] {
        Contact contact;
        for (const Property each :
             {Property::firstName, Property::lastName, Property::prefix, Property::organization, Property::department,
              Property::note, Property::jobTitle, Property::nickname, Property::firstNamePhonetic})
            if (*rc::gen::arbitrary<bool>()) contact.setText(each, text());
        if (*rc::gen::arbitrary<bool>()) contact.setText(Property::birthday, "--02-29");
        for (const Property each : {Property::phone, Property::email, Property::url, Property::address, Property::date,
                                    Property::relatedNames, Property::instantMessage, Property::socialProfile})
            if (auto values = list(each); !values.empty()) contact.lists[each] = values;
        if (*rc::gen::arbitrary<bool>()) contact.picture = std::string("\xFF\xD8\xFF\0\x01\n", 6);
        if (*rc::gen::arbitrary<bool>()) contact.others = {"X-OWN;P=1:" + vcard::escaped(text())};
        const auto outcome = readText(vcard::write(cardOf(contact), version));
        RC_ASSERT(outcome.problems.empty());
        RC_ASSERT(contactOf(outcome.cards.at(0)) == contact);
    }));
}

TEST(ContactRoundTrip, aContactIsTheSameAfterAVCardOfTheUsualVersion) { expectRoundTrip(Version::v30); }
TEST(ContactRoundTrip, aContactIsTheSameAfterAVCardOfTheLatestVersion) { expectRoundTrip(Version::v40); }
TEST(ContactRoundTrip, aContactIsTheSameAfterAVCardOfTheEarlyVersion) { expectRoundTrip(Version::v21); }

TEST(ContactRoundTrip, everySampleBecomesTheSameContactTwice) {
    for (const char* name :
         {"ez-vcard/John_Doe_IPHONE.vcf", "ez-vcard/John_Doe_ANDROID.vcf", "ez-vcard/John_Doe_MS_OUTLOOK.vcf",
          "ez-vcard/gmail-single2.vcf", "ez-vcard/rfc6350-example.vcf", "ez-vcard/John_Doe_LOTUS_NOTES.vcf",
          "msgvault/v4-registry-smoke.vcf", "ez-vcard/outlook-2007.vcf"}) {
        for (const auto& card : readSample(name).cards) {
            const Contact first = contactOf(card);
            const Contact second = contactOf(readText(vcard::write(cardOf(first), Version::v30)).cards.at(0));
            EXPECT_EQ(second, first) << name;
        }
    }
}

}  // namespace
}  // namespace contacts::test

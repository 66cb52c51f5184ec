// Numbers as people write them, and whose they are.
#include <gmock/gmock.h>
#include <phonenumbers/phonenumberutil.h>
#include <rapidcheck.h>

#include <set>

#include "fixture.h"

namespace contacts::test {
namespace {

class NumbersTest : public BookTest {};

TEST_F(NumbersTest, everySpellingOfANumberIsOnePerson) {
    setHomeRegion("DE");
    add({person("Anna", {"030 2093 0"}), person("Ben", {"+49 (171) 123-4567"})});
    for (const char* number : {"+493020930", "00493020930", "03020930", "030 20930", "+49 (0)30 2093-0", "030/2093 0",
                               "tel:+49-30-2093-0", "0049 30 2093 0", "+49 30 20930,,12#", "03020930p12w3"})
        EXPECT_EQ(owner(number), 1) << number;
    for (const char* number : {"01711234567", "0049 171 1234567", "+491711234567", "0171/123 45 67"})
        EXPECT_EQ(owner(number), 2) << number;
    EXPECT_EQ(owner("+493020931"), 0);
}

TEST_F(NumbersTest, theLastDigitsOfANumberAreThoseOfItsKeyInEveryCountryAndSpelling) {
    using i18n::phonenumbers::PhoneNumber;
    using i18n::phonenumbers::PhoneNumberUtil;
    const auto& rules = *PhoneNumberUtil::GetInstance();
    std::set<std::string> regions;
    rules.GetSupportedRegions(&regions);
    int plain = 0;
    for (const auto& region : regions) {
        setHomeRegion(region);
        for (int type = PhoneNumberUtil::FIXED_LINE; type < PhoneNumberUtil::UNKNOWN; ++type) {
            PhoneNumber number;
            if (!rules.GetExampleNumberForType(region, static_cast<PhoneNumberUtil::PhoneNumberType>(type), &number))
                continue;
            for (const auto format : {PhoneNumberUtil::E164, PhoneNumberUtil::INTERNATIONAL, PhoneNumberUtil::NATIONAL,
                                      PhoneNumberUtil::RFC3966}) {
                std::string spelling;
                rules.Format(number, format, &spelling);
                const auto last = lastDigitsOf(spelling);
                if (!last) continue;
                ++plain;
                EXPECT_EQ(lastDigitsOf(keyOf(spelling).text), last) << region << ": " << spelling;
            }
        }
    }
    EXPECT_GT(plain, 1000);
}

TEST_F(NumbersTest, onlyAPlainNumberHasLastDigits) {
    EXPECT_EQ(lastDigitsOf("+49 (171) 123-45.67"), 4567);
    EXPECT_EQ(lastDigitsOf("0100"), 100);
    for (const char* other : {"", "110", "-1", "*#06#", "anna1234@example.com", "650 887 0260 x102",
                              "+4930 20930,,1234", "1-800-FLOWERS", "tel:+4930209301", "٠٣٠٢٠٩٣٠"})
        EXPECT_EQ(lastDigitsOf(other), std::nullopt) << other;
    EXPECT_TRUE(rc::check("an address without a country that has some is compared by its digits", [] {
        const auto address = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789 -()./+")));
        const auto last = lastDigitsOf(address);
        if (last) RC_ASSERT(lastDigitsOf(keyOf(address).text) == last);
    }));
}

TEST_F(NumbersTest, anExtensionMakesNoOtherPersonButDecidesBetweenTwo) {
    add({person("Desk", {"(650) 887-0260"}), person("Anna", {"+1 650 887 0260 ext. 102"}),
         person("Ben", {"+16508870260;ext=103"})});
    EXPECT_EQ(owner("+16508870260"), 1);
    EXPECT_EQ(owner("6508870260 x102"), 2);
    EXPECT_EQ(owner("+1 650 887 0260 ext 103"), 3);
    EXPECT_EQ(owner("+1 650 887 0260 ext 999"), 1);
}

TEST_F(NumbersTest, shortCodesAndServiceCodesAreThemselvesAlone) {
    setHomeRegion("CN");
    add({person("Service", {"10086"}), person("Balance", {"*#06#"}), person("Police", {"110"})});
    EXPECT_EQ(owner("10086"), 1);
    EXPECT_EQ(owner("1 0086"), 1);
    EXPECT_EQ(owner("*#06#"), 2);
    EXPECT_EQ(owner("110"), 3);
    EXPECT_EQ(owner("10010"), 0);
    EXPECT_EQ(owner("10"), 0);
}

TEST_F(NumbersTest, aWithheldOrEmptyNumberIsNobodys) {
    Contact nobody = person("Nobody", {"", " ", "-1", "-2", "unknown", "+", "0"});
    nobody.lists[Property::email].push_back(value(0, ""));
    add({nobody});
    for (const char* number : {"", " ", "-1", "-2", "-3", "unknown", "Anonymous", "private", "+", "0"})
        EXPECT_EQ(owner(number), 0) << number;
}

TEST_F(NumbersTest, lettersStandForTheirDigits) {
    add({person("Shop", {"1-800-MY-APPLE"})});
    EXPECT_EQ(owner("+18006927753"), 1);
}

TEST_F(NumbersTest, emailAndSipAddressesAreComparedWithoutCase) {
    Contact anna = person("Anna", {"sip:Anna@phone.example"});
    anna.lists[Property::email] = {value(0, "old@example.com"), value(1, "Anna@Example.com")};
    add({anna});
    EXPECT_EQ(book().match("anna@example.COM"), (Match{1, Property::email, 1}));
    EXPECT_EQ(book().match("SIP:anna@phone.example"), (Match{1, Property::phone, 0}));
    EXPECT_EQ(owner("anna@example.org"), 0);
}

TEST_F(NumbersTest, aNumberWithoutItsCountryIsFoundWhereOneAloneFits) {
    // Numbers saved at home in Britain, looked at from the United States.
    add({person("London", {"020 7946 0018"}), person("Local", {"308-3236"})});
    EXPECT_EQ(owner("+442079460018"), 1);
    EXPECT_EQ(owner("+15713083236"), 2);
    EXPECT_EQ(owner("+15713083237"), 0);
}

TEST_F(NumbersTest, whereTwoFitLooselyNobodyDoes) {
    add({person("Anna", {"308-3236"}), person("Ben", {"308 3236"}), person("Carl", {"020 7946 0018", "02079460018"})});
    EXPECT_EQ(owner("+15713083236"), 0);
    EXPECT_EQ(owner("+442079460018"), 3);
    EXPECT_EQ(owner("3083236"), 1);
}

TEST_F(NumbersTest, numbersOfTwoCountriesAreNotTheSameForTheirDigits) {
    // A number of Maine, whose digits are also one of London.
    add({person("Maine", {"2079460018"})});
    EXPECT_EQ(owner("+442079460018"), 0);
    EXPECT_EQ(owner("+12079460018"), 1);
    setHomeRegion("GB");
    EXPECT_EQ(owner("+442079460018"), 1);
    EXPECT_EQ(owner("+12079460018"), 0);
}

TEST_F(NumbersTest, fewDigitsInCommonAreNoLooseMatch) {
    add({person("Short", {"460018"})});
    EXPECT_EQ(owner("+442079460018"), 0);
}

TEST_F(NumbersTest, ofSeveralContactsWithANumberTheFirstIsTaken) {
    add({person("Anna", {"+16508870260"}), person("Ben", {"(650) 887-0260"})});
    EXPECT_EQ(owner("6508870260"), 1);
}

TEST_F(NumbersTest, aChangeOfTheContactsOrTheRegionIsSeenAtOnce) {
    add({person("Anna", {"030 2093 0"})});
    EXPECT_EQ(owner("03020930"), 1);
    EXPECT_EQ(owner("+496912345"), 0);
    add({person("Ben", {"+49 69 12345"})});
    EXPECT_EQ(owner("+496912345"), 2);
    setHomeRegion("DE");
    EXPECT_EQ(owner("069 12345"), 2);
    ASSERT_TRUE(book().write({}, {2}));
    EXPECT_EQ(owner("069 12345"), 0);
}

TEST_F(NumbersTest, theIndexOfAnAddressIsThatOfTheValueItFitsBest) {
    EXPECT_EQ(indexOfAddress({"020 1", "(650) 887-0260", "+16508870260"}, "6508870260"), 1);
    EXPECT_EQ(indexOfAddress({"+1 650 887 0260 ext. 1", "+1 650 887 0260 ext. 2"}, "6508870260 x2"), 1);
    EXPECT_EQ(indexOfAddress({"887-0260", "+1 650 887 0260"}, "6508870260"), 1);
    EXPECT_EQ(indexOfAddress({"887-0260"}, "6508870260"), 0);
    EXPECT_EQ(indexOfAddress({"", "555"}, ""), -1);
    EXPECT_EQ(indexOfAddress({}, "555"), -1);
}

TEST_F(NumbersTest, placesComeInTheUsersLanguage) {
    setHomeRegion("DE");
    EXPECT_EQ(placeOf("030 20930", "de"), "Berlin");
    EXPECT_EQ(placeOf("+16508870260", "en"), "California");
    EXPECT_EQ(placeOf("+442079460018", "zh"), "英国");
    EXPECT_EQ(placeOf("110", "de"), "");
    EXPECT_EQ(placeOf("", "de"), "");
    EXPECT_EQ(placeOf("anna@example.com", "de"), "");
}

TEST_F(NumbersTest, whatIsLongerThanAnyNumberIsNoneAndNothingIsWorkedOutForIt) {
    setHomeRegion("DE");
    const auto before = numbersWorkedOut();
    const std::string endless = "+" + std::string(10'000, '4');
    EXPECT_EQ(formattedNumber(endless), endless);
    EXPECT_EQ(placeOf(endless, "de"), "");
    EXPECT_EQ(keyOf(endless).text, endless);
    EXPECT_FALSE(keyOf(endless).isWhole);
    EXPECT_EQ(numbersWorkedOut(), before);
    add({person("Anna", {endless})});
    EXPECT_EQ(owner(endless), 1);
    EXPECT_EQ(owner("+" + std::string(10'001, '4')), 0);
}

TEST_F(NumbersTest, aNumberOfTwoHundredAndFiftyBytesIsStillOne) {
    setHomeRegion("DE");
    const std::string number = "+49 30 20930";
    EXPECT_EQ(formattedNumber(number + std::string(250 - number.size(), ' ')), "030 20930");
    const std::string longer = number + std::string(251 - number.size(), ' ');
    EXPECT_EQ(formattedNumber(longer), longer);
    // What is dialled later does not belong to the number.
    EXPECT_EQ(keyOf(number + "," + std::string(5'000, '1')).text, "+493020930");
}

TEST_F(NumbersTest, theRegionIsThatOfTheLocale) {
    EXPECT_EQ(regionOf("de_AT"), "AT");
    EXPECT_EQ(regionOf("de"), "DE");
    EXPECT_EQ(regionOf("zh_Hant"), "TW");
    EXPECT_EQ(regionOf(""), "US");
}

}  // namespace
}  // namespace contacts::test

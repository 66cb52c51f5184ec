// QuorvelUtils: dates, addresses, access to the contacts.
#include <fstream>

#include "desktop/quorvel/services/phone_number.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class UtilitiesTest : public CompanionTest {
  protected:
    static objc::Object utilities() { return objc::Object{objc::raw(objc::classNamed<"QuorvelUtils">())}; }
    static std::string formatted(const char* number) {
        return uikit::utf8(objc::send<"getFormattedPhoneNumber:", objc::Object>(utilities(), ns(number)));
    }
    static bool isEmail(const char* text) { return objc::send<"isEmailAddress:", bool>(utilities(), ns(text)); }
};

TEST_F(UtilitiesTest, theSystemIsTheSeventhVersion) {
    EXPECT_FALSE((objc::send<"isPreIOS_4", bool>(utilities())));
    EXPECT_TRUE((objc::send<"isIOS_7_0", bool>(utilities())));
}

TEST_F(UtilitiesTest, thereIsOneDateFormatter) {
    const auto formatter = objc::send<"dateFormatter", objc::Object>(utilities());
    EXPECT_EQ((objc::send<"dateFormatter", objc::Object>(utilities())), formatter);
    objc::send<"setDateFormat:">(formatter, ns("yyyy-MM-dd"));
    const auto date = objc::sendClass<"NSDate", "dateWithTimeIntervalSince1970:", objc::Object>(double{noon});
    EXPECT_EQ(uikit::utf8(objc::send<"stringFromDate:", objc::Object>(formatter, date)), "2024-06-15");
}

TEST_F(UtilitiesTest, numbersReadAsTheirCountryWritesThem) {
    setHomeRegion("US");
    EXPECT_EQ(formatted("6508870260"), "(650) 887-0260");
    EXPECT_EQ(formatted("+16508870260"), "(650) 887-0260");
    EXPECT_EQ(formatted("+442079460018"), "+44 20 7946 0018");
    EXPECT_EQ(formatted("911"), "911");
    EXPECT_EQ(formatted("anna@b.example"), "anna@b.example");
    EXPECT_EQ(formatted(""), "Unknown");
    setHomeRegion("GB");
    EXPECT_EQ(formatted("+442079460018"), "020 7946 0018");
}

TEST_F(UtilitiesTest, anEmailAddressHasOneAtAndADomain) {
    for (const char* good : {"anna@b.example", "a.b+c@d.co.uk", "zoë@straße.example"})
        EXPECT_TRUE(isEmail(good)) << good;
    for (const char* bad : {"", "anna", "@b.example", "anna@", "anna@b", "a@b@c.example", "a b@c.example", "a@.example",
                            "a@b.", "+4930123"})
        EXPECT_FALSE(isEmail(bad)) << bad;
    EXPECT_FALSE((objc::send<"isEmailAddress:", bool>(utilities(), objc::Object{})));
}

TEST_F(UtilitiesTest, theAddressBookIsOpenUnlessItIsDenied) {
    EXPECT_TRUE((objc::send<"canAccessAddressBook", bool>(utilities())));
    std::filesystem::create_directories(directory().contacts());
    std::ofstream(directory().contacts() / "denied") << "";
    EXPECT_FALSE((objc::send<"canAccessAddressBook", bool>(utilities())));
}

}  // namespace
}  // namespace quorvel::test

// QuorvelUtils: dates, addresses, contacts, pictures.
#include <fstream>

#include "desktop/graphics/image.h"
#include "desktop/quorvel/services/contact_pictures.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/services/phone_number.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class UtilitiesTest : public CompanionTest {
  protected:
    ~UtilitiesTest() override { setContactSource({}); }

    static objc::Object utilities() { return objc::Object{objc::raw(objc::classNamed<"QuorvelUtils">())}; }
    static std::string formatted(const char* number) {
        return uikit::utf8(objc::send<"getFormattedPhoneNumber:", objc::Object>(utilities(), ns(number)));
    }
    static bool isEmail(const char* text) { return objc::send<"isEmailAddress:", bool>(utilities(), ns(text)); }
    static objc::Object inMemory(int record) {
        return objc::send<"getContactImageFromCache:", objc::Object>(utilities(), record);
    }
    static objc::Object loaded(int record) { return objc::send<"getContactImage:", objc::Object>(utilities(), record); }
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
    EXPECT_EQ(formatted(""), "");
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

TEST_F(UtilitiesTest, withoutAnAddressBookNobodyIsAContact) {
    EXPECT_EQ((objc::send<"getPersonRecordFromDB:", const void*>(utilities(), 7)), nullptr);
    EXPECT_EQ((objc::send<"getAddressBook", const void*>(utilities())), nullptr);
}

TEST_F(UtilitiesTest, theMatchingValueIsFoundInWhateverSpelling) {
    static const int person = 0;
    setContactSource({[](int) { return &person; },
                      {},
                      [](const void*) {
                          return std::vector<std::string>{"020 1", "(650) 887-0260"};
                      },
                      [](const void*) { return std::vector<std::string>{"Anna@B.example"}; },
                      {},
                      {}});
    setHomeRegion("US");
    const auto entry = objc::make<objc::Object>(objc::classNamed<"QVCallEntry">());
    const auto index = [&](const char* address) {
        objc::send<"setPhoneNumber:">(entry.get(), ns(address));
        const auto* record = static_cast<const void*>(&person);
        return std::pair(
            objc::send<"getHighlitedPhoneNumberPropertyIndex:entry:", long>(utilities(), record, entry.get()),
            objc::send<"getHighlitedEmailPropertyIndex:entry:", long>(utilities(), record, entry.get()));
    };
    EXPECT_EQ(index("+16508870260"), std::pair(1L, -1L));
    EXPECT_EQ(index("anna@b.example"), std::pair(-1L, 0L));
    EXPECT_EQ(index("555"), std::pair(-1L, -1L));
}

TEST_F(UtilitiesTest, aNewContactTakesTheCallsOfItsNumbers) {
    static const int person = 0;
    setContactSource({[](int) { return &person; },
                      {},
                      [](const void*) { return std::vector<std::string>{"(650) 887-0260"}; },
                      {},
                      [](const void*) { return std::string("Anna Weber"); },
                      {}});
    setHomeRegion("US");
    add({{"+16508870260", noon}, {"6508870260", noon + 1}, {"555", noon + 2}});
    objc::send<"updateQuorvelCallsHistory:rowID:">(utilities(), static_cast<const void*>(&person), 12);
    read(9, 0, all);
    EXPECT_EQ(entry(list(all), 0).contact, -1);
    EXPECT_EQ(entry(list(all), 1).contact, 12);
    EXPECT_EQ(entry(list(all), 2).contact, 12);
    EXPECT_EQ(uikit::utf8(entry(list(all), 2).name.load()), "Anna Weber");
}

TEST_F(UtilitiesTest, aPictureIsInMemoryOnceItWasLoaded) {
    std::filesystem::create_directories(directory().contacts());
    ASSERT_EQ(graphics::Image({8, 8}, 1).writePng((directory().contacts() / "7.png").string()), "");
    EXPECT_FALSE(inMemory(7));
    const auto image = loaded(7);
    ASSERT_TRUE(image);
    EXPECT_EQ(inMemory(7), image);
    EXPECT_FALSE(loaded(8));
    std::ofstream(directory().contacts() / "9.png") << "no picture";
    EXPECT_FALSE(loaded(9));
}

TEST_F(UtilitiesTest, memoryHoldsABoundedNumberOfPictures) {
    std::filesystem::create_directories(directory().contacts());
    const graphics::Image image({1, 1}, 1);
    const int number = static_cast<int>(ContactPictures::mostInMemory) + 5;
    for (int record = 1; record <= number; ++record) {
        ASSERT_EQ(image.writePng((directory().contacts() / (std::to_string(record) + ".png")).string()), "");
        ASSERT_TRUE(loaded(record));
        ASSERT_TRUE(inMemory(1));
    }
    EXPECT_EQ(ContactPictures::shared().countInMemory(), ContactPictures::mostInMemory);
    EXPECT_FALSE(inMemory(2));
}

}  // namespace
}  // namespace quorvel::test

// What addresses that are opened ask for.
#include "desktop/phone/opened_address.h"

#include <gtest/gtest.h>

namespace phone {
namespace {

using Kind = OpenedAddress::Kind;

TEST(OpenedAddresses, nameWhomAndHow) {
    EXPECT_EQ(readAddress("tel://+4930123456"), (OpenedAddress{Kind::telephone, "+4930123456"}));
    EXPECT_EQ(readAddress("tel:110"), (OpenedAddress{Kind::telephone, "110"}));
    EXPECT_EQ(readAddress("facetime://anna@example.org"), (OpenedAddress{Kind::faceTime, "anna@example.org"}));
    EXPECT_EQ(readAddress("FaceTime-Audio://0301"), (OpenedAddress{Kind::faceTimeAudio, "0301"}));
    EXPECT_EQ(readAddress("sms:+49170"), (OpenedAddress{Kind::message, "+49170"}));
    EXPECT_EQ(readAddress("mailto:a%40b.org?subject=x"), (OpenedAddress{Kind::mail, "a@b.org"}));
}

TEST(OpenedAddresses, keepWhatIsNoEscapeAsItIs) {
    EXPECT_EQ(readAddress("tel://*100%23"), (OpenedAddress{Kind::telephone, "*100#"}));
    EXPECT_EQ(readAddress("tel://1%zz%4"), (OpenedAddress{Kind::telephone, "1%zz%4"}));
    EXPECT_EQ(readAddress("tel://"), (OpenedAddress{Kind::telephone, ""}));
}

TEST(OpenedAddresses, withNothingToDialReachNobody) {
    for (const char* nobody :
         {"tel://", "tel:", "tel://-", "facetime://", "facetime-audio:", "sms:", "mailto:?subject=x"})
        EXPECT_FALSE(reachesSomebody(nobody)) << nobody;
    for (const char* somebody :
         {"tel://110", "tel://anna@example.org", "tel://*%23", "tel://1-800-FLOWERS", "tel://%D9%A1%D9%A1%D9%A0",
          "facetime://anna@example.org", "sms:+49170", "mailto:a%40b.org", "http://example.org"})
        EXPECT_TRUE(reachesSomebody(somebody)) << somebody;
}

TEST(OpenedAddresses, ofOtherSchemesAreNotForTheTelephone) {
    EXPECT_EQ(readAddress("http://example.org"), std::nullopt);
    EXPECT_EQ(readAddress("tel"), std::nullopt);
    EXPECT_EQ(readAddress(""), std::nullopt);
}

}  // namespace
}  // namespace phone

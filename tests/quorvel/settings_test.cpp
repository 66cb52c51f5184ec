// QVSettingsDataController: what is usual, what a reload brings, the flags.
#include "fixture.h"

namespace quorvel::test {
namespace {

using SettingsTest = CompanionTest;

objc::Object settings() { return objc::sendClass<"QVSettingsDataController", "sharedInstance", objc::Object>(); }
int pageSize() { return objc::send<"intValue", int>(objc::send<"minRec_Call", objc::Object>(settings())); }

TEST_F(SettingsTest, withoutAFileEverythingIsAsUsual) {
    EXPECT_TRUE((objc::send<"isReplaceRecentsOn", bool>(settings())));
    EXPECT_EQ(pageSize(), 50);
    EXPECT_TRUE((objc::send<"isEnableCallSearch", bool>(settings())));
    EXPECT_TRUE((objc::send<"isShowHeader_Call", bool>(settings())));
    EXPECT_TRUE((objc::send<"isShowFooter_Call", bool>(settings())));
    EXPECT_TRUE((objc::send<"isShowContactImage", bool>(settings())));
    EXPECT_FALSE((objc::send<"isCallOnTap_Call", bool>(settings())));
    EXPECT_TRUE((objc::send<"isFaceTimeEnabled", bool>(settings())));
    EXPECT_FALSE((objc::send<"isGroupByDate", bool>(settings())));
    EXPECT_FALSE((objc::send<"isGroupContacts_Call", bool>(settings())));
}

TEST_F(SettingsTest, aChangeIsSeenAfterTheReload) {
    SettingsStore stored(directory().settings());
    ASSERT_EQ(stored.load(), std::nullopt);
    ASSERT_EQ(stored.set("minRec_Call", "20"), std::nullopt);
    ASSERT_EQ(stored.set("isReplaceRecentsOn", "off"), std::nullopt);
    EXPECT_EQ(pageSize(), 50);
    objc::send<"reloadSettings">(settings());
    EXPECT_EQ(pageSize(), 20);
    EXPECT_FALSE((objc::send<"isReplaceRecentsOn", bool>(settings())));
}

TEST_F(SettingsTest, theFlagsAreKeptUntilTheyAreCleared) {
    EXPECT_FALSE((objc::send<"isNeedToLoadData", bool>(settings())));
    objc::send<"setIsNeedToLoadData:">(settings(), true);
    objc::send<"setIsCallSettingsChanged:">(settings(), true);
    objc::send<"reloadSettings">(settings());
    EXPECT_TRUE((objc::send<"isNeedToLoadData", bool>(settings())));
    EXPECT_TRUE((objc::send<"isCallSettingsChanged", bool>(settings())));
    objc::send<"setIsNeedToLoadData:">(settings(), false);
    EXPECT_FALSE((objc::send<"isNeedToLoadData", bool>(settings())));
    EXPECT_TRUE((objc::send<"isCallSettingsChanged", bool>(settings())));
}

}  // namespace
}  // namespace quorvel::test

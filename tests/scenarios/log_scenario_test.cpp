// Where the lines of the Phone's standard error go once the plug-in is loaded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/scenarios/phone_process.h"

namespace {

using scenarios::Handset;
using scenarios::LivePhone;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Has the Phone read settings that are damaged, of which the companion prints a line.
void readDamagedSettings(const Handset& handset, LivePhone& phone) {
    std::ofstream(handset.file("settings.plist")) << "{ this is no property list";
    phone.say("notify QuorvelReloadSettingsReplaceRecents");
}

constexpr const char* damage = "settings.plist are damaged";

TEST(TheLog, holdsEachLineWhileThePhoneStillRuns) {
    const Handset handset;
    LivePhone phone(handset);
    phone.show();
    readDamagedSettings(handset, phone);
    phone.show();
    EXPECT_THAT(contentOf(handset.file("tmp/Quorvel.log")), HasSubstr(damage));
    EXPECT_THAT(phone.finish().errors, IsEmpty());
}

TEST(TheLog, goesOnWhereThePhoneBeforeLeftOff) {
    const Handset handset;
    std::filesystem::create_directory(handset.file("tmp"));
    std::ofstream(handset.file("tmp/Quorvel.log")) << "said before\n";
    LivePhone phone(handset);
    phone.show();
    readDamagedSettings(handset, phone);
    phone.finish();
    EXPECT_THAT(contentOf(handset.file("tmp/Quorvel.log")), StartsWith("said before\n"));
    EXPECT_THAT(contentOf(handset.file("tmp/Quorvel.log")), HasSubstr(damage));
}

TEST(TheLog, belongsToItsHandsetAlone) {
    const Handset handset;
    const Handset other;
    LivePhone phone(handset);
    LivePhone otherPhone(other);
    phone.show();
    otherPhone.show();
    readDamagedSettings(handset, phone);
    phone.finish();
    otherPhone.finish();
    EXPECT_THAT(contentOf(handset.file("tmp/Quorvel.log")), HasSubstr(damage));
    EXPECT_THAT(contentOf(other.file("tmp/Quorvel.log")), IsEmpty());
}

TEST(TheLog, thatCannotBeOpenedLeavesStandardErrorToTheCaller) {
    const Handset handset;
    std::filesystem::create_directories(handset.file("tmp/Quorvel.log"));
    LivePhone phone(handset);
    phone.show();
    readDamagedSettings(handset, phone);
    const auto ended = phone.finish();
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.errors, HasSubstr(damage));
}

}  // namespace

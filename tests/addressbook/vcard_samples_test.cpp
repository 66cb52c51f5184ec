// Files that other programs wrote.
#include <gmock/gmock.h>

#include <filesystem>

#include "vcard_support.h"

namespace vcard::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VCardSamples, everySampleIsReadWithoutAProblem) {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".vcf") continue;
        ++count;
        std::ifstream stream(entry.path(), std::ios::binary);
        const auto outcome = readAll(stream);
        EXPECT_FALSE(outcome.cards.empty()) << entry.path();
        EXPECT_THAT(outcome.problems, IsEmpty()) << entry.path();
    }
    EXPECT_EQ(count, 25);
}

TEST(VCardSamples, anIPhonesPictureIsWholeThoughItsLinesEndTwice) {
    const auto outcome = readSample("ez-vcard/John_Doe_IPHONE.vcf");
    ASSERT_EQ(outcome.cards.size(), 1U);
    EXPECT_EQ(outcome.cards[0].find("PHOTO")->value.size(), 32531U);
    EXPECT_EQ(outcome.cards[0].find("PHOTO")->value.substr(0, 3), "\xFF\xD8\xFF");
}

TEST(VCardSamples, everyCardOfAnAndroidFileIsThere) {
    const auto outcome = readSample("ez-vcard/John_Doe_ANDROID.vcf");
    ASSERT_EQ(outcome.cards.size(), 6U);
    EXPECT_EQ(unescaped(outcome.cards[2].find("FN")->value), "Ñ Ñ Ñ Ñ Ñ ");
    EXPECT_EQ(outcome.cards[3].properties.size(), 9U);
    EXPECT_TRUE(outcome.cards[4].find("PHOTO")->isBinary);
}

TEST(VCardSamples, aSoftLineBreakBeforeABlankLeavesOneBlank) {
    EXPECT_EQ(text(readSample("msgvault/v21-quoted-printable.vcf"), "FN"), "René Dupont");
}

TEST(VCardSamples, labelsStandBesideTheirNumbers) {
    const auto outcome = readSample("msgvault/v3-apple-groups.vcf");
    const Property* phone = outcome.cards[0].find("TEL");
    EXPECT_EQ(phone->group, "item2");
    EXPECT_EQ(phone->value, "+12025550123");
}

TEST(VCardSamples, parametersOfTheLatestVersionAreUnderstood) {
    const auto outcome = readSample("ez-vcard/rfc6350-example.vcf");
    const Property* phone = outcome.cards[0].find("TEL");
    EXPECT_THAT(phone->parameter("TYPE"), ElementsAre("work", "voice"));
    EXPECT_THAT(phone->parameter("PREF"), ElementsAre("1"));
    EXPECT_EQ(phone->value, "tel:+1-418-656-9254;ext=102");
}

TEST(VCardSamples, aColonOutOfPlaceInAParameterSpoilsThePartsBesideItAlone) {
    const auto parts = split(readSample("ez-vcard/issue114.vcf").cards[0].find("ADR")->value, ';');
    ASSERT_EQ(parts.size(), 7U);
    EXPECT_THAT(std::vector(parts.begin() + 2, parts.end()),
                ElementsAre("Dummy-Dummy-Strasse 1", "Bad Homburg", "", "61352", "Germany"));
}

TEST(VCardSamples, aNoteInQuotedPrintableKeepsItsLines) {
    EXPECT_EQ(text(readSample("ez-vcard/outlook-2003.vcf"), "NOTE"),
              "This is the note field!!\nSecond line\n\nThird line is empty\n");
    EXPECT_EQ(text(readSample("ez-vcard/John_Doe_MS_OUTLOOK.vcf"), "LABEL"),
              "Cresent moon drive\nAlbaney, New York  12345");
}

TEST(VCardSamples, picturesOfEveryProgramAreImages) {
    for (const char* name : {"BLACK_BERRY", "IPHONE", "LOTUS_NOTES", "MAC_ADDRESS_BOOK", "MS_OUTLOOK"}) {
        const auto outcome = readSample(std::string("ez-vcard/John_Doe_") + name + ".vcf");
        const Property* photo = outcome.cards[0].find("PHOTO");
        ASSERT_NE(photo, nullptr) << name;
        EXPECT_EQ(photo->value.substr(0, 3), "\xFF\xD8\xFF") << name;
    }
}

}  // namespace
}  // namespace vcard::test

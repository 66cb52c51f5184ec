// The texts: complete in five languages, right plurals, and what happens where a table is missing or damaged.
#include "desktop/quorvel/services/texts.h"

#include <algorithm>
#include <fstream>

#include "desktop/quorvel/services/plural_format.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class TextsTest : public CompanionTest {
  protected:
    static void speak(const char* language) {
        EXPECT_EQ(Texts::shared().open(TEXTS_FOLDER, language), std::vector<std::string>());
    }
    static NSString localized(const char* key) {
        return objc::sendClass<"QuorvelUtils", "getLocalizedString:", NSString>(ns(key));
    }
    static std::string filled(const char* key, std::int64_t number) {
        return uikit::utf8(NSString::stringWithFormat(localized(key), number));
    }
    static std::string filled(const char* key, std::int64_t number, const char* duration) {
        return uikit::utf8(NSString::stringWithFormat(localized(key), number, ns(duration)));
    }
    std::filesystem::path copyOfTexts() const {
        const auto copy = folder() / "texts";
        std::filesystem::copy(TEXTS_FOLDER, copy, std::filesystem::copy_options::recursive);
        return copy;
    }
};

const char* const languages[] = {"en", "de", "es", "ru", "ar"};

/// The conversions of a format, without their places: "lld", "@".
std::vector<std::string> argumentsIn(const std::string& format) {
    std::vector<std::string> found;
    for (std::size_t at = format.find('%'); at != std::string::npos; at = format.find('%', at + 1)) {
        const std::size_t begin = format.find_first_not_of("0123456789$", at + 1);
        if (begin == std::string::npos) break;
        const std::size_t end = std::min(format.find_first_not_of('l', begin), format.size() - 1);
        found.push_back(format.substr(begin, end - begin + 1));
        at = end;
    }
    return found;
}

TEST_F(TextsTest, everyLanguageHasTheSameKeysWithTheSameArguments) {
    std::vector<std::string> trouble;
    const TextTable english = TextTable::read(TEXTS_FOLDER, "en", trouble);
    ASSERT_EQ(english.keys().size(), 47U);
    for (const char* language : languages) {
        const TextTable table = TextTable::read(TEXTS_FOLDER, language, trouble);
        EXPECT_EQ(table.keys(), english.keys()) << language;
        for (const auto& key : table.keys()) {
            const auto text = table.find(key);
            const auto expected = argumentsIn(uikit::utf8(english.find(key)));
            EXPECT_EQ(argumentsIn(uikit::utf8(text)), expected) << language << " " << key;
            EXPECT_FALSE(uikit::utf8(text).empty()) << language << " " << key;
            auto* plural = objc::peerIf<PluralFormat>(text.get());
            EXPECT_EQ(plural != nullptr, !expected.empty() && expected.front() == "ld") << language << " " << key;
            if (!plural) continue;
            for (const auto& [form, format] : plural->texts().byForm) {
                auto arguments = argumentsIn(format);
                // A form that names its number in words leaves the number out.
                if (arguments.empty() || arguments.front() != "ld") arguments.insert(arguments.begin(), "ld");
                EXPECT_EQ(arguments, expected) << language << " " << key << " " << form;
            }
        }
    }
    EXPECT_EQ(trouble, std::vector<std::string>());
}

TEST_F(TextsTest, everyLanguageHasTheFormsThatItsNumbersTake) {
    std::vector<std::string> trouble;
    for (const char* language : languages) {
        const TextTable table = TextTable::read(TEXTS_FOLDER, language, trouble);
        const Counting counting(language);
        for (const auto& key : table.keys()) {
            auto* plural = objc::peerIf<PluralFormat>(table.find(key).get());
            if (!plural) continue;
            for (const std::int64_t number : {0, 1, 2, 3, 5, 11, 21, 100, 1000000})
                EXPECT_TRUE(plural->texts().byForm.contains(counting.form(number))) << language << key << number;
        }
    }
}

TEST_F(TextsTest, callsAreCountedRightInEachLanguage) {
    const std::int64_t numbers[] = {1, 2, 5, 11, 21, 0, 100};
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"en", {"1 call", "2 calls", "5 calls", "11 calls", "21 calls", "0 calls", "100 calls"}},
        {"de", {"1 Anruf", "2 Anrufe", "5 Anrufe", "11 Anrufe", "21 Anrufe", "0 Anrufe", "100 Anrufe"}},
        {"es", {"1 llamada", "2 llamadas", "5 llamadas", "11 llamadas", "21 llamadas", "0 llamadas", "100 llamadas"}},
        {"ru", {"1 звонок", "2 звонка", "5 звонков", "11 звонков", "21 звонок", "0 звонков", "100 звонков"}},
        {"ar", {"مكالمة واحدة", "مكالمتان", "5 مكالمات", "11 مكالمة", "21 مكالمة", "لا مكالمات", "100 مكالمة"}},
    };
    for (const auto& [language, texts] : cases) {
        speak(language);
        for (std::size_t i = 0; i < std::size(numbers); ++i) EXPECT_EQ(filled("CALLS_D", numbers[i]), texts[i]);
    }
}

TEST_F(TextsTest, theArgumentsAfterTheNumberFollowInTheirPlace) {
    speak("en");
    EXPECT_EQ(filled("CALLS_D_D", 2345, "12:33:04"), "2,345 calls, 12:33:04");
    EXPECT_EQ(filled("DAYS_D_D", 1, "0:00:09"), "1 day, 0:00:09");
    EXPECT_EQ(filled("ALL_SHOWING_D", 50), "Showing 50 calls");
    EXPECT_EQ(filled("MSD_SHOWING_D", -1), "Showing -1 missed call");
    speak("ar");
    EXPECT_EQ(filled("CALLS_D_D", 2, "1:00:00"), "مكالمتان، 1:00:00");
    speak("de");
    EXPECT_EQ(filled("CALLS_D_D", 1234567, "1:00:00"), "1.234.567 Anrufe, 1:00:00");
    speak("es");
    EXPECT_EQ(filled("CALLS_D", 1000000), "1.000.000 de llamadas");
}

TEST_F(TextsTest, otherFormatsAreFilledAsBefore) {
    EXPECT_EQ(uikit::utf8(NSString::stringWithFormat(ns("%ld and %@"), 5L, ns("six"))), "5 and six");
    EXPECT_EQ(uikit::utf8(NSString::stringWithFormat(localized("DLD_DEL_ALL_CONTACT_CONFIRM_MSG"), ns("Anna"))),
              "Delete all dialed calls for Anna?");
}

TEST_F(TextsTest, aPluralTextReadsAsItsGeneralForm) {
    EXPECT_EQ(uikit::utf8(localized("CALLS_D")), "%ld calls");
    const auto copy = objc::Strong<>::adopt(objc::send<"copy", objc::Object>(localized("CALLS_D")));
    EXPECT_EQ(copy.self(), localized("CALLS_D").self);
}

TEST_F(TextsTest, aMissingKeyIsAnsweredAsItIsAndSaidOnce) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(uikit::utf8(localized("NO_SUCH_KEY")), "NO_SUCH_KEY");
    EXPECT_EQ(uikit::utf8(localized("NO_SUCH_KEY")), "NO_SUCH_KEY");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "libQuorvel: there is no text for NO_SUCH_KEY\n");
}

TEST_F(TextsTest, anUnknownLanguageSpeaksEnglish) {
    speak("tlh_XX");
    EXPECT_EQ(uikit::utf8(localized("Cancel")), "Cancel");
    EXPECT_EQ(Texts::shared().language(), "en");
}

TEST_F(TextsTest, theRegionOfALanguageIsKept) {
    speak("de_AT");
    EXPECT_EQ(uikit::utf8(localized("Cancel")), "Abbrechen");
    EXPECT_EQ(Texts::shared().language(), "de_AT");
}

TEST_F(TextsTest, aDamagedTableIsNamedLeftAloneAndEnglishShows) {
    const auto texts = copyOfTexts();
    const auto file = texts / "de.lproj" / "Quorvel.strings";
    std::filesystem::resize_file(file, 200);
    const auto trouble = Texts::shared().open(texts, "de");
    ASSERT_EQ(trouble.size(), 1U);
    EXPECT_NE(trouble.front().find("de.lproj/Quorvel.strings"), std::string::npos) << trouble.front();
    EXPECT_EQ(uikit::utf8(localized("Cancel")), "Cancel");
    EXPECT_EQ(filled("CALLS_D", 2), "2 Anrufe");
    EXPECT_EQ(std::filesystem::file_size(file), 200U);
}

TEST_F(TextsTest, aMissingDurationIsLeftOut) {
    for (const char* language : languages) {
        speak(language);
        for (const std::int64_t number : {0, 1, 2, 5, 100}) {
            for (const std::string counted : {"CALLS_D", "DAYS_D", "ENTRIES_D"})
                EXPECT_EQ(
                    uikit::utf8(NSString::stringWithFormat(localized((counted + "_D").c_str()), number, NSString{})),
                    filled(counted.c_str(), number))
                    << language;
        }
    }
}

TEST_F(TextsTest, withoutAnyTableEnglishIsShownAndTheFolderIsNamed) {
    const auto trouble = Texts::shared().open(folder() / "nowhere", "de");
    ASSERT_FALSE(trouble.empty());
    EXPECT_NE(trouble.front().find("nowhere"), std::string::npos) << trouble.front();
    EXPECT_EQ(uikit::utf8(localized("Cancel")), "Cancel");
    EXPECT_EQ(trouble.size(), 1U);
    std::vector<std::string> ignored;
    const TextTable english = TextTable::read(TEXTS_FOLDER, "en", ignored);
    for (const auto& key : english.keys())
        EXPECT_EQ(uikit::utf8(localized(key.c_str())), uikit::utf8(english.find(key))) << key;
    EXPECT_EQ(filled("CALLS_D_D", 2, "0:01:00"), "2 calls, 0:01:00");
}

TEST_F(TextsTest, theSettingsLanguageGoesBeforeTheLocale) {
    std::ofstream(directory().settings()) << "{ language = ru; }";
    closeCompanion();
    ASSERT_EQ(openCompanion(directory(), TEXTS_FOLDER), std::nullopt);
    EXPECT_EQ(uikit::utf8(localized("Cancel")), "Отмена");
}

}  // namespace
}  // namespace quorvel::test

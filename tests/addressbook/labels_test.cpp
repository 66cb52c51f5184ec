// Labels in the log: the same in every language, and in the user's words when they are shown.
#include <gtest/gtest.h>

#include "desktop/addressbook/labels.h"

namespace {

namespace label = contacts::label;

constexpr const char* known[] = {label::home,       label::work,    label::other,      label::mobile,   label::iPhone,
                                 label::mainNumber, label::homeFax, label::workFax,    label::otherFax, label::pager,
                                 label::homePage,   label::spouse,  label::anniversary};
constexpr const char* languages[] = {"en", "de", "es", "ru", "ar"};

TEST(Labels, standInTheLogAsTheirEnglishWordWhateverTheLanguageTheyComeIn) {
    for (const char* each : known) {
        const std::string english = label::forPeople(each, "en");
        EXPECT_EQ(label::inLog(each), english);
        for (const char* language : languages)
            EXPECT_EQ(label::inLog(label::forPeople(each, language)), english) << language;
    }
}

TEST(Labels, ofTheLogAreShownInTheUsersLanguageWhateverTheLanguageTheyWereStoredIn) {
    for (const char* each : known)
        for (const char* stored : languages)
            for (const char* shown : languages)
                EXPECT_EQ(label::ofLog(label::forPeople(each, stored), shown), label::forPeople(each, shown))
                    << each << ' ' << stored << ' ' << shown;
}

TEST(Labels, ofTheUsersOwnStayAsTheyAre) {
    for (const char* own : {"", "Ferienhaus", "mobile 2", "Mobile"}) {
        EXPECT_EQ(label::inLog(own), own);
        EXPECT_EQ(label::ofLog(own, "de"), own);
    }
}

TEST(Labels, thatAreNotKnownLoseTheirMarks) {
    EXPECT_EQ(label::inLog("_$!<Assistant>!$_"), "assistant");
    EXPECT_EQ(label::ofLog("_$!<Assistant>!$_", "de"), "assistant");
}

}  // namespace

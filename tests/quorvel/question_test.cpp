// The questions before a deletion, as people read them in each language.
#include "desktop/quorvel/visual/question.h"

#include "desktop/quorvel/services/texts.h"
#include "desktop/quorvel/visual/call_time.h"
#include "desktop/quorvel/visual/sources.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

class QuestionTest : public CompanionTest {
  protected:
    static std::string text(const std::string& key) {
        return uikit::utf8(objc::sendClass<"QuorvelUtils", "getLocalizedString:", NSString>(ns(key.c_str())));
    }
    /// As the screens fill the format.
    static std::string filled(const std::string& key, NSString argument) {
        return uikit::utf8(NSString::stringWithFormat(
            objc::sendClass<"QuorvelUtils", "getLocalizedString:", NSString>(ns(key.c_str())), argument));
    }
};

const char* const languages[] = {"en", "de", "es", "ru", "ar"};
const char* const filters[] = {"ALL", "DLD", "RCD", "MSD"};
constexpr const char* action = "Delete";

TEST_F(QuestionTest, saysTheDayAsItsRowDoesAndLeavesOutAMissingOne) {
    for (const char* language : languages) {
        ASSERT_TRUE(Texts::shared().open(TEXTS_FOLDER, language).empty());
        const std::string day = dayHeadline("2025-11-18");
        ASSERT_FALSE(day.empty());
        for (const std::string filter : filters) {
            const std::string named = filter + "_DEL_ALL_CONTACT_CONFIRM_MSG";
            const std::string plain = text(filter + "_DEL_ALL_CONFIRM_MSG");
            EXPECT_EQ(questionForPeople(filled(named, {}), action), plain) << language;
            EXPECT_EQ(questionForPeople(filled(named, ns("")), action), plain) << language;
            EXPECT_EQ(questionForPeople(filled(named, ns("2025-11-18")), action), filled(named, ns(day.c_str())))
                << language;
            EXPECT_EQ(questionForPeople(filled(named, ns("Anna Berg")), action), filled(named, ns("Anna Berg")));
            EXPECT_EQ(questionForPeople(plain, action), plain);
        }
    }
}

TEST_F(QuestionTest, isAboutWhatWasFoundWhereTheButtonIs) {
    for (const char* language : languages) {
        ASSERT_TRUE(Texts::shared().open(TEXTS_FOLDER, language).empty());
        const std::string found = text("SEARCHED_DEL_ALL_CONFIRM_MSG");
        const std::string button = text("DEL_ALL_SEARCHED");
        for (const std::string filter : filters) {
            EXPECT_EQ(questionForPeople(text(filter + "_DEL_ALL_CONFIRM_MSG"), button), found) << language;
            EXPECT_EQ(questionForPeople(filled(filter + "_DEL_ALL_CONTACT_CONFIRM_MSG", {}), button), found);
        }
    }
}

TEST_F(QuestionTest, ofAnybodyElseIsLeftAsItIs) {
    for (const char* other : {"", "(null)", "2025-11-18", "Delete the backup of 2025-11-18?"})
        EXPECT_EQ(questionForPeople(other, text("DEL_ALL_SEARCHED")), other);
    // No day of the calendar: whatever it is, it stays.
    const std::string noDay = filled("ALL_DEL_ALL_CONTACT_CONFIRM_MSG", ns("2025-13-41"));
    EXPECT_EQ(questionForPeople(noDay, action), noDay);
}

}  // namespace
}  // namespace quorvel::test

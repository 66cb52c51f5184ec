// Labels of calls follow the language of the product, whichever it was when they were stored.
#include <gmock/gmock.h>

#include "desktop/addressbook/book.h"
#include "desktop/addressbook/call_links.h"
#include "desktop/addressbook/names.h"
#include "desktop/dispatch/main_loop.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

using contacts::Book;
using contacts::Contact;
using contacts::Property;
using testing::ElementsAre;

class LabelsTest : public CompanionTest {
  protected:
    ~LabelsTest() override { settle(); }

    static void settle() {
        const double deadline = dispatch::steadyNow() + 60;
        while (!dispatch::idle() && dispatch::steadyNow() < deadline) {
            dispatch::waitForWork(deadline);
            dispatch::drainMainQueue();
        }
    }
    /// Starts the companion again in that language, as another start of the Phone does.
    void startIn(const char* language) {
        settle();
        closeCompanion();
        setSetting("language", language);
        ASSERT_EQ(openCompanion(directory(), TEXTS_FOLDER), std::nullopt);
        settle();
    }
    static void saveAnna() {
        Contact anna;
        anna.setText(Property::firstName, "Anna");
        anna.lists[Property::phone].push_back({0, "_$!<Mobile>!$_", "+4930100", {}});
        ASSERT_TRUE(Book::shared().write({anna}));
    }
    static void addCall(const char* address, const char* name, const char* label) {
        store::NewCall call;
        call.address = address;
        call.date = noon;
        call.name = name;
        call.label = label;
        ASSERT_TRUE(callStore()->append(call));
    }
    static std::vector<std::string> shown() {
        const auto records =
            objc::send<"getSearchedRecordsFromDB:searchString:date:", NSArray>(object(), all, ns(""), objc::Object{});
        std::vector<std::string> labels;
        for (unsigned long i = 0; i < records.count(); ++i)
            labels.push_back(uikit::utf8(objc::send<"phoneLabel", objc::Object>(records.objectAtIndex(i))));
        return labels;
    }
    static std::vector<std::string> stored() {
        std::vector<std::string> labels;
        const auto page = callStore()->page(store::Filter::all, {}, store::Cursor::top(), 100);
        for (const auto& call : (*page).rows) labels.push_back(call.label);
        return labels;
    }
};

TEST_F(LabelsTest, ofACallAreShownInTheLanguageOfTheStart) {
    saveAnna();
    startIn("ru");
    store::NewCall call;
    call.address = "+4930100";
    call.date = noon;
    ASSERT_TRUE(recordCall(call));
    EXPECT_THAT(shown(), ElementsAre("сотовый"));
    EXPECT_THAT(stored(), ElementsAre("mobile"));
    startIn("de");
    EXPECT_THAT(shown(), ElementsAre("Mobil"));
    startIn("en");
    EXPECT_THAT(shown(), ElementsAre("mobile"));
}

TEST_F(LabelsTest, thatAFormerVersionStoredInAnotherLanguageAreUnderstood) {
    addCall("+4930100", "Anna", "сотовый");
    addCall("+4930101", "Bea", "Fax (Arbeit)");
    addCall("+4930102", "Cem", "Ferienhaus");
    startIn("es");
    EXPECT_THAT(shown(), ElementsAre("Ferienhaus", "fax del trabajo", "móvil"));
}

TEST_F(LabelsTest, ofLinkedCallsComeRightInTheLogToo) {
    saveAnna();
    addCall("+4930100", "Anna", "сотовый");
    startIn("ru");
    ASSERT_EQ(contacts::linkCalls(*callStore()), std::nullopt);
    EXPECT_THAT(stored(), ElementsAre("mobile"));
}

}  // namespace
}  // namespace quorvel::test

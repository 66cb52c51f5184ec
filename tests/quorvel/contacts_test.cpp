// Whom the companion knows calls from: persons, highlighted values, links, pictures, access.
#include <gmock/gmock.h>

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "desktop/addressbook/address_book.h"
#include "desktop/addressbook/book.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/dispatch/main_loop.h"
#include "desktop/graphics/image.h"
#include "desktop/quorvel/services/contact_pictures.h"
#include "desktop/quorvel/services/contact_source.h"
#include "desktop/quorvel/store/import_session.h"
#include "fixture.h"

namespace quorvel::test {
namespace {

using contacts::Book;
using contacts::Contact;
using contacts::Property;

class ContactsTest : public CompanionTest {
  protected:
    ContactsTest() { contacts::setHomeRegion("US"); }
    ~ContactsTest() override { settle(); }

    static objc::Object utilities() { return objc::Object{objc::raw(objc::classNamed<"QuorvelUtils">())}; }
    static const void* person(int record) {
        return objc::send<"getPersonRecordFromDB:", const void*>(utilities(), record);
    }
    static objc::Object inMemory(int record) {
        return objc::send<"getContactImageFromCache:", objc::Object>(utilities(), record);
    }
    static objc::Object loaded(int record) { return objc::send<"getContactImage:", objc::Object>(utilities(), record); }

    static Contact contact(const char* name, const std::vector<std::string>& numbers, const char* email = "") {
        Contact made;
        made.setText(Property::firstName, name);
        for (const auto& number : numbers)
            made.lists[Property::phone].push_back(
                {static_cast<int>(made.lists[Property::phone].size()), "_$!<Mobile>!$_", number, {}});
        if (*email) made.lists[Property::email].push_back({0, "", email, {}});
        return made;
    }
    static std::vector<int> save(const std::vector<Contact>& contacts) {
        const auto written = Book::shared().write(contacts);
        if (!written) throw std::runtime_error(written.error().message);
        return *written;
    }
    /// Waits until nothing is left to do on any queue.
    static void settle() {
        const double deadline = dispatch::steadyNow() + 60;
        while (!dispatch::idle() && dispatch::steadyNow() < deadline) {
            dispatch::waitForWork(deadline);
            dispatch::drainMainQueue();
        }
        EXPECT_TRUE(dispatch::idle());
    }
    /// "contact name label" of the calls, newest first.
    static std::vector<std::string> links() {
        std::vector<std::string> all;
        const auto page = callStore()->page(store::Filter::all, {}, store::Cursor::top(), 100);
        for (const auto& call : (*page).rows)
            all.push_back(std::to_string(call.contactId) + ' ' + call.name + ' ' + call.label);
        return all;
    }
    static std::string picture(int side) {
        const auto file = std::filesystem::temp_directory_path() / ("picture-" + std::to_string(getpid()) + ".png");
        EXPECT_EQ(graphics::Image({double(side), double(side)}, 1).writePng(file.string()), "");
        std::ifstream stream(file, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        std::filesystem::remove(file);
        return bytes;
    }
};

TEST_F(ContactsTest, aNameThatIsLongerThanTheLogKeepsIsCutThereAndTheOthersAreLinkedToo) {
    add({{"+16508870260", noon}, {"+16508870261", noon + 1}});
    std::string endless = "x";
    while (endless.size() < 200'000) endless += "\u00E4";
    save({contact(endless.c_str(), {"+16508870260"}), contact("Ben", {"+16508870261"})});
    settle();
    const auto found = links();
    EXPECT_EQ(found[0], "2 Ben mobile");
    EXPECT_EQ(found[1], "1 " + endless.substr(0, 9'999) + " mobile");
    EXPECT_EQ(Book::shared().contact(1)->text(Property::firstName), endless);
}

TEST_F(ContactsTest, aPersonIsTheSameEachTimeUntilItIsDeleted) {
    save({contact("Anna", {"1"})});
    const void* anna = person(1);
    ASSERT_NE(anna, nullptr);
    EXPECT_EQ(person(1), anna);
    EXPECT_EQ(ABRecordGetRecordID(anna), 1);
    EXPECT_EQ(ABAddressBookGetPersonWithRecordID(objc::send<"getAddressBook", const void*>(utilities()), 1), anna);
    for (const int nobody : {2, 0, -1}) EXPECT_EQ(person(nobody), nullptr) << nobody;
    ASSERT_TRUE(Book::shared().write({}, {1}));
    EXPECT_EQ(person(1), nullptr);
}

TEST_F(ContactsTest, whileAccessIsDeniedThereIsNoBookAndNobody) {
    save({contact("Anna", {"(650) 887-0260"})});
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    EXPECT_FALSE((objc::send<"canAccessAddressBook", bool>(utilities())));
    EXPECT_EQ((objc::send<"getAddressBook", const void*>(utilities())), nullptr);
    EXPECT_EQ(person(1), nullptr);
    EXPECT_FALSE(callerOf("+16508870260"));
    ASSERT_EQ(Book::shared().setAllowed(true), std::nullopt);
    EXPECT_NE(person(1), nullptr);
    EXPECT_TRUE(callerOf("+16508870260"));
}

TEST_F(ContactsTest, theMatchingValueIsFoundInWhateverSpelling) {
    save({contact("Anna", {"020 1", "(650) 887-0260"}, "Anna@B.example")});
    const auto entry = objc::make<objc::Object>(objc::classNamed<"QVCallEntry">());
    const auto index = [&](const char* address) {
        objc::send<"setPhoneNumber:">(entry.get(), ns(address));
        return std::pair(
            objc::send<"getHighlitedPhoneNumberPropertyIndex:entry:", long>(utilities(), person(1), entry.get()),
            objc::send<"getHighlitedEmailPropertyIndex:entry:", long>(utilities(), person(1), entry.get()));
    };
    EXPECT_EQ(index("+16508870260"), std::pair(1L, -1L));
    EXPECT_EQ(index("anna@b.example"), std::pair(-1L, 0L));
    EXPECT_EQ(index("555"), std::pair(-1L, -1L));
    EXPECT_EQ(index(""), std::pair(-1L, -1L));
}

TEST_F(ContactsTest, aNewContactTakesTheCallsOfItsNumbers) {
    add({{"+16508870260", noon}, {"6508870260", noon + 1}, {"555", noon + 2}});
    const auto records = save({contact("Anna Weber", {"(650) 887-0260"})});
    objc::send<"updateQuorvelCallsHistory:rowID:">(utilities(), person(records[0]), records[0]);
    EXPECT_THAT(links(), testing::ElementsAre("-1  ", "1 Anna Weber mobile", "1 Anna Weber mobile"));
}

TEST_F(ContactsTest, aNewContactTakesTheCallsOfAllItsAddressesInOneTransaction) {
    add({{"+16508870260", noon}, {"anna@b.example", noon + 1}});
    const auto records = save({contact("Anna", {"(650) 887-0260"}, "anna@b.example")});
    settle();
    // As they were before the contact was there.
    ASSERT_TRUE(callStore()->link("+16508870260", store::noContact, "", ""));
    ASSERT_TRUE(callStore()->link("anna@b.example", store::noContact, "", ""));
    const auto before = callStore()->revision().valueOr(0);
    EXPECT_EQ(linkCallsOf(*callStore(), records[0]), std::nullopt);
    EXPECT_EQ(callStore()->revision().valueOr(0), before + 1);
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna ", "1 Anna mobile"));
}

TEST_F(ContactsTest, theMainThreadReadsOnWhileLinkingWaitsForAnotherProgram) {
    add({{"+16508870260", noon}});
    // A program that is in the middle of a change.
    auto other = store::CallStore::open(directory().calls());
    ASSERT_TRUE(other);
    auto change = (*other).beginImport();
    ASSERT_TRUE(change);
    const auto records = save({contact("Anna", {"(650) 887-0260"})});
    std::atomic<bool> isLinked{false};
    std::thread background([&] {
        const dispatch::AutoreleaseScope scope;
        const objc::AutoreleasePool pool;
        objc::send<"updateQuorvelCallsHistory:rowID:">(utilities(), person(records[0]), records[0]);
        isLinked = true;
    });
    EXPECT_THAT(links(), testing::ElementsAre("-1  "));
    EXPECT_EQ(callStore()->query("select ROWID from call").size(), 1U);
    EXPECT_NE(person(records[0]), nullptr);
    EXPECT_TRUE(callerOf("+16508870260"));
    EXPECT_FALSE(isLinked);
    ASSERT_TRUE((*change).finish());
    background.join();
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna mobile"));
}

TEST_F(ContactsTest, withoutAPersonNoCallIsLinked) {
    add({{"555", noon}});
    objc::send<"updateQuorvelCallsHistory:rowID:">(utilities(), static_cast<const void*>(nullptr), -1);
    EXPECT_THAT(links(), testing::ElementsAre("-1  "));
}

TEST_F(ContactsTest, callsFollowTheirContactsInTheBackground) {
    add({{"+16508870260", noon}, {"anna@b.example", noon + 1}, {"", noon + 2}});
    save({contact("Anna", {"(650) 887-0260"}, "ANNA@b.example")});
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("-1  ", "1 Anna ", "1 Anna mobile"));
    EXPECT_TRUE(SettingsService::shared()->isNeedToLoadData());
    Contact renamed = contact("Anne", {"(650) 887-0260"});
    renamed.record = 1;
    save({renamed});
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("-1  ", "-1  ", "1 Anne mobile"));
    ASSERT_TRUE(Book::shared().write({}, {1}));
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("-1  ", "-1  ", "-1  "));
}

TEST_F(ContactsTest, callsOfContactsThatTheBookNeverHadKeepTheirName) {
    add({{"+16508870260", noon, 30, 4, 40, "From elsewhere"}});
    save({contact("Ben", {"1"})});
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("40 From elsewhere "));
}

TEST_F(ContactsTest, whatChangedWhileThePhoneWasOffIsSeenWhenItOpens) {
    add({{"+16508870260", noon}});
    closeCompanion();
    ASSERT_EQ(Book::shared().open(directory().contacts()), std::nullopt);
    save({contact("Anna", {"(650) 887-0260"})});
    Book::shared().close();
    ASSERT_EQ(openCompanion(directory(), TEXTS_FOLDER), std::nullopt);
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna mobile"));
}

TEST_F(ContactsTest, aChangeOfTheRegionLinksAnew) {
    add({{"+493020930", noon}});
    save({contact("Anna", {"030 2093 0"}), contact("Ben", {"03020930"})});
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("-1  "));
    setSetting("region", "DE");
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna mobile"));
}

TEST_F(ContactsTest, aCallThatIsRecordedNamesItsContact) {
    save({contact("Anna", {"(650) 887-0260"})});
    settle();
    store::NewCall call;
    call.address = "+16508870260";
    call.date = noon;
    ASSERT_TRUE(recordCall(call));
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna mobile"));
    settle();
}

TEST_F(ContactsTest, aPictureIsInMemoryOnceItWasLoadedUntilContactsChange) {
    Contact pictured = contact("Anna", {"1"});
    pictured.picture = picture(8);
    Contact bad = contact("Ben", {"2"});
    bad.picture = "no picture";
    save({pictured, bad});
    EXPECT_FALSE(inMemory(1));
    const auto image = loaded(1);
    ASSERT_TRUE(image);
    EXPECT_EQ(inMemory(1), image);
    EXPECT_EQ(loaded(1), image);
    EXPECT_FALSE(loaded(2));
    EXPECT_FALSE(loaded(3));
    save({contact("Carl", {"3"})});
    EXPECT_FALSE(inMemory(1));
    EXPECT_TRUE(loaded(1));
    ASSERT_EQ(Book::shared().setAllowed(false), std::nullopt);
    EXPECT_FALSE(inMemory(1));
    EXPECT_FALSE(loaded(1));
}

TEST_F(ContactsTest, memoryHoldsABoundedNumberOfPictures) {
    const int number = static_cast<int>(ContactPictures::mostInMemory) + 5;
    Contact pictured = contact("Anna", {});
    pictured.picture = picture(1);
    save(std::vector<Contact>(static_cast<std::size_t>(number), pictured));
    for (int record = 1; record <= number; ++record) {
        ASSERT_TRUE(loaded(record));
        ASSERT_TRUE(inMemory(1));
    }
    EXPECT_EQ(ContactPictures::shared().countInMemory(), ContactPictures::mostInMemory);
    EXPECT_FALSE(inMemory(2));
}

TEST_F(ContactsTest, personsCallersAndPicturesAreAskedForWhileContactsChange) {
    add({{"+16508870260", noon}});
    save({contact("Anna", {"(650) 887-0260"})});
    std::atomic<bool> isDone{false};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            const dispatch::AutoreleaseScope scope;
            while (!isDone) {
                const objc::AutoreleasePool pool;
                EXPECT_NE(person(1), nullptr);
                EXPECT_TRUE(callerOf("6508870260"));
                EXPECT_EQ(numbersOf(person(1)).size(), 1U);
                loaded(1);
            }
        });
    }
    for (int i = 0; i < 20; ++i) {
        Contact changed = contact(("Anna " + std::to_string(i)).c_str(), {"(650) 887-0260"});
        changed.record = 1;
        save({changed});
    }
    isDone = true;
    for (auto& reader : readers) reader.join();
    settle();
    EXPECT_THAT(links(), testing::ElementsAre("1 Anna 19 mobile"));
}

}  // namespace
}  // namespace quorvel::test

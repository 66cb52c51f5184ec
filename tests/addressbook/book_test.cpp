// The contacts on disk and in memory.
#include <gmock/gmock.h>

#include <sqlite3.h>

#include <fstream>

#include "fixture.h"

namespace contacts::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string image = std::string("\xFF\xD8\xFF\xE0\0\0picture", 13);

/// A contact with something of everything.
Contact everything() {
    Contact contact;
    contact.setText(Property::firstName, "Zoë");
    contact.setText(Property::lastName, "O'Hara; \"x\"");
    contact.setText(Property::birthday, "--02-29");
    contact.setText(Property::note, "two\nlines");
    contact.lists[Property::phone] = {{0, "_$!<Mobile>!$_", "+1 650 887 0260", {}}, {4, "Boot", "110", {}}};
    contact.lists[Property::email] = {{0, "", "zoe@example.com", {}}};
    contact.lists[Property::address] = {{1, "_$!<Home>!$_", "", {{"City", "Köln"}, {"Street", "A 1\nB"}}},
                                        {2, "_$!<Work>!$_", "", {{"City", "Bonn"}}}};
    contact.others = {"X-ONE:1", "other-item1.X-TWO:2"};
    return contact;
}

TEST_F(BookTest, whatIsWrittenIsThereAfterOpeningAgain) {
    Contact contact = everything();
    contact.picture = image;
    ASSERT_THAT(add({contact, person("Ben")}), ElementsAre(1, 2));
    ASSERT_EQ(book().open(folder()), std::nullopt);
    auto read = book().contact(1);
    ASSERT_TRUE(read);
    EXPECT_GT(read->created, 0);
    EXPECT_EQ(read->created, read->modified);
    read->created = read->modified = 0;
    Contact expected = everything();
    expected.record = 1;
    EXPECT_EQ(*read, expected);
    EXPECT_EQ(book().picture(1), image);
    EXPECT_EQ(book().picture(2), std::nullopt);
    EXPECT_EQ(book().all()->size(), 2U);
}

TEST_F(BookTest, aContactIsReplacedWholeAndItsPictureKept) {
    Contact contact = everything();
    contact.picture = image;
    add({contact});
    Contact changed = person("Zoe", {"1"});
    changed.record = 1;
    EXPECT_THAT(add({changed}), ElementsAre(1));
    EXPECT_EQ(book().contact(1)->lists, changed.lists);
    EXPECT_EQ(book().contact(1)->texts, changed.texts);
    EXPECT_THAT(book().contact(1)->others, IsEmpty());
    EXPECT_EQ(book().picture(1), image);
    changed.picture = "";
    add({changed});
    EXPECT_EQ(book().picture(1), std::nullopt);
}

TEST_F(BookTest, aRecordIsNeverGivenAgain) {
    add({person("Anna"), person("Ben")});
    ASSERT_TRUE(book().write({}, {2}));
    EXPECT_EQ(book().contact(2), std::nullopt);
    EXPECT_EQ(book().newestRecord(), 2);
    EXPECT_THAT(add({person("Carl")}), ElementsAre(3));
}

TEST_F(BookTest, aChangeIsWholeOrDoesNotHappen) {
    add({person("Anna")});
    Contact gone = person("Ben");
    gone.record = 7;
    const auto written = book().write({person("Carl"), gone}, {1});
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().message,
              "The contact has been deleted by another program. Add it anew to keep it; nothing was changed.");
    EXPECT_EQ(book().all()->size(), 1U);
    EXPECT_EQ(compositeName(book().all()->front()), "Anna");
}

TEST_F(BookTest, aListThatWasReadStaysAsItWas) {
    add({person("Anna")});
    const auto before = book().all();
    add({person("Ben")});
    EXPECT_EQ(before->size(), 1U);
    EXPECT_EQ(book().all()->size(), 2U);
}

TEST_F(BookTest, aDamagedFileIsSetAsideAndKept) {
    book().close();
    std::ofstream(file(), std::ios::binary | std::ios::trunc)
        << "no database at all, but long enough to be one of them";
    const auto story = book().open(folder());
    ASSERT_TRUE(story);
    EXPECT_THAT(*story, HasSubstr("contacts.db.damaged-1, and new contacts were begun."));
    EXPECT_TRUE(book().isOpen());
    EXPECT_THAT(*book().all(), IsEmpty());
    EXPECT_THAT(add({person("Anna")}), ElementsAre(1));
    EXPECT_TRUE(std::filesystem::exists(file().string() + ".damaged-1"));
}

TEST_F(BookTest, aFileWhoseTablesAreTornIsSetAside) {
    add({everything()});
    book().close();
    std::fstream torn(file(), std::ios::binary | std::ios::in | std::ios::out);
    torn.seekp(100);
    torn << std::string(4000, '\xAA');
    torn.close();
    const auto story = book().open(folder());
    ASSERT_TRUE(story);
    EXPECT_TRUE(book().isOpen());
    EXPECT_TRUE(std::filesystem::exists(file().string() + ".damaged-1"));
}

TEST_F(BookTest, aFileOfAnotherProgramIsLeftAsItIs) {
    book().close();
    {
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open((folder() / "other.db").c_str(), &other), SQLITE_OK);
        sqlite3_exec(other, "create table mine (x); pragma application_id = 5", nullptr, nullptr, nullptr);
        sqlite3_close(other);
    }
    std::filesystem::rename(folder() / "other.db", file());
    const auto story = book().open(folder());
    ASSERT_TRUE(story);
    EXPECT_THAT(*story, HasSubstr("is a database of another program"));
    EXPECT_FALSE(book().isOpen());
    EXPECT_FALSE(book().write({person("Anna")}));
    EXPECT_FALSE(std::filesystem::exists(file().string() + ".damaged-1"));
}

TEST_F(BookTest, aFileOfALaterVersionIsLeftAsItIs) {
    book().close();
    sqlite3* later = nullptr;
    ASSERT_EQ(sqlite3_open(file().c_str(), &later), SQLITE_OK);
    sqlite3_exec(later, "pragma user_version = 9", nullptr, nullptr, nullptr);
    sqlite3_close(later);
    const auto story = book().open(folder());
    ASSERT_TRUE(story);
    EXPECT_THAT(*story, HasSubstr("was written by a later version of this program (format 9, this one reads 1)"));
    EXPECT_FALSE(book().isOpen());
}

TEST_F(BookTest, whereNothingIsOpenNothingIsThereAndWritingFails) {
    book().close();
    EXPECT_THAT(*book().all(), IsEmpty());
    EXPECT_EQ(owner("+16508870260"), 0);
    EXPECT_EQ(book().picture(1), std::nullopt);
    EXPECT_FALSE(book().write({person("Anna")}));
    EXPECT_TRUE(book().setAllowed(false));
}

TEST_F(BookTest, changesByAnotherProcessAreSeenAndTold) {
    static int told = 0;
    static const bool isObserving = (book().observe([] { ++told; }), true);
    ASSERT_TRUE(isObserving);
    add({person("Anna")});
    EXPECT_EQ(std::exchange(told, 0), 1);
    book().refresh();
    EXPECT_EQ(told, 0);
    auto other = ContactDatabase::open(file());
    ASSERT_TRUE(other);
    ASSERT_TRUE(other->write({person("Ben")}, {}, 1));
    EXPECT_EQ(book().all()->size(), 1U);
    book().refresh();
    EXPECT_EQ(book().all()->size(), 2U);
    EXPECT_EQ(std::exchange(told, 0), 1);
}

TEST_F(BookTest, accessIsDeniedUntilItIsAllowedAgain) {
    EXPECT_TRUE(book().isAllowed());
    EXPECT_EQ(book().setAllowed(false), std::nullopt);
    EXPECT_FALSE(book().isAllowed());
    ASSERT_EQ(book().open(folder()), std::nullopt);
    EXPECT_FALSE(book().isAllowed());
    EXPECT_EQ(book().setAllowed(true), std::nullopt);
    EXPECT_EQ(book().setAllowed(true), std::nullopt);
    EXPECT_TRUE(book().isAllowed());
}

TEST_F(BookTest, blockedNumbersAreBlockedInEverySpelling) {
    ASSERT_TRUE(book().setBlocked("(650) 887-0260", true));
    ASSERT_TRUE(book().setBlocked("+1 650 8870260", true));
    ASSERT_TRUE(book().setBlocked("Anna@Example.com", true));
    ASSERT_EQ(book().open(folder()), std::nullopt);
    EXPECT_TRUE(book().isBlocked("+16508870260"));
    EXPECT_TRUE(book().isBlocked("anna@example.com"));
    EXPECT_FALSE(book().isBlocked("+16508870261"));
    EXPECT_FALSE(book().isBlocked(""));
    ASSERT_TRUE(book().setBlocked("16508870260", false));
    EXPECT_FALSE(book().isBlocked("(650) 887-0260"));
    EXPECT_FALSE(book().setBlocked("", true));
}

TEST_F(BookTest, favouritesKeepTheirOrderAndGoWithTheirContact) {
    add({person("Anna"), person("Ben")});
    const Favourite ben{2, "2"};
    const Favourite anna{1, "1"};
    ASSERT_TRUE(book().setFavourite(ben, true));
    ASSERT_TRUE(book().setFavourite(anna, true));
    EXPECT_THAT(book().favourites(), ElementsAre(ben, anna));
    ASSERT_TRUE(book().write({}, {2}));
    EXPECT_THAT(book().favourites(), ElementsAre(anna));
    ASSERT_TRUE(book().setFavourite(anna, false));
    EXPECT_THAT(book().favourites(), IsEmpty());
}

TEST(CompositeName, isTheFirstThatTheContactHas) {
    Contact contact;
    EXPECT_EQ(compositeName(contact), "");
    contact.lists[Property::phone] = {{0, "", "+1", {}}};
    EXPECT_EQ(compositeName(contact), "+1");
    contact.lists[Property::email] = {{0, "", "a@b.example", {}}};
    EXPECT_EQ(compositeName(contact), "a@b.example");
    contact.setText(Property::nickname, "Nick");
    EXPECT_EQ(compositeName(contact), "Nick");
    contact.setText(Property::organization, "Firm");
    EXPECT_EQ(compositeName(contact), "Firm");
    contact.setText(Property::lastName, "Doe");
    contact.setText(Property::prefix, "Dr.");
    contact.setText(Property::firstName, "Jo");
    EXPECT_EQ(compositeName(contact), "Dr. Jo Doe");
}

}  // namespace
}  // namespace contacts::test

// Contacts out of files: what is added, what is there already, what is refused.
#include "tools/contacts/contacts_import.h"

#include <gmock/gmock.h>

#include <fstream>

#include "desktop/addressbook/call_links.h"
#include "fixture.h"

namespace contacts::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ContactsImportTest : public BookTest {
  protected:
    std::filesystem::path write(const char* name, const std::string& text) const {
        std::ofstream(folder() / name, std::ios::binary) << text;
        return folder() / name;
    }
    quorvel::store::Result<tools::ContactImport> import(const std::vector<std::filesystem::path>& files) {
        told_.clear();
        return tools::importContacts(files, "windows-1252", [this](const std::string& line) { told_.push_back(line); });
    }
    const std::vector<std::string>& told() const { return told_; }

  private:
    std::vector<std::string> told_;
};

const std::string anna = "BEGIN:VCARD\nFN:Anna\nTEL:+16508870260\nEND:VCARD\n";
const std::string picture = "PHOTO;ENCODING=b;TYPE=JPEG:/9j/QUJD\n";

TEST_F(ContactsImportTest, aFileImportedTwiceAddsNothingTheSecondTime) {
    const auto file = write("a.vcf", anna + anna + "BEGIN:VCARD\nFN:Ben\n" + picture + "END:VCARD\n");
    auto done = import({file});
    ASSERT_TRUE(done);
    EXPECT_EQ(done->added, 2U);
    EXPECT_EQ(done->unchanged, 1U);
    done = import({file, file});
    EXPECT_EQ(done->added, 0U);
    EXPECT_EQ(done->unchanged, 6U);
    EXPECT_EQ(book().all()->size(), 2U);
    EXPECT_EQ(book().picture(2),
              "\xFF\xD8\xFF"
              "ABC");
}

TEST_F(ContactsImportTest, aContactOfTheSameIdentityTakesOverWhatItsCardSays) {
    ASSERT_TRUE(import({write("a.vcf", "BEGIN:VCARD\nUID:7\nFN:Anna\n" + picture + "END:VCARD\n")}));
    const auto done = import({write("b.vcf", "BEGIN:VCARD\nUID:7\nFN:Anne\nEND:VCARD\n")});
    ASSERT_TRUE(done);
    EXPECT_EQ(done->updated, 1U);
    EXPECT_EQ(done->added, 0U);
    ASSERT_EQ(book().all()->size(), 1U);
    EXPECT_EQ(compositeName(book().all()->front()), "Anne");
    EXPECT_TRUE(book().picture(1));
}

TEST_F(ContactsImportTest, whereOneFileCannotBeReadNothingIsChanged) {
    const auto good = write("a.vcf", anna);
    const auto missing = import({good, folder() / "missing.vcf"});
    ASSERT_FALSE(missing);
    EXPECT_THAT(missing.error().message, HasSubstr("missing.vcf cannot be read: No such file or directory."));
    EXPECT_THAT(import({good, write("b.txt", "hello\n")}).error().message,
                HasSubstr("b.txt holds no vCard. Nothing was changed."));
    EXPECT_THAT(import({folder()}).error().message, HasSubstr("is a folder. Name the vCard files in it."));
    EXPECT_THAT(*book().all(), IsEmpty());
}

TEST_F(ContactsImportTest, whatIsWrongInAFileIsToldByItsPlaceAndTheRestImported) {
    const auto file = write("a.vcf", "BEGIN:VCARD\nnonsense\nFN:Anna\nEND:VCARD\nBEGIN:VCARD\nFN:Ben\n");
    const auto done = import({file});
    ASSERT_TRUE(done);
    EXPECT_EQ(done->added, 2U);
    EXPECT_EQ(done->problems, 2U);
    EXPECT_THAT(told(), ElementsAre(file.string() + ":2:1: the line has no colon and is passed over",
                                    file.string() + ":5:1: the card is cut off: END:VCARD is missing"));
}

TEST_F(ContactsImportTest, ofManyProblemsTheFirstAreToldAndTheOthersCounted) {
    std::string lines;
    for (int i = 0; i < 30; ++i) lines += "nonsense\n";
    ASSERT_TRUE(import({write("a.vcf", "BEGIN:VCARD\n" + lines + "FN:Anna\nEND:VCARD\n")}));
    ASSERT_EQ(told().size(), 21U);
    EXPECT_THAT(told().back(), HasSubstr(": 10 more of the kind"));
}

TEST_F(ContactsImportTest, callsAndEmptyCardsAreCountedAndLeftOut) {
    const auto done = import({write("a.vcf",
                                    "BEGIN:VCARD\nTEL:1\nX-IRMC-CALL-DATETIME;DIALED:20220913T110607\nEND:VCARD\n"
                                    "BEGIN:VCARD\nVERSION:2.1\nN:;;;;\nEND:VCARD\n")});
    ASSERT_TRUE(done);
    EXPECT_EQ(done->calls, 1U);
    EXPECT_EQ(done->empty, 1U);
    EXPECT_THAT(*book().all(), IsEmpty());
}

TEST_F(ContactsImportTest, callsTakeTheNamesOfImportedContacts) {
    auto calls = quorvel::store::CallStore::open(folder() / "calls.db");
    ASSERT_TRUE(calls);
    quorvel::store::NewCall call;
    call.address = "6508870260";
    ASSERT_TRUE(calls->append(call));
    ASSERT_TRUE(import({write("a.vcf", anna)}));
    EXPECT_EQ(linkCalls(*calls), std::nullopt);
    const auto known = calls->addresses();
    ASSERT_TRUE(known);
    EXPECT_EQ(*known, (std::vector<quorvel::store::NamedAddress>{{"6508870260", 1, "Anna", ""}}));
}

}  // namespace
}  // namespace contacts::test

// doctor finds what is wrong with each thing that a handset owns, and mends it with a copy kept.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>

#include "desktop/quorvel/store/call_store.h"
#include "objc/strong.h"
#include "tests/tools/program.h"
#include "tools/doctor/check.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using tools_tests::Directory;

class Doctor : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(directory_.run("generate --calls 3000 --seed 3 --until 1718452800").status, 0);
        const auto card = directory_.write("card.vcf", "BEGIN:VCARD\nVERSION:3.0\nFN:Anna\nTEL:+4930100\nEND:VCARD\n");
        ASSERT_EQ(directory_.run("contacts import '" + card.string() + "'").status, 0);
        ASSERT_EQ(directory_.run("set minRec_Call 20").status, 0);
    }

    std::filesystem::path data(const char* name) const { return directory_.data() / name; }
    void change(const char* database, const char* statement) const {
        sqlite3* opened = nullptr;
        ASSERT_EQ(sqlite3_open(data(database).c_str(), &opened), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(opened, statement, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(opened);
        sqlite3_close(opened);
    }
    void expectFinding(const std::string& finding) const {
        const auto found = directory_.run("doctor");
        EXPECT_EQ(found.status, 1) << found.output;
        EXPECT_THAT(found.output, HasSubstr(finding));
        EXPECT_THAT(found.errors, HasSubstr("doctor --mend"));
        EXPECT_EQ(directory_.run("doctor").output, found.output) << "looking changes nothing";
    }
    std::string expectMended() const {
        const auto mended = directory_.run("doctor --mend");
        EXPECT_EQ(mended.status, 0) << mended.output;
        const auto after = directory_.run("doctor");
        EXPECT_EQ(after.status, 0) << after.output;
        return mended.output;
    }
    std::size_t filesLike(const std::filesystem::path& folder, const std::string& part) const {
        std::size_t found = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            found += entry.path().filename().string().find(part) != std::string::npos ? 1 : 0;
        return found;
    }
    std::string list() const { return directory_.run("list --limit 5000").output; }

    Directory directory_;
};

TEST_F(Doctor, findsNothingWhereAllIsWell) {
    const auto outcome = directory_.run("doctor");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_THAT(outcome.lines(), ElementsAre("calls     good", "contacts  good", "settings  good", "texts     good"));
    EXPECT_EQ(directory_.run("doctor --mend").output, outcome.output);
    EXPECT_EQ(filesLike(directory_.data(), "mending"), 0U);
}

TEST_F(Doctor, findsNothingInAFolderThatIsNew) {
    const Directory other;
    EXPECT_EQ(other.run("doctor").status, 0);
    EXPECT_FALSE(std::filesystem::exists(other.data() / "calls.db"));
}

TEST_F(Doctor, makesSumsAnewThatDoNotAgreeWithTheCalls) {
    const auto before = list();
    change("calls.db", "update total set calls = calls + 5 where filter = 3; delete from day");
    expectFinding("The totals of the list \"received\"");
    EXPECT_THAT(expectMended(), HasSubstr("made anew from 3000 calls"));
    EXPECT_EQ(list(), before);
    EXPECT_EQ(filesLike(directory_.data(), "before-mending"), 1U);
}

TEST_F(Doctor, makesAnIndexAnewThatLacksCalls) {
    // The schema is made to say that the index is of some calls alone, the index is filled so, and the schema put back.
    change("calls.db",
           "pragma writable_schema = on; "
           "update sqlite_schema set sql = sql || ' where date > 1718000000' where name = 'call_by_kind'; "
           "pragma writable_schema = reset; reindex call_by_kind; pragma writable_schema = on; "
           "update sqlite_schema set sql = replace(sql, ' where date > 1718000000', '') where name = 'call_by_kind'; "
           "pragma writable_schema = reset");
    expectFinding("missing from index call_by_kind");
    EXPECT_THAT(expectMended(), HasSubstr("made anew from 3000 calls"));
}

TEST_F(Doctor, savesTheCallsThatCanBeReadOfADamagedLog) {
    // A page of the calls' own table is overwritten.
    sqlite3* opened = nullptr;
    sqlite3_open(data("calls.db").c_str(), &opened);
    sqlite3_stmt* pages = nullptr;
    sqlite3_prepare_v2(opened,
                       "select pageno from dbstat where name = 'call' and pagetype = 'leaf' order by pageno limit 1 "
                       "offset 3",
                       -1, &pages, nullptr);
    std::streamoff page = 0;
    if (pages && sqlite3_step(pages) == SQLITE_ROW) page = sqlite3_column_int64(pages, 0);
    sqlite3_finalize(pages);
    sqlite3_close(opened);
    if (page == 0) GTEST_SKIP() << "this SQLite does not tell its pages";
    std::fstream(data("calls.db"), std::ios::in | std::ios::out | std::ios::binary).seekp((page - 1) * 4096)
        << std::string(4096, '\x5a');
    expectFinding("calls");
    const auto damaged = tools_tests::contentOf(data("calls.db"));
    const auto said = expectMended();
    EXPECT_THAT(said, AllOf(HasSubstr("calls could be read"), HasSubstr("are lost")));
    const auto left = directory_.run("list --limit 5000").lines().size();
    EXPECT_GT(left, 2800U);
    EXPECT_LT(left, 3000U);
    bool isKept = false;
    for (const auto& entry : std::filesystem::directory_iterator(directory_.data()))
        isKept |= entry.path().string().find("calls.db.damaged-") != std::string::npos &&
                  tools_tests::contentOf(entry.path()) == damaged;
    EXPECT_TRUE(isKept);
}

TEST_F(Doctor, savesTheCallsOfALogThatIsCutOff) {
    for (const char* suffix : {"calls.db-wal", "calls.db-shm"}) std::filesystem::remove(data(suffix));
    std::filesystem::resize_file(data("calls.db"), std::filesystem::file_size(data("calls.db")) * 3 / 4);
    expectFinding("calls.db");
    EXPECT_THAT(expectMended(), AllOf(HasSubstr("calls could be read"), HasSubstr("are lost")));
    EXPECT_GT(directory_.run("list --limit 5000").lines().size(), 500U);
}

TEST_F(Doctor, savesAllCallsOfALogWithAWrongByteInItsHeader) {
    const auto before = list();
    std::fstream(data("calls.db"), std::ios::in | std::ios::out | std::ios::binary).seekp(47) << '\x77';
    expectFinding("header is damaged");
    EXPECT_THAT(expectMended(), AllOf(HasSubstr("3000 calls could be read"), Not(HasSubstr("are lost"))));
    EXPECT_EQ(list(), before);
}

TEST_F(Doctor, bringsTheCallsOfALogBackThatWasSetAside) {
    const auto before = list();
    std::fstream(data("calls.db"), std::ios::in | std::ios::out | std::ios::binary).seekp(47) << '\x77';
    ASSERT_TRUE(quorvel::store::CallStore::setAside(data("calls.db")).ok());
    expectFinding("calls.db.damaged-1 was damaged and set aside");
    EXPECT_THAT(expectMended(), AllOf(HasSubstr("3000 calls of"), HasSubstr("before-mending")));
    EXPECT_EQ(list(), before);
}

TEST_F(Doctor, findsNothingInALogOfNoBytes) {
    for (const char* suffix : {"calls.db-wal", "calls.db-shm"}) std::filesystem::remove(data(suffix));
    directory_.write("data/calls.db", "");
    const auto outcome = directory_.run("doctor");
    EXPECT_EQ(outcome.status, 0) << outcome.output << outcome.errors;
    EXPECT_EQ(std::filesystem::file_size(data("calls.db")), 0U);
    EXPECT_EQ(directory_.run("list").status, 0);
}

TEST_F(Doctor, findsAndTakesOutACallThatCannotBe) {
    change("calls.db", "update call set duration = -7 where ROWID = 5; update state set touched = 0");
    expectFinding("number 5's duration is negative");
    EXPECT_THAT(expectMended(), HasSubstr("2999 calls; 1 that cannot be stand in the copy alone"));
}

TEST_F(Doctor, leavesAFileThatIsNoLogAsItIs) {
    directory_.write("data/calls.db", "Dear all, this is no log of calls, however long it is.\n");
    for (const char* suffix : {"calls.db-wal", "calls.db-shm"}) std::filesystem::remove(data(suffix));
    expectFinding("is not a call log");
    EXPECT_EQ(directory_.run("doctor --mend").status, 1);
    EXPECT_EQ(std::filesystem::file_size(data("calls.db")), 55U);
}

TEST_F(Doctor, takesOutWhatBelongsToNoContact) {
    change("contacts/contacts.db",
           "insert into picture values (77, x'00'); insert into favourite values (9, 78, '+491')");
    expectFinding("1 pictures belong to a contact that is not there");
    expectMended();
    EXPECT_THAT(directory_.run("contacts list").output, HasSubstr("Anna"));
    EXPECT_EQ(filesLike(directory_.data() / "contacts", "before-mending"), 1U);
}

TEST_F(Doctor, setsContactsAsideThatCannotBeRead) {
    directory_.write("data/contacts/contacts.db", std::string(9000, 'x'));
    for (const char* suffix : {"contacts/contacts.db-wal", "contacts/contacts.db-shm"})
        std::filesystem::remove(data(suffix));
    expectFinding("contacts");
    EXPECT_THAT(expectMended(), HasSubstr("quorvelctl contacts import"));
    EXPECT_EQ(filesLike(directory_.data() / "contacts", "contacts.db.damaged-1"), 1U);
}

TEST_F(Doctor, givesASettingItsUsualValueWhereItsOwnMakesNoSense) {
    auto text = tools_tests::contentOf(data("settings.plist"));
    const auto at = text.find("<integer>20</integer>");
    ASSERT_NE(at, std::string::npos) << text;
    text.replace(at, 21, "<integer>-4</integer>");
    directory_.write("data/settings.plist", text);
    expectFinding("The value of minRec_Call");
    expectMended();
    EXPECT_EQ(directory_.run("get minRec_Call").output, "50\n");
    EXPECT_EQ(filesLike(directory_.data(), "settings.plist.before-mending"), 1U);
}

TEST_F(Doctor, setsDamagedSettingsAside) {
    directory_.write("data/settings.plist", "<plist><dict><key>");
    expectFinding("are damaged");
    expectMended();
    EXPECT_EQ(tools_tests::contentOf(data("settings.plist.damaged-1")), "<plist><dict><key>");
}

TEST(DoctorsTexts, aTableThatLacksATextOrCannotBeReadIsNamed) {
    const objc::AutoreleasePool pool;
    const Directory directory;
    for (const char* language : {"en.lproj", "de.lproj", "ru.lproj"}) {
        std::filesystem::create_directory(directory.file(language));
        directory.write(std::string(language) + "/Quorvel.strings", "\"ONE\" = \"1\";\n\"TWO\" = \"2\";\n");
        directory.write(std::string(language) + "/Quorvel.stringsdict", "\"D\" = { other = \"%ld\"; };\n");
    }
    const auto texts = tools::textsOrgan(directory.file(""));
    EXPECT_THAT(texts->examine(), IsEmpty());
    directory.write("de.lproj/Quorvel.strings", "\"ONE\" = \"1\";\n");
    directory.write("ru.lproj/Quorvel.strings", "\"ONE\" = \"1\n");
    const auto found = texts->examine();
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_THAT(found[0], AllOf(HasSubstr("de.lproj"), HasSubstr("lack TWO")));
    EXPECT_THAT(found[1], AllOf(HasSubstr("ru.lproj/Quorvel.strings"), HasSubstr("damaged")));
    EXPECT_THAT(texts->mend(), Not(IsEmpty()));
}

}  // namespace

// Databases that are open elsewhere, cut off, damaged or hostile: they are read without a trace, or refused with a
// sentence.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sqlite3.h>

#include <map>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using tools_tests::contentOf;
using tools_tests::Directory;

const std::string table =
    "create table call (ROWID integer primary key, address text, date integer, duration integer, flags integer);";
const std::string rows =
    "with recursive n(i) as (values (1) union all select i + 1 from n where i < 500) "
    "insert into call select i, '555000' || i, 1300000000 + i, i % 7, 4 from n;";

/// Every file of the folder with its content.
std::map<std::string, std::string> filesOf(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files[entry.path().filename()] = contentOf(entry.path());
    return files;
}

TEST(SqliteTrouble, readingLeavesNoTraceBesideTheFile) {
    const Directory directory;
    runOn(directory.file("calls"), "pragma journal_mode = wal;" + table + rows);
    const auto before = filesOf(directory.file(""));
    EXPECT_EQ(read(directory.file("calls")).calls.size(), 500U);
    EXPECT_EQ(filesOf(directory.file("")), before);
}

TEST(SqliteTrouble, callsThatStandInTheJournalBesideTheFileAreThere) {
    const Directory directory;
    sqlite3* open = nullptr;
    sqlite3_open(directory.file("calls").c_str(), &open);
    sqlite3_exec(open, ("pragma journal_mode = wal; pragma wal_autocheckpoint = 0;" + table + rows).c_str(), nullptr,
                 nullptr, nullptr);
    ASSERT_TRUE(std::filesystem::exists(directory.file("calls-wal")));
    const auto before = filesOf(directory.file(""));
    EXPECT_EQ(read(directory.file("calls")).calls.size(), 500U);
    EXPECT_EQ(filesOf(directory.file("")), before);
    sqlite3_close(open);
}

TEST(SqliteTrouble, aDatabaseWithoutCallsSaysWhatIsLookedFor) {
    const Directory directory;
    runOn(directory.file("recipes"), "create table recipe (title text)");
    const auto reading = read(directory.file("recipes"));
    EXPECT_THAT(reading.refusal, HasSubstr("recipes is a database without a table of calls"));
    EXPECT_THAT(reading.refusal, HasSubstr("ZCALLRECORD"));
}

TEST(SqliteTrouble, aViewInThePlaceOfTheTableIsNotRun) {
    const Directory directory;
    runOn(directory.file("calls"),
          "create view calls as with recursive n(i) as (values (1) union all select i + 1 from n) "
          "select i as _id, i as number, i as date, i as type, i as duration from n where i < 0;");
    EXPECT_THAT(read(directory.file("calls")).refusal, HasSubstr("without a table of calls"));
}

TEST(SqliteTrouble, aDatabaseThatWasCutOffIsDamaged) {
    const Directory directory;
    runOn(directory.file("calls"), table + rows);
    std::string content = contentOf(directory.file("calls"));
    ASSERT_GT(content.size(), 12'288U);
    content.resize(12'288);
    directory.write("calls", content);
    EXPECT_THAT(read(directory.file("calls")).refusal, HasSubstr("calls is a damaged database"));
    EXPECT_THAT(read(directory.file("calls")).refusal, HasSubstr("Copy it from the phone again"));
}

TEST(SqliteTrouble, aDamagedPageIsNamedByTheRowBeforeIt) {
    const Directory directory;
    runOn(directory.file("calls"), table + rows);
    std::string content = contentOf(directory.file("calls"));
    content.replace(content.size() - 4096, 4096, 4096, 'x');
    directory.write("calls", content);
    const auto reading = read(directory.file("calls"));
    EXPECT_EQ(reading.refusal, "");
    ASSERT_EQ(reading.complaints.size(), 1U);
    EXPECT_EQ(reading.complaints[0].place, "row " + std::to_string(reading.calls.size()));
    EXPECT_THAT(reading.complaints[0].what, HasSubstr("Behind this row the database is damaged"));
    EXPECT_GT(reading.calls.size(), 100U);
    EXPECT_LT(reading.calls.size(), 500U);
}

TEST(SqliteTrouble, aFileThatOnlyBeginsAsADatabaseIsDamaged) {
    const Directory directory;
    const auto file = directory.write("calls", std::string("SQLite format 3\0", 16) + std::string(5000, 'x'));
    EXPECT_THAT(read(file).refusal, AnyOf(HasSubstr("damaged"), HasSubstr("cannot be read")));
}

TEST(SqliteTrouble, pagesThatLeadToOneAnotherEnd) {
    const Directory directory;
    runOn(directory.file("calls"), "pragma page_size = 512;" + table + rows);
    const std::string content = contentOf(directory.file("calls"));
    for (std::size_t page = 512; page < content.size(); page += 512) {
        std::string hostile = content;
        // Each child of an interior page of a table becomes the same page, or the page itself.
        if (hostile[page] != 5) continue;
        for (std::size_t at = page + 13; at < page + 512; ++at) hostile[at] = '\0';
        for (std::size_t cell = 0; cell < 40; ++cell) {
            hostile[page + 12 + 2 * cell + 1] = static_cast<char>(0xF0);
            hostile[page + 12 + 2 * cell] = 1;
        }
        hostile[page + 0x1F3] = 3;
        hostile[page + 3] = 0;
        hostile[page + 4] = 40;
        directory.write("hostile", hostile);
        const auto reading = read(directory.file("hostile"));
        EXPECT_LT(reading.calls.size(), content.size());
    }
}

TEST(SqliteTrouble, whateverIsOverwrittenReadingEnds) {
    const Directory directory;
    runOn(directory.file("calls"), "pragma page_size = 512;" + table + rows);
    const std::string content = contentOf(directory.file("calls"));
    EXPECT_TRUE(rc::check([&] {
        std::string hostile = content;
        for (const auto& [place, byte] : *rc::gen::container<std::vector<std::pair<std::size_t, char>>>(
                 rc::gen::pair(rc::gen::inRange<std::size_t>(16, content.size()), rc::gen::arbitrary<char>())))
            hostile[place] = byte;
        hostile.resize(*rc::gen::inRange<std::size_t>(16, content.size() + 1));
        directory.write("hostile", hostile);
        const auto reading = read(directory.file("hostile"));
        RC_ASSERT(reading.calls.size() <= content.size());
        RC_ASSERT(contentOf(directory.file("hostile")) == hostile);
    }));
}

}  // namespace
}  // namespace import_tests

// The Phone on files that are damaged, foreign or in the way: it says what is wrong, and loses nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <iterator>

#include "tests/scenarios/phone_process.h"

namespace {

using scenarios::Handset;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int unusable = 2;

void write(const std::filesystem::path& file, const std::string& content) {
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    ASSERT_TRUE(stream.flush());
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The files whose names begin so.
std::vector<std::filesystem::path> filesLike(const Handset& handset, const std::string& beginning) {
    std::vector<std::filesystem::path> found;
    for (const auto& each : std::filesystem::directory_iterator(handset.file("")))
        if (each.path().filename().string().starts_with(beginning)) found.push_back(each.path());
    return found;
}

quorvel::store::NewCall oneCall() {
    quorvel::store::NewCall call;
    call.address = "+4930100";
    call.date = 1718452800;
    return call;
}

void expectRefused(const Handset& handset, const std::string& options, const std::string& sentence) {
    const auto outcome = handset.run("show\n", options);
    EXPECT_EQ(outcome.status, unusable) << outcome.errors;
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, HasSubstr(sentence));
}

TEST(BadInput, aFileThatIsNoCallLogIsLeftAsItIs) {
    const Handset handset;
    const std::string content = "This was never a database, and it is long enough to be taken for one.\n";
    write(handset.file("calls.db"), content);
    expectRefused(handset, {}, "is not a call log");
    EXPECT_EQ(contentOf(handset.file("calls.db")), content);
}

TEST(BadInput, anotherProgramsDatabaseIsLeftAsItIs) {
    const Handset handset;
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(handset.file("calls.db").c_str(), &database), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(database, "CREATE TABLE notes(text); INSERT INTO notes VALUES('kept')", nullptr, nullptr, nullptr),
        SQLITE_OK);
    ASSERT_EQ(sqlite3_close(database), SQLITE_OK);
    const auto before = contentOf(handset.file("calls.db"));
    expectRefused(handset, {}, "is a database of another program");
    EXPECT_EQ(contentOf(handset.file("calls.db")), before);
}

TEST(BadInput, oneWrongByteInTheSettingsIsDamage) {
    const Handset handset;
    const std::string content = "<plist><dict><\x9dkey>a</key></dict></plist>";
    write(handset.file("settings.plist"), content);
    const auto outcome = handset.run("show\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.linesOf("rows"), SizeIs(1));
    EXPECT_EQ(contentOf(handset.file("settings.plist.damaged-1")), content);
}

TEST(BadInput, aDataDirectoryWhoseNameIsNotUtf8IsUsed) {
    const Handset handset;
    const auto odd = handset.file("caf\xe9");
    const auto outcome = handset.runIn("HOME='" + odd.string() + "'", "show\n", "--data '" + odd.string() + '\'');
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.linesOf("rows"), SizeIs(1));
    EXPECT_TRUE(std::filesystem::exists(odd / "calls.db"));
}

TEST(BadInput, aDamagedCallLogIsSetAsideAndANewOneBegun) {
    const Handset handset;
    handset.fill({oneCall()});
    // The pages behind the first are overwritten: a disk that lost its mind.
    const auto log = handset.file("calls.db");
    const auto size = std::filesystem::file_size(log);
    ASSERT_GT(size, 8192U);
    auto damaged = contentOf(log).substr(0, 4096) + std::string(size - 4096, '\xA5');
    write(log, damaged);
    const auto outcome = handset.run("show\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.linesOf("rows "), ElementsAre("rows 0"));
    EXPECT_THAT(outcome.errors, HasSubstr("calls.db"));
    ASSERT_THAT(outcome.linesOf("alert "), SizeIs(1));
    EXPECT_THAT(outcome.linesOf("alert ").front(),
                testing::AllOf(HasSubstr("calls.db.damaged-1"), HasSubstr("doctor --mend")));
    ASSERT_THAT(filesLike(handset, "calls.db.damaged"), testing::Not(IsEmpty()));
    EXPECT_EQ(contentOf(filesLike(handset, "calls.db.damaged").front()), damaged);
}

TEST(BadInput, aLogWithAWrongByteInItsHeaderKeepsNoPhoneFromStarting) {
    for (const std::streamoff at : {3, 17, 18, 20, 47, 59, 61, 70}) {
        const Handset handset;
        handset.fill({oneCall()});
        std::fstream(handset.file("calls.db"), std::ios::in | std::ios::out | std::ios::binary).seekp(at) << '\x77';
        const auto outcome = handset.run("show\n");
        EXPECT_EQ(outcome.status, 0) << at << ": " << outcome.errors;
        EXPECT_THAT(outcome.linesOf("alert "), SizeIs(1)) << at;
        EXPECT_THAT(filesLike(handset, "calls.db.damaged-1"), testing::Not(IsEmpty())) << at;
    }
}

TEST(BadInput, aRowThatCannotBeIsSaidInTheWindow) {
    const Handset handset;
    handset.fill({oneCall()});
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(handset.file("calls.db").c_str(), &database), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(database, "update call set kind = 9; update state set touched = 0", nullptr, nullptr, nullptr),
        SQLITE_OK);
    ASSERT_EQ(sqlite3_close(database), SQLITE_OK);
    const auto outcome = handset.run("show\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    ASSERT_THAT(outcome.linesOf("alert "), SizeIs(1));
    EXPECT_THAT(outcome.linesOf("alert ").front(), HasSubstr("doctor --mend"));
}

TEST(BadInput, aFolderInPlaceOfTheCallLogIsRefused) {
    const Handset handset;
    std::filesystem::create_directory(handset.file("calls.db"));
    expectRefused(handset, {}, "is not a file");
}

TEST(BadInput, damagedSettingsAreSetAsideAndTheUsualOnesHold) {
    const Handset handset;
    handset.fill({oneCall()});
    write(handset.file("settings.plist"), "{ this is no property list");
    const auto outcome = handset.run("show\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("settings.plist are damaged"));
    EXPECT_THAT(outcome.linesOf("rows "), ElementsAre("rows 1"));
    ASSERT_THAT(filesLike(handset, "settings.plist.damaged"), SizeIs(1));
    EXPECT_EQ(contentOf(filesLike(handset, "settings.plist.damaged").front()), "{ this is no property list");
}

TEST(BadInput, settingsThatCannotBeReadAreToldAndKept) {
    const Handset handset;
    std::filesystem::create_directory(handset.file("settings.plist"));
    const auto outcome = handset.run("show\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("settings.plist"));
    EXPECT_TRUE(std::filesystem::is_directory(handset.file("settings.plist")));
}

TEST(BadInput, aDataDirectoryThatCannotBeOneIsRefused) {
    const Handset handset;
    write(handset.file("in-the-way"), "a file");
    expectRefused(handset, "--data " + handset.file("in-the-way").string(), "a file of that name is in the way");
    expectRefused(handset, "--data /proc/nowhere", "cannot be made");
}

TEST(BadInput, anImageThatIsNoneIsRefusedByName) {
    const Handset handset;
    write(handset.file("not-an-image"), "hello");
    expectRefused(handset, "--plugin " + handset.file("not-an-image").string(), "not-an-image");
    expectRefused(handset, "--plugin " + handset.file("nowhere.so").string(), "cannot be read");
}

}  // namespace

// backup and restore, as a person meets them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/tools/program.h"

namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;
using tools_tests::Directory;

class BackupCommands : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(directory_.run("generate --calls 50 --seed 3 --until 1718452800").status, 0); }
    std::string path(const char* name) const { return '\'' + directory_.file(name).string() + '\''; }
    std::string list() const { return directory_.run("list --limit 1000").output; }
    std::string backUp(const char* name) const {
        const auto outcome = directory_.run("backup " + path(name));
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome.output;
    }

    Directory directory_;
};

TEST_F(BackupCommands, theLogComesBackAndTheFormerOneIsNamed) {
    const auto before = list();
    EXPECT_THAT(backUp("kept"), HasSubstr("quorvelctl restore " + directory_.file("kept").string()));
    ASSERT_EQ(directory_.run("generate --calls 5 --seed 4 --until 1718452900").status, 0);
    const auto changed = list();
    const auto outcome = directory_.run("restore " + path("kept"));
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    ASSERT_THAT(outcome.lines(), SizeIs(2));
    EXPECT_EQ(outcome.lines()[0], "50 calls restored.");
    const std::string sentence = "The log of before is kept as ";
    ASSERT_THAT(outcome.lines()[1], StartsWith(sentence));
    EXPECT_EQ(list(), before);
    ASSERT_EQ(directory_.run("restore '" + outcome.lines()[1].substr(sentence.size()) + '\'').status, 0);
    EXPECT_EQ(list(), changed);
}

TEST_F(BackupCommands, aFileThatIsThereIsReplacedWithForceAlone) {
    backUp("kept");
    const auto refused = directory_.run("backup " + path("kept"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("--force"));
    EXPECT_EQ(directory_.run("backup --force " + path("kept")).status, 0);
}

TEST_F(BackupCommands, whatCannotBeRestoredIsSaidAndTheLogStays) {
    const auto before = list();
    directory_.write("letter", "Dear all, this is no backup, however long it is.\n");
    for (const char* name : {"letter", "nothing", "data/calls.db"}) {
        const auto outcome = directory_.run("restore " + path(name));
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_THAT(outcome.errors, HasSubstr(directory_.file(name).string()));
        EXPECT_EQ(outcome.output, "");
    }
    EXPECT_EQ(list(), before);
}

TEST_F(BackupCommands, whereThereIsNoLogThereIsNothingToBackUp) {
    std::filesystem::remove_all(directory_.data());
    const auto outcome = directory_.run("backup " + path("kept"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("no log of calls"));
    EXPECT_FALSE(std::filesystem::exists(directory_.file("kept")));
}

}  // namespace

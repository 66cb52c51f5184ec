// Files that commands write: any name, whole, under way beside each other, and their user's alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>

#include "desktop/files/rename.h"
#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/log_files.h"
#include "tests/files/folder.h"
#include "tests/tools/program.h"

namespace {

using files_tests::modeOf;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using tools_tests::contentOf;
using tools_tests::Directory;

class FileNames : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(directory_.run("generate --calls 50 --seed 3 --until 1718452800").status, 0);
        std::filesystem::create_directory(directory_.file("out"));
        before_ = std::filesystem::current_path();
        std::filesystem::current_path(directory_.file("out"));
    }
    void TearDown() override { std::filesystem::current_path(before_); }
    static std::int64_t callsIn(const std::filesystem::path& file) {
        const auto log = quorvel::store::CallStore::open(std::filesystem::absolute(file));
        return log ? log->totals(quorvel::store::Filter::all, {}).valueOr({}).calls : -1;
    }
    std::vector<std::string> written() const { return files::namesIn(directory_.file("out")); }

    Directory directory_;
    std::filesystem::path before_;
};

TEST_F(FileNames, thatMeanSomethingToTheDatabaseAreNames) {
    for (const std::string name : {"file:b.q", ":memory:", "file:c?mode=memory", "%2e", "-wal"}) {
        ASSERT_EQ(directory_.run("backup -- '" + name + '\'').status, 0) << name;
        EXPECT_EQ(callsIn(name), 50) << name;
        const auto exported = directory_.run("export --format db --output='" + name + ".db'");
        ASSERT_EQ(exported.status, 0) << exported.errors;
        EXPECT_EQ(callsIn(name + ".db"), 50) << name;
        const auto restored = directory_.run("restore -- '" + name + '\'');
        EXPECT_THAT(restored.output, StartsWith("50 calls restored.")) << restored.errors;
        const auto imported = directory_.run("import --dry-run -- '" + name + ".db'");
        EXPECT_THAT(imported.output, HasSubstr("50 calls found")) << imported.errors;
    }
}

TEST_F(FileNames, ofTheUsersOwnFilesAreNeverTakenForWorkUnderWay) {
    const std::vector<std::string> names{"backup.q", "calls.csv", "calls.json", "calls.db", "people.vcf", "plot.png"};
    directory_.write("out/own", "precious");
    for (const auto& name : names) {
        directory_.write("out/" + name + ".unfinished", "the user's own");
        std::filesystem::create_symlink("own", name + ".new");
    }
    std::filesystem::create_symlink("own", "linked.csv.unfinished");
    EXPECT_EQ(directory_.run("backup backup.q").status, 0);
    for (const auto& name : {"calls.csv", "calls.json", "calls.db", "people.vcf", "linked.csv"})
        EXPECT_EQ(directory_.run(std::string("export --output ") + name).status, 0) << name;
    EXPECT_EQ(directory_.run("stats --plot plot.png").status, 0);
    for (const auto& name : names) EXPECT_EQ(contentOf(name + ".unfinished"), "the user's own") << name;
    EXPECT_EQ(contentOf("own"), "precious");
    EXPECT_THAT(written(), Each(Not(StartsWith("."))));
}

TEST_F(FileNames, givenTwiceAtOnceEachBecomesAWholeFile) {
    const auto started = [&](const std::string& arguments) {
        const pid_t child = fork();
        if (child == 0) {
            const std::string data = directory_.data().string();
            const std::string command = "exec '" QUORVELCTL_PROGRAM "' --data '" + data + "' " + arguments;
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        return child;
    };
    for (const std::string arguments :
         {"backup --force both.q", "export --force --output both.csv", "export --force --format db --output both.db"}) {
        std::vector<pid_t> children;
        for (int i = 0; i < 4; ++i) children.push_back(started(arguments));
        for (const pid_t child : children) {
            int status = -1;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            EXPECT_EQ(status, 0) << arguments;
        }
    }
    EXPECT_EQ(callsIn("both.q"), 50);
    EXPECT_EQ(callsIn("both.db"), 50);
    EXPECT_EQ(contentOf("both.csv"), directory_.run("export").output);
    EXPECT_THAT(written(), SizeIs(3));
}

TEST_F(FileNames, ofPipesAreWrittenTo) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(directory_.run("export --output pipe & timeout 60 cat pipe").output, directory_.run("export").output);
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
    EXPECT_EQ(directory_.run("export --force --format db --output pipe").status, 1);
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

TEST_F(FileNames, ofFilesThatCommandsWriteAreTheUsersAlone) {
    ASSERT_EQ(directory_.run("backup b.q").status, 0);
    for (const char* name : {"c.csv", "c.json", "c.db", "c.vcf"})
        ASSERT_EQ(directory_.run(std::string("export --output ") + name).status, 0);
    ASSERT_EQ(directory_.run("contacts export all.vcf").status, 0);
    ASSERT_EQ(directory_.run("stats --plot p.svg").status, 0);
    for (const auto& name : written()) EXPECT_EQ(modeOf(name), 0600) << name;
    ASSERT_EQ(directory_.run("set minRec_Call 20").status, 0);
    ASSERT_EQ(directory_.run("restore b.q").status, 0);
    ASSERT_EQ(directory_.run("contacts deny").status, 0);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory_.data()))
        EXPECT_EQ(modeOf(entry.path()), entry.is_directory() ? 0700 : 0600) << entry.path();
    EXPECT_EQ(modeOf(directory_.data()), 0700);
}

TEST_F(FileNames, ofAnOpenDataDirectoryBecomeTheUsersAlone) {
    ASSERT_EQ(directory_.run("set minRec_Call 20").status, 0);
    directory_.write("data/notes.txt", "of the user's own");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory_.data()))
        ASSERT_EQ(chmod(entry.path().c_str(), entry.is_directory() ? 0755 : 0644), 0);
    ASSERT_EQ(chmod(directory_.data().c_str(), 0755), 0);
    ASSERT_EQ(directory_.run("list").status, 0);
    EXPECT_EQ(modeOf(directory_.data()), 0700);
    for (const char* name : {"calls.db", "settings.plist", "contacts/contacts.db"})
        EXPECT_EQ(modeOf(directory_.data() / name), 0600) << name;
    EXPECT_EQ(modeOf(directory_.data() / "contacts"), 0700);
    EXPECT_EQ(modeOf(directory_.data() / "notes.txt"), 0644);
}

TEST_F(FileNames, ofAHomeThatHoldsTheDataStaysOpen) {
    ASSERT_EQ(chmod(directory_.data().c_str(), 0755), 0);
    const std::string data = '\'' + directory_.data().string() + '\'';
    const std::string command = "HOME=" + data + " '" QUORVELCTL_PROGRAM "' --data " + data + " list >list.txt";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(modeOf(directory_.data()), 0755);
    EXPECT_EQ(modeOf(directory_.data() / "calls.db"), 0600);
}

TEST_F(FileNames, thatAreNotUtf8AreNamesAsWell) {
    const std::string odd = directory_.file("caf\xe9").string();
    const std::string program = "LC_ALL=C.UTF-8 '" QUORVELCTL_PROGRAM "' --data '" + odd + "' ";
    for (const std::string arguments : {"generate --calls 5 --seed 1", "set minRec_Call 7", "contacts list", "doctor",
                                        "backup '\xff.q'", "export --output '\xe9.csv'", "import '\xe9.csv'"})
        EXPECT_EQ(std::system((program + arguments + " >out.txt").c_str()), 0) << arguments;
    EXPECT_TRUE(std::filesystem::exists("\xff.q"));
    const std::string homeless = "XDG_DATA_HOME='" + odd + "' HOME='" + odd + "' '" QUORVELCTL_PROGRAM "' ";
    EXPECT_EQ(std::system((homeless + "set minRec_Call 8").c_str()), 0);
    EXPECT_TRUE(std::filesystem::exists(odd + "/quorvel/settings.plist"));
}

TEST_F(FileNames, ofFormerLogsAreBoundedAndThoseThatGoAreSaid) {
    using quorvel::store::mostFormerLogs;
    ASSERT_EQ(directory_.run("backup b.q").status, 0);
    const auto old = [](std::size_t number) {
        return "data/calls.db.before-2020-01-01-0000" + std::to_string(10 + number);
    };
    for (std::size_t i = 0; i < mostFormerLogs; ++i) directory_.write(old(i), "an old log");
    // Not ours, as the name is not.
    directory_.write("data/calls.db.before-the-holidays", "the user's own");
    directory_.write("data/calls.db.damaged-2019-01-01-000000", "perhaps the only copy of some calls");
    const auto restored = directory_.run("restore b.q");
    ASSERT_EQ(restored.status, 0) << restored.errors;
    EXPECT_THAT(restored.output, HasSubstr(directory_.file(old(0)).string()));
    EXPECT_FALSE(std::filesystem::exists(directory_.file(old(0))));
    for (std::size_t i = 1; i < mostFormerLogs; ++i) EXPECT_TRUE(std::filesystem::exists(directory_.file(old(i))));
    EXPECT_TRUE(std::filesystem::exists(directory_.file("data/calls.db.before-the-holidays")));
    EXPECT_TRUE(std::filesystem::exists(directory_.file("data/calls.db.damaged-2019-01-01-000000")));
}

TEST_F(FileNames, aChangeThatCouldNotBeAnnouncedIsDone) {
    for (const char* name : {"QuorvelReloadSettingsReplaceRecents.post", "QuorvelRestoreDatabaseNotification.post"}) {
        const auto file = directory_.data() / "notifications" / name;
        std::filesystem::remove(file);
        std::filesystem::create_directory(file);
    }
    const auto set = directory_.run("set minRec_Call 20");
    EXPECT_EQ(set.status, 0);
    EXPECT_THAT(set.errors, AllOf(HasSubstr("cannot be posted"), HasSubstr("The change was made")));
    EXPECT_EQ(directory_.run("get minRec_Call").output, "20\n");
    EXPECT_EQ(directory_.run("generate --calls 5 --seed 9").status, 0);
    EXPECT_EQ(directory_.run("notify QuorvelRestoreDatabaseNotification").status, 1);
}

TEST_F(FileNames, spreadsheetsFindNoFormulaInAnExport) {
    directory_.write("out/calls.csv",
                     "date,address,kind,duration,name,label\n"
                     "1718452800,+1+cmd|' /C calc'!A0,missed,0,\"=HYPERLINK(\"\"x\"\")\",@SUM(A1)\n"
                     "1718452800,+4930100,missed,0,-1+2,'=x\n");
    ASSERT_EQ(directory_.run("import --skip-bad calls.csv").status, 0);
    const auto exported = directory_.run("export --until 2024-06-15T12:00:00Z --since 2024-06-15T12:00:00Z").output;
    EXPECT_THAT(exported, HasSubstr(",'+1+cmd|' /C calc'!A0,"));
    EXPECT_THAT(exported, HasSubstr(",\"'=HYPERLINK(\"\"x\"\")\",'@SUM(A1),"));
    EXPECT_THAT(exported, HasSubstr(",+4930100,"));
    EXPECT_THAT(exported, HasSubstr(",'-1+2,'=x,"));
}

}  // namespace

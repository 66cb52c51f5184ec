// A file in the making disturbs nobody, and what a killed process left goes.
#include "desktop/files/new_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/files/folder.h"

namespace {

using files::Existing;
using files::NewFile;
using files_tests::contentOf;
using files_tests::Folder;
using files_tests::modeOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

NewFile madeBeside(const std::filesystem::path& target) { return std::get<NewFile>(NewFile::beside(target)); }

TEST(NewFile, takesItsNameWhenItIsComplete) {
    const Folder folder;
    auto made = madeBeside(folder.file("calls.csv"));
    ASSERT_EQ(made.write("one"), std::error_code());
    EXPECT_FALSE(std::filesystem::exists(folder.file("calls.csv")));
    ASSERT_EQ(made.write("two"), std::error_code());
    ASSERT_EQ(made.publish(folder.file("calls.csv"), Existing::refused), std::error_code());
    EXPECT_EQ(contentOf(folder.file("calls.csv")), "onetwo");
    EXPECT_THAT(files::namesIn(folder.path()), ElementsAre("calls.csv"));
}

TEST(NewFile, isItsUsersAloneFromTheFirstByteWhateverTheMask) {
    const Folder folder;
    const mode_t before = umask(0);
    auto made = madeBeside(folder.file("calls.csv"));
    umask(before);
    EXPECT_EQ(modeOf(made.path()), 0600);
    ASSERT_EQ(made.publish(folder.file("calls.csv"), Existing::refused), std::error_code());
    EXPECT_EQ(modeOf(folder.file("calls.csv")), 0600);
}

TEST(NewFile, replacesAFileOnlyWhenAsked) {
    const Folder folder;
    folder.write("calls.csv", "mine");
    {
        auto made = madeBeside(folder.file("calls.csv"));
        EXPECT_EQ(made.publish(folder.file("calls.csv"), Existing::refused), std::errc::file_exists);
    }
    EXPECT_EQ(contentOf(folder.file("calls.csv")), "mine");
    EXPECT_THAT(files::namesIn(folder.path()), SizeIs(1));
    auto made = madeBeside(folder.file("calls.csv"));
    ASSERT_EQ(made.publish(folder.file("calls.csv"), Existing::replaced), std::error_code());
    EXPECT_EQ(contentOf(folder.file("calls.csv")), "");
}

TEST(NewFile, severalOfOneTargetAreSeveralFiles) {
    const Folder folder;
    auto one = madeBeside(folder.file("calls.csv")), other = madeBeside(folder.file("calls.csv"));
    EXPECT_NE(one.path(), other.path());
    ASSERT_EQ(one.write("one"), std::error_code());
    ASSERT_EQ(other.write("other"), std::error_code());
    ASSERT_EQ(one.publish(folder.file("calls.csv"), Existing::replaced), std::error_code());
    EXPECT_EQ(contentOf(folder.file("calls.csv")), "one");
    ASSERT_EQ(other.publish(folder.file("calls.csv"), Existing::replaced), std::error_code());
    EXPECT_EQ(contentOf(folder.file("calls.csv")), "other");
}

TEST(NewFile, leavesNothingWhereItIsNotFinished) {
    const Folder folder;
    {
        const auto made = madeBeside(folder.file("calls.db"));
        for (const char* suffix : {"-journal", "-wal", "-shm"})
            folder.write(made.path().filename().string() + suffix, "beside a database");
    }
    EXPECT_THAT(files::namesIn(folder.path()), IsEmpty());
}

TEST(NewFile, ofAKilledProcessIsRemovedByTheNextAndThatOfALivingOneStays) {
    const Folder folder;
    const auto living = madeBeside(folder.file("calls.csv"));
    const pid_t child = fork();
    if (child == 0) {
        const auto made = madeBeside(folder.file("calls.csv"));
        folder.write(made.path().filename().string() + "-wal", "beside it");
        raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_THAT(files::namesIn(folder.path()), SizeIs(3));
    const auto made = madeBeside(folder.file("other.csv"));
    EXPECT_THAT(files::namesIn(folder.path()),
                UnorderedElementsAre(living.path().filename().string(), made.path().filename().string()));
}

TEST(NewFile, filesThatAreMerelyCalledMuchTheSameStay) {
    const Folder folder;
    const std::string beginning = ".quorvel-new-";
    const std::vector<std::string> names{"calls.csv.unfinished", beginning + "short", beginning + std::string(26, 'A'),
                                         beginning + std::string(26, 'a') + ".txt", beginning + std::string(27, 'a')};
    for (const auto& name : names) folder.write(name, "the user's own");
    // A link and a folder of such a name are not ours either.
    std::filesystem::create_symlink(folder.write("own", "kept"), folder.file(beginning + std::string(26, 'b')));
    std::filesystem::create_directory(folder.file(beginning + std::string(26, 'c')));
    files::removeAbandoned(folder.path());
    EXPECT_THAT(files::namesIn(folder.path()), SizeIs(names.size() + 3));
    EXPECT_EQ(contentOf(folder.file("own")), "kept");
}

TEST(NewFile, aFolderThatIsNotThereIsTold) {
    const Folder folder;
    const auto made = NewFile::beside(folder.file("nowhere/calls.csv"));
    ASSERT_TRUE(std::holds_alternative<std::error_code>(made));
    EXPECT_EQ(std::get<std::error_code>(made), std::errc::no_such_file_or_directory);
}

}  // namespace

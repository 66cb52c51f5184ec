// What is made is its user's alone, and what is there can become so.
#include "desktop/files/private_files.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/files/folder.h"

namespace {

using files_tests::contentOf;
using files_tests::Folder;
using files_tests::modeOf;

/// The rest of the test with a mask that takes nothing away.
class NoMask {
  public:
    NoMask() : before_(umask(0)) {}
    ~NoMask() { umask(before_); }
    NoMask(const NoMask&) = delete;
    NoMask& operator=(const NoMask&) = delete;

  private:
    mode_t before_;
};

TEST(PrivateFiles, aFileAndFoldersAreMadeForTheirUserAlone) {
    const Folder folder;
    const NoMask none;
    ASSERT_EQ(files::makePrivateFolders(folder.file("a/b")), std::error_code());
    EXPECT_EQ(modeOf(folder.file("a")), 0700);
    EXPECT_EQ(modeOf(folder.file("a/b")), 0700);
    files::makePrivateFile(folder.file("a/calls.db"));
    EXPECT_EQ(modeOf(folder.file("a/calls.db")), 0600);
}

TEST(PrivateFiles, whatIsThereIsLeftAsItIs) {
    const Folder folder;
    const NoMask none;
    const auto file = folder.write("calls.db", "calls");
    files::makePrivateFile(file);
    EXPECT_EQ(contentOf(file), "calls");
    EXPECT_EQ(modeOf(file), 0666);
    EXPECT_EQ(files::makePrivateFolders(file), std::errc::file_exists);
}

TEST(PrivateFiles, accessOfOthersIsTakenAway) {
    const Folder folder;
    const NoMask none;
    const auto file = folder.write("calls.db", "calls");
    std::filesystem::create_directory(folder.file("contacts"));
    std::filesystem::create_symlink(folder.write("elsewhere", "open"), folder.file("link"));
    for (const char* name : {"calls.db", "contacts", "link", "nothing"}) files::makePrivate(folder.file(name));
    EXPECT_EQ(modeOf(file), 0600);
    EXPECT_EQ(modeOf(folder.file("contacts")), 0700);
    EXPECT_EQ(modeOf(folder.file("elsewhere")), 0666);
}

TEST(PrivateFiles, aProgramThatIsStartedGetsTheCallersMaskBack) {
    const pid_t child = fork();
    if (child == 0) {
        umask(027);
        files::makeNewFilesPrivate();
        files::makeNewFilesPrivate();
        if (umask(077) != 077) _exit(1);
        files::restoreCallersMask();
        _exit(umask(0) == 027 ? 0 : 2);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

}  // namespace

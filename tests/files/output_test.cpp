// Output goes to a new file, or to what is there and is no file.
#include "desktop/files/output.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "tests/files/folder.h"

namespace {

using files::Existing;
using files::Output;
using files_tests::contentOf;
using files_tests::Folder;

TEST(Output, isAFileOnceItIsFinished) {
    const Folder folder;
    {
        Output unfinished(folder.file("calls"), Existing::refused);
        unfinished.write("half");
    }
    EXPECT_THAT(files::namesIn(folder.path()), testing::IsEmpty());
    Output output(folder.file("calls"), Existing::refused);
    const std::string much(300'000, 'x');
    output.write(much);
    output.write("end");
    ASSERT_EQ(output.finish(), std::error_code());
    EXPECT_EQ(contentOf(folder.file("calls")), much + "end");
}

TEST(Output, toAPipeGoesThroughThePipe) {
    const Folder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    const int reader = open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    Output output(folder.file("pipe"), Existing::replaced);
    output.write("through");
    ASSERT_EQ(output.finish(), std::error_code());
    char bytes[16];
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 7);
    close(reader);
    EXPECT_TRUE(std::filesystem::is_fifo(folder.file("pipe")));
}

TEST(Output, toAPipeThatNobodyReadsIsTold) {
    const Folder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    const int reader = open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    Output output(folder.file("pipe"), Existing::replaced);
    close(reader);
    const auto before = signal(SIGPIPE, SIG_IGN);
    output.write("text");
    EXPECT_EQ(output.finish(), std::errc::broken_pipe);
    signal(SIGPIPE, before);
    EXPECT_TRUE(std::filesystem::is_fifo(folder.file("pipe")));
}

TEST(Output, toAFolderIsRefused) {
    const Folder folder;
    Output output(folder.path(), Existing::replaced);
    output.write("text");
    EXPECT_EQ(output.finish(), std::errc::is_a_directory);
}

}  // namespace

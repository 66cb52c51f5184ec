// Names as file names: safe, told apart, and read back.
#include "desktop/notify/file_name.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace notify_tests {
namespace {

TEST(FileNames, plainNamesStayReadable) {
    EXPECT_EQ(notify::fileNameOf("QuorvelAllCallsCleared"), "QuorvelAllCallsCleared.post");
    EXPECT_EQ(notify::fileNameOf("com.velmarin.Quorvel-1_2"), "com.velmarin.Quorvel-1_2.post");
}

TEST(FileNames, whatADirectoryCouldMisreadIsEscaped) {
    EXPECT_EQ(notify::fileNameOf("../up"), "%2E.%2Fup.post");
    EXPECT_EQ(notify::fileNameOf("."), "%2E.post");
    EXPECT_EQ(notify::fileNameOf("a b%"), "a%20b%25.post");
    EXPECT_EQ(notify::fileNameOf("\xC3\xBC"), "%C3%BC.post");
    EXPECT_EQ(notify::fileNameOf(std::string_view("\0", 1)), "%00.post");
}

TEST(FileNames, filesThatNobodyPostsAreNoNames) {
    for (const char* file : {"", ".post", "name", "name.txt", ".hidden.post", "a%2", "a%2.post", "a%zz.post",
                             "a%61.post", "a%2f.post", "a b.post", "name.post~", "%.post"}) {
        EXPECT_EQ(notify::nameOfFile(file), std::nullopt) << file;
    }
}

TEST(FileNames, everyNameComesBackAndStaysInItsDirectory) {
    EXPECT_TRUE(rc::check([](const std::string& name) {
        const std::string file = notify::fileNameOf(name);
        RC_ASSERT(file.find('/') == std::string::npos);
        RC_ASSERT(file.find('\0') == std::string::npos);
        RC_ASSERT(name.empty() || file.front() != '.');
        if (!name.empty()) RC_ASSERT(notify::nameOfFile(file) == name);
    }));
}

}  // namespace
}  // namespace notify_tests

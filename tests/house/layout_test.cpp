// The layout of the C++ sources is the one that .clang-format decides.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/house/source_tree.h"

namespace {

struct Outcome {
    int status = -1;
    std::string output;
};

// Runs a shell command and collects all that it prints. The status is -1 where it did not exit by itself.
Outcome runCommand(const std::string& command) {
    Outcome outcome;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return outcome;
    char buffer[4096];
    while (const std::size_t count = fread(buffer, 1, sizeof buffer, pipe)) outcome.output.append(buffer, count);
    const int status = pclose(pipe);
    if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
    return outcome;
}

// What clang-format says of these files of the tree at root, with the project's own settings.
Outcome checkLayout(const std::filesystem::path& root, const std::vector<std::string>& paths) {
    std::string command = "cd '" + root.string() + "' && clang-format --style='file:" SOURCE_TREE "/.clang-format'" +
                          " --dry-run -Werror --ferror-limit=1";
    for (const std::string& path : paths) command += " '" + path + "'";
    return runCommand(command);
}

Outcome checkLayoutOf(const std::string& text) {
    // A folder of its own: several of these tests run at once.
    std::string root = testing::TempDir() + "house_layout-XXXXXX";
    if (mkdtemp(root.data()) == nullptr) return {-1, "no folder for the test"};
    std::ofstream(root + "/sample.cpp") << text;
    Outcome outcome = checkLayout(root, {"sample.cpp"});
    std::filesystem::remove_all(root);
    return outcome;
}

}  // namespace

TEST(Layout, aFileLaidOutOtherwiseIsFound) {
    const Outcome outcome = checkLayoutOf("int  answer( ) {\n  return 42; }\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, testing::HasSubstr("sample.cpp:1:4: error: code should be clang-formatted"));
}

TEST(Layout, aFileLaidOutAsDecidedPasses) {
    const Outcome outcome = checkLayoutOf("int answer() { return 42; }\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
}

TEST(ProjectTree, everySourceIsLaidOutAsDecided) {
    std::vector<std::string> paths;
    for (const house::SourceFile& file : house::SourceTree::read(SOURCE_TREE).files) {
        if (file.isCpp()) paths.push_back(file.path);
    }
    ASSERT_FALSE(paths.empty());
    const Outcome outcome = checkLayout(SOURCE_TREE, paths);
    EXPECT_EQ(outcome.output, "") << "clang-format -i lays them out";
    EXPECT_EQ(outcome.status, 0);
}

// Both programs, ended by an exception from below.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using testing::HasSubstr;

constexpr int abortedInShell = 134;

class Programs : public testing::Test {
  protected:
    Programs() {
        std::string name = std::filesystem::temp_directory_path() / "uncaught-XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        directory_ = name;
    }
    ~Programs() override { std::filesystem::remove_all(directory_); }

    /// The exit status as a shell has it.
    int run(const std::string& command) const {
        const std::string whole = "ulimit -c 0; " + command + " --data '" + file("data") + "' </dev/null >'" +
                                  file("out") + "' 2>'" + file("errors") + '\'';
        const int status = std::system(("timeout 60 sh -c \"" + whole + '"').c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string file(const std::string& name) const { return (directory_ / name).string(); }
    std::string contentOf(const std::string& name) const {
        std::ifstream stream(file(name));
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path directory_;
};

TEST_F(Programs, thePhoneTellsItsCallerAndItsLogWhichExceptionEndedIt) {
    for (const char* thread : {"main", "worker"}) {
        EXPECT_EQ(run(std::string("RAISING_PLUGIN_THREAD=") + thread + " RAISING_PLUGIN_LOG='" + file("log") + "' '" +
                      PHONE_PROGRAM + "' --script - --plugin '" RAISING_PLUGIN "'"),
                  abortedInShell);
        EXPECT_THAT(contentOf("errors"), HasSubstr("phone: ended by an exception that nothing catches")) << thread;
        for (const char* place : {"errors", "log"})
            EXPECT_THAT(contentOf(place), HasSubstr("NSInvalidArgumentException: Tried to add nil to array")) << thread;
        std::filesystem::remove(file("log"));
    }
}

#if !defined(NO_PRELOADING)
TEST_F(Programs, bothTellTheirCallerOfAnExceptionOfCxx) {
    const std::string preloading = "LD_PRELOAD='" THROWING_MASK "' '";
    struct Program {
        const char* name;
        const char* command;
    };
    for (const auto& [program, command] :
         {Program{"phone", PHONE_PROGRAM "' --script -"}, Program{"quorvelctl", QUORVELCTL_PROGRAM "' list"}}) {
        EXPECT_EQ(run(preloading + command), abortedInShell);
        EXPECT_THAT(contentOf("errors"), HasSubstr(std::string(program) + ": ended by an exception"));
        EXPECT_THAT(contentOf("errors"), HasSubstr("std::runtime_error: no mask today"));
        EXPECT_THAT(contentOf("errors"), HasSubstr(THROWING_MASK "(")) << "the stack of calls";
    }
}
#endif

}  // namespace

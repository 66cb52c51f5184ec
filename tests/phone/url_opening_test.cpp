// Handing addresses to the desktop: another program gets the address as it is, and no shell sees it.
#include "desktop/phone/url_opening.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace phone {
namespace {

/// An opener that writes its one argument into a pipe, in front of all others on the search path.
class UrlOpening : public testing::Test {
  protected:
    UrlOpening() : path_(std::getenv("PATH")) {
        char name[] = "/tmp/url-opening-XXXXXX";
        folder_ = ::mkdtemp(name);
        ::setenv("PATH", folder_.c_str(), 1);
    }
    ~UrlOpening() override {
        ::setenv("PATH", path_.c_str(), 1);
        std::filesystem::remove_all(folder_);
    }
    void installOpener() {
        EXPECT_EQ(::mkfifo(pipe().c_str(), 0600), 0);
        std::ofstream(folder_ / "xdg-open")
            << "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" << pipe().string() << "'\n";
        std::filesystem::permissions(folder_ / "xdg-open", std::filesystem::perms::owner_all);
    }
    /// Waits until the opener has written.
    std::string heard() {
        std::ifstream stream(pipe());
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::filesystem::path pipe() const { return folder_ / "heard"; }

  private:
    std::string path_;
    std::filesystem::path folder_;
};

TEST_F(UrlOpening, givesTheAddressToTheDesktopsOpener) {
    installOpener();
    EXPECT_TRUE(takeAddress("tel://+4930123456", true));
    EXPECT_EQ(heard(), "1|tel://+4930123456");
}

TEST_F(UrlOpening, noShellReadsTheAddress) {
    installOpener();
    EXPECT_TRUE(takeAddress("tel://1;$(id)`id`&'\" *", true));
    EXPECT_EQ(heard(), "1|tel://1;$(id)`id`&'\" *");
}

TEST_F(UrlOpening, saysWhatIsMissingWhenThereIsNoOpener) {
    EXPECT_EQ(startProgram({"xdg-open", "tel://1"}),
              "xdg-open cannot be started: No such file or directory. Install it, or start the Phone without "
              "--open-urls.");
    EXPECT_FALSE(takeAddress("tel://1", true));
}

TEST_F(UrlOpening, passesNoOptionsToTheOpener) {
    installOpener();
    EXPECT_FALSE(takeAddress("--version:", true));
    EXPECT_FALSE(takeAddress("no address", true));
}

}  // namespace
}  // namespace phone

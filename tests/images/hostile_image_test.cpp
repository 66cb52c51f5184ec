// Images that are damaged, cut short or for another machine are refused, whatever is in them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <random>

#include "desktop/substrate/mach_image.h"
#include "desktop/substrate/substrate.h"
#include "tests/images/files.h"

namespace {

using images::contentOf;
using substrate::mach::Image;
using testing::ElementsAre;
using testing::HasSubstr;

class HostileImages : public testing::Test {
  protected:
    HostileImages() {
        std::string name = (std::filesystem::temp_directory_path() / "images-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
        folder_ = name;
    }
    ~HostileImages() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::filesystem::path write(const std::string& name, const std::vector<char>& content) const {
        std::ofstream stream(folder_ / name, std::ios::binary);
        stream.write(content.data(), static_cast<std::streamsize>(content.size()));
        return folder_ / name;
    }
    static std::vector<char> half() {
        auto content = contentOf(SIMULATOR_IMAGE);
        content.resize(content.size() / 2);
        return content;
    }

    std::filesystem::path folder_;
};

/// Reads all that there is to read, so that the sanitizers see it.
void readWhole(const std::vector<char>& content) {
    const auto parsed = substrate::mach::parse(images::bytesOf(content));
    const auto* image = std::get_if<Image>(&parsed);
    if (!image) return;
    const auto rebases = substrate::mach::rebasesOf(*image);
    if (const auto* places = std::get_if<std::vector<substrate::mach::Place>>(&rebases))
        for (const auto& place : *places) {
            ASSERT_LT(place.segment, image->segments.size());
            ASSERT_LE(place.offset + 8, image->segments[place.segment].size);
        }
    const auto binds = substrate::mach::bindsOf(*image);
    if (const auto* list = std::get_if<std::vector<substrate::mach::Bind>>(&binds))
        for (const auto& bind : *list) {
            ASSERT_LT(bind.place.segment, image->segments.size());
            ASSERT_LE(bind.place.offset + 8, image->segments[bind.place.segment].size);
        }
}

TEST_F(HostileImages, cutShortAnywhereAreRefused) {
    const auto whole = contentOf(SIMULATOR_IMAGE);
    for (std::size_t length = 0; length < whole.size(); length += length < 4096 ? 7 : 4099) {
        const std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_TRUE(std::holds_alternative<std::string>(substrate::mach::parse(images::bytesOf(part)))) << length;
    }
}

TEST_F(HostileImages, changedAnywhereAreReadWithinTheirBounds) {
    const auto whole = contentOf(SIMULATOR_IMAGE);
    std::mt19937 random(7);
    constexpr std::size_t header = 4096;
    for (int round = 0; round < 3000; ++round) {
        auto changed = whole;
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i) {
            // Half of the changes in the load commands, half in the fix-ups at the end.
            const std::size_t at =
                random() % 2 == 0 ? random() % header : changed.size() - 1 - random() % (changed.size() / 8);
            changed[at] = static_cast<char>(random());
        }
        readWhole(changed);
    }
}

TEST_F(HostileImages, areToldByWhatIsWrongWithThem) {
    EXPECT_THAT(substrate::loadPlugin(HANDSET_IMAGE).value_or(""), HasSubstr("is for another processor"));
    const auto cut = write("cut.dylib", half());
    const auto trouble = substrate::loadPlugin(cut).value_or("");
    EXPECT_THAT(trouble, HasSubstr(cut.string()));
    EXPECT_THAT(trouble, HasSubstr("is cut short"));
    EXPECT_EQ(trouble.find('\n'), std::string::npos);
}

TEST_F(HostileImages, namedOnTheCommandLineEndThePhone) {
    const auto cut = write("cut.dylib", half());
    const std::string command = "timeout 60 '" PHONE_PROGRAM "' --data '" + (folder_ / "data").string() +
                                "' --plugin '" + cut.string() + "' --script /dev/null 2>/dev/null";
    const int status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 2);
}

TEST_F(HostileImages, inTheLoadersDirectoryAreReportedAndPassedOver) {
    write("Broken.dylib", half());
    std::vector<std::string> lines;
    EXPECT_EQ(substrate::loadPlugins(folder_, "com.apple.mobilephone",
                                     [&](const std::string& line) { lines.push_back(line); }),
              0U);
    EXPECT_THAT(lines, ElementsAre(HasSubstr("Broken.dylib")));
}

}  // namespace

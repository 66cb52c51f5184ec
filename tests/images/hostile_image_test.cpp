// Images that are damaged, cut short or for another machine are refused, whatever is in them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>

#include "desktop/substrate/mach_image.h"
#include "desktop/substrate/mach_loader.h"
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

/// An image of one page whose only initialiser is the function at the address.
std::vector<char> imageWithInitialiser(std::uint64_t address) {
    constexpr std::uint64_t page = 4096;
    constexpr std::uint32_t sizeOfSegment = 72 + 80, sizeOfFixUps = 48;
    constexpr std::uint32_t rebases = 1024, pointer = 2048;
    const auto put = [](std::vector<char>& to, auto value) {
        const auto* bytes = reinterpret_cast<const char*>(&value);
        to.insert(to.end(), bytes, bytes + sizeof value);
    };
    const auto name = [](std::vector<char>& to, const char* text) {
        char field[16] = {};
        std::copy_n(text, std::strlen(text), field);
        to.insert(to.end(), field, field + sizeof field);
    };
    std::vector<char> image;
    for (const std::uint32_t each : {0xFEEDFACFU, 0x01000007U, 3U, 6U, 2U, sizeOfSegment + sizeOfFixUps, 0U, 0U})
        put(image, each);
    for (const std::uint32_t each : {0x19U, sizeOfSegment}) put(image, each);
    name(image, "__ALL");
    for (const std::uint64_t each : {std::uint64_t{0}, 2 * page, std::uint64_t{0}, page}) put(image, each);
    for (const std::uint32_t each : {7U, 7U, 1U, 0U}) put(image, each);
    name(image, "__mod_init_func");
    name(image, "__ALL");
    put(image, std::uint64_t{pointer});
    put(image, std::uint64_t{8});
    for (const std::uint32_t each : {pointer, 3U, 0U, 0U, 9U, 0U, 0U, 0U}) put(image, each);
    // Type: a pointer; segment 0, offset 2048; once; the end.
    constexpr std::uint8_t opcodes[] = {0x11, 0x20, 0x80, 0x10, 0x51, 0x00};
    for (const std::uint32_t each : {0x22U, sizeOfFixUps, rebases, std::uint32_t{sizeof opcodes}}) put(image, each);
    image.resize(page);
    std::memcpy(image.data() + rebases, opcodes, sizeof opcodes);
    std::memcpy(image.data() + pointer, &address, sizeof address);
    constexpr char returnAtOnce = '\xC3';
    image[3000] = returnAtOnce;
    return image;
}

TEST_F(HostileImages, callNothingThatTheFileDoesNotHold) {
    const auto said = [&](std::uint64_t address) {
        const auto image = imageWithInitialiser(address);
        return substrate::mach::load(images::bytesOf(image)).value_or("loaded");
    };
    EXPECT_EQ(said(3000), "loaded");
    // In the segment, but behind what the file has of it.
    EXPECT_EQ(said(6000), "has an initialiser that is no code");
    EXPECT_EQ(said(1 << 20), "has an initialiser that is no code");
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

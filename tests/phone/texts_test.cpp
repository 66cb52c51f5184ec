// The telephone application's texts: every language has them all, in a form that is read the same everywhere.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace phone {
namespace {

class TextsTest : public testing::TestWithParam<const char*> {
  protected:
    static std::string contentOf(const std::string& language) {
        const auto file = std::filesystem::path(PHONE_TEXTS) / (language + ".lproj") / "Localizable.strings";
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static std::set<std::string> keysOf(const std::string& content) {
        // Lines of the form "key" = "text";
        std::set<std::string> keys;
        std::istringstream lines(content);
        for (std::string line; std::getline(lines, line);) {
            const auto between = line.find("\" = \"");
            if (line.starts_with('"') && line.ends_with("\";") && between != std::string::npos)
                keys.insert(line.substr(1, between - 1));
        }
        return keys;
    }
};

TEST_P(TextsTest, theLanguageHasEveryTextThatEnglishHas) {
    const auto keys = keysOf(contentOf("en"));
    EXPECT_GT(keys.size(), 20u);
    EXPECT_EQ(keysOf(contentOf(GetParam())), keys);
}

TEST_P(TextsTest, theFileSaysThatItIsUtf8) {
    EXPECT_TRUE(contentOf(GetParam()).starts_with("\xEF\xBB\xBF")) << "it would be read in the machine's encoding";
}

INSTANTIATE_TEST_SUITE_P(Languages, TextsTest, testing::Values("de", "es", "ru", "ar"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
}  // namespace phone

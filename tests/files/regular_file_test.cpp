// Reading waits for nobody.
#include "desktop/files/regular_file.h"

#include <gtest/gtest.h>

#include "tests/files/folder.h"

namespace {

using files::readFile;
using files_tests::Folder;

std::error_code errorOf(const std::filesystem::path& file, std::size_t most = 1000) {
    const auto read = readFile(file, most);
    const auto* error = std::get_if<std::error_code>(&read);
    return error ? *error : std::error_code();
}

TEST(RegularFile, isReadWhole) {
    const Folder folder;
    const std::string much(200'000, 'x');
    EXPECT_EQ(std::get<std::string>(readFile(folder.write("file", much), much.size())), much);
    EXPECT_EQ(std::get<std::string>(readFile(folder.write("empty", ""), 0)), "");
}

TEST(RegularFile, whatIsNoneIsRefusedAtOnce) {
    const Folder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    EXPECT_EQ(errorOf(folder.file("pipe")), std::errc::invalid_argument);
    EXPECT_EQ(errorOf("/dev/zero"), std::errc::invalid_argument);
    EXPECT_EQ(errorOf(folder.path()), std::errc::is_a_directory);
    EXPECT_EQ(errorOf(folder.file("nothing")), std::errc::no_such_file_or_directory);
}

TEST(RegularFile, thatIsTooLongIsRefused) {
    const Folder folder;
    EXPECT_EQ(errorOf(folder.write("file", "12345"), 4), std::errc::file_too_large);
    EXPECT_EQ(errorOf(folder.file("file"), 5), std::error_code());
}

}  // namespace

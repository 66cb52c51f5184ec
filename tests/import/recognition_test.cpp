// Files are known by their content, whatever they are named; what is no file of calls is named for what it is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::HasSubstr;
using tools_tests::Directory;

TEST(Recognition, takesNoNoticeOfTheName) {
    const Directory directory;
    runOn(directory.file("calls.csv"),
          "create table calls (_id integer primary key, number text, date integer, duration integer, type integer)");
    EXPECT_EQ(read(directory.file("calls.csv")).format, "an Android phone's calls");
    const auto csv = directory.write("calls.db", "date,address,kind,duration\n1,2,missed,0\n");
    EXPECT_EQ(read(csv).format, "comma-separated values");
}

TEST(Recognition, namesWhatIsNoFileOfCalls) {
    const Directory directory;
    const auto refusalOf = [&](const std::string& content) { return read(directory.write("file", content)).refusal; };
    EXPECT_THAT(refusalOf("PK\x03\x04rest"), HasSubstr("file is an archive. Unpack it"));
    EXPECT_THAT(refusalOf("\x1F\x8Brest"), HasSubstr("is compressed"));
    EXPECT_THAT(refusalOf("BEGIN:VCARD\r\nVERSION:3.0\r\n"), HasSubstr("quorvelctl contacts import"));
    EXPECT_THAT(refusalOf("%PDF-1.4"), HasSubstr("PDF"));
    EXPECT_THAT(refusalOf(std::string("\x7F"
                                      "ELF\0\0",
                                      6)),
                HasSubstr("is no file of calls"));
}

}  // namespace
}  // namespace import_tests

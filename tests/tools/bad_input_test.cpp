// What the program says of files and folders that it cannot use, and that it leaves them as they are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/tools/program.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using tools_tests::contentOf;
using tools_tests::Directory;
using tools_tests::failed;
using tools_tests::header;
using tools_tests::succeeded;
using tools_tests::unusable;

TEST(BadInput, aHeaderThatCannotBeUsedIsNotSkipped) {
    const Directory directory;
    const auto file = directory.write("calls.csv", "date,adress,kind,duration\n1,2,missed,0\n");
    const auto outcome = directory.run("import --skip-bad '" + file.string() + '\'');
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr(file.string() + ":1:1: There is no column \"address\""),
                                      HasSubstr("Nothing was imported.")));
    EXPECT_EQ(outcome.output, "");
}

TEST(BadInput, aFileThatCannotBeReadToItsEndImportsNothing) {
    const Directory directory;
    // Readable by name, but reading it answers an input/output error.
    const auto outcome = directory.run("import --skip-bad /proc/self/mem");
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr("/proc/self/mem:1:1: From here on the file cannot be read"));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
}

TEST(BadInput, aFolderIsNoFileOfCalls) {
    const Directory directory;
    const auto outcome = directory.run("import '" + directory.file("").string() + '\'');
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr("is a folder"));
}

TEST(BadInput, aCallThatTheLogRefusesIsNamedByItsLine) {
    const Directory directory;
    const auto file = directory.write(
        "calls.csv", header + "1,1,missed,0\n2," + std::string(200'000, '5') + ",missed,0\n3,3,missed,0\n");
    const auto refused = directory.run("import '" + file.string() + '\'');
    EXPECT_EQ(refused.status, failed);
    EXPECT_THAT(refused.errors, HasSubstr(file.string() + ":3:1: The call's texts are too long"));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
    const auto skipped = directory.run("import --skip-bad '" + file.string() + '\'');
    EXPECT_EQ(skipped.status, succeeded);
    EXPECT_EQ(skipped.output, "2 calls imported.\n1 skipped.\n");
}

TEST(BadInput, aDamagedDatabaseIsLeftAsItIs) {
    const Directory directory;
    ASSERT_EQ(directory.run("generate --calls 500").status, succeeded);
    auto content = contentOf(directory.file("data/calls.db"));
    ASSERT_GT(content.size(), 40'000U);
    content.replace(8'192, 30'000, std::string(30'000, 'x'));
    directory.write("data/calls.db", content);
    for (const char* command : {"list", "generate --calls 10"}) {
        const auto outcome = directory.run(command);
        EXPECT_NE(outcome.status, succeeded) << command;
        EXPECT_THAT(outcome.errors, HasSubstr("calls.db")) << command;
        EXPECT_EQ(outcome.output, "") << command;
    }
    EXPECT_EQ(contentOf(directory.file("data/calls.db")), content);
}

TEST(BadInput, damagedSettingsAreSetAsideAndTheStatusTells) {
    const Directory directory;
    ASSERT_EQ(directory.run("list").status, succeeded);
    directory.write("data/settings.plist", "junk");
    const auto read = directory.run("get minRec_Call");
    EXPECT_EQ(read.status, failed);
    EXPECT_EQ(read.output, "50\n");
    EXPECT_THAT(read.errors, HasSubstr("settings.plist.damaged-1"));
    EXPECT_EQ(contentOf(directory.file("data/settings.plist.damaged-1")), "junk");
    directory.write("data/settings.plist", "more junk");
    const auto changed = directory.run("set minRec_Call 20");
    EXPECT_EQ(changed.status, failed);
    EXPECT_THAT(changed.errors, HasSubstr("Nothing was set."));
    EXPECT_EQ(contentOf(directory.file("data/settings.plist.damaged-2")), "more junk");
    EXPECT_EQ(directory.run("set minRec_Call 20").status, succeeded);
    EXPECT_EQ(directory.run("get minRec_Call").output, "20\n");
}

TEST(BadInput, oneWrongByteInTheSettingsIsDamageToEveryCommand) {
    for (const std::string content :
         {"<plist><dict><\x9dkey>a</key></dict></plist>", "<?xml version=\"1.0\"?><plist><dict><key>a</kez>",
          "{ minRec_Call = \"\\Ud800\"; }", "bplist00\xff\xff\xff"}) {
        const Directory directory;
        ASSERT_EQ(directory.run("set minRec_Call 20").status, succeeded);
        directory.write("data/settings.plist", content);
        const auto examined = directory.run("doctor");
        EXPECT_EQ(examined.status, failed) << content;
        EXPECT_THAT(examined.output, HasSubstr("are damaged"));
        const auto listed = directory.run("contacts list");
        EXPECT_EQ(listed.status, succeeded) << listed.errors;
        EXPECT_THAT(listed.errors, HasSubstr("settings.plist.damaged-1"));
        EXPECT_EQ(contentOf(directory.file("data/settings.plist.damaged-1")), content);
        EXPECT_EQ(directory.run("get minRec_Call").output, "50\n");
    }
}

TEST(BadInput, aFolderThatCannotHoldDataIsNamed) {
    const Directory directory;
    directory.write("data", "a file in the way");
    const auto outcome = directory.run("list");
    EXPECT_EQ(outcome.status, unusable);
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr(directory.data().string()), HasSubstr("--data")));
    EXPECT_EQ(contentOf(directory.data()), "a file in the way");
}

TEST(BadInput, outputThatCannotBeWrittenIsSaid) {
    const Directory directory;
    ASSERT_EQ(directory.run("generate --calls 10").status, succeeded);
    const auto outcome = directory.run("list", "/dev/full");
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr("The output cannot be written: No space left on device."));
}

}  // namespace

// `quorvelctl import`: what it adds, and what it says of what is there already or would come.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/import/reading.h"

namespace import_tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tools_tests::Directory;
using tools_tests::failed;
using tools_tests::header;
using tools_tests::succeeded;

const std::string android = "'" SAMPLES "/android-contacts2-plaso/contacts2.db'";

TEST(ImportCommand, importingTwiceAddsNothing) {
    const Directory directory;
    EXPECT_EQ(directory.run("import " + android).output, "3 calls imported.\n");
    const auto before = directory.run("list").lines();
    EXPECT_THAT(before, SizeIs(3));
    const auto again = directory.run("import " + android);
    EXPECT_EQ(again.status, succeeded);
    EXPECT_EQ(again.output, "0 calls imported.\n3 present already.\n");
    EXPECT_EQ(directory.run("list").lines(), before);
}

TEST(ImportCommand, namingAFileTwiceAddsItOnce) {
    const Directory directory;
    EXPECT_EQ(directory.run("import " + android + ' ' + android).output, "3 calls imported.\n3 present already.\n");
    EXPECT_THAT(directory.run("list").lines(), SizeIs(3));
}

TEST(ImportCommand, aDryRunSaysWhatWouldComeAndWritesNothing) {
    const Directory directory;
    const auto file = directory.write("calls.csv", header + "1383772636,5404561685,missed,0\n2,2,lost,0\n");
    EXPECT_EQ(directory.run("import " + android).status, succeeded);
    const auto before = tools_tests::contentOf(directory.file("data/calls.db"));
    const auto dry = directory.run("import --dry-run " + android + " '" + file.string() + "'");
    EXPECT_EQ(dry.status, failed);
    EXPECT_THAT(dry.errors, HasSubstr("calls.csv:3:5: \"lost\" is no kind of call"));
    EXPECT_THAT(dry.lines(), ElementsAre(HasSubstr("contacts2.db: an Android phone's calls: 3 calls found, 3 of them "
                                                   "present already, 0 wrong."),
                                         file.string() + ": comma-separated values: 1 calls found, 1 of them present "
                                                         "already, 1 wrong.",
                                         "0 calls would be imported. Nothing was written."));
    EXPECT_EQ(tools_tests::contentOf(directory.file("data/calls.db")), before);
}

TEST(ImportCommand, aDryRunOfAnEmptyLogAddsNothing) {
    const Directory directory;
    const auto dry = directory.run("import --dry-run " + android);
    EXPECT_EQ(dry.status, succeeded);
    EXPECT_THAT(dry.output, HasSubstr("3 calls would be imported. Nothing was written."));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
}

TEST(ImportCommand, whatHasNoCounterpartIsKeptBesideTheCall) {
    const Directory directory;
    ASSERT_EQ(directory.run("import " + android).status, succeeded);
    EXPECT_THAT(printedBy("sqlite3 '" + directory.file("data/calls.db").string() +
                          "' \"select json_extract(extra, '$.matched_number') from call order by ROWID\""),
                "1-540-456-1685\n1-540-456-1685\n+1-540-456-1685\n");
}

TEST(ImportCommand, aWrongRowImportsNothingUnlessItIsPassedOver) {
    const Directory directory;
    runOn(directory.file("calls"),
          "create table call (ROWID integer primary key, address text, date integer, duration integer, flags integer);"
          "insert into call values (1, '1', 1300000000, 5, 4), (2, '2', null, 5, 4), (3, '3', 1300000002, 5, 4);");
    const std::string file = " '" + directory.file("calls").string() + "'";
    const auto refused = directory.run("import" + file);
    EXPECT_EQ(refused.status, failed);
    EXPECT_THAT(refused.errors, HasSubstr("calls:row 2: The call has no date."));
    EXPECT_THAT(refused.errors, HasSubstr("--skip-bad"));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
    EXPECT_EQ(directory.run("import --skip-bad" + file).output, "2 calls imported.\n1 skipped.\n");
}

TEST(ImportCommand, showsABarOnATerminalAlone) {
    const Directory directory;
    std::string statements =
        "create table call (ROWID integer primary key, address text, date integer, duration integer, flags integer);"
        "with recursive n(i) as (values (1) union all select i + 1 from n where i < 2000) "
        "insert into call select i, i, 1300000000 + i, 1, 4 from n;";
    runOn(directory.file("calls"), statements);
    const auto shown = directory.runOnTerminal({"import", directory.file("calls")});
    EXPECT_THAT(shown.output, HasSubstr("Importing "));
    EXPECT_THAT(shown.output, HasSubstr("2000 calls imported."));
    EXPECT_EQ(directory.run("import '" + directory.file("calls").string() + "'").errors, "");
}

}  // namespace
}  // namespace import_tests

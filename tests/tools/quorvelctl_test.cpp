// The program as a person meets it: status, output, what it announces, what it refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <thread>

#include "desktop/notify/notify.h"
#include "objc/strong.h"
#include "platform/corefoundation.h"
#include "tests/tools/program.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tools_tests::Directory;
using tools_tests::failed;
using tools_tests::headerWithName;
using tools_tests::succeeded;
using tools_tests::unusable;

TEST(Quorvelctl, importsAndListsNewestFirst) {
    const Directory directory;
    const auto file = directory.write("calls.csv", headerWithName +
                                                       "1718452800,+4930100,received,30,Anna\n"
                                                       "2024-06-15T13:00:00Z,+4930200,missed,0,\n");
    const auto imported = directory.run("import '" + file.string() + '\'');
    EXPECT_EQ(imported.status, succeeded) << imported.errors;
    EXPECT_EQ(imported.output, "2 calls imported.\n");
    EXPECT_EQ(imported.errors, "");
    EXPECT_THAT(directory.run("list").lines(),
                ElementsAre("2\t2024-06-15 13:00:00\tmissed\ttelephone\t0\t+4930200\t",
                            "1\t2024-06-15 12:00:00\treceived\ttelephone\t30\t+4930100\tAnna"));
    EXPECT_THAT(directory.run("list --filter missed").lines(), SizeIs(1));
    EXPECT_THAT(directory.run("list --limit 1").lines(), SizeIs(1));
}

TEST(Quorvelctl, importsNothingOfAFileWithAWrongLine) {
    const Directory directory;
    const auto file = directory.write("calls.csv", headerWithName + "1,1,missed,0,\n2,2,lost,0,\n");
    const auto outcome = directory.run("import '" + file.string() + '\'');
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr(file.string() + ":3:5: "));
    EXPECT_THAT(outcome.errors, HasSubstr("--skip-bad"));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
}

TEST(Quorvelctl, countsWhatItWasToldToSkip) {
    const Directory directory;
    const auto file = directory.write("calls.csv", headerWithName + "1,1,missed,0,\n2,2,lost,0,\n3,3,missed,x,\n");
    const auto outcome = directory.run("import --skip-bad '" + file.string() + '\'');
    EXPECT_EQ(outcome.status, succeeded);
    EXPECT_THAT(outcome.lines(), ElementsAre("1 calls imported.", "2 skipped."));
    EXPECT_THAT(directory.run("list").lines(), SizeIs(1));
}

TEST(Quorvelctl, importsAllFilesOrNone) {
    const Directory directory;
    const auto good = directory.write("good.csv", headerWithName + "1,1,missed,0,\n");
    const auto outcome =
        directory.run("import '" + good.string() + "' '" + directory.file("nowhere.csv").string() + '\'');
    EXPECT_EQ(outcome.status, failed);
    EXPECT_THAT(outcome.errors, HasSubstr("nowhere.csv cannot be read"));
    EXPECT_THAT(directory.run("list").lines(), IsEmpty());
}

TEST(Quorvelctl, generatesCallsThatCanBeAtBothEndsOfTime) {
    const Directory directory;
    for (const char* until : {"1", "2147483647"}) {
        const auto outcome = directory.run(std::string("generate --calls 200 --seed 3 --until ") + until);
        EXPECT_EQ(outcome.status, succeeded) << outcome.errors;
    }
    EXPECT_EQ(directory.run("doctor").status, succeeded);
}

TEST(Quorvelctl, generatesTheSameCallsForTheSameSeed) {
    const Directory one;
    const Directory other;
    const std::string arguments = "generate --calls 500 --seed 3 --until 1718452800";
    EXPECT_EQ(one.run(arguments).output, "500 calls generated.\n");
    EXPECT_EQ(other.run(arguments).status, succeeded);
    const auto calls = one.run("list --limit 1000");
    EXPECT_THAT(calls.lines(), SizeIs(500));
    EXPECT_EQ(calls.output, other.run("list --limit 1000").output);
}

TEST(Quorvelctl, changesSettingsAndNamesWhatTheyTake) {
    const Directory directory;
    EXPECT_EQ(directory.run("get minRec_Call").output, "50\n");
    EXPECT_EQ(directory.run("set minRec_Call 20").status, succeeded);
    EXPECT_EQ(directory.run("get minRec_Call").output, "20\n");
    EXPECT_THAT(directory.run("get").lines(), testing::Contains("minRec_Call 20"));
    const auto refused = directory.run("set minRec_Call many");
    EXPECT_EQ(refused.status, failed);
    EXPECT_THAT(refused.errors, HasSubstr("a whole number from 1 to"));
    const auto unknown = directory.run("set nothing on");
    EXPECT_EQ(unknown.status, failed);
    EXPECT_THAT(unknown.errors, HasSubstr("isReplaceRecentsOn"));
    EXPECT_EQ(directory.run("get nothing").status, failed);
    EXPECT_EQ(directory.run("get minRec_Call").output, "20\n");
}

TEST(Quorvelctl, refusesACommandLineThatItDoesNotUnderstand) {
    const Directory directory;
    EXPECT_EQ(directory.run("").status, unusable);
    EXPECT_EQ(directory.run("fly").status, unusable);
    EXPECT_EQ(directory.run("list --filter lost").status, unusable);
    EXPECT_EQ(directory.run("generate --calls 0").status, unusable);
    EXPECT_EQ(directory.run("--help").status, succeeded);
    EXPECT_THAT(directory.run("import --help").output, HasSubstr("quorvelctl import calls.csv"));
}

TEST(Quorvelctl, leavesFilesThatItCannotUseAsTheyAre) {
    const Directory directory;
    EXPECT_EQ(directory.run("list").status, succeeded);
    const std::string foreign = "this is long enough to be taken for something, but it is no database at all\n";
    directory.write("data/calls.db", foreign);
    const auto outcome = directory.run("list");
    EXPECT_EQ(outcome.status, unusable);
    EXPECT_THAT(outcome.errors, HasSubstr("is not a call log"));
    EXPECT_EQ(tools_tests::contentOf(directory.file("data/calls.db")), foreign);
}

TEST(Quorvelctl, onATerminalDrawsABarAndATableWithAHead) {
    const Directory directory;
    const auto generated = directory.runOnTerminal({"generate", "--calls", "300"});
    EXPECT_EQ(generated.status, succeeded);
    EXPECT_THAT(generated.output, HasSubstr("Generating ["));
    EXPECT_THAT(generated.output, HasSubstr("\r\033[K300 calls generated."));
    const auto listed = directory.runOnTerminal({"list", "--limit", "1"});
    EXPECT_THAT(listed.output, testing::StartsWith("number    time                 kind       service    seconds"));
    EXPECT_EQ(directory.run("generate --calls 300").errors, "");
}

TEST(Quorvelctl, losesNothingOfFourRunsAtOnceOnAFolderThatIsNotThereYet) {
    const Directory directory;
    std::vector<int> statuses(4);
    std::vector<std::thread> imports;
    for (std::size_t i = 0; i < statuses.size(); ++i)
        imports.emplace_back([&, i] {
            statuses[i] = std::system(("timeout 60 '" QUORVELCTL_PROGRAM "' --data '" + directory.data().string() +
                                       "' generate --calls 300 --seed " + std::to_string(i) + " >/dev/null 2>&1")
                                          .c_str());
        });
    for (auto& import : imports) import.join();
    EXPECT_THAT(statuses, testing::Each(0));
    EXPECT_THAT(directory.run("list --limit 5000").lines(), SizeIs(1200));
}

std::vector<std::string> heard;
void hear(void*, void*, const void* name, const void*, const void*) {
    heard.push_back(objc::send<"UTF8String", const char*>(objc::Object{static_cast<id>(const_cast<void*>(name))}));
}

/// Delivers what has arrived, once something has; false when a minute has passed without anything.
bool hearSomething() {
    constexpr int minute = 60'000;
    pollfd waited{notify::descriptor(), POLLIN, 0};
    while (poll(&waited, 1, minute) > 0)
        if (notify::deliverPending() > 0) return true;
    return false;
}

TEST(Quorvelctl, announcesWhatItChanges) {
    const objc::AutoreleasePool pool;
    const Directory directory;
    EXPECT_EQ(directory.run("list").status, succeeded);
    ASSERT_EQ(notify::openRendezvous(directory.data() / "notifications"), std::nullopt);
    static const bool once = [] {
        for (const char* name :
             {"QuorvelRestoreDatabaseNotification", "QuorvelReloadSettingsReplaceRecents", "SomethingElse"})
            darwin::observe(NSString::stringWithUTF8String(name), hear, darwin::Suspension::DeliverImmediately);
        return true;
    }();
    ASSERT_TRUE(once);
    const auto file = directory.write("calls.csv", headerWithName + "1,1,missed,0,\n");
    for (const std::string& command : {"import '" + file.string() + '\'', std::string("generate --calls 3"),
                                       std::string("set isGroupByDate on"), std::string("notify SomethingElse")}) {
        EXPECT_EQ(directory.run(command).status, succeeded) << command;
        EXPECT_TRUE(hearSomething()) << command;
    }
    EXPECT_THAT(heard, ElementsAre("QuorvelRestoreDatabaseNotification", "QuorvelRestoreDatabaseNotification",
                                   "QuorvelReloadSettingsReplaceRecents", "SomethingElse"));
    notify::closeRendezvous();
}

}  // namespace

// One evening with the Recents screen: from opening it to an empty log, beside other processes on the same directory
// and a database that refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::NewCall;
using scenarios::Handset;
using scenarios::LivePhone;
using scenarios::Outcome;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Lines = std::vector<std::string>;

/// 120 calls, one a minute, the newest last, of 40 people in turn, P000 to P039: dialled, received and missed in turn.
std::vector<NewCall> evening() {
    std::vector<NewCall> calls;
    for (int i = 0; i < 120; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "P%03d", i % 40);
        NewCall call;
        call.name = name;
        call.label = "mobile";
        call.address = "+4930555" + std::string(name + 1);
        call.contactId = 1 + i % 40;
        call.date = 1600000000 + 60 * i;
        call.duration = i % 3 == 2 ? 0 : 60;
        call.flags = i % 3 == 0 ? quorvel::store::flag::outgoing : 0;
        calls.push_back(call);
    }
    return calls;
}

/// Another process: `quorvelctl` on the handset's directory. Answers what it printed.
std::string control(const Handset& handset, const std::string& arguments) {
    const auto output = handset.file("control.out");
    const std::string command = std::string("LC_ALL=C.UTF-8 TZ=UTC timeout 120 '") + QUORVELCTL_PROGRAM + "' --data '" +
                                handset.file("").string() + "' " + arguments + " >'" + output.string() +
                                "' 2>&1 </dev/null";
    const int status = std::system(command.c_str());
    std::ifstream stream(output);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(status, 0) << arguments << ": " << text;
    return text;
}

/// Another process that has begun to write and does not come to an end.
class WriteLock {
  public:
    explicit WriteLock(const Handset& handset) {
        if (sqlite3_open(handset.file("calls.db").c_str(), &database_) != SQLITE_OK || !run("begin immediate"))
            throw std::runtime_error("the log cannot be locked");
    }
    ~WriteLock() {
        run("rollback");
        sqlite3_close(database_);
    }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

  private:
    bool run(const char* text) { return sqlite3_exec(database_, text, nullptr, nullptr, nullptr) == SQLITE_OK; }
    sqlite3* database_ = nullptr;
};

/// What one person sees and does on one Phone.
class Story {
  public:
    explicit Story(const Handset& handset) : phone_(handset) {}

    /// Does these, each to its end, and looks.
    const Outcome& after(const Lines& commands) {
        for (const auto& command : commands) phone_.say(command);
        shown_ = phone_.show();
        EXPECT_THAT(shown_.linesOf("hud"), IsEmpty()) << shown_.output;
        return shown_;
    }
    /// The line of the screen that begins so; empty for none.
    std::string line(const std::string& beginning) const {
        const auto lines = shown_.linesOf(beginning);
        return lines.empty() ? std::string() : lines.front();
    }
    /// Looks until the line is there: what another process did arrives by itself.
    void waitFor(const std::string& expected) {
        constexpr int mostLooks = 2000;
        for (int look = 0; look < mostLooks; ++look) {
            if (!after({}).linesOf(expected).empty()) return;
        }
        FAIL() << "never " << expected << "\n" << shown_.output;
    }
    /// Ends the script; the Phone must have been content.
    void close() {
        const Outcome ended = phone_.finish();
        EXPECT_EQ(ended.status, 0) << ended.errors;
    }

  private:
    LivePhone phone_;
    Outcome shown_;
};

TEST(Story, goesFromOpeningRecentsToAnEmptyLog) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);

    {
        SCOPED_TRACE("opening");
        story.after({});
        EXPECT_EQ(story.line("rows"), "rows 51");
        EXPECT_EQ(story.line("header"), "header \"Showing 50 calls\"");
        EXPECT_EQ(story.line("footer"), "footer \"120 calls, 1:20:00\"");
        EXPECT_EQ(story.line("right"), "right trash");
        EXPECT_EQ(story.line("left"), "left -");
    }
    {
        SCOPED_TRACE("loading more");
        story.after({"scroll end"});
        EXPECT_EQ(story.line("rows"), "rows 101");
        story.after({"scroll end"});
        EXPECT_EQ(story.line("rows"), "rows 120");
        story.after({"scroll 0"});
    }
    {
        SCOPED_TRACE("searching with scopes");
        const auto found = story.after({"search \"p01\""});
        EXPECT_EQ(story.line("header"), "header \"Showing 30 calls\"") << "the whole list was loaded";
        EXPECT_THAT(found.linesOf("row "), Each(HasSubstr("\"P01")));
        EXPECT_EQ(story.line("tag 1"), "tag 1 hidden");
        EXPECT_EQ(story.line("tag 2"), "tag 2 shown");
        story.after({"tap scope 3", "scroll end"});
        EXPECT_EQ(story.line("segments"), "segments 4 selected 3");
        EXPECT_EQ(story.line("header"), "header \"Showing 10 missed calls\"");
        EXPECT_EQ(story.line("rows"), "rows 10") << "the rest of the results is loaded: no load-more row";
    }
    {
        SCOPED_TRACE("a swipe among what was found");
        story.after({"swipe 0", "scroll end"});
        EXPECT_EQ(story.line("rows"), "rows 9");
    }
    {
        SCOPED_TRACE("editing the results, and deleting them");
        story.after({"tap tag 2"});
        EXPECT_EQ(story.line("tag 1"), "tag 1 shown");
        EXPECT_EQ(story.line("left"), "left -") << "the navigation bar belongs to the list";
        story.after({"tap tag 1"});
        EXPECT_THAT(story.line("sheet"), HasSubstr("destructive \"Delete All Found Calls\" cancel \"Cancel\""));
        story.after({"tap \"Cancel\""});
        EXPECT_EQ(story.line("rows"), "rows 9");
        story.after({"tap tag 1", "tap \"Delete All Found Calls\""});
        EXPECT_EQ(story.line("rows"), "rows 0");
        EXPECT_EQ(story.line("tag 1"), "tag 1 hidden");
        story.after({"cancel"});
        EXPECT_EQ(story.line("rows"), "rows 30") << "40 were missed and the ten found ones are gone";
    }
    {
        SCOPED_TRACE("switching");
        story.after({"tap segment 1"});
        EXPECT_EQ(story.line("footer"), "footer \"40 calls, 0:40:00\"");
        EXPECT_EQ(story.line("rows"), "rows 40");
        story.after({"tap segment 0"});
        EXPECT_EQ(story.line("footer"), "footer \"110 calls, 1:20:00\"");
    }
    {
        SCOPED_TRACE("swiping in the list");
        story.after({"swipe 0 open"});
        EXPECT_EQ(story.line("right"), "right stop");
        EXPECT_EQ(story.line("left"), "left -");
        story.after({"swipe 0 close"});
        EXPECT_EQ(story.line("right"), "right trash");
        story.after({"swipe 0"});
        EXPECT_EQ(story.line("footer"), "footer \"109 calls, 1:20:00\"");
    }
    {
        SCOPED_TRACE("deleting a filter's calls, after a change of mind");
        story.after({"tap segment 2", "tap right"});
        EXPECT_EQ(story.line("left"), "left delete_all_icon");
        EXPECT_EQ(story.line("right"), "right stop");
        story.after({"tap left"});
        EXPECT_EQ(story.line("sheet"),
                  "sheet \"Delete all received calls?\" destructive \"Delete All Received Calls\" cancel \"Cancel\"");
        story.after({"tap \"Cancel\""});
        EXPECT_EQ(story.line("rows"), "rows 40");
        story.after({"tap left", "tap \"Delete All Received Calls\""});
        EXPECT_EQ(story.line("rows"), "rows 0");
        EXPECT_EQ(story.line("left"), "left -");
        EXPECT_EQ(story.line("right"), "right -");
    }
    {
        SCOPED_TRACE("deleting everything");
        story.after({"tap segment 0"});
        EXPECT_EQ(story.line("footer"), "footer \"69 calls, 0:40:00\"");
        story.after({"tap right", "tap left"});
        EXPECT_EQ(story.line("sheet"),
                  "sheet \"Delete all calls?\" destructive \"Delete All Calls\" cancel \"Cancel\"");
        const auto empty = story.after({"tap \"Delete All Calls\""});
        EXPECT_EQ(story.line("rows"), "rows 0");
        EXPECT_THAT(empty.linesOf("header"), IsEmpty());
        EXPECT_THAT(empty.linesOf("footer"), IsEmpty());
        for (int segment = 1; segment < 4; ++segment) {
            story.after({"tap segment " + std::to_string(segment)});
            EXPECT_EQ(story.line("rows"), "rows 0") << segment;
        }
    }
    story.close();
    EXPECT_THAT(handset.run("show\n").linesOf("rows"), ElementsAre("rows 0"));
}

TEST(Story, aSwipeThatTheDatabaseRefusesIsUndone) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);
    const auto before = story.after({}).linesOf("row ");
    {
        const WriteLock lock(handset);
        const auto after = story.after({"swipe 1"});
        EXPECT_EQ(after.linesOf("row "), before) << "the row is back where it was";
        EXPECT_EQ(story.line("rows"), "rows 51");
    }
    story.after({"swipe 1"});
    EXPECT_EQ(story.line("footer"), "footer \"119 calls, 1:19:00\"");
    story.close();
    EXPECT_THAT(handset.run("show\n").linesOf("footer"), ElementsAre("footer \"119 calls, 1:19:00\""));
}

TEST(Story, aDeletionOfEverythingThatTheDatabaseRefusesLosesNothing) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);
    story.after({"tap segment 3"});
    {
        const WriteLock lock(handset);
        story.after({"tap right", "tap left", "tap \"Delete All Missed Calls\""});
        EXPECT_EQ(story.line("rows"), "rows 40");
    }
    // The bar was emptied with the list; it follows the rows again with the next load.
    story.after({"tap segment 0", "tap segment 3"});
    EXPECT_EQ(story.line("right"), "right trash");
    story.close();
    EXPECT_THAT(handset.run("show\n").linesOf("footer"), ElementsAre("footer \"120 calls, 1:20:00\""));
}

TEST(Story, callsFoundThatTheDatabaseRefusesToDeleteAreToldAndKept) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);
    story.after({"search \"p01\"", "scroll end", "tap tag 2", "tap tag 1"});
    {
        const WriteLock lock(handset);
        const auto refused = story.after({"tap \"Delete All Found Calls\""});
        EXPECT_THAT(refused.linesOf("alert"), SizeIs(1)) << refused.output;
    }
    story.close();
    EXPECT_THAT(handset.run("show\n").linesOf("footer"), ElementsAre("footer \"120 calls, 1:20:00\""));
}

TEST(Story, callsThatAnotherProcessAddsAreShown) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);
    story.after({});
    std::ofstream(handset.file("more.csv")) << "date,address,kind,duration,name\n"
                                               "1700000000,+4989777,received,30,Late Caller\n"
                                               "1700000060,+4989778,missed,0,Later Caller\n";
    control(handset, "import '" + handset.file("more.csv").string() + "'");
    story.waitFor("footer \"122 calls, 1:20:30\"");
    EXPECT_THAT(story.line("row 0"), HasSubstr("\"Later Caller\""));
    EXPECT_THAT(story.line("row 1"), HasSubstr("\"Late Caller\""));
    control(handset, "generate --calls 10 --seed 3 --until 1800000000");
    story.waitFor("footer \"132 calls");
    story.close();
}

TEST(Story, twoPhonesAndACommandLineShareOneDirectory) {
    const Handset handset;
    handset.fill(evening());
    Story one(handset);
    Story other(handset);
    one.after({});
    other.after({});
    one.after({"tap segment 3", "tap right", "tap left", "tap \"Delete All Missed Calls\""});
    EXPECT_EQ(one.line("rows"), "rows 0");
    // The other Phone reads the log again when it is told to, and finds what the first one left.
    control(handset, "notify QuorvelRestoreDatabaseNotification");
    other.waitFor("footer \"80 calls, 1:20:00\"");
    // What was deleted on one Phone comes back on both.
    EXPECT_THAT(control(handset, "deleted"), HasSubstr("P002"));
    control(handset, "undelete --all");
    other.waitFor("footer \"120 calls, 1:20:00\"");
    one.waitFor("rows 40");
    one.after({"tap segment 0"});
    one.waitFor("footer \"120 calls, 1:20:00\"");
    // A swipe on one Phone is followed by the other.
    one.after({"swipe 0"});
    other.waitFor("footer \"119 calls, ");
    other.after({"swipe 5"});
    one.close();
    other.close();
    EXPECT_THAT(handset.run("show\n").linesOf("footer"), ElementsAre(HasSubstr("\"118 calls, ")));
}

TEST(Story, aLogThatIsBackedUpAndRestoredWhileAPhoneIsOpenIsFollowed) {
    const Handset handset;
    handset.fill(evening());
    Story story(handset);
    story.after({});
    const auto newest = story.line("row 0");
    const std::string backup = "'" + handset.file("evening.quorvel").string() + "'";
    control(handset, "backup " + backup);
    story.after({"tap right", "tap left", "tap \"Delete All Calls\""});
    EXPECT_EQ(story.line("rows"), "rows 0");
    control(handset, "generate --calls 3 --seed 3 --until 1800000000");
    story.waitFor("rows 3");
    EXPECT_THAT(control(handset, "restore " + backup), HasSubstr("120 calls restored."));
    story.waitFor("footer \"120 calls, 1:20:00\"");
    EXPECT_EQ(story.line("row 0"), newest);
    // What the Phone does then is done to the restored log.
    story.after({"swipe 0"});
    story.waitFor("footer \"119 calls, 1:20:00\"");
    story.after({"search \"p01\"", "scroll end"});
    EXPECT_EQ(story.line("header"), "header \"Showing 30 calls\"");
    story.close();
}

}  // namespace

// A person who types, scrolls, switches, deletes and leaves faster than the loads end, while another process (this one)
// adds calls and posts names. The seed and the number of steps are fixed; only the threads' order is not. At every rest
// the screen is whole, and at the end the lists are the database.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <stdexcept>

#include "desktop/quorvel/store/call_store.h"
#include "tests/scenarios/phone_process.h"

namespace {

using quorvel::store::CallStore;
using quorvel::store::Cursor;
using quorvel::store::Filter;
using quorvel::store::Mode;
using quorvel::store::NewCall;
using scenarios::Handset;
using scenarios::LivePhone;
using scenarios::Outcome;

/// Call number i: every two in a row are one contact's, of all kinds in turn.
NewCall numbered(int i) {
    char name[16];
    std::snprintf(name, sizeof name, "P%05d", i / 2);
    NewCall call;
    call.address = "+4930" + std::string(name + 1);
    call.name = name;
    call.label = "mobile";
    call.contactId = 1 + i / 2;
    call.date = 1600000000 + 60 * i;
    call.duration = i % 3 == 0 ? 0 : 60;
    call.flags = i % 4 == 1 ? quorvel::store::flag::outgoing : 0;
    return call;
}

/// What a finger can do at a rest or in the middle of everything, and what the test knows of the screen.
class Person {
  public:
    Person(const Handset& handset, unsigned seed) : phone_(handset), random_(seed) {
        auto opened = CallStore::open(handset.file("calls.db"));
        if (!opened) throw std::runtime_error(opened.error().message);
        log_.emplace(std::move(*opened));
    }

    /// Some things at once, none waiting for the one before.
    void hurry() {
        for (int i = below(6); i >= 0; --i) oneThing();
        if (left_) comeBack();
    }
    /// Waits until all is done, looks, and does one thing that needs a look first.
    void rest() {
        const Outcome shown = look();
        const bool results = isSearching_ && !isDimmed_ && !shown.linesOf("tag 2 shown").empty();
        const auto rows = shown.linesOf("row ");
        const bool hasRows = !isDimmed_ && !rows.empty() && !rows.front().ends_with(" more");
        switch (below(results ? 6 : 5)) {
            case 0:
            case 1:
                if (hasRows) phone_.say("now swipe " + firstRow(shown));
                break;
            case 2:
                if (isSearching_) cancel();
                break;
            case 3:
                if (isSearching_) phone_.say("now tap scope " + std::to_string(below(4)));
                break;
            case 4:
                if (!isSearching_) deleteOrNot(shown);
                break;
            default:
                deleteFound();
        }
    }
    void cancel() {
        phone_.say("now cancel");
        isSearching_ = isDimmed_ = false;
    }
    bool isSearching() const { return isSearching_; }
    /// Settles and looks: the screen must be whole.
    Outcome look() {
        Outcome shown = phone_.show();
        EXPECT_TRUE(shown.linesOf("hud").empty()) << shown.output;
        EXPECT_TRUE(shown.linesOf("alert").empty()) << shown.output;
        // Only the table in front is kept in step while a search is on.
        if (isDimmed_) return shown;
        for (const auto& row : shown.linesOf("row ")) EXPECT_NE(row.find('"'), std::string::npos) << shown.output;
        return shown;
    }
    void say(const std::string& line) { phone_.say(line); }
    Outcome finish() { return phone_.finish(); }
    CallStore& log() { return *log_; }
    /// The names in the list of the segment, from its first row to its last.
    std::vector<std::string> namesOf(int segment);

  private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    static std::string firstRow(const Outcome& shown) {
        const std::string line = shown.linesOf("row ").front();
        return line.substr(4, line.find(' ', 4) - 4);
    }
    void comeBack() {
        phone_.say("now return");
        left_ = false;
    }
    void addCalls() {
        for (int i = below(3); i >= 0; --i) ASSERT_TRUE(log_->append(numbered(next_++)).ok());
        const char* const names[] = {"notify QuorvelRestoreDatabaseNotification", "notify QuorvelRefreshCallTable",
                                     "post com.velmarin.QuorvelNewRecordAddedNotification",
                                     "notify QuorvelReloadSettingsReplaceRecents"};
        phone_.say(std::string("now ") + names[below(4)]);
    }
    void oneThing() {
        if (left_) return comeBack();
        switch (below(8)) {
            case 0:
            case 1:
                if (!isSearching_) phone_.say("now tap segment " + std::to_string(below(4)));
                break;
            case 2:
                if (!isDimmed_) phone_.say("now scroll end");
                break;
            case 3:
                if (!isDimmed_) phone_.say("now scroll " + std::to_string(below(900)));
                break;
            case 4: {
                const char* const texts[] = {"p", "P0001", "9", "nobody", ""};
                const std::string text = texts[below(5)];
                phone_.say("now search \"" + text + '"');
                isSearching_ = true;
                isDimmed_ = text.empty();
                break;
            }
            case 5:
                addCalls();
                break;
            case 6:
                if (isSearching_) break;
                phone_.say("now leave");
                left_ = true;
                break;
            default:
                phone_.say("now tap segment 0");
        }
    }
    void deleteOrNot(const Outcome& shown) {
        if (shown.linesOf("right trash").empty()) return;
        say("tap right");
        if (below(3) != 0) return say("now tap right");
        say("tap left");
        say(below(3) == 0 ? "now tap \"" + titleOfSheet() + '"' : "tap \"Cancel\"");
        if (look().linesOf("right stop").size() == 1) say("tap right");
    }
    void deleteFound() {
        say("tap tag 2");
        if (below(2) == 0) return say("now tap tag 2");
        say("tap tag 1");
        say("now tap \"" + titleOfSheet() + '"');
    }
    /// The destructive button of the sheet.
    std::string titleOfSheet() {
        const auto sheets = phone_.show().linesOf("sheet ");
        EXPECT_EQ(sheets.size(), 1U);
        const std::string word = "destructive \"";
        const auto start = sheets.front().find(word) + word.size();
        return sheets.front().substr(start, sheets.front().find('"', start) - start);
    }

    LivePhone phone_;
    std::mt19937 random_;
    std::optional<CallStore> log_;
    int next_ = 1000;
    bool left_ = false;
    bool isSearching_ = false;
    bool isDimmed_ = false;  // over an empty text the list lies dimmed, out of a finger's reach
};

std::vector<std::string> Person::namesOf(int segment) {
    say("tap segment " + std::to_string(segment));
    std::map<long, std::string> names;
    long rows = -1;
    for (long top = 0;; top += 250) {
        say("scroll " + std::to_string(top));
        const Outcome shown = look();
        for (const auto& line : shown.linesOf("row ")) {
            if (line.ends_with(" more")) continue;
            const auto start = line.find('"') + 1;
            // A run of calls says how many behind the name.
            names[std::stol(line.substr(4))] = line.substr(start, line.find_first_of("\" ", start) - start);
        }
        const long count = std::stol(shown.linesOf("rows ").front().substr(5));
        const double offset = std::stod(shown.linesOf("offset ").front().substr(7));
        if (count == rows && offset < static_cast<double>(top)) break;
        rows = count;
    }
    std::vector<std::string> inOrder;
    for (const auto& [row, name] : names) inOrder.push_back(name);
    EXPECT_EQ(static_cast<long>(inOrder.size()), rows) << "every row was seen, and no load-more row is left";
    return inOrder;
}

std::vector<std::string> namesIn(const CallStore& log, Filter filter, Mode mode) {
    std::vector<std::string> names;
    const auto page = log.page(filter, mode, Cursor::top(), quorvel::store::noLimit);
    if (!page) throw std::runtime_error(page.error().message);
    for (const auto& record : (*page).rows) names.push_back(record.name);
    return names;
}

struct Variant {
    unsigned seed;
    bool grouped;
};

class Stress : public testing::TestWithParam<Variant> {};

TEST_P(Stress, leavesEveryListEqualToTheDatabase) {
    const auto [seed, grouped] = GetParam();
    const Handset handset;
    std::vector<NewCall> calls;
    for (int i = 0; i < 120; ++i) calls.push_back(numbered(i));
    handset.fill(calls);
    ASSERT_EQ(handset.run("set minRec_Call 20\nset isGroupContacts_Call " + std::string(grouped ? "on" : "off") + "\n")
                  .status,
              0);
    Person person(handset, seed);
    constexpr int rounds = 60;
    for (int round = 0; round < rounds; ++round) {
        person.hurry();
        person.rest();
    }
    person.look();
    if (person.isSearching()) person.cancel();
    person.say("wait");
    person.say("notify QuorvelRestoreDatabaseNotification");
    for (int segment = 0; segment < 4; ++segment)
        EXPECT_EQ(person.namesOf(segment), namesIn(person.log(), static_cast<Filter>(segment + 1), {false, grouped}))
            << "segment " << segment;
    const auto ended = person.finish();
    EXPECT_EQ(ended.status, 0) << ended.errors;
}

INSTANTIATE_TEST_SUITE_P(Runs, Stress,
                         testing::Values(Variant{1, false}, Variant{2, true}, Variant{3, false}, Variant{4, true}),
                         [](const auto& run) {
                             return (run.param.grouped ? "grouped" : "ungrouped") + std::to_string(run.param.seed);
                         });

}  // namespace

// Whatever writes is ended, or told that a call failed, at each of its system calls in turn: what it leaves is the
// state before or the state after, the next run does its work, and nothing of the first one stays about.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <optional>

#include "desktop/addressbook/contact_database.h"
#include "desktop/files/rename.h"
#include "desktop/quorvel/store/call_store.h"
#include "tests/tools/program.h"

namespace {

namespace fs = std::filesystem;
using quorvel::store::CallStore;
using tools_tests::contentOf;
using tools_tests::Directory;

/// Everything that a person would miss.
struct State {
    /// Read without an error, and in agreement with itself.
    bool isSound = true;
    std::vector<quorvel::store::CallRecord> calls;
    std::vector<quorvel::store::CallRecord> deleted;
    std::vector<contacts::Contact> people;
    std::string settings;
    /// What the command wrote for its user; calls of a database, else the bytes.
    std::vector<quorvel::store::CallRecord> writtenCalls;
    std::string written;
};

bool callsIn(const fs::path& file, std::vector<quorvel::store::CallRecord>& calls,
             std::vector<quorvel::store::CallRecord>* deleted) {
    if (!fs::exists(file)) return true;
    const auto log = CallStore::open(file);
    if (!log) return false;
    const auto findings = log->verify();
    const auto page =
        log->page(quorvel::store::Filter::all, {}, quorvel::store::Cursor::top(), quorvel::store::noLimit);
    const auto kept = log->deletedCalls(quorvel::store::Cursor::top(), quorvel::store::noLimit);
    if (!findings || !page || !kept) return false;
    calls = page->rows;
    if (deleted)
        for (const auto& each : kept->rows) deleted->push_back(each.call);
    return findings->empty();
}

State stateOf(const fs::path& folder) {
    State state;
    state.isSound = callsIn(folder / "data/calls.db", state.calls, &state.deleted);
    if (fs::exists(folder / "data/contacts/contacts.db")) {
        auto database = contacts::ContactDatabase::open(folder / "data/contacts/contacts.db");
        auto content = database ? database->load() : quorvel::store::Result<contacts::Content>(database.error());
        if (content) {
            state.people = content->contacts;
            for (auto& each : state.people) each.created = each.modified = 0;
        } else {
            state.isSound = false;
        }
    }
    state.settings = contentOf(folder / "data/settings.plist");
    state.written = contentOf(folder / "out/file");
    if (state.written.starts_with("SQLite format 3")) {
        state.isSound = callsIn(folder / "out/file", state.writtenCalls, nullptr) && state.isSound;
        state.written = "a database";
    }
    return state;
}

/// Each thing that a command changes is changed whole; where it changes two, one may come after the other.
bool isBeforeOrAfter(const State& state, const State& before, const State& after) {
    const auto isEither = [](const auto& now, const auto& one, const auto& other) {
        return now == one || now == other;
    };
    return isEither(state.isSound, before.isSound, after.isSound) && isEither(state.calls, before.calls, after.calls) &&
           isEither(state.deleted, before.deleted, after.deleted) &&
           isEither(state.people, before.people, after.people) &&
           isEither(state.settings, before.settings, after.settings) &&
           isEither(state.written, before.written, after.written) &&
           isEither(state.writtenCalls, before.writtenCalls, after.writtenCalls);
}

bool isSame(const State& one, const State& other) { return isBeforeOrAfter(one, other, other); }

struct Writer {
    const char* name;
    /// In the folder of the test; run by a shell.
    const char* command;
    /// Made beforehand, besides calls and settings.
    std::function<void(const Directory&)> prepare = [](const Directory&) {};
    bool beginsEmpty = false;
    /// Whether a second run adds to what the first one did.
    bool isRepeatable = true;
};

void takeBackup(const Directory& directory) {
    ASSERT_EQ(directory.run("backup '" + directory.file("kept.q").string() + '\'').status, 0);
    ASSERT_EQ(directory.run("generate --calls 7 --seed 8 --until 1718452900").status, 0);
}

void touchSums(const Directory& directory) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open((directory.data() / "calls.db").c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, "update total set duration = duration + 1", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

const Writer writers[] = {
    {"set", "set minRec_Call 20"},
    {"firstUse", "list", {}, true},
    {"firstSet", "set minRec_Call 20", {}, true},
    {"importCalls", "import calls.csv"},
    {"importContacts", "contacts import people.vcf"},
    {"deny", "contacts deny"},
    {"backup", "backup out/file", {}, false, false},
    {"backupOver", "backup --force out/file", [](const Directory& directory) { directory.write("out/file", "old"); }},
    {"exportCsv", "export --output out/file", {}, false, false},
    {"exportDatabase", "export --format db --output out/file", {}, false, false},
    {"exportOver", "export --format json --force --output out/file",
     [](const Directory& directory) { directory.write("out/file", "old"); }},
    {"exportContacts", "contacts export out/file"},
    {"restore", "restore kept.q", takeBackup},
    {"mend", "doctor --mend", touchSums},
};

enum class How { end, torn, full, broken };
const char* wordOf(How how) {
    return how == How::end ? "end" : how == How::torn ? "torn" : how == How::full ? "full" : "broken";
}

class CrashConsistency : public testing::TestWithParam<std::tuple<Writer, How>> {
  protected:
    void SetUp() override {
        const auto& writer = std::get<Writer>(GetParam());
        fs::create_directory(directory_.file("out"));
        directory_.write("calls.csv",
                         "date,address,kind,duration\n1718452800,+4930100,received,30\n1718452801,+4930100,missed,0\n");
        directory_.write("people.vcf", "BEGIN:VCARD\nVERSION:3.0\nFN:Bea\nTEL:+4930777\nEND:VCARD\n");
        if (!writer.beginsEmpty) {
            directory_.write("first.csv", "date,address,kind,duration\n1718452700,+4930777,received,30\n");
            ASSERT_EQ(directory_.run("generate --calls 20 --seed 3 --until 1718452800").status, 0);
            ASSERT_EQ(directory_.run("import '" + directory_.file("first.csv").string() + '\'').status, 0);
            ASSERT_EQ(directory_.run("set isGroupByDate on").status, 0);
        }
        if (writer.prepare) writer.prepare(directory_);
        // The state before is that of a folder that has been copied, too.
        work_ = directory_.file("work");
        fs::create_directory(work_);
    }

    /// A fresh copy of what was prepared.
    void renew() const {
        fs::remove_all(work_);
        fs::create_directory(work_);
        for (const auto& entry : fs::directory_iterator(directory_.file("")))
            if (entry.path() != work_)
                fs::copy(entry.path(), work_ / entry.path().filename(), fs::copy_options::recursive);
    }

    /// Runs the command in the copy; its status.
    int run(long call, How how) const {
        const auto& writer = std::get<Writer>(GetParam());
        std::string command = "cd '" + work_.string() + "' && LC_ALL=C.UTF-8 TZ=UTC ";
        command += "FAILING_FOLDER='" + work_.string() + "/' FAILING_CALL=" + std::to_string(call) +
                   " FAILING_HOW=" + wordOf(how) + " FAILING_COUNT='" + directory_.file("count").string() +
                   "' timeout 60 env LD_PRELOAD='" FAILING_CALLS "' '" QUORVELCTL_PROGRAM "' --data data ";
        command += std::string(writer.command) + " >'" + directory_.file("said").string() + "' 2>&1 </dev/null";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string said() const { return contentOf(directory_.file("said")); }

    void expectNothingAbout() const {
        for (const auto& entry : fs::recursive_directory_iterator(work_))
            EXPECT_FALSE(entry.path().filename().string().starts_with(".quorvel-new-")) << entry.path();
    }

    Directory directory_;
    fs::path work_;
};

TEST_P(CrashConsistency, atEachCallItIsTheStateBeforeOrTheStateAfter) {
    const auto& [writer, how] = GetParam();
    renew();
    const State before = stateOf(work_);
    renew();
    ASSERT_EQ(run(0, how), 0) << said();
    const long calls = std::atol(contentOf(directory_.file("count")).c_str());
    ASSERT_GT(calls, 1) << "nothing is counted";
    const State after = stateOf(work_);
    ASSERT_TRUE(after.isSound);
    expectNothingAbout();
    // Some of the points, others for each writer, unless all are asked for.
    constexpr long pointsOfSome = 9;
    const char* wish = std::getenv("CRASH_POINTS");
    const long step = wish && std::string(wish) == "all" ? 1 : calls / pointsOfSome + 1;
    for (long call = 1 + static_cast<long>(how) % step; call <= calls; call += step) {
        SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(calls));
        renew();
        const int status = run(call, how);
        ASSERT_TRUE(status == 0 || status == 1 || status == 2 || status == 99) << status << said();
        const State left = stateOf(work_);
        EXPECT_TRUE(isBeforeOrAfter(left, before, after)) << status << ' ' << said();
        EXPECT_TRUE(status != 0 || isSame(left, after)) << said();
        // Those that refuse what is there have nothing left to do where it is.
        const int again = run(0, how);
        const bool isDone = !writer.isRepeatable && left.written == after.written;
        EXPECT_EQ(again, isDone ? 1 : 0) << said();
        EXPECT_TRUE(isSame(stateOf(work_), after)) << said();
        expectNothingAbout();
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, CrashConsistency,
                         testing::Combine(testing::ValuesIn(writers),
                                          testing::Values(How::end, How::torn, How::full, How::broken)),
                         [](const auto& about) {
                             return std::string(std::get<Writer>(about.param).name) + '_' +
                                    wordOf(std::get<How>(about.param));
                         });

}  // namespace

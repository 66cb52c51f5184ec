// A log is copied while it is used, and becomes what a copy holds in one change, or stays as it is.
#include "desktop/quorvel/store/backup.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include <fstream>
#include <iterator>
#include <thread>

#include "failing_disk.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t moment = 1'800'000'000;

OpenOptions atMoment() {
    OpenOptions options;
    options.clock = [] { return moment; };
    return options;
}

BackupOptions optionsOfTest(Existing existing = Existing::refused) { return {existing, {}, atMoment()}; }

struct Contents {
    std::vector<CallRecord> calls;
    std::vector<DeletedCall> deleted;
    std::int64_t newest = 0;
    friend bool operator==(const Contents&, const Contents&) = default;
};

Contents contentsOf(const CallStore& store) {
    EXPECT_THAT(valueOf(store.verify()), IsEmpty());
    return {valueOf(store.page(Filter::all, {}, Cursor::top(), noLimit)).rows,
            valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows, valueOf(store.newestRowId())};
}

Contents contentsOf(const std::filesystem::path& log) { return contentsOf(openStore(log, atMoment())); }

void fill(CallStore& store, int calls, unsigned seed) {
    auto session = valueOf(store.beginImport());
    CallMaker maker(seed);
    for (int at = 0; at < calls; ++at) ASSERT_TRUE(session.add(maker.call()).ok());
    ASSERT_TRUE(session.finish().ok());
}

/// A log of 300 calls of which some were deleted, its backup, and then 100 other calls.
class Backup : public testing::Test {
  protected:
    void SetUp() override {
        CallStore store = openStore(folder_.file(), atMoment());
        fill(store, 300, 1);
        ASSERT_TRUE(store.deleteAll(Filter::missed).ok());
        kept_ = contentsOf(store);
        ASSERT_TRUE(backUp(folder_.file(), file_, optionsOfTest()).ok());
        ASSERT_TRUE(store.deleteAll(Filter::all).ok());
        fill(store, 100, 2);
        present_ = contentsOf(store);
        ASSERT_NE(kept_, present_);
    }

    void expectRefused(const std::filesystem::path& backup, ErrorKind kind, const std::string& sentence) {
        const auto done = restore(backup, folder_.file(), optionsOfTest());
        ASSERT_FALSE(done.ok());
        EXPECT_EQ(done.error().kind, kind) << done.error().message;
        EXPECT_THAT(done.error().message, HasSubstr(sentence));
        EXPECT_EQ(contentsOf(folder_.file()), present_);
        expectNothingElse();
    }
    /// Nothing lies about that restoring needed.
    void expectNothingElse() {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.file().parent_path())) {
            const auto name = entry.path().filename().string();
            EXPECT_FALSE(name.starts_with('.')) << name;
        }
    }

    Folder folder_;
    std::filesystem::path file_ = folder_.file("kept.quorvel");
    Contents kept_, present_;
};

TEST_F(Backup, isALogOfItsOwnWithEverythingThatTheLogHad) {
    EXPECT_FALSE(std::filesystem::exists(folder_.file("kept.quorvel-wal")));
    EXPECT_EQ(contentsOf(file_), kept_);
}

TEST_F(Backup, thatIsRestoredMakesTheLogWhatItWas) {
    const Restored restored = valueOf(restore(file_, folder_.file(), optionsOfTest()));
    EXPECT_EQ(restored.calls, static_cast<std::int64_t>(kept_.calls.size()));
    EXPECT_THAT(restored.mended, IsEmpty());
    EXPECT_FALSE(restored.wasDamaged);
    EXPECT_EQ(contentsOf(folder_.file()), kept_);
    EXPECT_EQ(contentsOf(file_), kept_);
    expectNothingElse();
}

TEST_F(Backup, thatIsRestoredLeavesTheFormerLogUnderANameThatSaysWhen) {
    const Restored restored = valueOf(restore(file_, folder_.file(), optionsOfTest()));
    EXPECT_THAT(restored.former.filename().string(), testing::MatchesRegex("calls\\.db\\.before-2027-01-1[45]-.*"));
    EXPECT_EQ(contentsOf(restored.former), present_);
    const Restored again = valueOf(restore(restored.former, folder_.file(), optionsOfTest()));
    EXPECT_NE(again.former, restored.former);
    EXPECT_EQ(contentsOf(folder_.file()), present_);
    EXPECT_EQ(contentsOf(again.former), kept_);
}

TEST_F(Backup, isFollowedByAStoreThatHasTheLogOpen) {
    CallStore open = openStore(folder_.file(), atMoment());
    EXPECT_EQ(contentsOf(open), present_);
    const auto found = [&] {
        return valueOf(open.search(Filter::all, "555", std::nullopt, Cursor::top(), noLimit)).rows.size();
    };
    const auto before = found();
    const std::int64_t revision = valueOf(open.revision());
    ASSERT_TRUE(restore(file_, folder_.file(), optionsOfTest()).ok());
    EXPECT_EQ(contentsOf(open), kept_);
    EXPECT_GT(valueOf(open.revision()), revision);
    EXPECT_NE(found(), before);
    EXPECT_EQ(valueOf(open.deleteAll(Filter::all)), static_cast<std::int64_t>(kept_.calls.size()));
}

TEST_F(Backup, isOfOneMomentWhileAnotherStoreWrites) {
    CallStore writer = openStore(folder_.file(), atMoment());
    std::atomic<bool> isDone = false;
    std::atomic<int> rounds = 0;
    // Each import adds ten calls or none.
    std::thread writing([&] {
        for (unsigned seed = 10; !isDone; ++seed, ++rounds) fill(writer, 10, seed);
    });
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(backUp(folder_.file(), file_, optionsOfTest(Existing::replaced)).ok());
        EXPECT_EQ(contentsOf(file_).calls.size() % 10, 0U);
    }
    while (rounds < 2) std::this_thread::yield();
    isDone = true;
    writing.join();
}

TEST_F(Backup, isNotWrittenOverAFileUnlessThatIsWanted) {
    const auto refused = backUp(folder_.file(), file_, optionsOfTest());
    ASSERT_FALSE(refused.ok());
    EXPECT_THAT(refused.error().message, HasSubstr("already"));
    EXPECT_EQ(contentsOf(file_), kept_);
    ASSERT_TRUE(backUp(folder_.file(), file_, optionsOfTest(Existing::replaced)).ok());
    EXPECT_EQ(contentsOf(file_), present_);
}

TEST_F(Backup, isNotWrittenOverTheLogNorRestoredFromIt) {
    std::filesystem::create_symlink(folder_.file(), folder_.file("link"));
    for (const char* name : {"calls.db", "link"}) {
        const auto done = backUp(folder_.file(), folder_.file(name), optionsOfTest(Existing::replaced));
        ASSERT_FALSE(done.ok());
        EXPECT_THAT(done.error().message, HasSubstr("is the log itself"));
        expectRefused(folder_.file(name), ErrorKind::badInput, "is the log itself");
    }
}

TEST_F(Backup, toAFolderThatIsNotThereSaysSoAndLeavesNothing) {
    const auto done = backUp(folder_.file(), folder_.file("nowhere") / "kept", optionsOfTest());
    ASSERT_FALSE(done.ok());
    EXPECT_EQ(done.error().kind, ErrorKind::unreadable);
    EXPECT_THAT(done.error().message, HasSubstr("No such file or directory"));
    EXPECT_FALSE(std::filesystem::exists(folder_.file("nowhere")));
}

TEST_F(Backup, thatIsNotOneIsNotRestored) {
    std::ofstream(folder_.file("text")) << "This was never a database, and it is long enough to be one.\n";
    expectRefused(folder_.file("text"), ErrorKind::foreign, "is not a call log");
    expectRefused(folder_.file("nothing"), ErrorKind::unreadable, "is not there");
    std::ofstream(folder_.file("empty")).flush();
    expectRefused(folder_.file("empty"), ErrorKind::foreign, "is empty");
    sqlite3* database = nullptr;
    sqlite3_open(folder_.file("notes").c_str(), &database);
    sqlite3_exec(database, "create table call (address text)", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    expectRefused(folder_.file("notes"), ErrorKind::foreign, "another program");
}

TEST_F(Backup, ofALaterVersionIsNotRestored) {
    sqlite3* database = nullptr;
    sqlite3_open(file_.c_str(), &database);
    sqlite3_exec(database, "pragma user_version = 99", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    expectRefused(file_, ErrorKind::newer, "later version");
}

TEST_F(Backup, thatIsDamagedIsNotRestoredWhereverItIsBroken) {
    const auto size = static_cast<std::streamoff>(std::filesystem::file_size(file_));
    const auto sound = folder_.file("sound");
    std::filesystem::copy_file(file_, sound);
    int refused = 0;
    for (std::streamoff at = 4096; at < size; at += 4096) {
        std::filesystem::copy_file(sound, file_, std::filesystem::copy_options::overwrite_existing);
        std::fstream(file_, std::ios::in | std::ios::out | std::ios::binary).seekp(at) << std::string(4096, '\x5a');
        const auto done = restore(file_, folder_.file(), optionsOfTest());
        // A page that is free says nothing.
        if (done.ok()) {
            ASSERT_TRUE(restore(done.valueOr({}).former, folder_.file(), optionsOfTest()).ok());
            continue;
        }
        ++refused;
        EXPECT_EQ(done.error().kind, ErrorKind::damaged) << done.error().message;
        EXPECT_THAT(done.error().message, HasSubstr("Choose another one"));
        ASSERT_EQ(contentsOf(folder_.file()), present_);
    }
    EXPECT_GT(refused, 5);
    std::filesystem::copy_file(sound, file_, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(file_, static_cast<std::uintmax_t>(size / 2));
    expectRefused(file_, ErrorKind::damaged, "is damaged");
}

TEST_F(Backup, whoseSumsDoNotAgreeIsPutRightOnTheWay) {
    sqlite3* database = nullptr;
    sqlite3_open(file_.c_str(), &database);
    ASSERT_EQ(sqlite3_exec(database, "update total set calls = 7; delete from day", nullptr, nullptr, nullptr), 0);
    sqlite3_close(database);
    EXPECT_THAT(valueOf(restore(file_, folder_.file(), optionsOfTest())).mended, testing::Not(IsEmpty()));
    EXPECT_EQ(contentsOf(folder_.file()), kept_);
}

TEST_F(Backup, isRestoredWhereThereIsNoLog) {
    const Restored restored = valueOf(restore(file_, folder_.file("new.db"), optionsOfTest()));
    EXPECT_EQ(restored.former, "");
    EXPECT_EQ(contentsOf(folder_.file("new.db")), kept_);
}

TEST_F(Backup, isRestoredInThePlaceOfADamagedLogWhichIsKept) {
    std::string content;
    {
        std::fstream log(folder_.file(), std::ios::in | std::ios::out | std::ios::binary);
        log.seekp(100) << std::string(8000, '\x5a');
    }
    std::ifstream damaged(folder_.file(), std::ios::binary);
    content.assign(std::istreambuf_iterator<char>(damaged), {});
    const Restored restored = valueOf(restore(file_, folder_.file(), optionsOfTest()));
    EXPECT_TRUE(restored.wasDamaged);
    EXPECT_EQ(contentsOf(folder_.file()), kept_);
    std::ifstream former(restored.former, std::ios::binary);
    EXPECT_EQ(content, std::string(std::istreambuf_iterator<char>(former), {}));
    expectNothingElse();
}

TEST_F(Backup, isNotRestoredOverAFileThatIsNoLog) {
    std::ofstream(folder_.file("letter"), std::ios::binary) << "Dear all, this is not a call log at all.\n";
    const auto done = restore(file_, folder_.file("letter"), optionsOfTest());
    ASSERT_FALSE(done.ok());
    EXPECT_EQ(done.error().kind, ErrorKind::foreign);
    EXPECT_EQ(std::filesystem::file_size(folder_.file("letter")), 41U);
}

/// A process that restores, and is killed before that operation of its disk. Whether it was.
bool isKilledRestoring(const std::filesystem::path& backup, const std::filesystem::path& log, int operation) {
    const pid_t child = fork();
    if (child == 0) {
        BackupOptions options = optionsOfTest();
        options.log.fileSystem = FailingDisk::name();
        FailingDisk::failFrom(operation, Fault::death);
        _exit(restore(backup, log, options).ok() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << status;
    return WIFSIGNALED(status);
}

TEST_F(Backup, whoseRestoringIsKilledLeavesTheLogAsBeforeOrAsAfter) {
    int before = 0, after = 0;
    for (int operation = 1;; operation += 1 + operation / 12) {
        Folder folder;
        std::filesystem::copy_file(folder_.file(), folder.file());
        if (!isKilledRestoring(file_, folder.file(), operation)) break;
        const Contents left = contentsOf(folder.file());
        ASSERT_TRUE(left == present_ || left == kept_) << "operation " << operation;
        ++(left == present_ ? before : after);
        // The next one clears away what this one left.
        if (operation % 10 != 0) continue;
        ASSERT_TRUE(restore(file_, folder.file(), optionsOfTest()).ok());
        for (const auto& entry : std::filesystem::directory_iterator(folder.file().parent_path()))
            ASSERT_EQ(entry.path().string().find("restoring"), std::string::npos) << entry.path();
    }
    EXPECT_GT(before, 10);
    EXPECT_GT(after, 0);
    EXPECT_EQ(contentsOf(file_), kept_);
}

TEST_F(Backup, meetsAFullDiskAndLeavesTheLogAsItIs) {
    for (int operation = 1;; operation += 1 + operation / 20) {
        Folder folder;
        std::filesystem::copy_file(folder_.file(), folder.file());
        BackupOptions options = optionsOfTest();
        options.log.fileSystem = FailingDisk::name();
        FailingDisk::failFrom(operation, Fault::full);
        const auto done = restore(file_, folder.file(), options);
        const bool hasFailed = FailingDisk::hasFailed();
        FailingDisk::failFrom(0);
        const Contents left = contentsOf(folder.file());
        if (!done.ok()) {
            ASSERT_EQ(left, present_) << done.error().message;
        } else {
            ASSERT_EQ(left, kept_);
        }
        if (!hasFailed) break;
    }
}

}  // namespace
}  // namespace quorvel::store

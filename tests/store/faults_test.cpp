// Whichever write of an operation fails, the log is as before or as after, and the store goes on.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "failing_disk.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

using Operation = std::function<bool(CallStore&)>;

/// The calls, and behind them those that are kept aside, by row identifier.
std::vector<CallRecord> rowsOf(const CallStore& store) {
    std::vector<CallRecord> rows = valueOf(store.page(Filter::all, {}, Cursor::top(), noLimit)).rows;
    const auto calls = static_cast<std::ptrdiff_t>(rows.size());
    for (const DeletedCall& deleted : valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows) {
        rows.push_back(deleted.call);
        rows.back().count = 0;
    }
    std::sort(rows.begin() + calls, rows.end(),
              [](const CallRecord& one, const CallRecord& other) { return one.rowId < other.rowId; });
    return rows;
}

void makeLog(const std::filesystem::path& path) {
    CallStore store = openStore(path);
    ImportSession session = valueOf(store.beginImport());
    CallMaker maker(11);
    for (int at = 0; at < 60; ++at) valueOf(session.add(maker.call()));
    valueOf(session.finish());
    valueOf(store.deleteCalls(std::vector<std::int64_t>{40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50}));
}

void copyLog(const std::filesystem::path& from, const std::filesystem::path& to) {
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::filesystem::path source = from, target = to;
        source += suffix;
        target += suffix;
        std::filesystem::remove(target);
        if (std::filesystem::exists(source)) std::filesystem::copy_file(source, target);
    }
}

/// Fails the first, the second, the third ... step until the operation does without failing.
void expectWholeOrNothing(const Operation& operation, Fault fault = Fault::full) {
    Folder folder;
    makeLog(folder.file("first.db"));
    const std::vector<CallRecord> before = rowsOf(openStore(folder.file("first.db")));
    std::vector<CallRecord> after;
    {
        copyLog(folder.file("first.db"), folder.file("after.db"));
        CallStore store = openStore(folder.file("after.db"));
        ASSERT_TRUE(operation(store));
        after = rowsOf(store);
    }
    bool done = false;
    int failures = 0;
    for (int write = 1; !done && write < 1000; ++write) {
        copyLog(folder.file("first.db"), folder.file());
        {
            OpenOptions options;
            options.fileSystem = FailingDisk::name();
            CallStore store = openStore(folder.file(), options);
            FailingDisk::failFrom(write, fault);
            const bool succeeded = operation(store);
            done = !FailingDisk::hasFailed();
            FailingDisk::failFrom(0);
            if (!succeeded) ++failures;
            ASSERT_TRUE(rowsOf(store) == (succeeded ? after : before)) << "write " << write;
            ASSERT_EQ(valueOf(store.verify()), std::vector<std::string>());
            // The same store goes on when the disk is well again.
            if (!succeeded) {
                ASSERT_TRUE(operation(store)) << "write " << write;
                ASSERT_TRUE(rowsOf(store) == after) << "write " << write;
            }
        }
        const CallStore again = openStore(folder.file());
        const std::vector<CallRecord> rows = rowsOf(again);
        ASSERT_TRUE(rows == before || rows == after) << "write " << write;
        ASSERT_EQ(valueOf(again.verify()), std::vector<std::string>()) << "write " << write;
    }
    EXPECT_TRUE(done);
    EXPECT_GT(failures, 0);
}

TEST(Faults, anAppendedCallIsThereOrNot) {
    expectWholeOrNothing([](CallStore& store) {
        CallMaker maker(5);
        return store.append(maker.call()).ok();
    });
}

const Fault faults[] = {Fault::full, Fault::readOnly, Fault::broken};

TEST(Faults, aDeletionOfAFilterIsWholeOrNothing) {
    for (const Fault fault : faults)
        expectWholeOrNothing([](CallStore& store) { return store.deleteAll(Filter::dialled).ok(); }, fault);
}

TEST(Faults, aDeletionOfEverythingIsWholeOrNothing) {
    for (const Fault fault : faults)
        expectWholeOrNothing([](CallStore& store) { return store.deleteAll(Filter::all).ok(); }, fault);
}

TEST(Faults, chosenCallsAreDeletedTogetherOrNotAtAll) {
    const std::vector<std::int64_t> chosen = {3, 5, 8, 13, 21, 34, 55};
    for (const Fault fault : faults)
        expectWholeOrNothing([&](CallStore& store) { return store.deleteCalls(chosen).ok(); }, fault);
}

TEST(Faults, deletedCallsComeBackTogetherOrStayKept) {
    for (const Fault fault : faults) {
        expectWholeOrNothing(
            [](CallStore& store) {
                return store.undelete(std::vector<std::int64_t>{40, 43, 48}).ok();
            },
            fault);
        expectWholeOrNothing([](CallStore& store) { return store.undeleteAll().ok(); }, fault);
    }
}

TEST(Faults, anImportIsWholeOrNothing) {
    expectWholeOrNothing([](CallStore& store) {
        auto session = store.beginImport();
        if (!session) return false;
        CallMaker maker(6);
        for (int at = 0; at < 700; ++at) {
            if (!session->add(maker.call())) return false;
        }
        return session->finish().ok();
    });
}

TEST(Faults, anAddressIsLinkedInAllItsCallsOrNone) {
    expectWholeOrNothing([](CallStore& store) { return store.link("5551234", 9, "Nine", "work").ok(); });
}

TEST(Faults, aRebuildIsWholeOrNothing) {
    expectWholeOrNothing([](CallStore& store) { return store.rebuild().ok(); });
}

TEST(Faults, aLogWhoseMakingFailsIsMadeTheNextTime) {
    OpenOptions options;
    options.fileSystem = FailingDisk::name();
    bool done = false;
    for (int write = 1; !done && write < 1000; ++write) {
        Folder folder;
        FailingDisk::failFrom(write);
        const bool opened = CallStore::open(folder.file(), options).ok();
        done = !FailingDisk::hasFailed();
        FailingDisk::failFrom(0);
        ASSERT_TRUE(opened || !done);
        CallStore store = openStore(folder.file());
        ASSERT_EQ(valueOf(store.append({})), 1) << "write " << write;
        ASSERT_EQ(valueOf(store.verify()), std::vector<std::string>());
    }
    EXPECT_TRUE(done);
}

TEST(Faults, aFullDiskIsSaidToBeFull) {
    Folder folder;
    makeLog(folder.file());
    OpenOptions options;
    options.fileSystem = FailingDisk::name();
    CallStore store = openStore(folder.file(), options);
    FailingDisk::failFrom(1);
    const auto result = store.append({});
    FailingDisk::failFrom(0);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::full) << result.error().message;
    EXPECT_NE(result.error().message.find("Make room"), std::string::npos);
}

TEST(Faults, aDiskThatBecomesReadOnlyAndOneThatBreaksAreSaidToBe) {
    Folder folder;
    makeLog(folder.file());
    OpenOptions options;
    options.fileSystem = FailingDisk::name();
    CallStore store = openStore(folder.file(), options);
    FailingDisk::failFrom(1, Fault::readOnly);
    const auto readOnly = store.deleteAll(Filter::all);
    FailingDisk::failFrom(1, Fault::broken);
    const auto broken = store.deleteAll(Filter::all);
    FailingDisk::failFrom(0);
    ASSERT_FALSE(readOnly);
    EXPECT_EQ(readOnly.error().kind, ErrorKind::readOnly) << readOnly.error().message;
    EXPECT_NE(readOnly.error().message.find("Allow writing"), std::string::npos);
    ASSERT_FALSE(broken);
    EXPECT_EQ(broken.error().kind, ErrorKind::failed) << broken.error().message;
    EXPECT_NE(broken.error().message.find("Nothing was changed"), std::string::npos);
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 49);
}

TEST(Faults, aDeletionThatAnotherProcessKeepsWaitingIsRefusedAndWorksLater) {
    Folder folder;
    makeLog(folder.file());
    CallStore store = openStore(folder.file(), {.busyBound = std::chrono::milliseconds(20)});
    int locked[2], over[2];
    ASSERT_EQ(pipe(locked) + pipe(over), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // The end of the test ends the child as well: its own end of the pipe is closed.
        close(over[1]);
        sqlite3* database = nullptr;
        sqlite3_open(folder.file().c_str(), &database);
        const int code = sqlite3_exec(database, "begin immediate", nullptr, nullptr, nullptr);
        char byte = code == SQLITE_OK ? 'l' : 'f';
        const bool said = write(locked[1], &byte, 1) == 1;
        _exit(read(over[0], &byte, 1) >= 0 && said ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(locked[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'l');
    const auto before = rowsOf(store);
    for (const auto& refused : {store.deleteAll(Filter::all), store.undeleteAll()}) {
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().kind, ErrorKind::busy) << refused.error().message;
        EXPECT_NE(refused.error().message.find("try again when it has finished"), std::string::npos);
    }
    EXPECT_EQ(rowsOf(store), before);
    for (const int end : {over[1], over[0], locked[0], locked[1]}) close(end);
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 49);
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

}  // namespace
}  // namespace quorvel::store

// Whichever write of an operation fails, the log is as before or as after, and the store goes on.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>

#include "failing_disk.h"
#include "log_model.h"

namespace quorvel::store {
namespace {

using Operation = std::function<bool(CallStore&)>;

std::vector<CallRecord> rowsOf(const CallStore& store) {
    return valueOf(store.page(Filter::all, {}, Cursor::top(), noLimit)).rows;
}

void makeLog(const std::filesystem::path& path) {
    CallStore store = openStore(path);
    ImportSession session = valueOf(store.beginImport());
    CallMaker maker(11);
    for (int at = 0; at < 60; ++at) valueOf(session.add(maker.call()));
    valueOf(session.finish());
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

/// Fails the first, the second, the third ... write until the operation does without failing.
void expectWholeOrNothing(const Operation& operation) {
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
            FailingDisk::failFrom(write);
            const bool succeeded = operation(store);
            done = !FailingDisk::hasFailed();
            FailingDisk::failFrom(0);
            if (!succeeded) ++failures;
            ASSERT_EQ(rowsOf(store), succeeded ? after : before) << "write " << write;
            ASSERT_EQ(valueOf(store.verify()), std::vector<std::string>());
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

TEST(Faults, aDeletionOfAFilterIsWholeOrNothing) {
    expectWholeOrNothing([](CallStore& store) { return store.deleteAll(Filter::dialled).ok(); });
}

TEST(Faults, aDeletionOfEverythingIsWholeOrNothing) {
    expectWholeOrNothing([](CallStore& store) { return store.deleteAll(Filter::all).ok(); });
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

}  // namespace
}  // namespace quorvel::store

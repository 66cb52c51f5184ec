// Files of a log with bytes that were lost or changed: what can be read is saved, and the file is kept.
#include <gtest/gtest.h>

#include <map>

#include "desktop/quorvel/store/backup.h"
#include "desktop/quorvel/store/mend.h"
#include "failing_disk.h"
#include "log_model.h"
#include "raw_file.h"

namespace quorvel::store {
namespace {

using Said = std::multimap<std::tuple<std::int64_t, std::string, std::int32_t, std::int32_t>, std::string>;

/// What the calls say, whatever their row identifiers.
Said callsOf(const std::filesystem::path& log) {
    Said said;
    for (const CallRecord& call : valueOf(openStore(log).page(Filter::all, {}, Cursor::top(), noLimit)).rows)
        said.emplace(std::tuple(call.date, call.address, call.duration, call.flags), call.name + '|' + call.location);
    return said;
}

std::vector<std::string> findingsOf(const std::filesystem::path& log) {
    return valueOf(openStore(log, {.access = Access::readOnly}).verify());
}

Mended mendedLog(const std::filesystem::path& log) {
    Mended mended = valueOf(mend(log));
    EXPECT_EQ(findingsOf(log), std::vector<std::string>());
    return mended;
}

std::size_t indexOfRoot(const std::filesystem::path& log, const char* table) {
    sqlite3* database = nullptr;
    sqlite3_stmt* found = nullptr;
    EXPECT_EQ(sqlite3_open(log.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, "select rootpage from sqlite_schema where name = ?1", -1, &found, nullptr),
              SQLITE_OK);
    sqlite3_bind_text(found, 1, table, -1, SQLITE_STATIC);
    EXPECT_EQ(sqlite3_step(found), SQLITE_ROW);
    const auto page = static_cast<std::size_t>(sqlite3_column_int64(found, 0));
    sqlite3_finalize(found);
    sqlite3_close(database);
    return (page - 1) * 4096;
}

TEST(Salvage, aLogThatIsCutOffKeepsTheCallsBeforeTheCut) {
    Folder folder;
    makeLog(folder.file(), 3000);
    const std::string whole = contentOf(folder.file());
    const Said before = callsOf(folder.file());
    for (const double share : {0.97, 0.5, 0.2}) {
        const std::string cut = whole.substr(0, static_cast<std::size_t>(share * static_cast<double>(whole.size())));
        writeFile(folder.file(), cut);
        const Mended mended = mendedLog(folder.file());
        EXPECT_TRUE(mended.wasReplaced);
        EXPECT_EQ(contentOf(mended.copy), cut);
        EXPECT_GT(mended.calls, static_cast<std::int64_t>(share * 800)) << share;
        const Said saved = callsOf(folder.file());
        EXPECT_EQ(static_cast<std::int64_t>(saved.size()), mended.calls);
        for (const auto& [call, names] : saved) EXPECT_GT(before.count(call), 0U);
    }
}

TEST(Salvage, aWrongByteAnywhereInTheHeaderLosesNoCall) {
    Folder folder;
    makeLog(folder.file(), 60);
    valueOf(openStore(folder.file()).deleteCalls(std::vector<std::int64_t>{3, 4}));
    const std::string whole = contentOf(folder.file());
    const Said before = callsOf(folder.file());
    for (std::size_t at = 0; at < 100; ++at) {
        for (const char wrong : {'\0', '\x07', '\x77', '\xff'}) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ wrong);
            // A version that may come is no damage.
            if (damaged == whole || (at >= 60 && at < 64 && damaged.substr(60, 3) == std::string(3, '\0'))) continue;
            for (const char* suffix : {"-wal", "-shm"}) std::filesystem::remove(folder.file().string() + suffix);
            writeFile(folder.file(), damaged);
            const auto opened = CallStore::open(folder.file());
            if (!opened) {
                EXPECT_EQ(opened.error().kind, ErrorKind::damaged) << at << ": " << opened.error().message;
            }
            if (!opened || !valueOf(opened->verify()).empty()) mendedLog(folder.file());
            ASSERT_EQ(callsOf(folder.file()), before) << "byte " << at;
        }
    }
}

TEST(Salvage, whatStandsInTheWriteAheadLogAloneIsSaved) {
    Folder folder;
    makeLog(folder.file("whole"), 500);
    {
        const CallStore holding = openStore(folder.file("whole"));
        CallStore store = openStore(folder.file("whole"));
        NewCall call;
        call.address = "+49301";
        call.date = 1'700'000'000;
        ASSERT_TRUE(store.append(call).ok());
        std::string damaged = contentOf(folder.file("whole"));
        damaged[47] = '\x77';
        writeFile(folder.file(), damaged);
        writeFile(folder.file("calls.db-wal"), contentOf(folder.file("whole-wal")));
    }
    ASSERT_GT(std::filesystem::file_size(folder.file("calls.db-wal")), 0U);
    const Mended mended = mendedLog(folder.file());
    EXPECT_EQ(mended.calls, 501);
    EXPECT_EQ(callsOf(folder.file()), callsOf(folder.file("whole")));
}

TEST(Salvage, aTableWithoutItsRootKeepsItsRows) {
    Folder folder;
    makeLog(folder.file(), 3000);
    const Said before = callsOf(folder.file());
    std::string damaged = contentOf(folder.file());
    damaged.replace(indexOfRoot(folder.file(), "call"), 4096, std::string(4096, '\x5a'));
    writeFile(folder.file(), damaged);
    const Mended mended = mendedLog(folder.file());
    EXPECT_EQ(mended.calls, 3000);
    EXPECT_EQ(mended.unreadable, 0);
    EXPECT_EQ(callsOf(folder.file()), before);
}

TEST(Salvage, deletedCallsThatWereKeptAreKept) {
    Folder folder;
    makeLog(folder.file(), 300);
    valueOf(openStore(folder.file()).deleteCalls(std::vector<std::int64_t>{5, 6, 7}));
    std::string damaged = contentOf(folder.file());
    damaged[19] = '\x09';
    writeFile(folder.file(), damaged);
    EXPECT_EQ(mendedLog(folder.file()).calls, 297);
    CallStore store = openStore(folder.file());
    EXPECT_EQ(valueOf(store.undeleteAll()), 3);
    EXPECT_EQ(valueOf(store.totals(Filter::all, {})).calls, 300);
}

TEST(Salvage, whatWasDeletedForGoodDoesNotComeBack) {
    Folder folder;
    std::int64_t now = 1'700'000'000;
    OpenOptions options;
    options.clock = [&now] { return now; };
    {
        CallStore store = openStore(folder.file(), options);
        ImportSession session = valueOf(store.beginImport());
        CallMaker maker(3);
        for (int at = 0; at < 600; ++at) valueOf(session.add(maker.call()));
        valueOf(session.finish());
        valueOf(store.deleteAll(Filter::all));
        now += keptAsideFor.count() + 1;
        ASSERT_TRUE(store.append({}).ok());
    }
    std::string damaged = contentOf(folder.file());
    damaged[47] = '\x77';
    writeFile(folder.file(), damaged);
    EXPECT_EQ(mendedLog(folder.file()).calls, 1);
    EXPECT_EQ(valueOf(openStore(folder.file()).undeleteAll()), 0);
}

TEST(Salvage, anEmptyFileWhoseWriteAheadLogIsThereIsDamagedAndLosesNothing) {
    Folder folder;
    {
        const CallStore store = openStore(folder.file("whole"));
        CallStore writing = openStore(folder.file("whole"));
        for (int at = 0; at < 20; ++at) ASSERT_TRUE(writing.append({}).ok());
        writeFile(folder.file(), "");
        writeFile(folder.file("calls.db-wal"), contentOf(folder.file("whole-wal")));
    }
    const auto opened = CallStore::open(folder.file());
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().kind, ErrorKind::damaged);
    EXPECT_EQ(mendedLog(folder.file()).calls, 20);
}

TEST(Salvage, aLogThatWasSetAsideComesBackIntoThePresentOne) {
    Folder folder;
    makeLog(folder.file(), 200);
    const Said before = callsOf(folder.file());
    std::string damaged = contentOf(folder.file());
    damaged[47] = '\x77';
    writeFile(folder.file(), damaged);
    const auto aside = valueOf(CallStore::setAside(folder.file()));
    EXPECT_EQ(logsSetAside(folder.file()), std::vector<std::filesystem::path>{aside});
    NewCall late;
    late.address = "late";
    late.date = 1'800'000'000;
    ASSERT_TRUE(openStore(folder.file()).append(late).ok());
    const BroughtBack brought = valueOf(bringBack(aside, folder.file()));
    EXPECT_EQ(brought.calls, 200);
    EXPECT_EQ(brought.unreadable, 0);
    EXPECT_EQ(contentOf(brought.copy), damaged);
    EXPECT_FALSE(std::filesystem::exists(aside));
    EXPECT_TRUE(logsSetAside(folder.file()).empty());
    Said after = callsOf(folder.file());
    EXPECT_EQ(after.size(), 201U);
    after.erase(std::tuple(late.date, late.address, late.duration, late.flags));
    EXPECT_EQ(after, before);
    EXPECT_EQ(findingsOf(folder.file()), std::vector<std::string>());
    // What is there already is not added again.
    std::filesystem::rename(brought.copy, aside);
    const BroughtBack again = valueOf(bringBack(aside, folder.file()));
    EXPECT_EQ(again.calls, 0);
    EXPECT_EQ(again.present, 200);
}

TEST(FullDisk, aLogThatCannotBeWrittenIsReadAsItLies) {
    Folder folder;
    makeLog(folder.file(), 50);
    OpenOptions options;
    options.fileSystem = FailingDisk::name();
    FailingDisk::failFrom(1);
    const auto writing = CallStore::open(folder.file(), options);
    options.access = Access::readOnly;
    auto reading = CallStore::open(folder.file(), options);
    if (reading) {
        EXPECT_EQ(valueOf(reading->page(Filter::all, {}, Cursor::top(), noLimit)).rows.size(), 50U);
        EXPECT_EQ(valueOf(reading->search(Filter::all, "", {}, Cursor::top(), noLimit)).rows.size(), 50U);
        EXPECT_EQ(reading->query("select ROWID from call").size(), 50U);
        EXPECT_EQ(valueOf(reading->verify()), std::vector<std::string>());
    }
    const bool wasFull = FailingDisk::hasFailed();
    FailingDisk::failFrom(0);
    EXPECT_TRUE(wasFull);
    ASSERT_FALSE(writing);
    EXPECT_EQ(writing.error().kind, ErrorKind::full) << writing.error().message;
    EXPECT_TRUE(reading.ok()) << reading.error().message;
}

}  // namespace
}  // namespace quorvel::store

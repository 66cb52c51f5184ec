// One log, several stores, threads, processes and strangers at once.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "log_model.h"
#include "time_zone.h"

namespace quorvel::store {
namespace {

NewCall callAt(std::int64_t date, const char* address = "5551234") {
    NewCall call;
    call.address = address;
    call.date = date;
    call.duration = 10;
    call.flags = 4;
    return call;
}

void runOn(const std::filesystem::path& path, const char* text) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    sqlite3_busy_timeout(database, 10000);
    EXPECT_EQ(sqlite3_exec(database, text, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

std::int64_t callsOf(const CallStore& store) { return valueOf(store.totals(Filter::all, {})).calls; }

TEST(Sharing, whatOneStoreWritesTheOtherReads) {
    Folder folder;
    CallStore one = openStore(folder.file());
    CallStore other = openStore(folder.file());
    LogModel model;
    CallMaker maker(4);
    for (int at = 0; at < 20; ++at) {
        const NewCall call = maker.call();
        model.add(valueOf((at % 2 ? one : other).append(call)), call);
    }
    expectSame(one, model);
    expectSame(other, model);
    EXPECT_EQ(valueOf(one.deleteAll(Filter::missed)), model.remove(model.calls(Filter::missed)));
    expectSame(other, model);
    EXPECT_EQ(valueOf(one.revision()), 21);
    EXPECT_EQ(valueOf(other.revision()), 21);
}

TEST(Sharing, aPageGoesOnBelowItsLastCallWhateverArrivesAbove) {
    Folder folder;
    CallStore store = openStore(folder.file());
    for (const std::int64_t date : {100, 100, 100, 100, 100}) valueOf(store.append(callAt(date)));
    const Page first = valueOf(store.page(Filter::all, {}, Cursor::top(), 2));
    EXPECT_EQ(first.rows[0].rowId, 5);
    EXPECT_EQ(first.rows[1].rowId, 4);
    valueOf(store.append(callAt(100)));
    valueOf(store.append(callAt(200)));
    const Page second = valueOf(store.page(Filter::all, {}, first.next, 2));
    ASSERT_EQ(second.rows.size(), 2U);
    EXPECT_EQ(second.rows[0].rowId, 3);
    EXPECT_EQ(second.rows[1].rowId, 2);
    EXPECT_FALSE(second.atEnd);
}

TEST(Sharing, callsThatArriveAfterTheQuestionSurviveTheDeletion) {
    Folder folder;
    CallStore store = openStore(folder.file());
    valueOf(store.append(callAt(100)));
    valueOf(store.append(callAt(200)));
    const std::int64_t asked = valueOf(store.newestRowId());
    valueOf(store.append(callAt(150)));
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all, asked)), 2);
    const Page left = valueOf(store.page(Filter::all, {}, Cursor::top(), 10));
    ASSERT_EQ(left.rows.size(), 1U);
    EXPECT_EQ(left.rows[0].date, 150);
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 1);
    EXPECT_EQ(valueOf(store.append(callAt(300))), 4);
}

TEST(Sharing, readersSeeNothingOfAnImportUntilItIsFinished) {
    Folder folder;
    CallStore store = openStore(folder.file());
    valueOf(store.append(callAt(100)));
    ImportSession session = valueOf(store.beginImport());
    for (int at = 0; at < 10; ++at) valueOf(session.add(callAt(200 + at)));
    EXPECT_EQ(callsOf(store), 1);
    EXPECT_EQ(session.added(), 10);
    EXPECT_EQ(valueOf(session.finish()), 10);
    EXPECT_EQ(callsOf(store), 11);
    EXPECT_FALSE(session.add(callAt(1)));
    EXPECT_FALSE(session.finish());
}

TEST(Sharing, aBadCallEndsNoImport) {
    Folder folder;
    CallStore store = openStore(folder.file());
    ImportSession session = valueOf(store.beginImport());
    valueOf(session.add(callAt(100)));
    EXPECT_EQ(session.add(callAt(-5)).error().kind, ErrorKind::badInput);
    EXPECT_FALSE(valueOf(session.contains(callAt(101))));
    EXPECT_TRUE(valueOf(session.contains(callAt(100))));
    EXPECT_EQ(valueOf(session.finish()), 1);
}

TEST(Sharing, aWriterThatWaitsInVainSaysThatTheLogIsBusy) {
    Folder folder;
    OpenOptions hasty;
    hasty.busyBound = std::chrono::milliseconds(20);
    CallStore store = openStore(folder.file(), hasty);
    {
        ImportSession session = valueOf(store.beginImport());
        const auto refused = store.append(callAt(1));
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().kind, ErrorKind::busy) << refused.error().message;
        EXPECT_TRUE(store.page(Filter::all, {}, Cursor::top(), 5).ok());
    }
    EXPECT_TRUE(store.append(callAt(1)).ok());
}

TEST(Sharing, aStrangersChangesAreNoticedAndCounted) {
    Folder folder;
    CallStore store = openStore(folder.file());
    CallStore reader = openStore(folder.file());
    for (int at = 0; at < 10; ++at) valueOf(store.append(callAt(1000 + at, at % 2 ? "1" : "2")));
    EXPECT_EQ(callsOf(reader), 10);
    runOn(folder.file(), "insert into call (address, date, duration, flags) values ('3', 2000, 0, 4)");
    EXPECT_EQ(callsOf(reader), 11);
    EXPECT_EQ(valueOf(reader.totals(Filter::missed, {})).calls, 1);
    EXPECT_EQ(valueOf(reader.page(Filter::all, {}, Cursor::top(), 1)).rows[0].address, "3");
    runOn(folder.file(), "delete from call where address = '1'; update call set id = 4 where address = '2'");
    valueOf(store.append(callAt(3000, "2")));
    EXPECT_EQ(callsOf(reader), 7);
    EXPECT_EQ(valueOf(reader.history(Filter::all, 4, "")).size(), 5U);
    EXPECT_EQ(valueOf(reader.verify()), std::vector<std::string>());
}

TEST(Sharing, aStrangersCallIsNoticedAtOpening) {
    Folder folder;
    valueOf(openStore(folder.file()).append(callAt(1000)));
    runOn(folder.file(), "insert into call (address, date, duration, flags) values ('3', 2000, 7, 5)");
    CallStore store = openStore(folder.file());
    EXPECT_EQ(callsOf(store), 2);
    EXPECT_EQ(valueOf(store.totals(Filter::dialled, {})).duration, 7);
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

TEST(Sharing, theCheckNamesWhatIsWrongAndRebuildingRightsIt) {
    Folder folder;
    CallStore store = openStore(folder.file());
    valueOf(store.append(callAt(1000)));
    runOn(folder.file(), "update total set calls = 5 where filter = 1; update state set days = 9");
    const auto findings = valueOf(store.verify());
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0], "The totals of the list \"all\" are 5 calls, 10 seconds, 1 runs; counted are 1, 10, 1.");
    EXPECT_EQ(findings[1], "The number of days is 9; counted are 1.");
    EXPECT_TRUE(store.rebuild().ok());
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

TEST(Sharing, twoProcessesWriteOneLogAndNothingIsLost) {
    Folder folder;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    const auto appendMany = [&](const char* address) {
        CallStore store = openStore(folder.file());
        for (int at = 0; at < 60; ++at) valueOf(store.append(callAt(1000 + at, address)));
    };
    if (child == 0) {
        try {
            appendMany("child");
        } catch (const std::exception& error) {
            std::fprintf(stderr, "the child: %s\n", error.what());
            _exit(1);
        }
        _exit(0);
    }
    appendMany("parent");
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    CallStore store = openStore(folder.file());
    EXPECT_EQ(callsOf(store), 120);
    EXPECT_EQ(valueOf(store.history(Filter::all, noContact, "child")).size(), 60U);
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

TEST(Sharing, threadsReadWriteSearchAndDeleteAtOnce) {
    Folder folder;
    CallStore store = openStore(folder.file());
    std::atomic<std::int64_t> deleted{0};
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int at = 0; at < 60; ++at) EXPECT_TRUE(store.append(callAt(1000 + at)).ok());
    });
    threads.emplace_back([&] {
        for (int at = 0; at < 3; ++at) {
            auto session = store.beginImport();
            ASSERT_TRUE(session.ok());
            for (int call = 0; call < 20; ++call) EXPECT_TRUE(session->add(callAt(5000 + call, "7")).ok());
            EXPECT_TRUE(session->finish().ok());
        }
    });
    threads.emplace_back([&] {
        for (int at = 0; at < 20; ++at) deleted += store.deleteCalls(std::vector<std::int64_t>{at, at + 30}).valueOr(0);
    });
    threads.emplace_back([&] {
        for (int at = 0; at < 60; ++at) {
            EXPECT_TRUE(store.page(Filter::all, {false, true}, Cursor::top(), 10).ok());
            EXPECT_TRUE(store.search(Filter::all, "555", {}, Cursor::top(), 10).ok());
            store.query("select ROWID, date from call order by date desc LIMIT 1");
        }
    });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(callsOf(store), 120 - deleted);
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

TEST(Sharing, daysAreThoseOfTheMachinesTimeZoneAfterRebuilding) {
    Folder folder;
    {
        const TimeZone zone("Pacific/Kiritimati");
        valueOf(openStore(folder.file()).append(callAt(1704016800)));
    }
    const TimeZone zone("America/Los_Angeles");
    CallStore store = openStore(folder.file());
    EXPECT_EQ(valueOf(store.page(Filter::all, {true, false}, Cursor::top(), 1)).rows[0].day, "2024-01-01");
    EXPECT_EQ(valueOf(store.verify()).size(), 1U);
    EXPECT_TRUE(store.rebuild().ok());
    EXPECT_EQ(valueOf(store.page(Filter::all, {true, false}, Cursor::top(), 1)).rows[0].day, "2023-12-31");
    EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
}

TEST(Sharing, aRunWhoseNewestCallWasDeletedShowsItsNextOne) {
    Folder folder;
    CallStore store = openStore(folder.file());
    valueOf(store.append(callAt(50, "2")));
    for (const std::int64_t date : {100, 200, 300}) valueOf(store.append(callAt(date)));
    const Mode folded{false, true};
    const CallRecord run = valueOf(store.page(Filter::all, folded, Cursor::top(), 1)).rows[0];
    EXPECT_EQ(run.count, 3);
    valueOf(store.deleteCalls(std::vector<std::int64_t>{run.rowId}));
    const auto remaining = valueOf(store.remaining(Filter::all, folded, run));
    ASSERT_TRUE(remaining.has_value());
    EXPECT_EQ(remaining->date, 200);
    EXPECT_EQ(remaining->count, 2);
    EXPECT_EQ(valueOf(store.deleteRow(Filter::all, folded, run)), 2);
    EXPECT_EQ(valueOf(store.remaining(Filter::all, folded, run)), std::nullopt);
    EXPECT_EQ(callsOf(store), 1);
}

}  // namespace
}  // namespace quorvel::store

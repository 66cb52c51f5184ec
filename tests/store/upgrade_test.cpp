// A log of the first version gets what it lacks when it is opened for writing, whole or not at all, and keeps its
// calls.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <signal.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include "desktop/quorvel/store/database.h"
#include "failing_disk.h"
#include "log_model.h"
#include "time_zone.h"

extern char** environ;

namespace quorvel::store {
namespace {

constexpr const char* firstVersion = R"(
create table call (
    ROWID integer primary key autoincrement,
    address text not null default '',
    date integer not null default 0,
    duration integer not null default 0,
    flags integer not null default 0,
    face_time_data_size integer not null default 0,
    location text,
    id integer not null default -1,
    datetime text not null default '',
    kind integer not null default 0,
    party integer not null default 0,
    day integer not null default 0
);
create index call_by_date on call (date, ROWID, kind, duration, flags, party, id, day, location);
create index call_by_kind on call (kind, date, ROWID, duration, flags, party, id, day, location);
create index call_by_party on call (party, date, ROWID, kind, day);
create index call_by_contact on call (id, datetime, date);
create index call_by_address on call (address, datetime, date);
create table party (
    party integer primary key autoincrement,
    address text not null,
    contact integer not null,
    name text not null default '',
    label text not null default '',
    calls integer not null default 0
);
create unique index party_by_address on party (address, contact);
create index party_by_contact on party (contact);
create table day (
    day integer primary key,
    dialled integer not null, received integer not null, missed integer not null,
    dialled_duration integer not null, received_duration integer not null,
    first integer not null, last integer not null
);
create table span (
    span integer primary key,
    dialled integer not null, received integer not null, missed integer not null,
    all_runs integer not null, dialled_runs integer not null, received_runs integer not null, missed_runs integer not null
);
create table total (
    filter integer primary key,
    calls integer not null, duration integer not null, runs integer not null
);
create table state (
    one integer primary key check (one = 1),
    revision integer not null, party_revision integer not null, last_row integer not null, days integer not null,
    touched integer not null
);
insert into total values (1, 0, 0, 0), (2, 0, 0, 0), (3, 0, 0, 0), (4, 0, 0, 0);
insert into state values (1, 0, 0, 0, 0, 0);
create trigger call_added_by_a_stranger after insert on call begin update state set touched = 1; end;
create trigger call_changed_by_a_stranger after update on call begin update state set touched = 1; end;
create trigger call_deleted_by_a_stranger after delete on call begin update state set touched = 1; end;
create trigger party_added_by_a_stranger after insert on party begin update state set touched = 1; end;
create trigger party_changed_by_a_stranger after update on party begin update state set touched = 1; end;
create trigger party_deleted_by_a_stranger after delete on party begin update state set touched = 1; end;
pragma application_id = 0x51756f72;
pragma user_version = 1;
insert into call values (3, '5551234', 1700000000, 30, 5, 7, 'Berlin', 4, '2023-11-14', 2, 1, 19675);
insert into call values (8, '5559876', 1700000100, 0, 4, 0, null, -1, '2023-11-14', 4, 2, 19675);
insert into party values (1, '5551234', 4, 'Anna', 'home', 1), (2, '5559876', -1, '', '', 1);
insert into day values (19675, 1, 0, 1, 30, 0, 1700000000, 1700000100);
insert into span values (19675, 1, 0, 1, 2, 1, 0, 1);
insert or replace into total values (1, 2, 30, 2), (2, 1, 30, 1), (3, 0, 0, 0), (4, 1, 0, 1);
update state set revision = 5, party_revision = 2, last_row = 8, days = 1, touched = 0;
pragma journal_mode = wal;
)";

/// Makes a log of the second version out of one of the first.
constexpr const char* secondVersion = R"(
create table deleted (
    ROWID integer primary key,
    address text not null,
    date integer not null,
    duration integer not null,
    flags integer not null,
    face_time_data_size integer not null,
    location text,
    id integer not null,
    day integer not null,
    name text not null,
    label text not null,
    moment integer not null
);
create index deleted_by_moment on deleted (moment);
pragma user_version = 2;
)";

/// Makes a log of the third version out of one of the second.
constexpr const char* thirdVersion = R"(
alter table call add column extra text;
alter table deleted add column extra text;
pragma user_version = 3;
)";

void runOn(const std::filesystem::path& path, const char* statements) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, statements, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

void makeFirstVersion(const std::filesystem::path& path) { ASSERT_NO_FATAL_FAILURE(runOn(path, firstVersion)); }

std::int64_t versionOf(const std::filesystem::path& path) {
    Connection connection(path, Connection::Use::read, std::chrono::milliseconds(100), {});
    return connection.integerOf("pragma user_version");
}

class Upgrade : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(makeFirstVersion(folder_.file())); }

    static void expectItsCalls(const CallStore& store) {
        const Page page = valueOf(store.page(Filter::all, {}, Cursor::top(), 10));
        ASSERT_EQ(page.rows.size(), 2U);
        EXPECT_EQ(page.rows[0].rowId, 8);
        EXPECT_EQ(page.rows[1].name, "Anna");
        EXPECT_EQ(page.rows[1].location, "Berlin");
        EXPECT_EQ(valueOf(store.verify()), std::vector<std::string>());
    }

    const TimeZone zone_{"UTC"};
    Folder folder_;
};

TEST_F(Upgrade, aLogOfTheFirstVersionIsBroughtUpAndKeepsItsCalls) {
    CallStore store = openStore(folder_.file());
    expectItsCalls(store);
    EXPECT_EQ(versionOf(folder_.file()), 4);
    EXPECT_EQ(valueOf(store.revision()), 5);
    EXPECT_EQ(valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows.size(), 0U);
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 2);
    EXPECT_EQ(valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows.size(), 2U);
    EXPECT_EQ(valueOf(store.undeleteAll()), 2);
    expectItsCalls(store);
}

TEST_F(Upgrade, aLogOfTheSecondVersionGetsRoomForWhatElseIsKnown) {
    ASSERT_NO_FATAL_FAILURE(runOn(folder_.file(), secondVersion));
    {
        const CallStore reader = openStore(folder_.file(), {.access = Access::readOnly});
        expectItsCalls(reader);
        EXPECT_EQ(valueOf(reader.wholeCalls(std::vector<std::int64_t>{3}))[0].faceTimeDataSize, 7);
        EXPECT_EQ(versionOf(folder_.file()), 2);
    }
    CallStore store = openStore(folder_.file());
    expectItsCalls(store);
    EXPECT_EQ(versionOf(folder_.file()), 4);
    NewCall call;
    call.address = "5550000";
    call.date = 1700000200;
    call.extra = R"({"read":"1"})";
    const std::int64_t rowId = valueOf(store.append(call));
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 3);
    EXPECT_EQ(valueOf(store.undeleteAll()), 3);
    const auto calls = valueOf(store.wholeCalls(std::vector<std::int64_t>{rowId, 99, 3}));
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].extra, R"({"read":"1"})");
    EXPECT_EQ(calls[1].extra, "");
    EXPECT_EQ(calls[1].faceTimeDataSize, 7);
    EXPECT_EQ(store.query("select extra from call where extra is not null").at(0).extra, R"({"read":"1"})");
}

TEST_F(Upgrade, aLogOfTheThirdVersionGetsAnIndexWithAllThatAHistoryShows) {
    ASSERT_NO_FATAL_FAILURE(runOn(folder_.file(), secondVersion));
    ASSERT_NO_FATAL_FAILURE(runOn(folder_.file(), thirdVersion));
    const auto planOfHistory = [&] {
        Connection connection(folder_.file(), Connection::Use::read, std::chrono::milliseconds(100), {});
        Statement plan(connection.handle(),
                       "explain query plan select duration, flags, id, day, location from call indexed by "
                       "call_by_party where party = 1 order by date desc, ROWID desc",
                       connection.path());
        return plan.step() ? std::string(plan.text(3)) : std::string();
    };
    expectItsCalls(openStore(folder_.file(), {.access = Access::readOnly}));
    EXPECT_EQ(planOfHistory(), "SEARCH call USING INDEX call_by_party (party=?)");
    expectItsCalls(openStore(folder_.file()));
    EXPECT_EQ(versionOf(folder_.file()), 4);
    EXPECT_EQ(planOfHistory(), "SEARCH call USING COVERING INDEX call_by_party (party=?)");
}

TEST_F(Upgrade, openedForReadingItStaysAsItIsAndHasKeptNothing) {
    const CallStore store = openStore(folder_.file(), {.access = Access::readOnly});
    expectItsCalls(store);
    EXPECT_TRUE(valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows.empty());
    EXPECT_EQ(versionOf(folder_.file()), 1);
}

TEST_F(Upgrade, aReaderThatWasThereBeforeGoesOnAndSeesWhatIsKept) {
    const CallStore reader = openStore(folder_.file(), {.access = Access::readOnly});
    CallStore writer = openStore(folder_.file());
    expectItsCalls(reader);
    EXPECT_EQ(valueOf(writer.deleteAll(Filter::missed)), 1);
    EXPECT_EQ(valueOf(reader.deletedCalls(Cursor::top(), noLimit)).rows.size(), 1U);
}

TEST_F(Upgrade, whicheverWriteOfItFailsTheNextOpeningBringsItUp) {
    bool done = false;
    int failures = 0;
    for (int write = 1; !done && write < 100; ++write) {
        Folder folder;
        std::filesystem::copy_file(folder_.file(), folder.file());
        FailingDisk::failFrom(write);
        {
            OpenOptions options;
            options.fileSystem = FailingDisk::name();
            failures += CallStore::open(folder.file(), options).ok() ? 0 : 1;
            done = !FailingDisk::hasFailed();
            FailingDisk::failFrom(0);
        }
        expectItsCalls(openStore(folder.file()));
        EXPECT_EQ(versionOf(folder.file()), 4) << "write " << write;
    }
    EXPECT_TRUE(done);
    EXPECT_GT(failures, 0);
}

/// Opens the log in a process that dies before the operation of its disk. Whether the process lived.
bool openDyingAt(const std::filesystem::path& log, int operation) {
    std::string program = KILLED_WRITER, path = log, number = std::to_string(operation), opening = "opening";
    char* arguments[] = {program.data(), path.data(), number.data(), opening.data(), nullptr};
    pid_t process = 0;
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0)
        throw std::runtime_error(program + " cannot be started");
    int status = -1;
    waitpid(process, &status, 0);
    EXPECT_TRUE(status == 0 || (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)) << status;
    return status == 0;
}

TEST_F(Upgrade, killedAtAnyOperationItHasHappenedOrNotAndNothingIsLost) {
    ASSERT_NO_FATAL_FAILURE(runOn(folder_.file(), secondVersion));
    bool lived = false;
    int before = 0, after = 0;
    for (int operation = 1; !lived && operation < 500; ++operation) {
        Folder folder;
        std::filesystem::copy_file(folder_.file(), folder.file());
        lived = openDyingAt(folder.file(), operation);
        const std::int64_t version = versionOf(folder.file());
        ASSERT_TRUE(version == 2 || version == 4) << version;
        ++(version == 2 ? before : after);
        expectItsCalls(openStore(folder.file(), {.access = Access::readOnly}));
        CallStore store = openStore(folder.file());
        expectItsCalls(store);
        EXPECT_EQ(versionOf(folder.file()), 4) << "operation " << operation;
        EXPECT_EQ(valueOf(store.wholeCalls(std::vector<std::int64_t>{3}))[0].faceTimeDataSize, 7);
    }
    EXPECT_TRUE(lived);
    EXPECT_GT(before, 10);
    EXPECT_GT(after, 0);
}

TEST(WholeCalls, haveEveryFieldAsItWasWritten) {
    EXPECT_TRUE(rc::check([] {
        const TimeZone zone("UTC");
        Folder folder;
        CallStore store = openStore(folder.file());
        NewCall call;
        call.address = std::to_string(*rc::gen::inRange(100, 200));
        call.date = *rc::gen::inRange(0, INT32_MAX);
        call.duration = *rc::gen::inRange(0, 5000);
        call.flags = *rc::gen::inRange(0, 1 << 20);
        call.contactId = *rc::gen::inRange(-1, 50);
        call.name = *rc::gen::element<std::string>("", "Anna", "Jürgen \"J\" 李");
        call.label = *rc::gen::element<std::string>("", "mobile");
        call.location = *rc::gen::element<std::string>("", "Berlin");
        call.faceTimeDataSize = *rc::gen::inRange(0, 1 << 30);
        call.extra = *rc::gen::element<std::string>("", R"({"source":"x","read":"1"})");
        const std::int64_t rowId = valueOf(store.append(call));
        const auto calls = valueOf(store.wholeCalls({&rowId, 1}));
        RC_ASSERT(calls.size() == 1U);
        const CallRecord& found = calls[0];
        RC_ASSERT(found.rowId == rowId);
        RC_ASSERT(found.address == call.address);
        RC_ASSERT(found.date == call.date);
        RC_ASSERT(found.duration == call.duration);
        RC_ASSERT(found.flags == call.flags);
        RC_ASSERT(found.contactId == call.contactId);
        RC_ASSERT(found.name == call.name);
        RC_ASSERT(found.label == call.label);
        RC_ASSERT(found.location == call.location);
        RC_ASSERT(found.faceTimeDataSize == call.faceTimeDataSize);
        RC_ASSERT(found.extra == call.extra);
    }));
}

}  // namespace
}  // namespace quorvel::store

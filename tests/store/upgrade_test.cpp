// A log of the first version gets what it lacks when it is opened for writing, whole or not at all, and keeps its
// calls.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "desktop/quorvel/store/database.h"
#include "failing_disk.h"
#include "log_model.h"
#include "time_zone.h"

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

void makeFirstVersion(const std::filesystem::path& path) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, firstVersion, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

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
    EXPECT_EQ(versionOf(folder_.file()), 2);
    EXPECT_EQ(valueOf(store.revision()), 5);
    EXPECT_EQ(valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows.size(), 0U);
    EXPECT_EQ(valueOf(store.deleteAll(Filter::all)), 2);
    EXPECT_EQ(valueOf(store.deletedCalls(Cursor::top(), noLimit)).rows.size(), 2U);
    EXPECT_EQ(valueOf(store.undeleteAll()), 2);
    expectItsCalls(store);
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
        ASSERT_NO_FATAL_FAILURE(makeFirstVersion(folder.file()));
        FailingDisk::failFrom(write);
        {
            OpenOptions options;
            options.fileSystem = FailingDisk::name();
            failures += CallStore::open(folder.file(), options).ok() ? 0 : 1;
            done = !FailingDisk::hasFailed();
            FailingDisk::failFrom(0);
        }
        expectItsCalls(openStore(folder.file()));
        EXPECT_EQ(versionOf(folder.file()), 2) << "write " << write;
    }
    EXPECT_TRUE(done);
    EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace quorvel::store

// `call` keeps the columns that query texts name; kind, party and day stand beside them. Everything else is derived
// from it: parties (a number with its contact), local days, and spans of 86,400 seconds for finding a row by its
// number.
#include "desktop/quorvel/store/schema.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <span>
#include <thread>

namespace quorvel::store {
namespace {

/// "Quor" in the header of the file.
constexpr std::int64_t applicationId = 0x51756f72;

// What the first version had. A local day may begin twice where clocks are put back just after midnight, so that days
// do not always follow the order of the dates; spans do.
constexpr const char* tables = R"(
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
)";

/// What the second version added.
constexpr const char* keptAside = R"(
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

/// What the third version added.
constexpr const char* extraColumns = R"(
alter table call add column extra text;
alter table deleted add column extra text;
pragma user_version = 3;
)";

/// What the fourth version changed: the index holds all that an entry shows, so that a history need not visit each
/// call.
constexpr const char* wideIndexOfParties = R"(
drop index call_by_party;
create index call_by_party on call (party, date, ROWID, kind, duration, flags, id, day, location);
pragma user_version = 4;
)";

/// Each brings a file from the version of its place, 0 for an empty one, to the next.
constexpr std::array steps = {tables, keptAside, extraColumns, wideIndexOfParties};
static_assert(steps.size() == schemaVersion);

/// The version of the log, 0 for an empty file.
std::int64_t versionOf(Connection& connection) {
    const std::string where = "The file " + connection.path().string();
    const std::int64_t application = connection.integerOf("pragma application_id");
    const std::int64_t version = connection.integerOf("pragma user_version");
    const std::int64_t objects = connection.integerOf("select count(*) from sqlite_schema");
    if (application == 0 && version == 0 && objects == 0) return 0;
    if (application != applicationId) {
        throw Failure{{ErrorKind::foreign,
                       where + " is a database of another program. Choose another file; it was left as it is."}};
    }
    if (version > schemaVersion) {
        throw Failure{{ErrorKind::newer, where + " was written by a later version of this program (format " +
                                             std::to_string(version) + ", this one reads " +
                                             std::to_string(schemaVersion) +
                                             "). Update the program; the file was left as it is."}};
    }
    return std::max<std::int64_t>(version, 1);
}

/// The same of one moment: another process may be making the log between two looks.
std::int64_t versionAtOnce(Connection& connection) {
    const Transaction transaction(connection, Transaction::Kind::read);
    return versionOf(connection);
}

/// That every table and index is there: each statement names its index, so preparing it is the check.
void checkTables(Connection& connection) {
    static constexpr std::array texts = {
        "select date, ROWID, kind, duration, flags, party, id, day, location, address, datetime, face_time_data_size "
        "from call "
        "indexed by call_by_date where date = 0",
        "select ROWID from call indexed by call_by_kind where kind = 0",
        "select ROWID from call indexed by call_by_party where party = 0",
        "select ROWID from call indexed by call_by_contact where id = 0",
        "select ROWID from call indexed by call_by_address where address = ''",
        "select name, label, calls from party indexed by party_by_address where address = ''",
        "select party from party indexed by party_by_contact where contact = 0",
        "select dialled, received, missed, dialled_duration, received_duration, first, last from day where day = 0",
        "select dialled, received, missed, all_runs, dialled_runs, received_runs, missed_runs from span where span = 0",
        "select calls, duration, runs from total where filter = 1",
        "select revision, party_revision, last_row, days, touched from state where one = 1",
        "select address, date, duration, flags, face_time_data_size, location, id, day, name, label from deleted "
        "indexed by deleted_by_moment where moment = 0",
        "select call.extra, deleted.extra from call, deleted",
    };
    const std::int64_t version = versionOf(connection);
    const std::size_t missing = version < versionThatKeepsAside ? 2 : version < versionWithExtra ? 1 : 0;
    for (const char* text : std::span(texts).first(texts.size() - missing)) {
        try {
            Statement(connection.handle(), text, connection.path());
        } catch (const Failure& failure) {
            if (failure.error.kind != ErrorKind::failed) throw;
            throw Failure{errorOf(SQLITE_CORRUPT, sqlite3_errmsg(connection.handle()), connection.path())};
        }
    }
    if (connection.integerOf("select count(*) from total where filter between 1 and 4") != 4 ||
        connection.integerOf("select count(*) from state where one = 1") != 1) {
        throw Failure{errorOf(SQLITE_CORRUPT, "its totals are missing", connection.path())};
    }
}

/// Two processes that make the file at once may meet here, where SQLite does not always wait by itself.
void switchToWriteAheadLog(Connection& connection, std::chrono::milliseconds busyBound) {
    const auto end = std::chrono::steady_clock::now() + busyBound;
    for (;;) {
        try {
            connection.execute("pragma journal_mode = wal");
            return;
        } catch (const Failure& failure) {
            if (failure.error.kind != ErrorKind::busy || std::chrono::steady_clock::now() >= end) throw;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

}  // namespace

void checkHeader(const std::filesystem::path& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (!std::filesystem::exists(status)) return;
    if (!std::filesystem::is_regular_file(status)) {
        throw Failure{
            {ErrorKind::unreadable, "The call log " + path.string() + " is not a file. Choose another name for it."}};
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure{errorOf(SQLITE_CANTOPEN, "it cannot be opened", path)};
    std::array<char, 16> head{};
    file.read(head.data(), head.size());
    if (file.gcount() == 0) return;
    if (std::string_view(head.data(), static_cast<std::size_t>(file.gcount())) !=
        std::string_view("SQLite format 3\0", 16)) {
        throw Failure{{ErrorKind::foreign,
                       "The file " + path.string() + " is not a call log. Choose another file; it was left as it is."}};
    }
}

void prepareSchema(Connection& connection, std::chrono::milliseconds busyBound) {
    if (connection.isReadOnly()) {
        if (versionAtOnce(connection) == 0) {
            throw Failure{
                {ErrorKind::foreign, "The file " + connection.path().string() + " is empty, not a call log."}};
        }
    } else if (versionAtOnce(connection) == schemaVersion) {
        switchToWriteAheadLog(connection, busyBound);
    } else {
        switchToWriteAheadLog(connection, busyBound);
        Transaction transaction(connection, Transaction::Kind::write);
        // Another process may have been first.
        const auto version = static_cast<std::size_t>(versionOf(connection));
        for (const char* step : std::span(steps).subspan(version)) connection.execute(step);
        transaction.commit();
    }
    checkTables(connection);
}

void configure(Connection& connection, Connection::Use use) {
    connection.execute("pragma temp_store = memory");
    if (use == Connection::Use::write) {
        // What the user was told of is on disk.
        connection.execute("pragma synchronous = full");
        connection.execute("pragma journal_size_limit = 16777216");
    } else {
        connection.execute("pragma query_only = on");
    }
}

}  // namespace quorvel::store

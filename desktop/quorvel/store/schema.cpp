// `call` keeps the columns that query texts name; kind, party and day stand beside them. Everything else is derived
// from it: parties (a number with its contact), local days, and spans of 86,400 seconds for finding a row by its
// number.
#include "desktop/quorvel/store/schema.h"

#include <algorithm>
#include <array>
#include <span>
#include <thread>

namespace quorvel::store {
namespace {

/// As many versions as there may ever be: what lies beyond is no version but damage.
constexpr std::int64_t laterVersions = 1000;

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
        constexpr std::int64_t ownTables = 5;
        if (connection.integerOf("select count(*) from sqlite_schema where type = 'table' and name in "
                                 "('call', 'party', 'span', 'total', 'state')") == ownTables)
            throw failureOf(SQLITE_CORRUPT, "its header does not say that it is a call log", connection.path());
        throw Failure{{ErrorKind::foreign,
                       where + " is a database of another program. Choose another file; it was left as it is."}};
    }
    if (version < 0 || version > schemaVersion + laterVersions)
        throw failureOf(SQLITE_CORRUPT, "its header says an impossible version", connection.path());
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

std::vector<SchemaPart> partsOf(Connection& connection) {
    std::vector<SchemaPart> parts;
    Statement found(connection.handle(), "select type, name, tbl_name, sql from sqlite_schema", connection.path());
    while (found.step()) {
        if (found.isNull(3)) continue;
        parts.push_back({std::string(found.text(0)), std::string(found.text(1)), std::string(found.text(2)),
                         std::string(found.text(3))});
    }
    return parts;
}

/// What a log of the version consists of.
const std::vector<SchemaPart>& ownParts(std::int64_t version) {
    static const auto all = [] {
        std::array<std::vector<SchemaPart>, schemaVersion> made;
        Connection memory({}, Connection::Use::memory, {}, {});
        for (std::size_t step = 0; step < steps.size(); ++step) {
            memory.execute(steps[step]);
            made[step] = partsOf(memory);
        }
        return made;
    }();
    return all[static_cast<std::size_t>(version) - 1];
}

bool isAmong(const std::vector<SchemaPart>& parts, const SchemaPart& part) {
    return std::find(parts.begin(), parts.end(), part) != parts.end();
}

/// That every table and index is there, and is defined as this program defines it: what a statement does depends on it.
void checkTables(Connection& connection) {
    // Of one moment: another process may be bringing the log up.
    const Transaction moment(connection, Transaction::Kind::read);
    const std::vector<SchemaPart> parts = partsOf(connection);
    for (const SchemaPart& own : ownParts(versionOf(connection))) {
        if (isAmong(parts, own)) continue;
        throw failureOf(SQLITE_CORRUPT, "its " + own.type + " \"" + own.name + "\" is missing or another one",
                        connection.path());
    }
    if (connection.integerOf("select count(*) from total where filter between 1 and 4") != 4 ||
        connection.integerOf("select count(*) from state where one = 1") != 1) {
        throw failureOf(SQLITE_CORRUPT, "its totals are missing", connection.path());
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

/// Makes the tables or brings them up, where the connection can write, and looks at them.
void prepareReadableSchema(Connection& connection, std::chrono::milliseconds busyBound) {
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

}  // namespace

std::vector<SchemaPart> foreignParts(Connection& connection) {
    std::vector<SchemaPart> foreign;
    const std::vector<SchemaPart>& own = ownParts(versionOf(connection));
    for (const SchemaPart& part : partsOf(connection)) {
        const bool isOnOwn = std::any_of(own.begin(), own.end(), [&](const SchemaPart& each) {
            return each.type == "table" && each.name == part.table;
        });
        if (part.type != "table" && isOnOwn && !isAmong(own, part)) foreign.push_back(part);
    }
    return foreign;
}

void prepareSchema(Connection& connection, std::chrono::milliseconds busyBound) {
    try {
        prepareReadableSchema(connection, busyBound);
    } catch (const Failure& failure) {
        // The texts are right, so it is the file that makes them fail.
        if ((failure.code & 0xff) != SQLITE_ERROR) throw;
        throw failureOf(SQLITE_CORRUPT, sqlite3_errmsg(connection.handle()), connection.path());
    }
}

void configure(Connection& connection, Connection::Use use) {
    connection.execute("pragma temp_store = memory");
    connection.execute("pragma cell_size_check = on");
    if (use == Connection::Use::write) {
        // What the user was told of is on disk, and what was deleted is not: it must not come back from a damaged file.
        connection.execute("pragma synchronous = full");
        connection.execute("pragma secure_delete = on");
        connection.execute("pragma journal_size_limit = 16777216");
    } else {
        connection.execute("pragma query_only = on");
    }
}

}  // namespace quorvel::store

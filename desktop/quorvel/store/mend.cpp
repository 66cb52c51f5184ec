// A call that cannot be read is stepped over from both sides, so that only the damaged pages are lost.
#include "desktop/quorvel/store/mend.h"

#include <functional>
#include <map>

#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/log_files.h"
#include "desktop/quorvel/store/page_copy.h"
#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

template <class Value>
Value valueOf(Result<Value> result) {
    if (!result) throw Failure{result.error()};
    return *std::move(result);
}

/// Whether it ended without meeting damage; other failures are thrown on.
bool withoutDamage(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const Failure& failure) {
        if (failure.error.kind != ErrorKind::damaged) throw;
        return false;
    }
}

/// Reads what can be read of a damaged log.
class Salvage {
  public:
    Salvage(const fs::path& log, const OpenOptions& options)
        : from_(log, Connection::Use::readFileOnly, options.busyBound, options.fileSystem) {
        bool hasExtra = false;
        Statement columns(from_.handle(), "select 1 from pragma_table_info('call') where name = 'extra'", log);
        while (columns.step()) hasExtra = true;
        const std::string read = std::string("select ROWID, address, date, duration, flags, id, location, ") +
                                 "face_time_data_size, party, " + (hasExtra ? "extra" : "null") +
                                 " from call not indexed where ROWID > ?1 and ROWID < ?2 order by ROWID";
        rising_ = Statement(from_.handle(), read, from_.path());
        falling_ = Statement(from_.handle(), read + " desc", from_.path());
        withoutDamage([&] {
            Statement parties(from_.handle(), "select party, name, label from party not indexed", from_.path());
            while (parties.step())
                names_[parties.integer(0)] = {std::string(parties.text(1)), std::string(parties.text(2))};
        });
        withoutDamage([&] {
            Statement given(from_.handle(), "select seq from sqlite_sequence where name = 'call'", from_.path());
            while (given.step()) newest_ = given.integer(0);
        });
    }

    /// Shows every call that can be read once.
    void read(const std::function<void(const NewCall&)>& see) {
        std::int64_t last = 0;
        const auto seeRow = [&](Statement& row) { see(callOf(row)); };
        while (!readRange(rising_, last, INT64_MAX, [&](Statement& row) {
            last = row.integer(0);
            seeRow(row);
        })) {
            const std::int64_t behind = firstBehind(last);
            if (behind == INT64_MAX) return;
            readRange(falling_, last, behind, seeRow);
            last = behind - 1;
        }
    }

    /// How many calls the log's own totals say there are; 0 where they cannot be read.
    std::int64_t expected() {
        std::int64_t calls = 0;
        withoutDamage([&] { calls = from_.integerOf("select calls from total where filter = 1"); });
        return calls;
    }

  private:
    bool readRange(Statement& rows, std::int64_t above, std::int64_t below,
                   const std::function<void(Statement&)>& see) {
        const ResetLater later(rows);
        rows.bind(1, above).bind(2, below);
        return withoutDamage([&] {
            while (rows.step()) see(rows);
        });
    }

    /// The row identifier of a call behind the damage that begins after `last`; INT64_MAX for none.
    std::int64_t firstBehind(std::int64_t last) {
        for (std::int64_t step = 1; last + step <= newest_; step *= 2) {
            std::int64_t found = INT64_MAX;
            const ResetLater later(rising_);
            rising_.bind(1, last + step).bind(2, INT64_MAX);
            if (withoutDamage([&] {
                    if (rising_.step()) found = rising_.integer(0);
                }))
                return found;
        }
        return INT64_MAX;
    }

    NewCall callOf(const Statement& row) const {
        NewCall call;
        call.address = row.text(1);
        call.date = row.integer(2);
        call.duration = static_cast<std::int32_t>(row.integer(3));
        call.flags = static_cast<std::int32_t>(row.integer(4));
        call.contactId = static_cast<std::int32_t>(row.integer(5));
        call.location = row.text(6);
        call.faceTimeDataSize = static_cast<std::int32_t>(row.integer(7));
        call.extra = row.text(9);
        if (const auto named = names_.find(row.integer(8)); named != names_.end())
            std::tie(call.name, call.label) = named->second;
        return call;
    }

    Connection from_;
    Statement rising_, falling_;
    std::map<std::int64_t, std::pair<std::string, std::string>> names_;
    std::int64_t newest_ = 1 << 30;
};

Mended saveWhatCanBeRead(const fs::path& log, const OpenOptions& options) {
    Mended mended;
    mended.wasReplaced = true;
    const Staging staging(log);
    std::int64_t expected = 0, refused = 0;
    {
        Salvage salvage(log, options);
        auto store = valueOf(CallStore::open(staging.file()));
        auto session = valueOf(store.beginImport());
        salvage.read([&](const NewCall& call) {
            const auto added = session.add(call);
            if (added) return;
            if (added.error().kind != ErrorKind::badInput) throw Failure{added.error()};
            ++refused;
        });
        mended.calls = valueOf(session.finish());
        expected = salvage.expected();
    }
    {
        Connection made(staging.file(), Connection::Use::write, options.busyBound, {});
        made.execute("pragma journal_mode = delete");
    }
    mended.unreadable = std::max(refused, expected - mended.calls);
    mended.copy = replaceLog(log, staging.file(), "damaged", momentOf(options));
    return mended;
}

/// Nothing where the file itself is damaged in more than its indices.
std::optional<Mended> makeAnew(const fs::path& log, const fs::path& kept, const OpenOptions& options) {
    Mended mended;
    Connection connection(log, Connection::Use::write, options.busyBound, options.fileSystem);
    prepareSchema(connection, options.busyBound);
    configure(connection, Connection::Use::write);
    Transaction transaction(connection, Transaction::Kind::write);
    mended.copy = kept;
    {
        Connection reading(log, Connection::Use::read, options.busyBound, options.fileSystem);
        Connection copy(mended.copy, Connection::Use::write, options.busyBound, options.fileSystem);
        const Transaction moment(reading, Transaction::Kind::read);
        copyPages(reading, copy, {});
        copy.execute("pragma journal_mode = delete");
    }
    const bool isSound = withoutDamage([&] {
        connection.execute("reindex");
        rebuildDerived(connection);
    });
    if (!isSound || !findContradictions(connection).empty()) return std::nullopt;
    transaction.commit();
    mended.calls = connection.integerOf("select calls from total where filter = 1");
    return mended;
}

}  // namespace

Result<Mended> mend(const fs::path& log, const OpenOptions& options) {
    return guarded([&] {
        checkHeader(log);
        if (!isThere(log)) {
            throw Failure{{ErrorKind::unreadable, "The call log " + log.string() + " is not there."}};
        }
        const fs::path kept = formerName(log, "before-mending", momentOf(options));
        std::optional<Mended> mended;
        withoutDamage([&] { mended = makeAnew(log, kept, options); });
        if (mended) return *std::move(mended);
        removeDatabase(kept);
        return saveWhatCanBeRead(log, options);
    });
}

}  // namespace quorvel::store

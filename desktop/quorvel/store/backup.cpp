// The way back leads through a copy beside the log: it is brought to this version, checked and put right there, and the
// log then takes over its rows in one transaction, so that an open connection simply sees the next state.
#include "desktop/quorvel/store/backup.h"

#include <unistd.h>

#include <ctime>

#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/impossible_rows.h"
#include "desktop/quorvel/store/log_files.h"
#include "desktop/quorvel/store/page_copy.h"
#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

void requireTwoFiles(const fs::path& backup, const fs::path& log) {
    std::error_code ignored;
    if (fs::absolute(backup).lexically_normal() != fs::absolute(log).lexically_normal() &&
        !fs::equivalent(backup, log, ignored))
        return;
    throw Failure{{ErrorKind::badInput, "The file " + backup.string() + " is the log itself. Name another file."}};
}

void requireFile(const fs::path& path, const char* what) {
    if (!isThere(path))
        throw Failure{{ErrorKind::unreadable, std::string(what) + ' ' + path.string() + " is not there."}};
    checkHeader(path);
}

void requireFree(const fs::path& file, Existing existing) {
    std::error_code ignored;
    if (!fs::exists(fs::symlink_status(file, ignored))) return;
    if (!fs::is_regular_file(file, ignored))
        throw Failure{{ErrorKind::badInput, file.string() + " is not a file. Name a file for the backup."}};
    if (existing == Existing::refused) {
        throw Failure{{ErrorKind::badInput,
                       "There is a file " + file.string() + " already. Name another one, or have it replaced."}};
    }
    if (isThere(with(file, "-wal")) || isThere(with(file, "-journal"))) {
        throw Failure{
            {ErrorKind::badInput, "The database " + file.string() + " is in use by a program. Name another file."}};
    }
}

[[noreturn]] void refuseContents(const fs::path& backup, const std::string& finding) {
    throw Failure{
        {ErrorKind::badInput, "The backup " + backup.string() + " holds what no log can hold: " + finding +
                                  " The log was left as it is. To add what is right in the backup to it, use: "
                                  "quorvelctl import --skip-bad " +
                                  backup.string()}};
}

/// The backup's contents in the staging file, of this version, sound and in agreement with themselves. Answers what
/// had to be put right.
std::vector<std::string> stage(const fs::path& backup, const fs::path& staging, const BackupOptions& options) {
    {
        Connection from(backup, Connection::Use::readFileOnly, options.log.busyBound, options.log.fileSystem);
        prepareSchema(from, options.log.busyBound);
        Connection to(staging, Connection::Use::write, options.log.busyBound, options.log.fileSystem);
        Transaction moment(from, Transaction::Kind::read);
        copyPages(from, to, options.progress);
    }
    Connection copy(staging, Connection::Use::write, options.log.busyBound, options.log.fileSystem);
    if (const auto damage = findDamage(copy); !damage.empty())
        throw Failure{errorOf(SQLITE_CORRUPT, damage.front(), backup)};
    prepareSchema(copy, options.log.busyBound);
    std::vector<std::string> findings;
    {
        Transaction transaction(copy, Transaction::Kind::write);
        findings = findContradictions(copy);
        if (!findings.empty()) {
            dropForeignParts(copy);
            rebuildDerived(copy);
            if (const auto left = findContradictions(copy); !left.empty()) refuseContents(backup, left.front());
        }
        transaction.commit();
    }
    copy.execute("pragma journal_mode = delete");
    return findings;
}

std::vector<std::string> tablesOf(Connection& log) {
    std::vector<std::string> tables;
    Statement& found = log.statement(
        "select name from main.sqlite_schema where type = 'table' and (name not like 'sqlite_%' or name = "
        "'sqlite_sequence')");
    while (found.step()) tables.emplace_back(found.text(0));
    return tables;
}

/// By name: tables that were made by different versions may have their columns in another order.
std::string columnsOf(Connection& log, const std::string& schema, const std::string& table) {
    std::string columns;
    Statement found(log.handle(), "select name from pragma_table_info('" + table + "', '" + schema + "')", log.path());
    while (found.step()) columns += (columns.empty() ? "\"" : ", \"") + std::string(found.text(0)) + '"';
    return columns;
}

/// Expects the staged log attached as `restored`, and a writing transaction.
void takeOver(Connection& log) {
    const std::int64_t revision = log.integerOf("select max(revision, party_revision) from main.state");
    for (const std::string& table : tablesOf(log)) {
        log.execute(("delete from main." + table).c_str());
        const std::string columns = columnsOf(log, "main", table);
        // SQLite copies a whole table into an empty one of the same shape, its indices too, without looking at rows.
        const bool isSame = columns == columnsOf(log, "restored", table);
        const std::string into = isSame ? table : table + " (" + columns + ')';
        const std::string from = (isSame ? "*" : columns) + " from restored." + table;
        log.execute(("insert into main." + into + " select " + from).c_str());
    }
    // Whoever remembers a state of before must not take this one for it.
    log.statement(
           "update main.state set revision = max(revision, ?1) + 1, party_revision = max(party_revision, ?1) + 1")
        .bind(1, revision)
        .run();
}

/// Before anything is copied; a database that may not be written is opened for reading alone, without an error.
void requireWritable(const fs::path& log) {
    if (isThere(log) && ::access(log.c_str(), W_OK) != 0)
        throw Failure{errorOf(SQLITE_READONLY, "it may not be written", log)};
}

/// The log that is about to be replaced, kept under a name of its own unless it holds no calls.
class FormerLog {
  public:
    FormerLog(const fs::path& log, const OpenOptions& options)
        : name_(formerName(log, "before", momentOf(options))),
          reading_(log, Connection::Use::read, options.busyBound, options.fileSystem) {}
    ~FormerLog() {
        if (isCopied_ && !isReplaced_) removeDatabase(name_);
    }
    FormerLog(const FormerLog&) = delete;
    FormerLog& operator=(const FormerLog&) = delete;

    /// Copies the log as it is now, unless the copy of before still is what the log holds.
    void keep() {
        const Transaction moment(reading_, Transaction::Kind::read);
        const std::int64_t version = reading_.integerOf("pragma data_version");
        if (version == version_) return;
        version_ = version;
        if (reading_.integerOf("select exists (select 1 from call) or exists (select 1 from deleted)") == 0) return;
        copyToFile(reading_, name_, isCopied_ ? Existing::replaced : Existing::refused, {});
        isCopied_ = true;
    }
    /// The log holds something else now. Answers where it is kept; empty where it was not.
    fs::path wasReplaced() {
        isReplaced_ = true;
        return isCopied_ ? name_ : fs::path();
    }

  private:
    fs::path name_;
    Connection reading_;
    std::int64_t version_ = -1;
    bool isCopied_ = false;
    bool isReplaced_ = false;
};

Restored replaceContents(const fs::path& path, const fs::path& staging, const BackupOptions& options) {
    Connection log(path, Connection::Use::write, options.log.busyBound, options.log.fileSystem);
    prepareSchema(log, options.log.busyBound);
    if (log.isReadOnly()) throw Failure{errorOf(SQLITE_READONLY, "it may not be written", path)};
    configure(log, Connection::Use::write);
    const std::string stagingName = databaseName(staging);
    log.statement("attach ?1 as restored").bind(1, stagingName).run();
    FormerLog former(path, options.log);
    // Others may write meanwhile; what they wrote is copied once more while nobody can.
    former.keep();
    Transaction transaction(log, Transaction::Kind::write);
    former.keep();
    takeOver(log);
    transaction.commit();
    Restored restored;
    restored.former = former.wasReplaced();
    restored.calls = log.integerOf("select calls from main.total where filter = 1");
    return restored;
}

std::int64_t callsOf(const fs::path& staging) {
    Connection copy(staging, Connection::Use::read, {}, {});
    return copy.integerOf("select calls from total where filter = 1");
}

Error aboutTheBackup(const Error& error, const fs::path& backup) {
    if (error.kind != ErrorKind::damaged) return error;
    return {error.kind, "The backup " + backup.string() +
                            " is damaged. Choose another one; the log was left as it is. (" + error.message + ')'};
}

}  // namespace

Result<Done> backUp(const fs::path& log, const fs::path& file, const BackupOptions& options) {
    return guarded([&] {
        requireTwoFiles(file, log);
        requireFree(file, options.existing);
        requireFile(log, "The call log");
        Connection from(log, Connection::Use::read, options.log.busyBound, options.log.fileSystem);
        prepareSchema(from, options.log.busyBound);
        const Transaction moment(from, Transaction::Kind::read);
        copyToFile(from, file, options.existing, options.progress);
        return Done{};
    });
}

Result<Restored> restore(const fs::path& backup, const fs::path& log, const BackupOptions& options) {
    return guarded([&] {
        requireTwoFiles(backup, log);
        requireFile(backup, "The backup");
        requireWritable(log);
        const Staging staging(log);
        std::vector<std::string> mended;
        try {
            mended = stage(backup, staging.file(), options);
        } catch (const Failure& failure) {
            throw Failure{aboutTheBackup(failure.error, backup)};
        }
        checkHeader(log);
        Restored restored;
        try {
            restored = replaceContents(log, staging.file(), options);
        } catch (const Failure& failure) {
            if (failure.error.kind != ErrorKind::damaged) throw;
            restored.wasDamaged = true;
            restored.calls = callsOf(staging.file());
            restored.former = replaceLog(log, staging.file(), "before", momentOf(options.log));
        }
        restored.mended = std::move(mended);
        restored.removed = removeOldFormerLogs(log, backup);
        return restored;
    });
}

}  // namespace quorvel::store

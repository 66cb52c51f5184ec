// What can be put right in its place is; otherwise a new log is made of what can be read, page by page.
#include "desktop/quorvel/store/mend.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <vector>

#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/import_session.h"
#include "desktop/quorvel/store/impossible_rows.h"
#include "desktop/quorvel/store/log_files.h"
#include "desktop/quorvel/store/page_copy.h"
#include "desktop/quorvel/store/page_salvage.h"
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

fs::path pagesBeside(const Staging& staging) { return with(staging.file(), "-pages"); }

/// Adds the call to the session; false where it breaks the rules.
bool add(ImportSession& session, const NewCall& call) {
    const auto added = session.add(call);
    if (added) return true;
    if (added.error().kind != ErrorKind::badInput) throw Failure{added.error()};
    return false;
}

/// Writes those that were deleted as calls that are deleted now: they can be had back for as long as others.
void addDeleted(CallStore& store, PageSalvage& salvage) {
    std::vector<std::int64_t> rowIds;
    auto session = valueOf(store.beginImport());
    salvage.eachDeleted([&](const NewCall& call) {
        const auto added = session.add(call);
        if (added) rowIds.push_back(*added);
    });
    valueOf(session.finish());
    valueOf(store.deleteCalls(rowIds));
}

Mended saveWhatCanBeRead(const fs::path& log, const OpenOptions& options) {
    Mended mended;
    mended.wasReplaced = true;
    const Staging staging(log);
    std::int64_t lost = 0;
    {
        PageSalvage salvage(log, pagesBeside(staging));
        OpenOptions ofStaged;
        ofStaged.clock = options.clock;
        auto store = valueOf(CallStore::open(staging.file(), ofStaged));
        addDeleted(store, salvage);
        auto session = valueOf(store.beginImport());
        std::int64_t refused = 0;
        salvage.eachCall([&](const NewCall& call) { refused += add(session, call) ? 0 : 1; });
        mended.calls = valueOf(session.finish());
        refused += salvage.impossible();
        lost = std::max(refused, salvage.expected().value_or(0) - mended.calls);
    }
    {
        Connection made(staging.file(), Connection::Use::write, options.busyBound, {});
        made.execute("pragma journal_mode = delete");
    }
    mended.unreadable = lost;
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
        dropForeignParts(connection);
        mended.unreadable = takeOutImpossible(connection);
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
        if (!isThere(log)) {
            throw Failure{{ErrorKind::unreadable, "The call log " + log.string() + " is not there."}};
        }
        const fs::path kept = formerName(log, "before-mending", momentOf(options));
        std::optional<Mended> mended;
        withoutDamage([&] {
            checkHeader(log);
            mended = makeAnew(log, kept, options);
        });
        if (mended) return *std::move(mended);
        removeDatabase(kept);
        return saveWhatCanBeRead(log, options);
    });
}

std::vector<fs::path> logsSetAside(const fs::path& log) {
    std::vector<std::pair<int, fs::path>> found;
    const std::string beginning = with(log.filename(), setAsideWord).string();
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(fs::absolute(log).parent_path(), ignored)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(beginning)) continue;
        int number = 0;
        const auto parsed = std::from_chars(name.data() + beginning.size(), name.data() + name.size(), number);
        if (parsed.ec == std::errc() && parsed.ptr == name.data() + name.size())
            found.emplace_back(number, entry.path());
    }
    std::sort(found.begin(), found.end());
    std::vector<fs::path> logs;
    for (auto& [number, path] : found) logs.push_back(std::move(path));
    return logs;
}

Result<BroughtBack> bringBack(const fs::path& setAside, const fs::path& log, const OpenOptions& options) {
    return guarded([&] {
        BroughtBack brought;
        {
            const Staging staging(log);
            PageSalvage salvage(setAside, pagesBeside(staging));
            auto store = valueOf(CallStore::open(log, options));
            auto session = valueOf(store.beginImport());
            valueOf(session.beginSource());
            std::int64_t refused = 0, present = 0;
            salvage.eachCall([&](const NewCall& call) {
                if (valueOf(session.claim(call)))
                    ++present;
                else
                    refused += add(session, call) ? 0 : 1;
            });
            brought.calls = valueOf(session.finish());
            brought.present = present;
            brought.unreadable =
                std::max(refused + salvage.impossible(), salvage.expected().value_or(0) - brought.calls - present);
        }
        brought.copy = formerName(log, "before-mending", momentOf(options));
        for (const char* suffix : {"-wal", "-shm", ""})
            if (isThere(with(setAside, suffix))) renameOnDisk(with(setAside, suffix), with(brought.copy, suffix));
        return brought;
    });
}

}  // namespace quorvel::store

// Opening the connections, and the upkeep that spans them.
#include "desktop/quorvel/store/call_store_impl.h"

#include "desktop/quorvel/store/care.h"
#include "desktop/quorvel/store/schema.h"

namespace quorvel::store {
namespace {

std::unique_ptr<Connection> connect(const std::filesystem::path& path, Connection::Use use,
                                    const OpenOptions& options) {
    auto connection = std::make_unique<Connection>(path, use, options.busyBound, options.fileSystem);
    // Before anything is set: a file that is not ours must stay as it is.
    prepareSchema(*connection, options.busyBound);
    configure(*connection, use);
    return connection;
}

std::unique_ptr<Connection> writingConnection(const std::filesystem::path& path, const OpenOptions& options) {
    checkHeader(path);
    if (options.access == Access::readOnly) return nullptr;
    auto connection = connect(path, Connection::Use::write, options);
    if (connection->isReadOnly()) throw Failure{errorOf(SQLITE_CANTOPEN, "it may not be written", path)};
    return connection;
}

/// Whether the failure is that nothing can be made beside the file, which reading a write-ahead log takes.
bool lacksRoom(const Failure& failure) {
    const ErrorKind kind = failure.error.kind;
    return kind == ErrorKind::full || kind == ErrorKind::unreadable || kind == ErrorKind::readOnly ||
           (failure.code & 0xff) == SQLITE_IOERR;
}

/// How a store that only reads opens the file: as it lies where nothing can be made beside it and nothing has to be
/// read there.
Connection::Use useForReading(const std::filesystem::path& path, const OpenOptions& options) {
    try {
        connect(path, Connection::Use::readFileOnly, options);
    } catch (const Failure& failure) {
        std::filesystem::path log = path;
        log += "-wal";
        std::error_code error;
        const bool isWhole = std::filesystem::file_size(log, error) == 0 || error;
        if (!lacksRoom(failure) || !isWhole || !std::filesystem::exists(path, error)) throw;
        return Connection::Use::readUnchanging;
    }
    return Connection::Use::readFileOnly;
}

Watch firstLook(Connection& connection) {
    Transaction transaction(connection, Transaction::Kind::read);
    return Watch().look(connection);
}

}  // namespace

CallStore::Impl::Impl(const std::filesystem::path& path, const OpenOptions& options)
    : path_(path),
      options_(options),
      writing_(writingConnection(path, options)),
      readingUse_(writing_ ? Connection::Use::read : useForReading(path, options)),
      reading_(connect(path, readingUse_, options)),
      reader_(*reading_),
      queries_(path, writing_ ? Connection::Use::readFileOnly : readingUse_, options.busyBound, options.fileSystem) {
    if (writing_) {
        if (firstLook(*writing_).wasStranger) heal();
        writeWatch_ = firstLook(*writing_);
    }
    readWatch_ = firstLook(*reading_);
}

void CallStore::Impl::requireWriting() const {
    if (writing_) return;
    throw Failure{{ErrorKind::readOnly, "The call log " + path_.string() +
                                            " was opened for reading only. Open it for writing to change it."}};
}

std::int64_t CallStore::Impl::moment() const {
    if (options_.clock) return options_.clock();
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

void CallStore::Impl::rebuildDerivedNow() { rebuildDerived(*writing_); }

void CallStore::Impl::heal() {
    const std::lock_guard lock(writeMutex_);
    Transaction transaction(*writing_, Transaction::Kind::write);
    // Another store may have been faster.
    if (!Watch().look(*writing_).wasStranger) return;
    rebuildDerived(*writing_);
    transaction.commit();
}

std::vector<std::string> CallStore::Impl::verify() {
    const std::lock_guard lock(readMutex_);
    Transaction transaction(*reading_, Transaction::Kind::read);
    auto findings = findContradictions(*reading_);
    transaction.commit();
    return findings;
}

void CallStore::Impl::rebuild() {
    requireWriting();
    const std::lock_guard lock(writeMutex_);
    Transaction transaction(*writing_, Transaction::Kind::write);
    writing_->execute("reindex");
    rebuildDerived(*writing_);
    transaction.commit();
}

std::unique_ptr<Connection> CallStore::Impl::importConnection() {
    requireWriting();
    auto connection = connect(path_, Connection::Use::write, options_);
    connection->execute("pragma cache_size = -262144");
    return connection;
}

std::vector<CallRecord> CallStore::Impl::query(std::string_view text) {
    const std::lock_guard lock(queryMutex_);
    try {
        return queries_.run(text);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace quorvel::store

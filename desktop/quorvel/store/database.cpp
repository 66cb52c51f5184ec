// Opening, preparing, stepping; every code but success becomes a Failure with a message.
#include "desktop/quorvel/store/database.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <mutex>
#include <new>

#include "desktop/files/private_files.h"

namespace quorvel::store {
namespace {

std::mutex observerMutex;
std::function<void(std::string_view)>& observerSlot() {
    static std::function<void(std::string_view)> observer;
    return observer;
}

/// A copy, so that no lock is held while it runs.
std::function<void(std::string_view)> presentObserver() {
    const std::lock_guard lock(observerMutex);
    return observerSlot();
}

ErrorKind kindOf(int code) {
    // The only reason why the index of the write-ahead log cannot be made to grow.
    if (code == SQLITE_IOERR_SHMSIZE) return ErrorKind::full;
    switch (code & 0xff) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        // What the program writes keeps to the constraints, unless the file contradicts itself.
        case SQLITE_CONSTRAINT:
        case SQLITE_MISMATCH:
            return ErrorKind::damaged;
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return ErrorKind::unreadable;
        case SQLITE_READONLY:
            return ErrorKind::readOnly;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return ErrorKind::busy;
        case SQLITE_FULL:
            return ErrorKind::full;
        default:
            return ErrorKind::failed;
    }
}

const char* adviceFor(ErrorKind kind) {
    switch (kind) {
        case ErrorKind::damaged:
            return "Set the file aside and start anew, or restore a copy of it.";
        case ErrorKind::unreadable:
            return "Check that the file and its folder exist and may be read and written.";
        case ErrorKind::readOnly:
            return "Allow writing to the file and its folder.";
        case ErrorKind::busy:
            return "Another program is writing to it; try again when it has finished.";
        case ErrorKind::full:
            return "Make room on the disk and try again; nothing was changed.";
        default:
            return "Nothing was changed; try again.";
    }
}

/// The name of the file with an option of SQLite's behind it.
std::string unchangingName(const std::filesystem::path& path) {
    std::string name = "file:";
    for (const char letter : std::filesystem::absolute(path).string()) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(letter)) != 0 || std::strchr("/._-", letter);
        static constexpr char digits[] = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(letter);
        name += isPlain ? std::string(1, letter) : std::string{'%', digits[byte >> 4U], digits[byte & 15U]};
    }
    return name + "?immutable=1";
}

}  // namespace

Error errorOf(int code, const std::string& detail, const std::filesystem::path& path) {
    const ErrorKind kind = kindOf(code);
    return {kind, "The database " + path.string() + ": " + detail + ". " + adviceFor(kind)};
}

Failure failureOf(int code, const std::string& detail, const std::filesystem::path& path) {
    return {errorOf(code, detail, path), code};
}

std::string databaseName(const std::filesystem::path& file) {
    return file.is_absolute() ? file.string() : (std::filesystem::path(".") / file).string();
}

Statement::Statement(sqlite3* database, std::string_view text, const std::filesystem::path& path) : path_(&path) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()), SQLITE_PREPARE_PERSISTENT,
                                        &statement, nullptr);
    handle_.reset(statement);
    if (code != SQLITE_OK) throw failureOf(code, sqlite3_errmsg(database), path);
}

void Statement::expectOk(int code) const {
    if (code != SQLITE_OK) throw failureOf(code, sqlite3_errmsg(sqlite3_db_handle(handle_.get())), *path_);
}

Statement& Statement::bind(int parameter, std::int64_t value) {
    expectOk(sqlite3_bind_int64(handle_.get(), parameter, value));
    return *this;
}

Statement& Statement::bind(int parameter, std::string_view text) {
    // A null pointer would bind NULL, so an empty text points somewhere.
    const char* data = text.empty() ? "" : text.data();
    expectOk(sqlite3_bind_text64(handle_.get(), parameter, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

Statement& Statement::bindNull(int parameter) {
    expectOk(sqlite3_bind_null(handle_.get(), parameter));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(handle_.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) {
        const Failure failure = failureOf(code, sqlite3_errmsg(sqlite3_db_handle(handle_.get())), *path_);
        reset();
        throw failure;
    }
    reset();
    return false;
}

void Statement::run() {
    while (step()) {
    }
}

std::string_view Statement::text(int column) const {
    const bool isThere = !isNull(column);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
    if (text) return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
    if (isThere && sqlite3_errcode(sqlite3_db_handle(handle_.get())) == SQLITE_NOMEM) throw std::bad_alloc();
    return {};
}

std::int64_t Statement::within(int column, std::int64_t low, std::int64_t high, const char* what) const {
    const std::int64_t number = integer(column);
    if (number < low || number > high)
        failDamaged(std::string(what) + " of " + std::to_string(number) + " is in it, which cannot be");
    return number;
}

std::int64_t Statement::count(int column) const {
    // As many as there can be row identifiers, by all the days, parties and lists they are counted for.
    constexpr std::int64_t most = std::int64_t{1} << 32U;
    return within(column, 0, most, "a number of calls");
}

std::int64_t Statement::seconds(int column) const {
    constexpr std::int64_t most = std::int64_t{1} << 60U;
    return std::clamp(integer(column), -most, most);
}

void Statement::failDamaged(const std::string& what) const { throw failureOf(SQLITE_CORRUPT, what, *path_); }

Connection::Connection(std::filesystem::path path, Use use, std::chrono::milliseconds busyBound,
                       const std::string& fileSystem)
    : path_(std::move(path)) {
    int access = SQLITE_OPEN_READWRITE;
    if (use == Use::write) access |= SQLITE_OPEN_CREATE;
    if (use == Use::readFileOnly) access = SQLITE_OPEN_READONLY;
    if (use == Use::readUnchanging) access = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    std::string name = use == Use::memory ? ":memory:" : databaseName(path_);
    if (use == Use::readUnchanging) name = unchangingName(path_);
    // What SQLite keeps beside the file gets the file's own mode.
    if (use == Use::write) files::makePrivateFile(path_);
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &database, access | SQLITE_OPEN_NOMUTEX,
                                     fileSystem.empty() ? nullptr : fileSystem.c_str());
    handle_.reset(database);
    if (code != SQLITE_OK) throw failureOf(code, database ? sqlite3_errmsg(database) : "no memory", path_);
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, static_cast<int>(busyBound.count()));
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    // Nothing here is a view; one in the place of a table may have no end.
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    // The log's triggers mark the changes of others; see schema.cpp.
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

Statement& Connection::statement(std::string_view text) {
    const auto found = statements_.find(text);
    if (found != statements_.end()) return found->second;
    if (const auto observer = presentObserver()) observer(text);
    return statements_.emplace(std::string(text), Statement(handle_.get(), text, path_)).first->second;
}

void Connection::execute(const char* text) {
    const int code = sqlite3_exec(handle_.get(), text, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) throw failureOf(code, sqlite3_errmsg(handle_.get()), path_);
}

std::int64_t Connection::integerOf(std::string_view text) {
    Statement& asked = statement(text);
    const ResetLater later(asked);
    return asked.step() ? asked.integer(0) : 0;
}

void Connection::observeTexts(std::function<void(std::string_view)> observer) {
    const std::lock_guard lock(observerMutex);
    observerSlot() = std::move(observer);
}

Transaction::Transaction(Connection& connection, Kind kind) : connection_(&connection) {
    connection.statement(kind == Kind::write ? "begin immediate" : "begin").run();
}

Transaction::~Transaction() {
    // SQLite may have rolled back by itself after an error; then there is nothing left to undo.
    if (open_ && sqlite3_get_autocommit(connection_->handle()) == 0) {
        sqlite3_exec(connection_->handle(), "rollback", nullptr, nullptr, nullptr);
    }
}

void Transaction::commit() {
    connection_->statement("commit").run();
    open_ = false;
}

}  // namespace quorvel::store

// SQLite's C interface with ownership: a connection, its statements and transactions. Errors are thrown as Failure
// within the store and become a Result at its surface.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "desktop/quorvel/store/result.h"

namespace quorvel::store {

struct Failure {
    Error error;
    int code = SQLITE_OK;  ///< SQLite's extended code, where it reported the failure.
};

/// The name by which SQLite opens the file and nothing else: never one that it takes for a URI or for memory.
std::string databaseName(const std::filesystem::path& file);

/// A prepared statement. Parameters are numbered from 1, columns from 0.
class Statement {
  public:
    Statement() = default;
    Statement(sqlite3* database, std::string_view text, const std::filesystem::path& path);

    Statement& bind(int parameter, std::int64_t value);
    /// The text must live until the statement is reset.
    Statement& bind(int parameter, std::string_view text);
    Statement& bindNull(int parameter);

    /// Whether there is a row. After the last the statement is reset.
    bool step();
    /// Carries out a statement that has no rows.
    void run();
    void reset() { sqlite3_reset(handle_.get()); }

    std::int64_t integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
    std::string_view text(int column) const;
    bool isInteger(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_INTEGER; }
    bool isText(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_TEXT; }
    bool isNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }

    // Numbers of a file that are reckoned with. What they may be holds for every sound file, so that anything else is
    // damage.

    /// A number within the bounds; throws damaged with the words otherwise.
    std::int64_t within(int column, std::int64_t low, std::int64_t high, const char* what) const;
    /// How many there are of something.
    std::int64_t count(int column) const;
    /// A sum of seconds, cut to what sums can be added of without overflow.
    std::int64_t seconds(int column) const;

    /// Throws damaged: the words say what is wrong with the file.
    [[noreturn]] void failDamaged(const std::string& what) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    /// Throws what SQLite says of the code, if it is an error.
    void expectOk(int code) const;

    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
    const std::filesystem::path* path_ = nullptr;
};

/// Resets the statement at the end of a scope, so that no read stays open behind a page.
class ResetLater {
  public:
    explicit ResetLater(Statement& statement) : statement_(statement) {}
    ~ResetLater() { statement_.reset(); }
    ResetLater(const ResetLater&) = delete;
    ResetLater& operator=(const ResetLater&) = delete;

  private:
    Statement& statement_;
};

/// A connection to the log, used by one thread at a time.
class Connection {
  public:
    enum class Use {
        write,
        read,
        readFileOnly,    ///< The connection cannot write.
        readUnchanging,  ///< The same of a file that nobody changes meanwhile: nothing is made or kept beside it.
        memory           ///< A database without a file, empty at first; the path is not looked at.
    };

    /// With `write` a file that is not there is made, for its user alone.
    Connection(std::filesystem::path path, Use use, std::chrono::milliseconds busyBound, const std::string& fileSystem);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The statement of the text, prepared at its first use.
    Statement& statement(std::string_view text);
    void execute(const char* text);
    std::int64_t integerOf(std::string_view text);
    std::int64_t lastRowId() const { return sqlite3_last_insert_rowid(handle_.get()); }
    sqlite3* handle() const { return handle_.get(); }
    const std::filesystem::path& path() const { return path_; }
    bool isReadOnly() const { return sqlite3_db_readonly(handle_.get(), "main") == 1; }

    /// Called with each text that is prepared; for tests of the query plans.
    static void observeTexts(std::function<void(std::string_view)> observer);

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };
    std::filesystem::path path_;
    std::unique_ptr<sqlite3, Close> handle_;
    std::map<std::string, Statement, std::less<>> statements_;
};

/// A transaction that is rolled back unless it is committed.
class Transaction {
  public:
    enum class Kind { read, write };
    Transaction(Connection& connection, Kind kind);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

  private:
    Connection* connection_;
    bool open_ = true;
};

/// The error of a code of SQLite on the file, with what can be done about it.
Error errorOf(int code, const std::string& detail, const std::filesystem::path& path);
/// The same as it is thrown.
Failure failureOf(int code, const std::string& detail, const std::filesystem::path& path);

/// The result of the work, or what it threw.
template <class Work>
auto guarded(Work&& work) -> Result<decltype(work())> {
    try {
        return work();
    } catch (const Failure& failure) {
        return failure.error;
    } catch (const std::bad_alloc&) {
        return Error{ErrorKind::failed, "There is not enough memory for this operation; nothing was changed."};
    } catch (const std::exception& exception) {
        return Error{ErrorKind::failed,
                     std::string("The operation failed (") + exception.what() + "); nothing was changed."};
    }
}

}  // namespace quorvel::store

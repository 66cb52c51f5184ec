// SQLite copies the pages; names change only once a file is whole.
#include "desktop/quorvel/store/page_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "desktop/quorvel/store/care.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

constexpr int pagesOfAStep = 1024;
/// Beyond those that the pages need; a copy that takes more makes no progress.
constexpr std::int64_t stepsToSpare = 8;
constexpr std::chrono::milliseconds nobodyElse{0};

/// A file that goes away again unless it gets its name.
class Unfinished {
  public:
    explicit Unfinished(fs::path file) : file_(std::move(file)) { removeDatabase(file_); }
    ~Unfinished() { removeDatabase(file_); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    const fs::path& file() const { return file_; }

  private:
    fs::path file_;
};

[[noreturn]] void failWriting(const fs::path& file, int code) {
    const ErrorKind kind = code == ENOSPC || code == EDQUOT ? ErrorKind::full : ErrorKind::unreadable;
    throw Failure{{kind, "The file " + file.string() + " cannot be written: " + std::strerror(code) +
                             ". Choose another place, or make this one writable."}};
}

}  // namespace

void copyPages(Connection& from, Connection& to, const std::function<void(double)>& progress) {
    struct Finish {
        void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
    };
    const std::unique_ptr<sqlite3_backup, Finish> backup(
        sqlite3_backup_init(to.handle(), "main", from.handle(), "main"));
    if (!backup) throw Failure{errorOf(sqlite3_errcode(to.handle()), sqlite3_errmsg(to.handle()), to.path())};
    // A transaction sees one moment from its first read on, not from its beginning. Without that moment every step
    // would see another one, and SQLite begins the copy anew at each change.
    const std::int64_t pages = from.integerOf("pragma page_count");
    std::int64_t steps = pages / pagesOfAStep + stepsToSpare;
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
        if (--steps < 0) throw Failure{errorOf(SQLITE_BUSY, "the copy began anew again and again", from.path())};
        code = sqlite3_backup_step(backup.get(), pagesOfAStep);
        const int all = sqlite3_backup_pagecount(backup.get());
        if (progress && all > 0) progress(1.0 - static_cast<double>(sqlite3_backup_remaining(backup.get())) / all);
    }
    if (code == SQLITE_DONE) return;
    const bool isOfTheSource = (code & 0xff) == SQLITE_CORRUPT || (code & 0xff) == SQLITE_NOTADB;
    throw Failure{errorOf(code, sqlite3_errstr(code), isOfTheSource ? from.path() : to.path())};
}

void copyToFile(Connection& from, const fs::path& file, const std::function<void(double)>& progress) {
    fs::path name = file;
    name += ".unfinished";
    const Unfinished unfinished(name);
    // SQLite does not say why a file cannot be made.
    const int made = ::open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
    if (made < 0) failWriting(file, errno);
    ::close(made);
    {
        Connection to(name, Connection::Use::write, nobodyElse, {});
        copyPages(from, to, progress);
        to.execute("pragma journal_mode = delete");
        if (const auto damage = findDamage(to); !damage.empty())
            throw Failure{errorOf(SQLITE_CORRUPT, damage.front(), from.path())};
    }
    renameOnDisk(name, file);
}

void removeDatabase(const fs::path& file) {
    for (const char* suffix : {"-wal", "-shm", "-journal", ""}) {
        fs::path each = file;
        each += suffix;
        std::error_code ignored;
        fs::remove(each, ignored);
    }
}

void renameOnDisk(const fs::path& from, const fs::path& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) failWriting(to, errno);
    const fs::path parent = fs::absolute(to).parent_path();
    const int folder = ::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) failWriting(to, errno);
    const int status = ::fsync(folder);
    const int code = errno;
    ::close(folder);
    // Some file systems have no such operation on folders; their names are as safe as they get.
    if (status != 0 && code != EINVAL) failWriting(to, code);
}

}  // namespace quorvel::store

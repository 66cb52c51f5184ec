// SQLite copies the pages; names change only once a file is whole.
#include "desktop/quorvel/store/page_copy.h"

#include <cerrno>

#include "desktop/quorvel/store/care.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

constexpr int pagesOfAStep = 1024;
/// Beyond those that the pages need; a copy that takes more makes no progress.
constexpr std::int64_t stepsToSpare = 8;
constexpr std::chrono::milliseconds nobodyElse{0};

[[noreturn]] void failWriting(const fs::path& file, const std::error_code& error) {
    if (error == std::errc::file_exists) {
        throw Failure{{ErrorKind::badInput,
                       "There is a file " + file.string() + " already. Name another one, or have it replaced."}};
    }
    const bool isFull = error == std::errc::no_space_on_device || error.value() == EDQUOT;
    throw Failure{{isFull ? ErrorKind::full : ErrorKind::unreadable,
                   "The file " + file.string() + " cannot be written: " + error.message() +
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

files::NewFile newFileBeside(const fs::path& file) {
    auto made = files::NewFile::beside(file);
    if (const auto* error = std::get_if<std::error_code>(&made)) failWriting(file, *error);
    return std::get<files::NewFile>(std::move(made));
}

void publish(files::NewFile& made, const fs::path& file, files::Existing existing) {
    if (const auto error = made.publish(file, existing)) failWriting(file, error);
}

void copyToFile(Connection& from, const fs::path& file, files::Existing existing,
                const std::function<void(double)>& progress) {
    auto made = newFileBeside(file);
    {
        Connection to(made.path(), Connection::Use::write, nobodyElse, {});
        copyPages(from, to, progress);
        to.execute("pragma journal_mode = delete");
        if (const auto damage = findDamage(to); !damage.empty())
            throw Failure{errorOf(SQLITE_CORRUPT, damage.front(), from.path())};
    }
    publish(made, file, existing);
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
    if (const auto error = files::renameOnDisk(from, to, files::Existing::replaced)) failWriting(to, error);
}

}  // namespace quorvel::store

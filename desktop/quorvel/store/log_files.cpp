// Names are taken and given up in an order that always leaves a log.
#include "desktop/quorvel/store/log_files.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <ctime>

#include "desktop/quorvel/store/page_copy.h"

namespace quorvel::store {
namespace {

namespace fs = std::filesystem;

constexpr const char* staged = ".restoring-";

}  // namespace

fs::path with(fs::path path, const std::string& suffix) {
    path += suffix;
    return path;
}

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

std::int64_t momentOf(const OpenOptions& options) { return options.clock ? options.clock() : std::time(nullptr); }

fs::path formerName(const fs::path& log, const std::string& why, std::int64_t moment) {
    const auto time = static_cast<std::time_t>(moment);
    std::tm local{};
    localtime_r(&time, &local);
    char when[32];
    const std::string text(when, std::strftime(when, sizeof when, "%Y-%m-%d-%H%M%S", &local));
    fs::path name = with(log, '.' + why + '-' + text);
    for (int number = 2; isThere(name); ++number)
        name = with(log, '.' + why + '-' + text + '-' + std::to_string(number));
    return name;
}

Staging::Staging(const fs::path& log) : file_(with(log, staged + std::to_string(getpid()))) {
    const std::string beginning = with(log.filename(), staged).string();
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(fs::absolute(log).parent_path(), ignored)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(beginning)) continue;
        int process = 0;
        std::from_chars(name.data() + beginning.size(), name.data() + name.size(), process);
        const bool isAbandoned = process > 0 && ::kill(process, 0) != 0 && errno == ESRCH;
        if (isAbandoned) fs::remove(entry.path(), ignored);
    }
    removeDatabase(file_);
}

Staging::~Staging() { removeDatabase(file_); }

fs::path replaceLog(const fs::path& log, const fs::path& staging, const std::string& why, std::int64_t moment) {
    const fs::path former = formerName(log, why, moment);
    // What SQLite kept beside the old file goes first: it must not be taken for the new one's.
    for (const char* suffix : {"-wal", "-shm"})
        if (isThere(with(log, suffix))) renameOnDisk(with(log, suffix), with(former, suffix));
    std::error_code error;
    fs::create_hard_link(log, former, error);
    if (error) fs::copy_file(log, former, error);
    if (error) {
        throw Failure{{ErrorKind::unreadable,
                       "The damaged log cannot be kept as " + former.string() + ": " + error.message() + '.'}};
    }
    renameOnDisk(staging, log);
    return former;
}

}  // namespace quorvel::store

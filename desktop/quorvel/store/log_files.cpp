// Names are taken and given up in an order that always leaves a log.
#include "desktop/quorvel/store/log_files.h"

#include <algorithm>
#include <ctime>
#include <regex>
#include <tuple>

#include "desktop/quorvel/store/page_copy.h"

namespace quorvel::store {

namespace fs = std::filesystem;

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

std::vector<fs::path> removeOldFormerLogs(const fs::path& log, const fs::path& exceptFor) {
    // Nothing but what formerName() makes: a copy of the user's own may be called much the same.
    static const std::regex ending(R"(\.before(-mending)?-(\d{4}-\d\d-\d\d-\d{6})(?:-(\d{1,9}))?)");
    std::vector<std::tuple<std::string, long, fs::path>> found;
    const std::string beginning = log.filename().string();
    std::error_code ignored;
    const fs::path folder = files::folderOf(log);
    for (const auto& name : files::namesIn(folder)) {
        const fs::path file = folder / name;
        if (!name.starts_with(beginning) || fs::equivalent(file, exceptFor, ignored)) continue;
        std::smatch parts;
        const std::string rest = name.substr(beginning.size());
        if (!std::regex_match(rest, parts, ending)) continue;
        found.emplace_back(parts[2].str(), parts[3].matched ? std::stol(parts[3].str()) : 1, file);
    }
    std::ranges::sort(found, std::greater());
    std::vector<fs::path> removed;
    for (std::size_t at = mostFormerLogs; at < found.size(); ++at) {
        const auto& [when, number, file] = found[at];
        removeDatabase(file);
        if (!isThere(file)) removed.push_back(file);
    }
    return removed;
}

Staging::Staging(const fs::path& log) : made_(newFileBeside(log)) {}

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

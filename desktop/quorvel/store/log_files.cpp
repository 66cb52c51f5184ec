// Names are taken and given up in an order that always leaves a log.
#include "desktop/quorvel/store/log_files.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <optional>
#include <string_view>
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

namespace {

/// The moment and the number in the ending that formerName() gives a name; nothing where another one gave it.
std::optional<std::pair<std::string, long>> momentIn(std::string_view ending) {
    constexpr std::string_view shape = "dddd-dd-dd-dddddd";
    std::string_view why = ".before-";
    if (ending.starts_with(".before-mending-")) why = ".before-mending-";
    if (!ending.starts_with(why)) return {};
    ending.remove_prefix(why.size());
    if (ending.size() < shape.size()) return {};
    const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
    for (std::size_t at = 0; at < shape.size(); ++at)
        if (shape[at] == 'd' ? !isDigit(ending[at]) : ending[at] != shape[at]) return {};
    const std::string moment(ending.substr(0, shape.size()));
    ending.remove_prefix(shape.size());
    if (ending.empty()) return {{moment, 1}};
    constexpr std::size_t mostDigits = 9;
    if (ending.front() != '-' || ending.size() < 2 || ending.size() > 1 + mostDigits) return {};
    long number = 0;
    const auto read = std::from_chars(ending.data() + 1, ending.data() + ending.size(), number);
    if (read.ec != std::errc() || read.ptr != ending.data() + ending.size() || number < 0) return {};
    return {{moment, number}};
}

}  // namespace

std::vector<fs::path> removeOldFormerLogs(const fs::path& log, const fs::path& exceptFor) {
    std::vector<std::tuple<std::string, long, fs::path>> found;
    const std::string beginning = log.filename().string();
    std::error_code ignored;
    const fs::path folder = files::folderOf(log);
    for (const auto& name : files::namesIn(folder)) {
        const fs::path file = folder / name;
        if (!name.starts_with(beginning) || fs::equivalent(file, exceptFor, ignored)) continue;
        // Nothing but what formerName() makes: a copy of the user's own may be called much the same.
        const auto moment = momentIn(std::string_view(name).substr(beginning.size()));
        if (moment) found.emplace_back(moment->first, moment->second, file);
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

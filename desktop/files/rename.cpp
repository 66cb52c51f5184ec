// Renaming without replacing what came in between.
#include "desktop/files/rename.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace files {
namespace {

namespace fs = std::filesystem;

std::error_code lastError() { return {errno, std::system_category()}; }

std::error_code renameToFree(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL && errno != ENOSYS) return lastError();
    // The file system has no such operation. A second name is given to a free name alone, too.
    if (::link(from.c_str(), to.c_str()) != 0) return lastError();
    return ::unlink(from.c_str()) == 0 ? std::error_code() : lastError();
}

std::error_code syncFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return lastError();
    const auto error = ::fsync(descriptor) == 0 ? std::error_code() : lastError();
    ::close(descriptor);
    // Some file systems have no such operation on folders; their names are as safe as they get.
    return error.value() == EINVAL ? std::error_code() : error;
}

fs::path with(const fs::path& file, const std::string& suffix) { return fs::path(file) += suffix; }

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

}  // namespace

fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error))
        names.push_back(entries->path().filename().string());
    return names;
}

std::error_code renameOnDisk(const fs::path& from, const fs::path& to, Existing existing) {
    std::error_code error;
    if (existing == Existing::refused) {
        error = renameToFree(from, to);
    } else if (std::rename(from.c_str(), to.c_str()) != 0) {
        error = lastError();
    }
    return error ? error : syncFolder(folderOf(to));
}

std::variant<fs::path, std::error_code> setAside(const fs::path& file, std::span<const char* const> suffixes) {
    for (int number = 1;; ++number) {
        const fs::path aside = with(file, ".damaged-" + std::to_string(number));
        if (isThere(aside)) continue;
        for (const char* suffix : suffixes)
            if (isThere(with(file, suffix)))
                if (const auto error = renameOnDisk(with(file, suffix), with(aside, suffix), Existing::refused))
                    return error;
        const auto error = renameOnDisk(file, aside, Existing::refused);
        // Another process took the name in between.
        if (error == std::errc::file_exists) continue;
        if (error) return error;
        return aside;
    }
}

}  // namespace files

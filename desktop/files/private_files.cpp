// Modes of files and folders.
#include "desktop/files/private_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace files {
namespace {

namespace fs = std::filesystem;

constexpr mode_t ofOthers = S_IRWXG | S_IRWXO;
mode_t callersMask = 0;
bool isPrivate = false;

}  // namespace

void makeNewFilesPrivate() {
    const mode_t before = ::umask(ofOthers);
    if (!isPrivate) callersMask = before;
    isPrivate = true;
}

void restoreCallersMask() {
    if (isPrivate) ::umask(callersMask);
}

std::error_code makePrivateFolders(const fs::path& folder) {
    std::error_code error;
    if (fs::is_directory(folder, error)) return {};
    const fs::path above = folder.parent_path();
    if (!above.empty() && above != folder)
        if (const auto trouble = makePrivateFolders(above)) return trouble;
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) return {};
    // Another process may have made it in between.
    const std::error_code trouble(errno, std::system_category());
    return fs::is_directory(folder, error) ? std::error_code() : trouble;
}

void makePrivateFile(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0) ::close(descriptor);
}

void makePrivate(const fs::path& path) {
    struct stat about {};
    if (::lstat(path.c_str(), &about) != 0 || about.st_uid != ::geteuid()) return;
    if ((!S_ISREG(about.st_mode) && !S_ISDIR(about.st_mode)) || (about.st_mode & ofOthers) == 0) return;
    // By its name: opening and closing a database would give up the locks that this process has on it.
    ::fchmodat(AT_FDCWD, path.c_str(), about.st_mode & 07777 & ~ofOthers, AT_SYMLINK_NOFOLLOW);
}

}  // namespace files

// Who makes a file holds a lock on it, which the kernel gives up with the process: a file without one is abandoned.
#include "desktop/files/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace files {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view beginning = ".quorvel-new-";
constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr std::size_t randomLetters = 26;
constexpr const char* besideDatabases[] = {"-journal", "-wal", "-shm"};

std::error_code lastError() { return {errno, std::system_category()}; }

/// Empty where the system has no random bytes.
std::string unguessableName() {
    std::array<unsigned char, randomLetters> bytes;
    if (::getentropy(bytes.data(), bytes.size()) != 0) return {};
    std::string name(beginning);
    for (const unsigned char byte : bytes) name += letters[byte % letters.size()];
    return name;
}

/// Whether the name is one of a file in the making, or of what SQLite keeps beside such a file.
bool isOurs(std::string_view name) {
    if (!name.starts_with(beginning)) return false;
    name.remove_prefix(beginning.size());
    const auto random = name.substr(0, randomLetters);
    if (random.size() != randomLetters || random.find_first_not_of(letters) != std::string_view::npos) return false;
    const auto suffix = name.substr(randomLetters);
    return suffix.empty() || std::ranges::find(besideDatabases, suffix) != std::end(besideDatabases);
}

/// The file itself, without what SQLite keeps beside it.
std::string mainName(std::string_view name) { return std::string(name.substr(0, beginning.size() + randomLetters)); }

bool takeLock(int descriptor) {
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        if (errno != EINTR) return false;
    return true;
}

bool hasName(int descriptor) {
    struct stat about {};
    return ::fstat(descriptor, &about) == 0 && about.st_nlink > 0;
}

/// Beside the file first: what is left of a file without a name would never be found again.
void removeWhole(const fs::path& file) {
    for (const char* suffix : besideDatabases) ::unlink((file.string() + suffix).c_str());
    ::unlink(file.c_str());
}

/// Removes the file where nobody holds it.
void removeIfAbandoned(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        if (errno == ENOENT) removeWhole(file);
        return;
    }
    struct stat about {};
    const bool isOwn = ::fstat(descriptor, &about) == 0 && S_ISREG(about.st_mode) && about.st_uid == ::geteuid();
    if (isOwn && takeLock(descriptor)) removeWhole(file);
    ::close(descriptor);
}

}  // namespace

std::variant<NewFile, std::error_code> NewFile::beside(const fs::path& target) {
    const fs::path folder = folderOf(target);
    removeAbandoned(folder);
    for (;;) {
        const std::string name = unguessableName();
        if (name.empty()) return lastError();
        const int descriptor =
            ::open((folder / name).c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (descriptor < 0 && errno == EEXIST) continue;
        if (descriptor < 0) return lastError();
        NewFile made(folder / name, descriptor);
        // Where there are no locks, nobody else can take one and believe the file abandoned.
        const bool isHeld = takeLock(descriptor) || errno != EWOULDBLOCK;
        // Another process may have cleaned up between the two calls.
        if (isHeld && hasName(descriptor)) return made;
    }
}

NewFile::NewFile(NewFile&& other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)) {}

NewFile& NewFile::operator=(NewFile&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

NewFile::~NewFile() {
    if (descriptor_ < 0) return;
    removeWhole(path_);
    ::close(descriptor_);
}

std::error_code NewFile::write(std::string_view bytes) const { return writeAll(descriptor_, bytes); }

std::error_code writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return lastError();
    }
    return {};
}

std::error_code NewFile::publish(const fs::path& target, Existing existing) {
    if (::fsync(descriptor_) != 0) return lastError();
    const auto error = renameOnDisk(path_, target, existing);
    std::error_code ignored;
    if (!error || !fs::exists(fs::symlink_status(path_, ignored))) ::close(std::exchange(descriptor_, -1));
    return error;
}

void removeAbandoned(const fs::path& folder) {
    std::vector<std::string> found;
    for (const auto& name : namesIn(folder))
        if (isOurs(name)) found.push_back(mainName(name));
    std::ranges::sort(found);
    found.erase(std::ranges::unique(found).begin(), found.end());
    for (const auto& name : found) removeIfAbandoned(folder / name);
}

}  // namespace files

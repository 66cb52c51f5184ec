// The rendezvous over inotify. The kernel queues a change before the poster's write returns, so nothing is missed; when
// its queue runs over, the stamps in the files say which names were posted meanwhile.
#include "desktop/notify/rendezvous.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <random>
#include <system_error>
#include <utility>

#include "desktop/files/private_files.h"
#include "desktop/notify/file_name.h"

namespace notify {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestFileName = 255;
constexpr std::time_t forgottenAfter = 24 * 60 * 60;  // seconds
constexpr std::size_t stampSize = 60;

/// An open file, closed when it goes.
class File {
  public:
    File(const fs::path& path, int flags)
        : descriptor_(::open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    explicit operator bool() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

Failure failure(const std::string& what, const fs::path& where, int error, const std::string& advice) {
    return {what + " " + where.string() + ": " + std::system_category().message(error) + ". " + advice};
}

std::string adviceForWatching(int error) {
    switch (error) {
        case EMFILE:
            return "Close other programs that watch files, or raise fs.inotify.max_user_instances.";
        case ENOSPC:
            return "Close other programs that watch files, or raise fs.inotify.max_user_watches.";
        default:
            return "Choose another data directory.";
    }
}

/// Text that no other post has: of which process (its random mark alone would be inherited by a fork), and which of its
/// posts.
std::string newStamp() {
    static const unsigned long long mark =
        (static_cast<unsigned long long>(std::random_device{}()) << 32) | std::random_device{}();
    static std::atomic<unsigned long long> serial{0};
    std::array<char, stampSize + 1> text{};
    std::snprintf(text.data(), text.size(), "post %010d %016llx %026llu\n", static_cast<int>(getpid()), mark, ++serial);
    return {text.data(), stampSize};
}

/// The stamp in that file; empty for what holds none: a foreign file, a file that is not there.
std::string readStamp(const fs::path& path) {
    const File file(path, O_RDONLY);
    struct stat about {};
    if (!file || fstat(file.descriptor(), &about) != 0 || !S_ISREG(about.st_mode)) return {};
    std::string stamp(stampSize, '\0');
    const ssize_t size = pread(file.descriptor(), stamp.data(), stamp.size(), 0);
    if (size != static_cast<ssize_t>(stampSize) || !stamp.starts_with("post ") || !stamp.ends_with('\n')) return {};
    return stamp;
}

bool fileIsThere(const fs::path& path) {
    struct stat about {};
    return lstat(path.c_str(), &about) == 0;
}

void addOnce(std::vector<std::string>& names, std::string name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(std::move(name));
}

}  // namespace

std::variant<Rendezvous, Failure> Rendezvous::open(const fs::path& directory) {
    if (const auto error = files::makePrivateFolders(directory)) {
        return failure("The directory for notifications cannot be made at", directory, error.value(),
                       "Choose another data directory.");
    }
    if (faccessat(AT_FDCWD, directory.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) != 0) {
        return failure("The directory for notifications cannot be used:", directory, errno,
                       "Make it readable and writable, or choose another data directory.");
    }
    const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch < 0)
        return failure("The directory for notifications cannot be watched:", directory, errno,
                       adviceForWatching(errno));
    Rendezvous rendezvous(fs::absolute(directory), watch);
    if (inotify_add_watch(watch, directory.c_str(), IN_MODIFY | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR) < 0) {
        return failure("The directory for notifications cannot be watched:", directory, errno,
                       adviceForWatching(errno));
    }
    rendezvous.removeForgotten();
    rendezvous.learnPresentStamps();
    return rendezvous;
}

Rendezvous::Rendezvous(Rendezvous&& other) noexcept
    : directory_(std::move(other.directory_)),
      watch_(std::exchange(other.watch_, -1)),
      stamps_(std::move(other.stamps_)) {}

Rendezvous& Rendezvous::operator=(Rendezvous&& other) noexcept {
    std::swap(directory_, other.directory_);
    std::swap(watch_, other.watch_);
    std::swap(stamps_, other.stamps_);
    return *this;
}

Rendezvous::~Rendezvous() {
    if (watch_ >= 0) close(watch_);
}

std::vector<std::string> Rendezvous::collect() {
    std::vector<std::string> names;
    alignas(inotify_event) std::array<char, 16384> buffer;
    for (;;) {
        const ssize_t size = read(watch_, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return names;
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (event->mask & IN_Q_OVERFLOW) {
                takeAllChanged(names);
            } else if (event->mask & (IN_DELETE_SELF | IN_MOVE_SELF)) {
                std::fprintf(stderr, "The directory for notifications was removed: %s. Start again to hear others.\n",
                             directory_.c_str());
            } else if (event->len > 0) {
                take(event->name, names);
            }
        }
    }
}

/// What stands in the files now was posted before.
void Rendezvous::learnPresentStamps() {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory_, error)) {
        const std::string file = entry.path().filename();
        if (nameOfFile(file)) stamps_[file] = readStamp(entry.path());
    }
}

/// The file was written: its name is posted, unless what stands there was seen with an earlier change.
void Rendezvous::take(const std::string& file, std::vector<std::string>& names) {
    const auto name = nameOfFile(file);
    if (!name) return;
    const std::string stamp = readStamp(directory_ / file);
    if (stamp.empty()) {
        // Not there: posted, and then removed as forgotten by a process that looked just before.
        if (!fileIsThere(directory_ / file)) addOnce(names, *name);
        return;
    }
    if (std::exchange(stamps_[file], stamp) != stamp) addOnce(names, *name);
}

/// Changes were dropped by the kernel, so every file may have been written, and removed after that.
void Rendezvous::takeAllChanged(std::vector<std::string>& names) {
    std::erase_if(stamps_, [&](const auto& known) {
        if (known.second.empty() || fileIsThere(directory_ / known.first)) return false;
        addOnce(names, *nameOfFile(known.first));
        return true;
    });
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory_, error)) take(entry.path().filename(), names);
}

/// A post that is under way while its file goes is repeated by its poster, so nobody has to wait for anybody here.
void Rendezvous::removeForgotten() const {
    const std::time_t now = std::time(nullptr);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory_, error)) {
        struct stat about {};
        if (!nameOfFile(entry.path().filename().string()) || lstat(entry.path().c_str(), &about) != 0) continue;
        if (S_ISREG(about.st_mode) && about.st_mtime < now - forgottenAfter) unlink(entry.path().c_str());
    }
}

std::optional<Failure> postInto(const fs::path& directory, std::string_view name) {
    const std::string fileName = fileNameOf(name);
    if (name.empty()) return Failure{"A notification without a name cannot be posted. Give it a name."};
    if (fileName.size() > longestFileName) {
        return Failure{"The notification's name is too long to be posted (" + std::to_string(name.size()) +
                       " bytes): " + std::string(name) + ". Shorten it."};
    }
    const fs::path path = directory / fileName;
    const std::string what = "The notification \"" + std::string(name) + "\" cannot be posted:";
    for (int attempt = 0; attempt < 10000; ++attempt) {
        const File file(path, O_WRONLY | O_CREAT);
        struct stat about {};
        if (!file || fstat(file.descriptor(), &about) != 0) {
            return failure(what, path, errno, "Make the directory writable, or start again to have it made.");
        }
        if (!S_ISREG(about.st_mode)) return failure(what, path, EINVAL, "Remove what is in the way there.");
        const std::string stamp = newStamp();
        errno = ENOSPC;
        if (pwrite(file.descriptor(), stamp.data(), stamp.size(), 0) != static_cast<ssize_t>(stamp.size())) {
            return failure(what, path, errno, "Make room on the disk and repeat it.");
        }
        // Gone while it was written: somebody removed it as forgotten. Watchers that came later must find it.
        if (fstat(file.descriptor(), &about) == 0 && about.st_nlink > 0) return std::nullopt;
    }
    return failure(what, path, ENOENT, "Something removes the file again and again; end it and repeat the post.");
}

}  // namespace notify

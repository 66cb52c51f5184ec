// Put in front of the C library with LD_PRELOAD: the calls that change files, counted, and one of them made to fail or
// to be the last. FAILING_FOLDER: only files below it count. FAILING_CALL: which call, from 1 on; 0 for none.
// FAILING_HOW: "end" (the process ends before the call), "torn" (it ends after half of a write), "full" (from this call
// on there is no room), "broken" (the call fails once). FAILING_COUNT: a file that is given the number of calls.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

enum class How { end, torn, full, broken };
/// What a call may take of the disk.
enum class Takes { room, nothing };

struct Plan {
    const char* folder = "";
    long call = 0;
    How how = How::end;
};

const Plan& plan() {
    static const Plan one = [] {
        Plan made;
        if (const char* folder = std::getenv("FAILING_FOLDER")) made.folder = folder;
        if (const char* call = std::getenv("FAILING_CALL")) made.call = std::atol(call);
        const char* how = std::getenv("FAILING_HOW");
        if (how && std::strcmp(how, "torn") == 0) made.how = How::torn;
        if (how && std::strcmp(how, "full") == 0) made.how = How::full;
        if (how && std::strcmp(how, "broken") == 0) made.how = How::broken;
        return made;
    }();
    return one;
}

std::atomic<long> calls{0};

[[noreturn]] void endProcess() {
    syscall(SYS_exit_group, 99);
    std::abort();
}

[[gnu::destructor]] void sayCount() {
    const char* file = std::getenv("FAILING_COUNT");
    if (!file) return;
    char text[24];
    const int length = std::snprintf(text, sizeof text, "%ld\n", calls.load());
    const long descriptor = syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    syscall(SYS_write, descriptor, text, length);
}

bool isBelow(const char* path) {
    const std::size_t length = std::strlen(plan().folder);
    return length > 0 && std::strncmp(path, plan().folder, length) == 0;
}

bool concerns(int descriptor) {
    char link[40], path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length <= 0) return false;
    path[length] = '\0';
    return isBelow(path);
}

bool concerns(int folder, const char* path) {
    if (path[0] == '/') return isBelow(path);
    char absolute[PATH_MAX];
    if (folder != AT_FDCWD) return concerns(folder);
    return getcwd(absolute, sizeof absolute) && isBelow(absolute);
}

/// Whether the call is to fail; errno is set then. `torn` does half of it before the process ends.
template <class Torn>
bool fails(Takes takes, const Torn& torn) {
    const long call = ++calls;
    const Plan& of = plan();
    if (of.call == 0 || call < of.call) return false;
    if (of.how == How::full) {
        if (takes == Takes::nothing) return false;
        errno = ENOSPC;
        return true;
    }
    if (call > of.call) return false;
    if (of.how == How::torn) torn();
    if (of.how != How::broken) endProcess();
    errno = EIO;
    return true;
}
bool fails(Takes takes) {
    return fails(takes, [] {});
}

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t modeOf(int flags, std::va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

bool mayOpen(int folder, const char* path, int flags) {
    const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
    return !changes || !concerns(folder, path) || !fails(Takes::room);
}

}  // namespace

#define NEXT(name, ...) static auto* const system = next<decltype(name)>(#name)

extern "C" {

#define OPENS(name)                                                             \
    int name(const char* path, int flags, ...) {                                \
        NEXT(name);                                                             \
        std::va_list arguments;                                                 \
        va_start(arguments, flags);                                             \
        const mode_t mode = modeOf(flags, arguments);                           \
        va_end(arguments);                                                      \
        return mayOpen(AT_FDCWD, path, flags) ? system(path, flags, mode) : -1; \
    }
OPENS(open)
OPENS(open64)

#define OPENS_AT(name)                                                                \
    int name(int folder, const char* path, int flags, ...) {                          \
        NEXT(name);                                                                   \
        std::va_list arguments;                                                       \
        va_start(arguments, flags);                                                   \
        const mode_t mode = modeOf(flags, arguments);                                 \
        va_end(arguments);                                                            \
        return mayOpen(folder, path, flags) ? system(folder, path, flags, mode) : -1; \
    }
OPENS_AT(openat)
OPENS_AT(openat64)

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    NEXT(write);
    const auto torn = [&] { system(descriptor, bytes, count / 2); };
    return concerns(descriptor) && fails(Takes::room, torn) ? -1 : system(descriptor, bytes, count);
}

#define WRITES_AT(name)                                                                                          \
    ssize_t name(int descriptor, const void* bytes, std::size_t count, off_t offset) {                           \
        NEXT(name);                                                                                              \
        const auto torn = [&] { system(descriptor, bytes, count / 2, offset); };                                 \
        return concerns(descriptor) && fails(Takes::room, torn) ? -1 : system(descriptor, bytes, count, offset); \
    }
WRITES_AT(pwrite)
WRITES_AT(pwrite64)

ssize_t writev(int descriptor, const iovec* parts, int count) {
    NEXT(writev);
    return concerns(descriptor) && fails(Takes::room) ? -1 : system(descriptor, parts, count);
}

#define ON_DESCRIPTOR(name, takes, parameters, ...)                             \
    int name parameters {                                                       \
        NEXT(name);                                                             \
        return concerns(descriptor) && fails(takes) ? -1 : system(__VA_ARGS__); \
    }
ON_DESCRIPTOR(fsync, Takes::room, (int descriptor), descriptor)
ON_DESCRIPTOR(fdatasync, Takes::room, (int descriptor), descriptor)
ON_DESCRIPTOR(ftruncate, Takes::room, (int descriptor, off_t size), descriptor, size)
ON_DESCRIPTOR(ftruncate64, Takes::room, (int descriptor, off64_t size), descriptor, size)
ON_DESCRIPTOR(fchmod, Takes::nothing, (int descriptor, mode_t mode), descriptor, mode)

#define ON_PATH(name, takes, parameters, path, ...)                                 \
    int name parameters {                                                           \
        NEXT(name);                                                                 \
        return concerns(AT_FDCWD, path) && fails(takes) ? -1 : system(__VA_ARGS__); \
    }
ON_PATH(mkdir, Takes::room, (const char* path, mode_t mode), path, path, mode)
ON_PATH(unlink, Takes::nothing, (const char* path), path, path)
ON_PATH(rmdir, Takes::nothing, (const char* path), path, path)
ON_PATH(chmod, Takes::nothing, (const char* path, mode_t mode), path, path, mode)
ON_PATH(rename, Takes::nothing, (const char* from, const char* to), to, from, to)
ON_PATH(link, Takes::room, (const char* from, const char* to), to, from, to)
ON_PATH(unlinkat, Takes::nothing, (int folder, const char* path, int flags), path, folder, path, flags)
ON_PATH(fchmodat, Takes::nothing, (int folder, const char* path, mode_t mode, int flags), path, folder, path, mode,
        flags)
ON_PATH(renameat, Takes::nothing, (int folder, const char* from, int other, const char* to), to, folder, from, other,
        to)
ON_PATH(renameat2, Takes::nothing, (int folder, const char* from, int other, const char* to, unsigned flags), to,
        folder, from, other, to, flags)
}

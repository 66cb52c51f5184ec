// Opens files through the system's file system and puts methods of its own before those that read and change a file.
#include "failing_disk.h"

#include <signal.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>

namespace quorvel::store {
namespace {

std::atomic<int> remaining{0};
std::atomic<bool> failed{false};
std::atomic<Fault> fault{Fault::full};

/// The system has one table of methods for files that it locks and one for the others; each has its double here.
struct Methods {
    const sqlite3_io_methods* system = nullptr;
    sqlite3_io_methods failing{};
};
std::array<Methods, 4> tables;
std::mutex tablesMutex;

const sqlite3_io_methods* systemOf(sqlite3_file* file) {
    for (const Methods& table : tables) {
        if (file->pMethods == &table.failing) return table.system;
    }
    return nullptr;
}

/// Whether the operation fails; `changes` where it changes a file.
bool fails(bool changes) {
    if (!changes && fault != Fault::broken && fault != Fault::death) return false;
    if (failed) return true;
    if (remaining == 0 || --remaining > 0) return false;
    if (fault == Fault::death) kill(getpid(), SIGKILL);
    failed = true;
    return true;
}

int codeOf(int broken, int full) {
    if (fault == Fault::readOnly) return SQLITE_READONLY;
    return fault == Fault::broken ? broken : full;
}

int read(sqlite3_file* file, void* data, int amount, sqlite3_int64 offset) {
    return fails(false) ? SQLITE_IOERR_READ : systemOf(file)->xRead(file, data, amount, offset);
}
int write(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
    if (fails(true)) return codeOf(SQLITE_IOERR_WRITE, SQLITE_FULL);
    return systemOf(file)->xWrite(file, data, amount, offset);
}
int sync(sqlite3_file* file, int flags) {
    return fails(true) ? codeOf(SQLITE_IOERR_FSYNC, SQLITE_IOERR_FSYNC) : systemOf(file)->xSync(file, flags);
}
int truncate(sqlite3_file* file, sqlite3_int64 size) {
    return fails(true) ? codeOf(SQLITE_IOERR_TRUNCATE, SQLITE_IOERR_TRUNCATE) : systemOf(file)->xTruncate(file, size);
}
int shareMemory(sqlite3_file* file, int region, int size, int extends, void volatile** memory) {
    // The index of a write-ahead log takes room on the disk, too, the first time that it is mapped.
    if (extends != 0 && fault != Fault::death && fails(true)) return codeOf(SQLITE_IOERR_SHMSIZE, SQLITE_IOERR_SHMSIZE);
    return systemOf(file)->xShmMap(file, region, size, extends, memory);
}
int shareLock(sqlite3_file* file, int offset, int count, int flags) {
    if (fault == Fault::death) fails(false);
    return systemOf(file)->xShmLock(file, offset, count, flags);
}
void shareBarrier(sqlite3_file* file) {
    if (fault == Fault::death) fails(false);
    systemOf(file)->xShmBarrier(file);
}

int open(sqlite3_vfs* self, const char* path, sqlite3_file* file, int flags, int* outFlags) {
    auto* system = static_cast<sqlite3_vfs*>(self->pAppData);
    const int code = system->xOpen(system, path, file, flags, outFlags);
    if (code != SQLITE_OK) return code;
    const std::lock_guard lock(tablesMutex);
    for (Methods& table : tables) {
        if (!table.system) {
            table.system = file->pMethods;
            table.failing = *table.system;
            table.failing.xRead = read;
            table.failing.xWrite = write;
            table.failing.xSync = sync;
            table.failing.xTruncate = truncate;
            table.failing.xShmMap = shareMemory;
            table.failing.xShmLock = shareLock;
            table.failing.xShmBarrier = shareBarrier;
            // Pages in mapped memory would be read past the methods above.
            table.failing.iVersion = std::min(table.failing.iVersion, 2);
        }
        if (table.system != file->pMethods) continue;
        file->pMethods = &table.failing;
        break;
    }
    return SQLITE_OK;
}

}  // namespace

const char* FailingDisk::name() {
    static sqlite3_vfs disk = [] {
        sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
        sqlite3_vfs made = *system;
        made.zName = "failing-disk";
        made.pNext = nullptr;
        made.pAppData = system;
        made.xOpen = open;
        return made;
    }();
    if (!sqlite3_vfs_find(disk.zName)) sqlite3_vfs_register(&disk, 0);
    return disk.zName;
}

void FailingDisk::failFrom(int operation, Fault of) {
    failed = false;
    fault = of;
    remaining = operation;
}

bool FailingDisk::hasFailed() { return failed; }

}  // namespace quorvel::store

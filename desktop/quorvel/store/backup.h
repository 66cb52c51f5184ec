// Copies of a log that is in use: made of one moment of it, and put back in its place in one change.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "desktop/files/rename.h"
#include "desktop/quorvel/store/call_store.h"

namespace quorvel::store {

using files::Existing;

struct BackupOptions {
    /// What becomes of a file that has the name of the backup already.
    Existing existing = Existing::refused;
    /// Told how much is done, from 0 to 1; empty for nobody. Called by the same thread.
    std::function<void(double)> progress = {};
    /// How the log is opened; its access does not matter.
    OpenOptions log = {};
};

/// Writes the log as it is at this moment to a file that needs nothing beside it. Whoever has the log open goes on
/// reading and writing meanwhile. The file takes its name when it is complete and on disk, and is its user's alone.
/// Errors: unreadable, foreign, damaged, newer (of the log); badInput where the file is the log, is in use or exists
/// and is not to be replaced; whatever keeps the file from being written.
Result<Done> backUp(const std::filesystem::path& log, const std::filesystem::path& file,
                    const BackupOptions& options = {});

struct Restored {
    std::int64_t calls = 0;
    /// Where the log that was there before is kept now; empty where it had no calls.
    std::filesystem::path former;
    /// Kept logs that were removed because there were more than `mostFormerLogs`.
    std::vector<std::filesystem::path> removed;
    /// The log before was damaged, and was replaced as a file: who has it open still has the old one.
    bool wasDamaged = false;
    /// What did not agree in the backup and was put right.
    std::vector<std::string> mended;
};

/// Makes the log what the backup holds, in one change: whoever has the log open sees all of it or nothing, and so does
/// the next start after this process was killed. The backup is checked before, its file and its contents, and only
/// read. The log that was there is kept beside it, as PATH.before-YYYY-MM-DD-HHMMSS; of those the newest
/// `mostFormerLogs` stay. Errors: unreadable, foreign,
/// damaged, newer (of either file), busy, full; badInput where both are one file. The log is as it was then.
Result<Restored> restore(const std::filesystem::path& backup, const std::filesystem::path& log,
                         const BackupOptions& options = {});

}  // namespace quorvel::store

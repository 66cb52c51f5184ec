// Putting a log right that contradicts itself, and saving what can be read of a damaged one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "desktop/quorvel/store/call_store.h"

namespace quorvel::store {

struct Mended {
    /// Where the log as it was is kept.
    std::filesystem::path copy;
    /// The file was damaged, and was replaced by a new one of the calls that could be read: who has it open still has
    /// the old one. Deleted calls are kept for as long as if they were deleted now.
    bool wasReplaced = false;
    std::int64_t calls = 0;
    /// Calls that stand in the copy alone, as far as they are known of: those that could not be read, and those that
    /// break the rules.
    std::int64_t unreadable = 0;
};

/// Makes indices and sums of the log anew; where its file is damaged beyond that, the calls that can be read go into a
/// new one, with new row identifiers: all whose pages are sound, whatever became of the file's header and its trees.
/// The log as it was is kept. Errors: unreadable, foreign, newer, busy, full. The log is as it was then.
Result<Mended> mend(const std::filesystem::path& log, const OpenOptions& options = {});

/// What CallStore::setAside() puts between the name of a log and a number.
constexpr const char* setAsideWord = ".damaged-";

/// The logs that were set aside by CallStore::setAside() and not brought back yet, in the order of their numbers.
std::vector<std::filesystem::path> logsSetAside(const std::filesystem::path& log);

struct BroughtBack {
    /// Where the file is kept now.
    std::filesystem::path copy;
    std::int64_t calls = 0;       ///< That were added.
    std::int64_t present = 0;     ///< That the log has already.
    std::int64_t unreadable = 0;  ///< That stand in the file alone, as far as they are known of.
};

/// Adds the calls that can be read of a log that was set aside to the present one, in one change. Errors as with an
/// import; both files are as they were then.
Result<BroughtBack> bringBack(const std::filesystem::path& setAside, const std::filesystem::path& log,
                              const OpenOptions& options = {});

}  // namespace quorvel::store

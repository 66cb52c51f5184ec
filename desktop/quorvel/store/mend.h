// Putting a log right that contradicts itself, and saving what can be read of a damaged one.
#pragma once

#include <cstdint>
#include <filesystem>

#include "desktop/quorvel/store/call_store.h"

namespace quorvel::store {

struct Mended {
    /// Where the log as it was is kept.
    std::filesystem::path copy;
    /// The file was damaged, and was replaced by a new one of the calls that could be read: who has it open still has
    /// the old one. What was kept of deleted calls is in the copy alone.
    bool wasReplaced = false;
    std::int64_t calls = 0;
    std::int64_t unreadable = 0;  ///< Calls of a replaced log that could not be saved, as far as they are known of.
};

/// Makes indices and sums of the log anew; where its file is damaged beyond that, the calls that can be read go into a
/// new one, with new row identifiers. The log as it was is kept. Errors: unreadable, foreign, newer, busy, full;
/// damaged where not even the tables can be found. The log is as it was then.
Result<Mended> mend(const std::filesystem::path& log, const OpenOptions& options = {});

}  // namespace quorvel::store

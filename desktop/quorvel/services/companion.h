// The companion as the host program brings it up.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/quorvel/directory/data_directory.h"

namespace quorvel {

/// Opens calls, settings and texts of the data directory, before the plug-in is loaded. Answers a sentence that says
/// what is wrong, where, and what to do, when the log of calls cannot be opened; a damaged log is set aside, never
/// deleted, and a new one is begun. `textsFolder` holds the string tables. Main thread.
std::optional<std::string> openCompanion(const DataDirectory& directory, const std::filesystem::path& textsFolder);

}  // namespace quorvel

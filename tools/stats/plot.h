// Statistics as a picture: the calls of each month, and the contacts with the most.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/files/rename.h"
#include "tools/stats/statistics.h"

namespace tools {

/// Whether the file's name says what the picture is: ".svg" or ".png".
bool isPlotName(const std::filesystem::path& file);

/// Draws into the file, which takes its name once it is complete. Answers what went wrong.
std::optional<std::string> plot(const Statistics& statistics, const std::filesystem::path& file,
                                files::Existing existing);

}  // namespace tools

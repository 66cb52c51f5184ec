// Where a command writes what it makes: standard output, or a file that takes its name once it is complete.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/files/output.h"

namespace tools {

/// A sentence where the file is there and is not to be replaced, or is a folder; nothing where it may be written.
std::optional<std::string> objectionToFile(const std::filesystem::path& file, files::Existing existing);

/// files::Output, with sentences.
class Output {
  public:
    Output(std::filesystem::path file, files::Existing existing) : file_(file), output_(std::move(file), existing) {}

    /// Trouble is kept for `finish`.
    void write(std::string_view text) { output_.write(text); }
    /// Puts the file on disk under its name. Answers what went wrong.
    std::optional<std::string> finish();

  private:
    std::filesystem::path file_;
    files::Output output_;
};

}  // namespace tools

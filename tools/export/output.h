// Where a command writes what it makes: standard output, or a file that takes its name once it is complete.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tools {

/// A sentence where the file is there and is not to be replaced, or its folder is not; nothing where it may be written.
std::optional<std::string> objectionToFile(const std::filesystem::path& file, bool replaces);

class Output {
  public:
    /// Standard output where the path is empty.
    explicit Output(std::filesystem::path file);
    /// What was not finished leaves no file behind.
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Trouble is kept for `finish`.
    void write(std::string_view text);
    /// Puts the file on disk under its name. Answers what went wrong.
    std::optional<std::string> finish();

  private:
    std::string cannot() const;

    std::filesystem::path file_;
    std::filesystem::path unfinished_;
    std::FILE* stream_ = nullptr;
    int error_ = 0;
};

}  // namespace tools

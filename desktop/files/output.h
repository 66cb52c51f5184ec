// Where a program writes what it makes for its user: a file that takes its name once it is complete, or what is there
// and is no file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "desktop/files/new_file.h"

namespace files {

/// One thread at a time.
class Output {
  public:
    /// Standard output where the path is empty. A device or a pipe of that name is written to as it is; a new file is
    /// its user's alone.
    Output(std::filesystem::path file, Existing existing);
    /// What was not finished leaves no file behind.
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Trouble is kept for `finish`.
    void write(std::string_view bytes);
    /// Puts the file on disk under its name. Error: file_exists where the name is taken and that is refused; the number
    /// of the system otherwise.
    std::error_code finish();

  private:
    void flush();

    std::filesystem::path file_;
    Existing existing_;
    std::optional<NewFile> made_;
    int descriptor_ = -1;  // of what is written to as it is
    std::string buffer_;
    std::error_code error_;
};

}  // namespace files

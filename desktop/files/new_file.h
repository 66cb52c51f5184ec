// A file in the making: under a name of its own until it is complete, so that nobody finds half of it.
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>
#include <variant>

#include "desktop/files/rename.h"

namespace files {

/// An empty file that its user alone can read, in the folder of the file that it will become, under a name that cannot
/// be guessed. It is removed with the object, and with it what SQLite keeps beside a database of that name. What a
/// killed process left is removed by the next one that makes a file in the folder. One thread at a time.
class NewFile {
  public:
    /// Makes the file. Error: the number of the system, of the folder.
    static std::variant<NewFile, std::error_code> beside(const std::filesystem::path& target);

    NewFile(NewFile&& other) noexcept;
    NewFile& operator=(NewFile&& other) noexcept;
    ~NewFile();

    const std::filesystem::path& path() const { return path_; }

    /// Appends all of the bytes.
    std::error_code write(std::string_view bytes) const;
    /// Puts the content on disk and gives the file its name; no database of that name may be open any more. After an
    /// error the target is as it was, unless the new name alone could not be put on disk.
    std::error_code publish(const std::filesystem::path& target, Existing existing);

  private:
    NewFile(std::filesystem::path path, int descriptor) : path_(std::move(path)), descriptor_(descriptor) {}

    std::filesystem::path path_;
    int descriptor_ = -1;  // holds a lock as long as the file is in the making
};

/// Writes all of the bytes to the descriptor.
std::error_code writeAll(int descriptor, std::string_view bytes);

/// Removes the files of this user that killed processes left in the folder while they were in the making.
void removeAbandoned(const std::filesystem::path& folder);

}  // namespace files

// Files that are read whole, without waiting for anybody.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <variant>

namespace files {

/// An open regular file, for reading. Closed with the object.
class RegularFile {
  public:
    /// Opens it. A pipe, a device or a folder is refused at once: is_a_directory of a folder, invalid_argument of the
    /// others; the number of the system otherwise.
    static std::variant<RegularFile, std::error_code> open(const std::filesystem::path& path);

    RegularFile(RegularFile&& other) noexcept;
    RegularFile& operator=(RegularFile&& other) noexcept;
    ~RegularFile();

    /// The whole content. Error: file_too_large where there is more than `most` bytes; the number of the system.
    std::variant<std::string, std::error_code> read(std::size_t most) const;

  private:
    explicit RegularFile(int descriptor) : descriptor_(descriptor) {}
    int descriptor_ = -1;
};

/// The whole content of the regular file, as RegularFile opens and reads it.
std::variant<std::string, std::error_code> readFile(const std::filesystem::path& path, std::size_t most);

/// What is wrong, as a sentence goes on: "Permission denied", "it is not a file".
std::string reasonOf(const std::error_code& error);

}  // namespace files

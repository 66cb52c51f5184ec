// Names of files that change on disk.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

namespace files {

/// What becomes of a file that has the name already.
enum class Existing { refused, replaced };

/// The folder that the file is in; "." for a bare name.
std::filesystem::path folderOf(const std::filesystem::path& file);

/// The names of what is in the folder, as far as it can be read; in no order.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

/// Gives the file its new name and puts that on disk. Error: file_exists where the name is taken and that is refused;
/// the number of the system otherwise. After an error of putting it on disk the file has its new name all the same.
std::error_code renameOnDisk(const std::filesystem::path& from, const std::filesystem::path& to, Existing existing);

/// Gives the file the first free name of FILE.damaged-1, FILE.damaged-2 and so on, and those that have its name with
/// one of the suffixes behind it, in that order and before it, the same ones. Answers the new name.
std::variant<std::filesystem::path, std::error_code> setAside(const std::filesystem::path& file,
                                                              std::span<const char* const> suffixes = {});

}  // namespace files

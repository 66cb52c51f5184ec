// Files and folders that nobody but their user can read.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <system_error>

namespace files {

/// From now on what the process makes is for its user alone, whatever the caller's mask says. Before threads start.
void makeNewFilesPrivate();

/// Gives the process back the mask it was started with, for a program that it is about to become. Safe between fork
/// and exec.
void restoreCallersMask();

/// Makes the folder, for its user alone, and those above it that are missing. Error: the number of the system. A folder
/// that is there is left as it is.
std::error_code makePrivateFolders(const std::filesystem::path& folder);

/// Makes the empty file, for its user alone, unless there is something of that name.
void makePrivateFile(const std::filesystem::path& file);

/// Takes away what others may do with a file or folder of this user. Links are not followed; what belongs to another
/// user, and what the file system cannot protect, stays as it is.
void makePrivate(const std::filesystem::path& path);

}  // namespace files

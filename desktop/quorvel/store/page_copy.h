// A database copied page by page into another file, and what a file needs to take the place of another one.
#pragma once

#include <functional>

#include "desktop/files/new_file.h"
#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// Makes the database of `to` the one of `from`, as the open transaction of `from` sees it; where it has read nothing
/// yet, as it is now. The work is bounded by the number of pages, whatever other processes write meanwhile. Told how
/// much is done.
void copyPages(Connection& from, Connection& to, const std::function<void(double)>& progress);

/// Makes a file beside the one that it will become. Throws Failure.
files::NewFile newFileBeside(const std::filesystem::path& file);

/// Gives the file its name, on disk. Throws Failure: badInput where the name is taken and that is refused.
void publish(files::NewFile& made, const std::filesystem::path& file, files::Existing existing);

/// Copies the database into a new file of that name that needs nothing beside it, is sound and is on disk. `from` has a
/// transaction open. The file comes into being whole or not at all.
void copyToFile(Connection& from, const std::filesystem::path& file, files::Existing existing,
                const std::function<void(double)>& progress);

/// Removes a database and what SQLite keeps beside it, where they are there.
void removeDatabase(const std::filesystem::path& file);

/// Gives the file its new name, in the place of what had it, and puts that on disk.
void renameOnDisk(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace quorvel::store

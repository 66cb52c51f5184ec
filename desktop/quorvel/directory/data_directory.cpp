// The data directory's places.
#include "desktop/quorvel/directory/data_directory.h"

#include <unistd.h>

#include <cstdlib>

namespace quorvel {
namespace {

std::filesystem::path usersOwn() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/')
        return std::filesystem::path(data) / "quorvel";
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home && *home ? home : "/tmp") / ".local/share/quorvel";
}

}  // namespace

std::variant<DataDirectory, std::string> DataDirectory::open(const std::filesystem::path& path) {
    const DataDirectory directory(std::filesystem::absolute(path.empty() ? usersOwn() : path));
    std::error_code error;
    std::filesystem::create_directories(directory.contacts(), error);
    if (error)
        return "The data directory " + directory.path().string() + " cannot be made: " + error.message() +
               ". Name another one with --data.";
    if (access(directory.path().c_str(), R_OK | W_OK | X_OK) != 0)
        return "The data directory " + directory.path().string() +
               " cannot be written. Change its permissions, or name another one with --data.";
    return directory;
}

}  // namespace quorvel

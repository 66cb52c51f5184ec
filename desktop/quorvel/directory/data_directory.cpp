// Finding the data directory, making what is missing of it, and saying why it cannot be used.
#include "desktop/quorvel/directory/data_directory.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <system_error>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr const char* advice = " Change its permissions, or name another one with --data.";

/// An absolute path in a variable of the environment; relative ones are to be ignored.
fs::path pathOfVariable(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value == '/' ? fs::path(value) : fs::path();
}

/// Empty where the user has no home.
fs::path usersOwn() {
    if (const auto data = pathOfVariable("XDG_DATA_HOME"); !data.empty()) return data / "quorvel";
    fs::path home = pathOfVariable("HOME");
    if (home.empty()) {
        const passwd* user = getpwuid(getuid());
        if (user && user->pw_dir && *user->pw_dir == '/') home = user->pw_dir;
    }
    return home.empty() ? home : home / ".local/share/quorvel";
}

std::string cannot(const char* what, const fs::path& where, const std::error_code& why) {
    return "The data directory " + where.string() + " cannot be " + what + ": " + why.message() + "." + advice;
}

/// Makes the folder and those above it. What is wrong, if anything is.
std::optional<std::string> make(const fs::path& folder) {
    std::error_code error;
    if (fs::exists(folder, error) && !fs::is_directory(folder, error))
        return "The data directory " + folder.string() +
               " cannot be used: a file of that name is in the way. Move the file, or name another one with --data.";
    fs::create_directories(folder, error);
    if (error) return cannot("made", folder, error);
    if (faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) == 0) return std::nullopt;
    return cannot("written", folder, std::error_code(errno, std::system_category()));
}

}  // namespace

std::variant<DataDirectory, std::string> DataDirectory::open(const fs::path& path) {
    const fs::path chosen = path.empty() ? usersOwn() : path;
    if (chosen.empty()) return std::string("There is no home directory to keep calls in. Name a folder with --data.");
    std::error_code error;
    const fs::path absolute = fs::absolute(chosen, error);
    if (error) return cannot("found", chosen, error);
    DataDirectory directory(absolute.lexically_normal());
    for (const auto& folder :
         {directory.path(), directory.contacts(), directory.notifications(), directory.temporaryFiles()})
        if (auto trouble = make(folder)) return *trouble;
    return directory;
}

std::string DataDirectory::commandOption() const {
    if (path_ == usersOwn().lexically_normal()) return {};
    std::string quoted;
    for (const char letter : path_.string()) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return "--data '" + quoted + "' ";
}

bool DataDirectory::isNew() const {
    std::error_code error;
    return !fs::exists(fs::symlink_status(calls(), error));
}

}  // namespace quorvel

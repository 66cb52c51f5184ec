// Finding the data directory, making what is missing of it, and saying why it cannot be used.
#include "desktop/quorvel/directory/data_directory.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

#include "desktop/files/new_file.h"
#include "desktop/files/private_files.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr const char* advice = " Change its permissions, or name another one with --data.";

/// An absolute path in a variable of the environment; relative ones are to be ignored.
fs::path pathOfVariable(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value == '/' ? fs::path(value) : fs::path();
}

/// Empty where the user has none.
fs::path homeFolder() {
    fs::path home = pathOfVariable("HOME");
    if (home.empty()) {
        const passwd* user = getpwuid(getuid());
        if (user && user->pw_dir && *user->pw_dir == '/') home = user->pw_dir;
    }
    return home;
}

/// Empty where the user has no home.
fs::path usersOwn() {
    if (const auto data = pathOfVariable("XDG_DATA_HOME"); !data.empty()) return data / "quorvel";
    const fs::path home = homeFolder();
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
    if (const auto trouble = files::makePrivateFolders(folder)) return cannot("made", folder, trouble);
    if (faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) == 0) return std::nullopt;
    return cannot("written", folder, std::error_code(errno, std::system_category()));
}

/// Whether the folder is one that others than this program's data need open: the user's home or what holds it, and
/// folders like /tmp.
bool isSharedWithMore(const fs::path& folder) {
    std::error_code error;
    if ((fs::status(folder, error).permissions() & fs::perms::sticky_bit) != fs::perms::none) return true;
    for (fs::path each = homeFolder(); !each.empty(); each = each.parent_path()) {
        if (fs::equivalent(each, folder, error)) return true;
        if (each == each.parent_path()) break;
    }
    return false;
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
    directory.makePrivate();
    files::removeAbandoned(directory.path());
    files::removeAbandoned(directory.contacts());
    return directory;
}

std::string DataDirectory::commandOption() const {
    if (path_ == usersOwn().lexically_normal()) return {};
    std::string quoted;
    for (const char letter : path_.string()) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return "--data '" + quoted + "' ";
}

void DataDirectory::makePrivate() const {
    struct Ours {
        fs::path folder;
        std::string beginning;
        std::string ending;
    };
    const Ours all[] = {{path_, "calls.db", ""},       {path_, "settings.plist", ""},  {contacts(), "contacts.db", ""},
                        {contacts(), "denied", ""},    {notifications(), "", ".post"}, {shared(), "", ".vcf"},
                        {temporaryFiles(), "", ".log"}};
    for (const auto& folder : {contacts(), notifications(), temporaryFiles(), shared()}) files::makePrivate(folder);
    if (!isSharedWithMore(path_)) files::makePrivate(path_);
    for (const auto& ours : all)
        for (const auto& name : files::namesIn(ours.folder))
            if (name.starts_with(ours.beginning) && name.ends_with(ours.ending)) files::makePrivate(ours.folder / name);
}

bool DataDirectory::isNew() const {
    std::error_code error;
    return !fs::exists(fs::symlink_status(calls(), error));
}

}  // namespace quorvel

// Paths of the handset's file tree in the desktop's.
#include "desktop/substrate/handset_files.h"

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view temporary = "/tmp/";

/// Never destroyed: images may open files while the process ends.
std::filesystem::path& temporaryFolder() {
    static auto* const folder = new std::filesystem::path;
    return *folder;
}

/// The desktop's path; none, with errno set, where the handset's folder is nowhere.
std::optional<std::string> desktopPath(std::string_view path) {
    if (!path.starts_with(temporary)) return std::string(path);
    if (temporaryFolder().empty()) {
        errno = ENOENT;
        return std::nullopt;
    }
    return (temporaryFolder() / path.substr(temporary.size())).string();
}

}  // namespace

FILE* __wrap_fopen(const char* path, const char* mode) {
    const auto found = desktopPath(path);
    return found ? std::fopen(found->c_str(), mode) : nullptr;
}

FILE* __wrap_freopen(const char* path, const char* mode, FILE* stream) {
    const auto found = desktopPath(path);
    return found ? std::freopen(found->c_str(), mode, stream) : nullptr;
}

namespace substrate {

void setTemporaryFolder(const std::filesystem::path& folder) { temporaryFolder() = folder; }

}  // namespace substrate

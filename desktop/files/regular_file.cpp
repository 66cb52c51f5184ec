// Opening without blocking, then looking at what was opened.
#include "desktop/files/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace files {
namespace {

std::error_code lastError() { return {errno, std::system_category()}; }

}  // namespace

std::variant<RegularFile, std::error_code> RegularFile::open(const std::filesystem::path& path) {
    // Looked at first, because opening some devices does something.
    struct stat about {};
    if (::stat(path.c_str(), &about) != 0) return lastError();
    const auto objection = [&about]() -> std::error_code {
        if (S_ISDIR(about.st_mode)) return std::make_error_code(std::errc::is_a_directory);
        return S_ISREG(about.st_mode) ? std::error_code() : std::make_error_code(std::errc::invalid_argument);
    };
    if (const auto error = objection()) return error;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return lastError();
    RegularFile file(descriptor);
    if (::fstat(descriptor, &about) != 0) return lastError();
    if (const auto error = objection()) return error;
    return file;
}

RegularFile::RegularFile(RegularFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

RegularFile& RegularFile::operator=(RegularFile&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

RegularFile::~RegularFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

std::variant<std::string, std::error_code> RegularFile::read(std::size_t most) const {
    constexpr std::size_t chunk = std::size_t{1} << 16;
    std::string content;
    for (;;) {
        const std::size_t size = content.size();
        content.resize(size + chunk);
        const ssize_t count = ::read(descriptor_, content.data() + size, chunk);
        content.resize(size + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count == 0) return content;
        if (count < 0 && errno != EINTR) return lastError();
        if (content.size() > most) return std::make_error_code(std::errc::file_too_large);
    }
}

std::variant<std::string, std::error_code> readFile(const std::filesystem::path& path, std::size_t most) {
    auto opened = RegularFile::open(path);
    if (const auto* error = std::get_if<std::error_code>(&opened)) return *error;
    return std::get<RegularFile>(opened).read(most);
}

std::string reasonOf(const std::error_code& error) {
    return error == std::errc::invalid_argument ? "it is not a file" : error.message();
}

}  // namespace files

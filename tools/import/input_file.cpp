// The beginning is kept until it was read.
#include "tools/import/input_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace tools {

InputFile::InputFile(const std::filesystem::path& file)
    : stream_(std::make_unique<std::ifstream>(file, std::ios::binary)) {
    std::error_code unknown;
    const auto size = std::filesystem::file_size(file, unknown);
    size_ = unknown ? 0 : size;
}

InputFile::InputFile(std::unique_ptr<std::istream> stream, std::uint64_t size)
    : stream_(std::move(stream)), size_(size) {}

std::string_view InputFile::head() {
    if (!hasHead_) {
        hasHead_ = true;
        head_.resize(headBytes);
        head_.resize(readStream(head_));
    }
    return head_;
}

std::size_t InputFile::read(std::span<char> space) {
    std::size_t count = 0;
    if (!head_.empty()) {
        count = head_.copy(space.data(), space.size());
        head_.erase(0, count);
    } else {
        count = readStream(space);
    }
    read_ += count;
    return count;
}

std::size_t InputFile::readStream(std::span<char> space) {
    if (!trouble_.empty()) return 0;
    errno = 0;
    stream_->read(space.data(), static_cast<std::streamsize>(space.size()));
    if (stream_->bad()) trouble_ = "From here on the file cannot be read: " + std::string(std::strerror(errno)) + '.';
    return static_cast<std::size_t>(stream_->gcount());
}

double InputFile::progress() const {
    return size_ == 0 ? 0 : std::min(1.0, static_cast<double>(read_) / static_cast<double>(size_));
}

}  // namespace tools

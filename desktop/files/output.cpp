// Writing, and giving the file its name in the end.
#include "desktop/files/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace files {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t bufferSize = std::size_t{1} << 16;

std::error_code lastError() { return {errno, std::system_category()}; }

}  // namespace

Output::Output(fs::path file, Existing existing) : file_(std::move(file)), existing_(existing) {
    std::error_code ignored;
    const auto status = fs::status(file_, ignored);
    const bool isOther = fs::exists(status) && !fs::is_regular_file(status);
    if (file_.empty() || isOther) {
        std::fflush(stdout);
        descriptor_ = file_.empty() ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                    : ::open(file_.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (descriptor_ < 0) error_ = lastError();
        return;
    }
    auto made = NewFile::beside(file_);
    if (auto* whole = std::get_if<NewFile>(&made))
        made_ = std::move(*whole);
    else
        error_ = std::get<std::error_code>(made);
}

Output::~Output() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

void Output::write(std::string_view bytes) {
    buffer_ += bytes;
    if (buffer_.size() >= bufferSize) flush();
}

void Output::flush() {
    if (!error_) error_ = made_ ? made_->write(buffer_) : writeAll(descriptor_, buffer_);
    buffer_.clear();
}

std::error_code Output::finish() {
    flush();
    if (!error_ && made_) error_ = made_->publish(file_, existing_);
    return error_;
}

}  // namespace files

// Writing, and giving the file its name in the end.
#include "tools/export/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace tools {

namespace fs = std::filesystem;

std::optional<std::string> objectionToFile(const fs::path& file, bool replaces) {
    std::error_code ignored;
    const auto status = fs::status(file, ignored);
    if (!fs::exists(status)) return std::nullopt;
    if (fs::is_directory(status)) return file.string() + " is a folder. Name a file.";
    if (fs::is_regular_file(status) && !replaces)
        return "There is a file " + file.string() + " already. Name another one, or replace it with --force.";
    return std::nullopt;
}

Output::Output(fs::path file) : file_(std::move(file)) {
    if (file_.empty()) {
        stream_ = stdout;
        return;
    }
    unfinished_ = file_.string() + ".unfinished";
    stream_ = std::fopen(unfinished_.c_str(), "we");
    if (!stream_) error_ = errno;
}

Output::~Output() {
    if (file_.empty() || !stream_) return;
    std::fclose(stream_);
    std::error_code ignored;
    fs::remove(unfinished_, ignored);
}

void Output::write(std::string_view text) {
    if (error_ == 0 && std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) error_ = errno;
}

std::string Output::cannot() const {
    const std::string where = file_.empty() ? "The output" : "The file " + file_.string();
    return where + " cannot be written: " + std::strerror(error_) + ". Name another file, or make room.";
}

std::optional<std::string> Output::finish() {
    if (error_ == 0 && std::fflush(stream_) != 0) error_ = errno;
    if (file_.empty()) return error_ == 0 ? std::nullopt : std::optional(cannot());
    if (error_ == 0 && ::fsync(fileno(stream_)) != 0) error_ = errno;
    if (error_ == 0 && std::rename(unfinished_.c_str(), file_.c_str()) != 0) error_ = errno;
    if (error_ != 0) return cannot();
    std::fclose(stream_);
    stream_ = nullptr;
    return std::nullopt;
}

}  // namespace tools

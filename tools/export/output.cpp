// What is wrong with an output, in sentences.
#include "tools/export/output.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

std::string isThere(const fs::path& file) {
    return "There is a file " + file.string() + " already. Name another one, or replace it with --force.";
}

}  // namespace

std::optional<std::string> objectionToFile(const fs::path& file, files::Existing existing) {
    std::error_code ignored;
    const auto status = fs::status(file, ignored);
    if (fs::is_directory(status)) return file.string() + " is a folder. Name a file.";
    if (fs::is_regular_file(status) && existing == files::Existing::refused) return isThere(file);
    return std::nullopt;
}

std::optional<std::string> Output::finish() {
    const auto error = output_.finish();
    if (!error) return std::nullopt;
    if (error == std::errc::file_exists) return isThere(file_);
    const std::string where = file_.empty() ? "The output" : "The file " + file_.string();
    return where + " cannot be written: " + error.message() + ". Name another file, or make room.";
}

}  // namespace tools

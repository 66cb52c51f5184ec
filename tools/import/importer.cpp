// Choosing the importer of a file.
#include "tools/import/importer.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "tools/import/csv_importer.h"

namespace tools {

std::variant<std::unique_ptr<Importer>, std::string> openImporter(const std::filesystem::path& file) {
    std::error_code unknown;
    if (std::filesystem::is_directory(file, unknown)) return file.string() + " is a folder. Name a file.";
    if (!std::ifstream(file)) return file.string() + " cannot be read: " + std::strerror(errno) + '.';
    return std::make_unique<CsvImporter>(file);
}

}  // namespace tools

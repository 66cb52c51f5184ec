// Reading files as the program does.
#include "tests/import/reading.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace import_tests {

Reading read(const std::filesystem::path& file, const tools::ImportOptions& options) {
    constexpr int bound = 1'000'000;
    Reading reading;
    auto opened = tools::openImporter(file, options);
    if (auto* refusal = std::get_if<std::string>(&opened)) {
        reading.refusal = std::move(*refusal);
        return reading;
    }
    auto& importer = *std::get<std::unique_ptr<tools::Importer>>(opened);
    reading.format = importer.format();
    for (int items = 0; items < bound; ++items) {
        auto item = importer.next();
        if (std::holds_alternative<tools::Importer::End>(item)) return reading;
        if (auto* call = std::get_if<quorvel::store::NewCall>(&item)) reading.calls.push_back(std::move(*call));
        if (auto* wrong = std::get_if<tools::Complaint>(&item)) reading.complaints.push_back(std::move(*wrong));
    }
    throw std::runtime_error(file.string() + " does not end");
}

void runOn(const std::filesystem::path& database, const std::string& statements) {
    sqlite3* opened = nullptr;
    sqlite3_open(database.c_str(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closing(opened, sqlite3_close_v2);
    if (sqlite3_exec(opened, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(opened));
}

std::string printedBy(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string printed;
    std::array<char, 4096> bytes{};
    while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe.get()))
        printed.append(bytes.data(), count);
    return printed;
}

}  // namespace import_tests

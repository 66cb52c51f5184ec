// What an importer makes of a file, and the small things that its tests share.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/program.h"
#include "tools/import/importer.h"

namespace import_tests {

struct Reading {
    std::string refusal;  ///< Why there is no importer; nothing else is filled then.
    std::string format;
    std::vector<quorvel::store::NewCall> calls;
    std::vector<tools::Complaint> complaints;
};

/// Reads the file to its end, or to a bound of items that no test reaches in good order.
Reading read(const std::filesystem::path& file, const tools::ImportOptions& options = {});

/// Carries out statements on a database, which is made where there is none.
void runOn(const std::filesystem::path& database, const std::string& statements);

/// What a shell command prints.
std::string printedBy(const std::string& command);

}  // namespace import_tests

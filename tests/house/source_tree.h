// The project's files as the checks see them: text files by their path from the root, as lists of lines.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace house {

struct SourceFile {
    std::string path;  // from the root, with forward slashes
    std::vector<std::string> lines;

    // Whether the path begins with this folder, given without a slash at its end.
    bool isUnder(std::string_view folder) const;
    bool isCpp() const;
    // CMake lists and shell scripts, which comment with '#'.
    bool isScript() const;
};

struct SourceTree {
    std::vector<SourceFile> files;  // in the order of their paths

    const SourceFile* find(std::string_view path) const;

    // Reads every text file below the root but for what builds and version control leave there. Throws
    // std::filesystem::filesystem_error where the root cannot be read.
    static SourceTree read(const std::filesystem::path& root);
};

// Splits text at line feeds; a line feed at the very end begins no further line.
std::vector<std::string> linesOf(std::string_view text);

}  // namespace house

// Reading files and the output of programs.
#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace images {

inline std::vector<char> contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> content{std::istreambuf_iterator<char>(stream), {}};
    if (content.empty()) throw std::runtime_error(file.string() + " is not there: ./test builds it with its preset");
    return content;
}
inline std::string textOf(const std::filesystem::path& file) {
    const auto content = contentOf(file);
    return {content.begin(), content.end()};
}
inline std::span<const std::byte> bytesOf(const std::vector<char>& content) {
    return std::as_bytes(std::span(content));
}

/// What the command prints.
inline std::string outputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    char buffer[4096];
    for (std::size_t count = 0; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, count);
    pclose(pipe);
    return output;
}

}  // namespace images

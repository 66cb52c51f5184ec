// Reads the project's files.
#include "tests/house/source_tree.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace house {

namespace {

// What is left in the tree by others than its authors, and samples that tests keep as others wrote them.
bool isForeign(const std::filesystem::path& relative) {
    const std::string first = relative.begin()->string();
    const bool isSample = first == "tests" && (relative.filename() == "data" || relative.filename() == "corpus");
    return first == ".git" || first == "build" || first == ".cache" || relative.extension() == ".log" ||
           relative == "compile_commands.json" || isSample;
}

std::optional<std::string> readText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) return std::nullopt;  // a file that its author has just moved away
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (text.find('\0') != std::string::npos) return std::nullopt;
    return text;
}

}  // namespace

bool SourceFile::isUnder(std::string_view folder) const {
    return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/';
}

bool SourceFile::isCpp() const {
    for (const char* ending : {".h", ".hpp", ".c", ".cc", ".cpp", ".m", ".mm"}) {
        if (path.ends_with(ending)) return true;
    }
    return false;
}

bool SourceFile::isScript() const {
    return path.ends_with("CMakeLists.txt") || path.ends_with(".cmake") || path.ends_with(".sh") ||
           (!lines.empty() && lines.front().starts_with("#!"));
}

const SourceFile* SourceTree::find(std::string_view path) const {
    const auto found = std::ranges::lower_bound(files, path, {}, &SourceFile::path);
    return found != files.end() && found->path == path ? &*found : nullptr;
}

SourceTree SourceTree::read(const std::filesystem::path& root) {
    SourceTree tree;
    auto walk = std::filesystem::recursive_directory_iterator(root);
    for (auto entry = begin(walk); entry != end(walk); ++entry) {
        const auto relative = entry->path().lexically_relative(root);
        if (isForeign(relative)) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file() && !entry->is_symlink()) {
            if (const auto text = readText(entry->path())) {
                tree.files.push_back({relative.generic_string(), linesOf(*text)});
            }
        }
    }
    std::ranges::sort(tree.files, {}, &SourceFile::path);
    return tree;
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const auto length = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return lines;
}

}  // namespace house

// The layers, and the reading of include lines.
#include "tests/house/includes.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

namespace house {

namespace {

// A folder, and the other layers that its files may include from. "*" stands for all of them.
struct Layer {
    std::string_view folder;
    std::array<std::string_view, 9> mayInclude;
    bool withSubfolders = true;
};

// The plug-in's folders stack; what the desktop offers is reached by the plug-in through names alone, and the other
// way.
constexpr Layer layers[] = {
    {"objc", {}},
    {"platform", {"objc"}},
    {"plugin/companion", {"platform", "objc"}},
    {"plugin/host", {"plugin/companion", "platform", "objc"}},
    {"plugin/rows", {"plugin/host", "plugin/companion", "platform", "objc"}},
    {"plugin/detail", {"plugin/rows", "plugin/host", "plugin/companion", "platform", "objc"}},
    {"plugin/recents", {"plugin/rows", "plugin/host", "plugin/companion", "platform", "objc"}},
    {"plugin/datelog",
     {"plugin/recents", "plugin/detail", "plugin/rows", "plugin/host", "plugin/companion", "platform", "objc"}},
    // What stands in no folder of its own puts the plug-in together.
    {"plugin",
     {"plugin/datelog", "plugin/recents", "plugin/detail", "plugin/rows", "plugin/host", "plugin/companion", "platform",
      "objc"},
     false},
    {"desktop", {"platform", "objc"}},
    {"tools", {"desktop", "platform", "objc"}},
    {"tests", {"*"}},
    {"bench", {"*"}},
};

const Layer* layerOf(const SourceFile& file) {
    for (const Layer& layer : layers) {
        if (!file.isUnder(layer.folder)) continue;
        if (layer.withSubfolders || file.path.find('/', layer.folder.size() + 1) == std::string::npos) return &layer;
    }
    return nullptr;
}

bool allows(const Layer& from, const SourceFile& target) {
    const Layer* to = layerOf(target);
    if (to == &from) return true;
    return std::ranges::any_of(from.mayInclude, [to](std::string_view folder) {
        return folder == "*" || (to != nullptr && folder == to->folder);
    });
}

struct Include {
    std::string name;
    bool isQuoted;
};

// The include that a line makes, if it makes one. White space may stand on either side of '#'.
std::optional<Include> includeOn(std::string_view line) {
    const auto skipSpace = [&line] { line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size())); };
    skipSpace();
    if (!line.starts_with('#')) return std::nullopt;
    line.remove_prefix(1);
    skipSpace();
    for (const std::string_view word : {"include_next", "include", "import"}) {
        if (!line.starts_with(word)) continue;
        line.remove_prefix(word.size());
        skipSpace();
        if (line.empty() || (line.front() != '"' && line.front() != '<')) return std::nullopt;
        const bool isQuoted = line.front() == '"';
        const auto end = line.find(isQuoted ? '"' : '>', 1);
        if (end == std::string_view::npos) return std::nullopt;
        return Include{std::string(line.substr(1, end - 1)), isQuoted};
    }
    return std::nullopt;
}

// The file of the tree that an include names: from the root, or, quoted, beside the file that includes it.
const SourceFile* resolve(const SourceTree& tree, const SourceFile& from, const Include& include) {
    if (include.isQuoted) {
        const auto beside = std::filesystem::path(from.path).parent_path() / include.name;
        if (const auto* file = tree.find(beside.lexically_normal().generic_string())) return file;
    }
    return tree.find(std::filesystem::path(include.name).lexically_normal().generic_string());
}

void checkFile(const SourceTree& tree, const SourceFile& file, Findings& findings) {
    const Layer* layer = layerOf(file);
    if (layer == nullptr) {
        findings.push_back({file.path, 1, "the file stands in a folder that has no place among the layers"});
        return;
    }
    for (std::size_t index = 0; index < file.lines.size(); ++index) {
        const auto include = includeOn(file.lines[index]);
        if (!include) continue;
        const SourceFile* target = resolve(tree, file, *include);
        if (target == nullptr) {
            if (!include->isQuoted) continue;
            findings.push_back(
                {file.path, index + 1, "no file of the tree is called " + include->name + " from the root"});
        } else if (!allows(*layer, *target)) {
            findings.push_back({file.path, index + 1, std::string(layer->folder) + " may not include " + target->path});
        }
    }
}

}  // namespace

Findings forbiddenIncludes(const SourceTree& tree) {
    Findings findings;
    for (const SourceFile& file : tree.files) {
        if (file.isCpp()) checkFile(tree, file, findings);
    }
    return findings;
}

}  // namespace house

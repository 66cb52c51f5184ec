// The include rules themselves, on small trees that break them on purpose.
#include "tests/house/includes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using house::Finding;
using house::forbiddenIncludes;
using house::SourceTree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// One header a folder, and beside them the file in question.
SourceTree treeWith(const std::string& path, const std::string& text) {
    SourceTree tree;
    for (const char* folder :
         {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/detail", "plugin/recents",
          "plugin/datelog", "plugin", "desktop/uikit", "tools", "tests/objc", "bench"}) {
        tree.files.push_back({std::string(folder) + "/a.h", {}});
    }
    tree.files.push_back({path, house::linesOf(text)});
    std::ranges::sort(tree.files, {}, &house::SourceFile::path);
    return tree;
}

bool mayInclude(const std::string& folder, const std::string& target) {
    return forbiddenIncludes(treeWith(folder + "/b.cpp", "#include \"" + target + "/a.h\"\n")).empty();
}

struct Row {
    const char* folder;
    std::vector<std::string> mayInclude;
};

const std::vector<std::string> everyFolder = {
    "objc",           "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/detail", "plugin/recents",
    "plugin/datelog", "plugin",   "desktop/uikit",    "tools",       "tests/objc",  "bench"};

const Row rows[] = {
    {"objc", {"objc"}},
    {"platform", {"objc", "platform"}},
    {"plugin/companion", {"objc", "platform", "plugin/companion"}},
    {"plugin/host", {"objc", "platform", "plugin/companion", "plugin/host"}},
    {"plugin/rows", {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows"}},
    {"plugin/detail", {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/detail"}},
    {"plugin/recents", {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/recents"}},
    {"plugin/datelog",
     {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/detail", "plugin/recents",
      "plugin/datelog"}},
    {"plugin",
     {"objc", "platform", "plugin/companion", "plugin/host", "plugin/rows", "plugin/detail", "plugin/recents",
      "plugin/datelog", "plugin"}},
    {"desktop/phone", {"objc", "platform", "desktop/uikit"}},
    {"tools", {"objc", "platform", "desktop/uikit", "tools"}},
    {"tests/scenarios", everyFolder},
    {"bench", everyFolder},
};

}  // namespace

TEST(Includes, everyFolderIncludesExactlyWhatItsLayerMay) {
    for (const Row& row : rows) {
        for (const std::string& target : everyFolder) {
            const bool expected = std::ranges::find(row.mayInclude, target) != row.mayInclude.end();
            EXPECT_EQ(mayInclude(row.folder, target), expected) << row.folder << " including " << target;
        }
    }
}

TEST(Includes, aForbiddenOneIsNamedWithItsLine) {
    EXPECT_THAT(forbiddenIncludes(treeWith("desktop/phone/main.cpp", "// The Phone.\n#include \"plugin/rows/a.h\"\n")),
                ElementsAre(Finding{"desktop/phone/main.cpp", 2, "desktop may not include plugin/rows/a.h"}));
}

TEST(Includes, aWayAroundInThePathIsSeenThrough) {
    EXPECT_EQ(forbiddenIncludes(treeWith("objc/b.h", "#include \"../platform/a.h\"\n")).size(), 1u);
    EXPECT_EQ(forbiddenIncludes(treeWith("objc/b.h", "#include \"objc/../platform/a.h\"\n")).size(), 1u);
    EXPECT_EQ(forbiddenIncludes(treeWith("objc/b.h", "  #  include <platform/a.h>\n")).size(), 1u);
    EXPECT_EQ(forbiddenIncludes(treeWith("objc/b.h", "#import \"platform/a.h\"\n")).size(), 1u);
}

TEST(Includes, aNeighbourMayBeNamedAloneAndTheSystemsHeadersPass) {
    EXPECT_THAT(
        forbiddenIncludes(treeWith("objc/b.h", "#include \"a.h\"\n#include <objc/runtime.h>\n#include <span>\n")),
        IsEmpty());
}

TEST(Includes, aQuotedNameThatIsNoFileOfTheTreeIsFound) {
    EXPECT_THAT(forbiddenIncludes(treeWith("objc/b.h", "#include \"rows/a.h\"\n")),
                ElementsAre(Finding{"objc/b.h", 1, "no file of the tree is called rows/a.h from the root"}));
}

TEST(Includes, aSourceOutsideTheLayersIsFound) {
    EXPECT_THAT(forbiddenIncludes(treeWith("plugin/settings/b.cpp", "")),
                ElementsAre(Finding{"plugin/settings/b.cpp", 1,
                                    "the file stands in a folder that has no place among the layers"}));
    EXPECT_EQ(forbiddenIncludes(treeWith("b.cpp", "")).size(), 1u);
}

TEST(Includes, anIncludeInACommentIsNone) {
    EXPECT_THAT(forbiddenIncludes(treeWith("objc/b.h", "// #include \"platform/a.h\"\n")), IsEmpty());
}

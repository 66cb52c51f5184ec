// The project's own tree, held against every check.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/house/checks.h"
#include "tests/house/includes.h"

namespace {

const house::SourceTree& projectTree() {
    static const house::SourceTree tree = house::SourceTree::read(SOURCE_TREE);
    return tree;
}

std::string listed(const house::Findings& findings) {
    std::ostringstream out;
    for (const house::Finding& finding : findings) out << SOURCE_TREE << '/' << finding << '\n';
    return out.str();
}

}  // namespace

TEST(ProjectTree, isTheOneThatWasMeant) {
    EXPECT_NE(projectTree().find("CMakeLists.txt"), nullptr);
    EXPECT_NE(projectTree().find("objc/send.h"), nullptr);
    EXPECT_NE(projectTree().find("tests/house/tree_test.cpp"), nullptr);
}

TEST(ProjectTree, includesGoDownTheLayersOnly) { EXPECT_EQ(listed(forbiddenIncludes(projectTree())), ""); }

TEST(ProjectTree, noFileIsOverlong) { EXPECT_EQ(listed(overlongFiles(projectTree())), ""); }

TEST(ProjectTree, everySourceOpensBySayingWhatItIs) {
    EXPECT_EQ(listed(filesWithoutOpeningComment(projectTree())), "");
}

TEST(ProjectTree, noLineEndsInWhitespace) { EXPECT_EQ(listed(trailingWhitespace(projectTree())), ""); }

TEST(ProjectTree, noLinePointsToANumberedPartOfAnotherText) {
    EXPECT_EQ(listed(numberedReferences(projectTree())), "");
}

TEST(ProjectTree, everyReferenceOfTheDesktopIsStrongOrWeak) { EXPECT_EQ(listed(rawReferences(projectTree())), ""); }

TEST(ProjectTree, everyPropertysVerdictIsLookedAt) { EXPECT_EQ(listed(unheardProperties(projectTree())), ""); }

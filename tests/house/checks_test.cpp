// The checks themselves, on small trees that are wrong on purpose.
#include "tests/house/checks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using house::Finding;
using house::SourceTree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

SourceTree treeOf(const std::string& path, const std::string& text) { return {{{path, house::linesOf(text)}}}; }

std::string emptyLines(std::size_t count) { return std::string(count, '\n'); }

void write(const std::filesystem::path& path, std::string_view text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

TEST(SourceTree, aFileOfTextIsReadByLinesUnderItsPathFromTheRoot) {
    // A folder of its own, whoever runs this at the same time.
    std::string folder = testing::TempDir() + "house_source_tree-XXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    const std::filesystem::path root = folder;
    write(root / "objc" / "send.h", "// Sends.\n\nint x;");
    write(root / "build" / "dev" / "generated.h", "left out");
    write(root / ".git" / "config", "left out");
    write(root / "tests" / "objc" / "data" / "sample.txt", "left out \r\n");
    write(root / "picture.png", std::string_view("\x89PNG\0", 5));
    write(root / "a.cpp", "");

    const SourceTree tree = SourceTree::read(root);
    std::filesystem::remove_all(root);

    ASSERT_EQ(tree.files.size(), 2u);
    EXPECT_EQ(tree.files[0].path, "a.cpp");
    EXPECT_THAT(tree.files[0].lines, IsEmpty());
    EXPECT_EQ(tree.files[1].path, "objc/send.h");
    EXPECT_THAT(tree.files[1].lines, ElementsAre("// Sends.", "", "int x;"));
}

TEST(Length, aFileOf400LinesPasses) { EXPECT_THAT(overlongFiles(treeOf("objc/a.h", emptyLines(400))), IsEmpty()); }

TEST(Length, aFileOf401LinesIsFound) {
    EXPECT_THAT(overlongFiles(treeOf("objc/a.h", emptyLines(401))),
                ElementsAre(Finding{"objc/a.h", 401, "the file is longer than 400 lines: what is it doing?"}));
    EXPECT_EQ(overlongFiles(treeOf("desktop/CMakeLists.txt", emptyLines(401))).size(), 1u);
    EXPECT_EQ(overlongFiles(treeOf("run", "#!/bin/bash" + emptyLines(401))).size(), 1u);
}

TEST(Length, testsAndTextsMayBeLonger) {
    EXPECT_THAT(overlongFiles(treeOf("tests/objc/send_test.cpp", emptyLines(1000))), IsEmpty());
    EXPECT_THAT(overlongFiles(treeOf("docs/ARCHITECTURE.md", emptyLines(1000))), IsEmpty());
}

TEST(OpeningComment, aSourceThatOpensWithCodeIsFound) {
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("objc/a.h", "#pragma once\n// Late.\n")),
                ElementsAre(Finding{"objc/a.h", 1, "the file does not open by saying what it is"}));
}

TEST(OpeningComment, anEmptySourceAndAnEmptyCommentAreFound) {
    EXPECT_EQ(filesWithoutOpeningComment(treeOf("objc/a.cpp", "")).size(), 1u);
    EXPECT_EQ(filesWithoutOpeningComment(treeOf("objc/a.cpp", "// ----\nint x;\n")).size(), 1u);
}

TEST(OpeningComment, aScriptSaysWhatItIsAfterItsInterpreter) {
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("run", "#!/bin/bash\n# Runs it.\n")), IsEmpty());
    EXPECT_EQ(filesWithoutOpeningComment(treeOf("run", "#!/bin/bash\nset -u\n")).size(), 1u);
    EXPECT_EQ(filesWithoutOpeningComment(treeOf("run", "#!/bin/bash\n")).size(), 1u);
    EXPECT_EQ(filesWithoutOpeningComment(treeOf("cmake/A.cmake", "set(A B)\n")).size(), 1u);
}

TEST(OpeningComment, aSourceThatOpensWithACommentPasses) {
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("objc/a.h", "// Sends.\n")), IsEmpty());
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("objc/a.c", "/* Sends. */\n")), IsEmpty());
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("cmake/A.cmake", "# Sets A.\nset(A B)\n")), IsEmpty());
}

TEST(OpeningComment, dataNeedsNone) {
    EXPECT_THAT(filesWithoutOpeningComment(treeOf("CMakePresets.json", "{}\n")), IsEmpty());
}

TEST(TrailingWhitespace, blanksTabsAndCarriageReturnsAtTheEndAreFoundInEveryText) {
    EXPECT_THAT(trailingWhitespace(treeOf("README.md", "one \ntwo\n\t\nfour\r\n")),
                ElementsAre(Finding{"README.md", 1, "the line ends in white space"},
                            Finding{"README.md", 3, "the line ends in white space"},
                            Finding{"README.md", 4, "the line ends in white space"}));
}

TEST(TrailingWhitespace, emptyLinesAndBlanksInsidePass) {
    EXPECT_THAT(trailingWhitespace(treeOf("README.md", "one two\n\n  three\n")), IsEmpty());
}

// The samples are put together from two pieces, so that this file passes the check that it tests.
TEST(NumberedReferences, aPartByItsNumberIsFound) {
    for (const std::string line : {"// See Par"
                                   "t 1.2.",
                                   "as Par"
                                   "ts 2.1 and 2.2 say",
                                   "(par"
                                   "t 10.3)"}) {
        EXPECT_THAT(numberedReferences(treeOf("objc/a.h", "// Fine.\n" + line)),
                    ElementsAre(Finding{"objc/a.h", 2, "the line points to a numbered part of another text"}))
            << line;
    }
}

TEST(NumberedReferences, otherPartsPass) {
    EXPECT_THAT(numberedReferences(treeOf("a.md",
                                          "A part of 1.5 points. Part 2. Parts: 1.2. spare"
                                          "par"
                                          "t 1.2, Party 1.2, Part")),
                IsEmpty());
}

TEST(Properties, oneWhoseVerdictIsLookedAtPasses) {
    EXPECT_THAT(unheardProperties(treeOf("tests/a.cpp", "    EXPECT_TRUE(rc::check([] {\n    }));\n")), IsEmpty());
    EXPECT_THAT(unheardProperties(treeOf("tests/a.cpp", "    const bool holds = rc::check([] {\n")), IsEmpty());
}

TEST(Properties, oneThatNobodyListensToIsFound) {
    EXPECT_THAT(unheardProperties(treeOf("tests/a.cpp", "{\n    rc::check([] {\n    });\n")),
                ElementsAre(Finding{"tests/a.cpp", 2, "the property's verdict is not looked at: EXPECT_TRUE it"}));
}

TEST(RawReferences, handlesOfAnyHeaderOfTheDesktopAreFound) {
    for (const std::string line : {"    id delegate_ = nullptr;", "        id target;", "    objc::Object source_;",
                                   "    mutable objc::Object source_{};  // the list's"}) {
        EXPECT_THAT(rawReferences(treeOf("desktop/notify/a.h", "// A.\n" + line)),
                    ElementsAre(Finding{"desktop/notify/a.h", 2, "the reference is neither strong nor weak"}))
            << line;
    }
}

TEST(RawReferences, pointersBetweenScreensAreFoundUnlessTheySayWhyTheyHold) {
    EXPECT_EQ(rawReferences(treeOf("desktop/uikit/a.h", "    ViewController* contents_ = nullptr;")).size(), 1u);
    EXPECT_EQ(
        rawReferences(treeOf("desktop/quorvel/visual/a.h", "    uikit::Sheet* panel_ = nullptr;  // the window's"))
            .size(),
        1u);
    EXPECT_THAT(rawReferences(treeOf("desktop/uikit/a.h",
                                     "    View* superview_ = nullptr;  // cleared when it goes\n"
                                     "    AnimationContext* outer_;  // outlives this one\n")),
                IsEmpty());
}

TEST(RawReferences, ownersWeakReferencesFunctionsAndOtherFoldersPass) {
    EXPECT_THAT(rawReferences(treeOf("desktop/uikit/a.h",
                                     "    weak::Object delegate_;\n    objc::Strong<> title_;\n"
                                     "    objc::Object title() const { return title_; }\n"
                                     "    View* superview() const { return superview_; }\n"
                                     "    objc::Object init();\n    TableViewCell* cell = nullptr;")),
                IsEmpty());
    EXPECT_THAT(rawReferences(treeOf("platform/a.h", "    id self = nullptr;")), IsEmpty());
    EXPECT_THAT(rawReferences(treeOf("desktop/quorvel/store/a.h", "    Connection* connection_;")), IsEmpty());
}

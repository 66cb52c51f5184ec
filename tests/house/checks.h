// What every file of the project keeps to, as pure functions from the tree to what is wrong with it.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/house/source_tree.h"

namespace house {

// One thing that is wrong. Printed as compilers print theirs, so that editors jump there.
struct Finding {
    std::string path;
    std::size_t line;  // from 1
    std::string what;

    bool operator==(const Finding&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Finding& finding);

using Findings = std::vector<Finding>;

// Sources, CMake lists and scripts of more lines than a reader takes in; tests may list as many cases as there are.
Findings overlongFiles(const SourceTree& tree);

// Sources, CMake lists and scripts that do not say in their first line (the second, after "#!") what they are.
Findings filesWithoutOpeningComment(const SourceTree& tree);

Findings trailingWhitespace(const SourceTree& tree);

// Lines that point to a numbered part of some text that is not in the tree: a comment says itself what it means.
Findings numberedReferences(const SourceTree& tree);

// Properties whose verdict nobody looks at: a test that fails so still passes.
Findings unheardProperties(const SourceTree& tree);

// Members of the desktop's classes that refer to an object without owning it and without knowing when it goes: those of
// the toolkit and the screens that are plain pointers and do not say in a comment that they are "cleared" or that what
// they point to "outlives" them, and every handle, which is a plain pointer, too.
Findings rawReferences(const SourceTree& tree);

}  // namespace house

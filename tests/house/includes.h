// Who may include whom: the layers of the project, read off the include lines.
#pragma once

#include "tests/house/checks.h"

namespace house {

// Include lines that cross the layers, that name no file of the tree though they are quoted, and sources in a folder
// that the layers do not know.
Findings forbiddenIncludes(const SourceTree& tree);

}  // namespace house

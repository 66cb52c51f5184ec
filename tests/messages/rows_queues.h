// The queues of the test: work for the global ones is held until the test wants it to run.
#pragma once

#include <string>
#include <vector>

namespace rowsmessages {

/// The queues of the work that is held, in order: "default", "background".
std::vector<std::string> heldWork();
/// Runs it, on a thread of its own, and waits for the end.
void runHeldWork();

}  // namespace rowsmessages

// Comparing everything derived with the calls, and making it anew.
#pragma once

#include <string>
#include <vector>

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// Findings as sentences; none where everything agrees. Expects a reading transaction.
std::vector<std::string> findContradictions(Connection& connection);

/// Makes kinds, parties, days and all sums from what the calls say. Expects a writing transaction.
void rebuildDerived(Connection& connection);

}  // namespace quorvel::store

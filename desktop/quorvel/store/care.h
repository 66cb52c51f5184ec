// Comparing everything derived with the calls, and making it anew.
#pragma once

#include <string>
#include <vector>

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// What is wrong with the file itself, its pages and indices, at most twenty findings as sentences; none where it is
/// sound.
std::vector<std::string> findDamage(Connection& connection);

/// Findings as sentences, those of findDamage first; none where everything agrees. Expects a reading transaction.
std::vector<std::string> findContradictions(Connection& connection);

/// Makes kinds, parties, days and all sums from what the calls say. Expects a writing transaction.
void rebuildDerived(Connection& connection);

}  // namespace quorvel::store

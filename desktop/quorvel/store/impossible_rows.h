// Rows that no version of this program writes: found, taken out, and numbers given anew.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "desktop/quorvel/store/database.h"

namespace quorvel::store {

/// Findings as sentences: calls, deleted calls and parties that break the rules of call_rules.h, numbers that are used
/// up, and what there is in the file of indices and triggers that is not the log's. Expects a reading transaction.
std::vector<std::string> findImpossible(Connection& connection);

/// Deletes the calls and deleted calls that break the rules otherwise than by their row identifiers, and answers how
/// many. Expects a writing transaction; what
/// is derived is to be made anew after it.
std::int64_t takeOutImpossible(Connection& connection);

/// Drops the indices and triggers on the log's tables that are not its own. Expects a writing transaction.
void dropForeignParts(Connection& connection);

/// Gives parties whose number cannot be another one, and makes the numbers that are given next, and those that rise
/// with each change, such that they can rise. Expects a writing transaction.
void putNumbersRight(Connection& connection);

}  // namespace quorvel::store

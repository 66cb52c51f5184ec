// The questions that a sheet asks before calls are deleted, in words for people.
#pragma once

#include <string>

namespace quorvel {

/// The title for people. Of one of the product's questions before a deletion, the day ("2026-11-18") is replaced by its
/// name as a row says it, and a missing day or name is left out; where `action`, the title of the button that deletes,
/// says that found calls go, so does the question. Any other title is answered as it is. Main thread.
std::string questionForPeople(const std::string& title, const std::string& action);

}  // namespace quorvel

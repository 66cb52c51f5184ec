// The first start of a handset that is the user's own: it is filled with samples once, however often it is interrupted.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/quorvel/directory/data_directory.h"
#include "desktop/quorvel/store/call_store.h"

namespace phone {

/// Notes in the directory that this is its first start, where it is: before the log is made, which tells later starts
/// that the handset has been used. Answers what is wrong.
std::optional<std::string> noteFirstStart(const quorvel::DataDirectory& directory);

/// Fills the log and the contacts with samples where the first start has been noted and not been finished, by this
/// process or by one that was killed. A book that has contacts of the user's own stays as it is, and so does its log.
/// Answers what went wrong; the next start goes on then. Main thread.
std::optional<std::string> finishFirstStart(const quorvel::DataDirectory& directory, quorvel::store::CallStore& log,
                                            std::int64_t now);

}  // namespace phone

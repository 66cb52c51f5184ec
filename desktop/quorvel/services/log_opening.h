// The log of calls as the Phone opens it: whatever became of the file, there is a log, and the user is told.
#pragma once

#include "desktop/quorvel/directory/data_directory.h"
#include "desktop/quorvel/store/call_store.h"

namespace quorvel {

/// Opens the log of the directory. A damaged one is set aside, never deleted, and a new one is begun; one that cannot
/// be written for want of room or permission is opened for reading. Both are said on standard error and by an alert,
/// once the main loop runs. Errors: those of opening a file that is no log of this version, is busy, or cannot be read.
store::Result<store::CallStore> openCalls(const DataDirectory& directory);

/// Tells the user by an alert what to do about a damaged log, where the error is of one; once for each log that was
/// opened. Any thread.
void tellOfDamage(const store::Error& error);

}  // namespace quorvel

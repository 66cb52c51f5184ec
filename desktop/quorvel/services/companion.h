// The companion as the host program brings it up. (The plug-in sees its classes: QVDataController and the others.)
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/quorvel/directory/data_directory.h"
#include "desktop/quorvel/store/call_store.h"

namespace quorvel {

/// Opens calls, settings and texts of the data directory, before the plug-in is loaded. Answers a sentence that says
/// what is wrong, where, and what to do, when there is no log of calls to work on; see openCalls() for what becomes of
/// a damaged one and of one that cannot be written. Whatever else had to be put right is said on standard error.
/// `textsFolder` holds the string tables. Main thread, inside an autorelease pool.
std::optional<std::string> openCompanion(const DataDirectory& directory, const std::filesystem::path& textsFolder);

/// Ends the work on the log and forgets the lists; reading answers nothing and deleting fails from now on. Main
/// thread, when no other thread uses the services.
void closeCompanion();

/// The log that is open; null when none is.
store::CallStore* callStore();

/// Stores a call, under the contact that its address belongs to where it names none, and then posts
/// "com.velmarin.QuorvelNewRecordAddedNotification" on the main thread. Answers its row identifier, or why it could not
/// be stored. Any thread.
store::Result<std::int64_t> recordCall(const store::NewCall& call);

}  // namespace quorvel

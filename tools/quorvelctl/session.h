// What the subcommands share: the data directory, what is opened of it, what is said and announced.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/quorvel/directory/data_directory.h"
#include "desktop/quorvel/store/call_store.h"

namespace tools {

/// The program's status.
enum Status : int {
    succeeded = 0,
    failed = 1,    ///< Something was refused or wrong in the input, or could not be said.
    unusable = 2,  ///< The command line or the data directory cannot be used.
};

/// One run of the program, on one data directory. Main thread.
class Session {
  public:
    /// The folder named with --data, or empty for the user's own.
    std::string dataOption;
    /// What the subcommand that was chosen does; it answers the status.
    std::function<int()> chosen;

    /// Opened at the first call. It ends the program with status `unusable` and a sentence where it cannot be.
    const quorvel::DataDirectory& directory();
    quorvel::store::CallStore& calls();

    /// Tells the programs that have the data directory open. Answers `failed`, with a sentence, where that did not
    /// work.
    int announce(std::string_view name);
    /// The same of a change that has been made: it stays made, so the answer is `succeeded` where it could not be
    /// announced, with a sentence that says so.
    int announceChange(std::string_view name);

  private:
    std::optional<quorvel::DataDirectory> directory_;
    std::optional<quorvel::store::CallStore> calls_;
};

/// Says a sentence on standard error and answers the status.
int complain(const std::string& sentence, Status status = failed);

// The subcommands: each adds itself to the program, and chooses itself when it is named.
void addImport(CLI::App& program, Session& session);
void addGenerate(CLI::App& program, Session& session);
void addList(CLI::App& program, Session& session);
void addGet(CLI::App& program, Session& session);
void addSet(CLI::App& program, Session& session);
void addNotify(CLI::App& program, Session& session);
void addContacts(CLI::App& program, Session& session);
void addDeleted(CLI::App& program, Session& session);
void addUndelete(CLI::App& program, Session& session);
void addBackup(CLI::App& program, Session& session);
void addRestore(CLI::App& program, Session& session);
void addDoctor(CLI::App& program, Session& session);
void addExport(CLI::App& program, Session& session);
void addStats(CLI::App& program, Session& session);

/// Announced where calls came or went by another way than a call: an import, a restored log.
inline constexpr std::string_view databaseRestored = "QuorvelRestoreDatabaseNotification";
inline constexpr std::string_view settingsChanged = "QuorvelReloadSettingsReplaceRecents";

}  // namespace tools

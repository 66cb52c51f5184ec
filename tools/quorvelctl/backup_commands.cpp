// backup and restore: the log as a file of its own, and back.
#include <cstdio>
#include <memory>
#include <string>

#include "desktop/quorvel/store/backup.h"
#include "desktop/quorvel/store/log_files.h"
#include "tools/quorvelctl/progress_bar.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

using quorvel::store::BackupOptions;
using quorvel::store::Existing;

int backUp(Session& session, const std::string& file, bool force) {
    const auto log = session.directory().calls();
    if (session.directory().isNew()) {
        return complain("There is no log of calls in " + session.directory().path().string() +
                        " yet. Name another folder with --data.");
    }
    ProgressBar bar("Backing up");
    BackupOptions options;
    options.existing = force ? Existing::replaced : Existing::refused;
    options.progress = [&](double share) { bar.show(share); };
    const auto done = quorvel::store::backUp(log, file, options);
    bar.wipe();
    if (!done) {
        std::error_code ignored;
        const bool isTaken = !force && std::filesystem::is_regular_file(file, ignored);
        return complain(done.error().message + (isTaken ? " (--force replaces it.)" : ""));
    }
    std::printf("The log is backed up in %s. Put it back with: quorvelctl restore %s\n", file.c_str(), file.c_str());
    return succeeded;
}

int restore(Session& session, const std::string& file) {
    const auto log = session.directory().calls();
    ProgressBar bar("Restoring");
    BackupOptions options;
    options.progress = [&](double share) { bar.show(share); };
    const auto done = quorvel::store::restore(file, log, options);
    bar.wipe();
    if (!done) return complain(done.error().message);
    const auto& restored = *done;
    for (const auto& finding : restored.mended) complain("Put right: " + finding);
    std::printf("%lld calls restored.\n", static_cast<long long>(restored.calls));
    if (!restored.former.empty()) {
        std::printf("The %slog of before is kept as %s\n", restored.wasDamaged ? "damaged " : "",
                    restored.former.c_str());
    }
    for (const auto& removed : restored.removed) {
        std::printf("%zu former logs are kept; the older %s was removed.\n", quorvel::store::mostFormerLogs,
                    removed.c_str());
    }
    if (restored.wasDamaged) std::puts("Start a Phone that is open anew: it still has the damaged file.");
    return session.announceChange(databaseRestored);
}

}  // namespace

void addBackup(CLI::App& program, Session& session) {
    struct Options {
        std::string file;
        bool force = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("backup", "Copies the log to a file, while a Phone may go on using it");
    command->add_option("FILE", options->file, "The backup, a database of its own")->required();
    command->add_flag("--force", options->force, "Replaces a file that is there");
    command->footer("Example:\n  quorvelctl backup calls-$(date +%F).quorvel");
    command->callback([&session, options] {
        session.chosen = [&session, options] { return backUp(session, options->file, options->force); };
    });
}

void addRestore(CLI::App& program, Session& session) {
    auto file = std::make_shared<std::string>();
    auto* command =
        program.add_subcommand("restore", "Makes the log what a backup holds; a Phone that is open follows");
    command->add_option("FILE", *file, "What \"backup\" has written")->required();
    command->footer(
        "The backup is checked first. The log of before is kept beside the new one, and its name is printed;\n"
        "restore that file to take the change back.\n\n"
        "Example:\n  quorvelctl restore calls-2024-06-15.quorvel");
    command->callback([&session, file] { session.chosen = [&session, file] { return restore(session, *file); }; });
}

}  // namespace tools

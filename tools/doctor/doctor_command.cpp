// doctor: looks at everything that a handset owns, says what is wrong, and mends it when asked.
#include <cstdio>
#include <memory>

#include "tools/doctor/check.h"
#include "tools/quorvelctl/colour.h"
#include "tools/quorvelctl/session.h"

namespace tools {
namespace {

/// Beside the program, as it is built and as it is installed.
std::filesystem::path textsFolder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().parent_path() /
           "root/Applications/Quorvel.app";
}

void say(const Organ& organ, const char* state, const Sentences& sentences) {
    for (const auto& sentence : sentences) std::printf("%-9s %s  %s\n", organ.name(), state, sentence.c_str());
}

/// Whether the organ is well in the end.
bool look(Session& session, Organ& organ, bool mends) {
    const auto findings = organ.examine();
    if (findings.empty()) {
        std::printf("%-9s %s\n", organ.name(), coloured(Colour::green, "good").c_str());
        return true;
    }
    say(organ, coloured(Colour::red, "wrong").c_str(), findings);
    if (!mends) return false;
    say(organ, coloured(Colour::yellow, "mended").c_str(), organ.mend());
    if (const char* announcement = organ.announcement()) session.announceChange(announcement);
    const auto left = organ.examine();
    if (left.empty())
        std::printf("%-9s %s\n", organ.name(), coloured(Colour::green, "good").c_str());
    else
        say(organ, coloured(Colour::red, "still wrong").c_str(), left);
    return left.empty();
}

int examine(Session& session, bool mends) {
    const auto& directory = session.directory();
    bool isWell = true;
    const std::unique_ptr<Organ> organs[] = {callsOrgan(directory), contactsOrgan(directory), settingsOrgan(directory),
                                             textsOrgan(textsFolder())};
    for (const auto& organ : organs) isWell &= look(session, *organ, mends);
    if (isWell) return succeeded;
    if (!mends) return complain("Have it mended with \"quorvelctl doctor --mend\"; what is changed is kept as a copy.");
    return failed;
}

}  // namespace

void addDoctor(CLI::App& program, Session& session) {
    auto mends = std::make_shared<bool>(false);
    auto* command = program.add_subcommand("doctor", "Examines calls, contacts, settings and texts, and mends them");
    command->add_flag("--mend", *mends, "Mends what can be mended; a copy of it is kept as it was");
    command->footer(
        "A line for each finding. The status is 0 where all is well in the end, 1 where something is wrong.\n"
        "--mend also brings back the calls of a log that was damaged and that the Phone has set aside.\n\n"
        "Examples:\n  quorvelctl doctor\n  quorvelctl doctor --mend");
    command->callback([&session, mends] { session.chosen = [&session, mends] { return examine(session, *mends); }; });
}

}  // namespace tools

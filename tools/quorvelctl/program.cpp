// The subcommands, in the order of --help.
#include "tools/quorvelctl/program.h"

namespace tools {

void describeProgram(CLI::App& program, Session& session) {
    program.name("quorvelctl");
    program.description("The handset's call log from the command line. A Phone that is open follows each change.");
    program.require_subcommand(1);
    program.add_option("--data", session.dataOption, "Folder of one handset (default: the user's own)")
        ->type_name("DIR");
    program.fallthrough();
    for (auto* add : {addImport, addExport, addList, addStats, addBackup, addRestore, addDeleted, addUndelete,
                      addContacts, addGet, addSet, addDoctor, addGenerate, addNotify})
        add(program, session);
    program.footer(
        "Each subcommand has a --help of its own, with examples.\n\n"
        "Examples:\n"
        "  quorvelctl import calls.csv\n"
        "  quorvelctl list --filter missed\n"
        "  quorvelctl backup calls.quorvel");
}

}  // namespace tools

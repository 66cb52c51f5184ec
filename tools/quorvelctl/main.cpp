// quorvelctl: the call log from the command line.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "objc/strong.h"
#include "tools/quorvelctl/session.h"

int main(int argumentCount, char** arguments) {
    const objc::AutoreleasePool pool;
    tools::Session session;
    CLI::App program{"The handset's call log from the command line. A Phone that is open follows each change."};
    program.name("quorvelctl");
    program.require_subcommand(1);
    program.add_option("--data", session.dataOption, "Folder of one handset (default: the user's own)")
        ->type_name("DIR");
    program.fallthrough();
    for (auto* add : {tools::addImport, tools::addGenerate, tools::addList, tools::addGet, tools::addSet,
                      tools::addNotify, tools::addContacts, tools::addDeleted, tools::addUndelete, tools::addBackup,
                      tools::addRestore, tools::addDoctor, tools::addExport, tools::addStats})
        add(program, session);
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? tools::succeeded : tools::unusable;
    }
    const int status = session.chosen();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    return tools::complain("The output cannot be written: " + std::string(std::strerror(errno)) + '.');
}

// quorvelctl: the call log from the command line.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "desktop/files/private_files.h"
#include "desktop/foundation/process.h"
#include "desktop/uncaught/uncaught_exceptions.h"
#include "objc/strong.h"
#include "tools/quorvelctl/program.h"

int main(int argumentCount, char** arguments) {
    uncaught::openStandardDescriptors();
    uncaught::reportExceptions("quorvelctl", STDERR_FILENO);
    files::makeNewFilesPrivate();
    foundation::takeArguments(arguments);
    const objc::AutoreleasePool pool;
    tools::Session session;
    CLI::App program;
    tools::describeProgram(program, session);
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? tools::succeeded : tools::unusable;
    }
    const int status = session.chosen();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    return tools::complain("The output cannot be written: " + std::string(std::strerror(errno)) + '.');
}

// Taking addresses.
#include "desktop/phone/url_opening.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "desktop/files/private_files.h"
#include "desktop/phone/calling_screen.h"
#include "desktop/phone/handset.h"

namespace phone {
namespace {

/// In the child. Only what is safe between fork and exec.
[[noreturn]] void becomeProgram(char* const* arguments, int failure) {
    // The child's child is nobody's to wait for.
    const pid_t program = fork();
    if (program == 0) {
        setsid();
        files::restoreCallersMask();
        dup2(STDERR_FILENO, STDOUT_FILENO);
        execvp(arguments[0], arguments);
    }
    if (program <= 0) {
        const int number = errno;
        const ssize_t ignored = ::write(failure, &number, sizeof number);
        _exit(ignored == sizeof number ? 127 : 126);
    }
    _exit(0);
}

}  // namespace

std::optional<std::string> startProgram(const std::vector<std::string>& programAndArguments) {
    std::vector<char*> arguments;
    for (const auto& each : programAndArguments) arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);
    const auto trouble = [&](int number) {
        return programAndArguments.front() + " cannot be started: " + std::strerror(number) +
               ". Install it, or start the Phone without --open-urls.";
    };
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return trouble(errno);
    const pid_t child = fork();
    if (child == 0) becomeProgram(arguments.data(), ends[1]);
    const int forked = errno;
    ::close(ends[1]);
    int number = 0;
    // Ends without a byte once the program runs.
    ssize_t count = 0;
    while (child > 0 && (count = ::read(ends[0], &number, sizeof number)) < 0 && errno == EINTR) continue;
    ::close(ends[0]);
    if (child < 0) return trouble(forked);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
    return count == sizeof number ? std::optional(trouble(number)) : std::nullopt;
}

bool takeAddress(const std::string& address, bool handsOver) {
    if (handsOver) {
        // A scheme stands in front, so that the opener takes nothing for an option.
        const bool hasScheme = address.find(':') != std::string::npos && !address.starts_with('-');
        const auto trouble =
            hasScheme ? startProgram({"xdg-open", address}) : std::optional(address + " is no address.");
        if (trouble) reportLine(*trouble);
        return !trouble;
    }
    if (const auto opened = readAddress(address)) CallingScreen::show(*opened);
    return true;
}

}  // namespace phone

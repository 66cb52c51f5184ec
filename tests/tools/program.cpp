// Running quorvelctl.
#include "tests/tools/program.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace tools_tests {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> Outcome::lines() const {
    std::vector<std::string> found;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) found.push_back(line);
    return found;
}

Directory::Directory() {
    std::string name = (std::filesystem::temp_directory_path() / "quorvelctl-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the test");
    path_ = name;
}

Directory::~Directory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path Directory::write(const std::string& name, const std::string& content) const {
    std::ofstream stream(file(name), std::ios::binary);
    stream << content;
    if (!stream.flush()) throw std::runtime_error("the test's file could not be written");
    return file(name);
}

Outcome Directory::run(const std::string& arguments, const std::filesystem::path& output) const {
    const auto quoted = [](const std::filesystem::path& path) { return '\'' + path.string() + '\''; };
    const auto errors = file("errors");
    const std::string command = "LC_ALL=C.UTF-8 TZ=UTC timeout 60 " + quoted(QUORVELCTL_PROGRAM) + " --data " +
                                quoted(data()) + ' ' + arguments + " >" + quoted(output) + " 2>" + quoted(errors) +
                                " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(file("output")), contentOf(errors)};
}

Outcome Directory::runOnTerminal(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words{"timeout", "--foreground", "60", QUORVELCTL_PROGRAM, "--data", data().string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (auto& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child < 0) throw std::runtime_error("no terminal for the test");
    if (child == 0) {
        execvp(pointers[0], pointers.data());
        _exit(127);
    }
    Outcome outcome;
    char bytes[4096];
    // Reading fails once the program has closed its side.
    for (ssize_t count; (count = read(terminal, bytes, sizeof bytes)) > 0;)
        outcome.output.append(bytes, static_cast<std::size_t>(count));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

}  // namespace tools_tests

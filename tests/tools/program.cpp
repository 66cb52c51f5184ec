// Running quorvelctl.
#include "tests/tools/program.h"

#include <sys/wait.h>

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

Outcome Directory::run(const std::string& arguments) const {
    const auto quoted = [](const std::filesystem::path& path) { return '\'' + path.string() + '\''; };
    const auto output = file("output");
    const auto errors = file("errors");
    const std::string command = "LC_ALL=C.UTF-8 TZ=UTC timeout 60 " + quoted(QUORVELCTL_PROGRAM) + " --data " +
                                quoted(data()) + ' ' + arguments + " >" + quoted(output) + " 2>" + quoted(errors) +
                                " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output), contentOf(errors)};
}

}  // namespace tools_tests

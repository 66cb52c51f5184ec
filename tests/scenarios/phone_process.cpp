// Running the Phone.
#include "tests/scenarios/phone_process.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "desktop/quorvel/store/call_store.h"
#include "desktop/quorvel/store/import_session.h"

namespace scenarios {
namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

}  // namespace

std::vector<std::string> Outcome::linesOf(const std::string& beginning) const {
    std::vector<std::string> found;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(beginning)) found.push_back(line);
    return found;
}

Handset::Handset() {
    std::string name = std::filesystem::temp_directory_path() / "handset-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
    directory_ = name;
}

Handset::~Handset() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void Handset::fill(const std::vector<quorvel::store::NewCall>& calls) const {
    auto log = quorvel::store::CallStore::open(file("calls.db"));
    if (!log) throw std::runtime_error(log.error().message);
    auto session = (*log).beginImport();
    if (!session) throw std::runtime_error(session.error().message);
    for (const auto& call : calls)
        if (const auto added = (*session).add(call); !added) throw std::runtime_error(added.error().message);
    if (const auto finished = (*session).finish(); !finished) throw std::runtime_error(finished.error().message);
}

Outcome Handset::run(const std::string& script, const std::string& options) const {
    std::ofstream(file("script.txt")) << script;
    const auto quoted = [](const std::filesystem::path& path) { return '\'' + path.string() + '\''; };
    const std::string command = "LC_ALL=C.UTF-8 TZ=UTC timeout 60 " + quoted(PHONE_PROGRAM) + " --data " +
                                quoted(directory_) + " --script " + quoted(file("script.txt")) + ' ' + options + " >" +
                                quoted(file("out")) + " 2>" + quoted(file("errors")) + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(file("out")), contentOf(file("errors"))};
}

}  // namespace scenarios

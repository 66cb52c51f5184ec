// Running the Phone.
#include "tests/scenarios/phone_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

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

std::string quoted(const std::filesystem::path& path) { return '\'' + path.string() + '\''; }

constexpr int bound = 120;

/// The Phone with these options, up to its script.
std::string commandOf(int seconds, const std::string& options, const std::filesystem::path& program = PHONE_PROGRAM) {
    const char* const image = std::getenv("QUORVEL_TEST_PLUGIN");
    const bool other = image && *image && options.find("--no-plugin") == std::string::npos;
    return "LC_ALL=C.UTF-8 TZ=UTC exec timeout " + std::to_string(seconds) + ' ' + quoted(program) +
           (other ? " --plugin " + quoted(image) : "") + ' ' + options + " --script ";
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
    return carryOut(script, commandOf(bound, "--data " + quoted(directory_) + ' ' + options));
}

Outcome Handset::runIn(const std::string& environment, const std::string& script, const std::string& options) const {
    return carryOut(script, environment + ' ' + commandOf(bound, options));
}

Outcome Handset::runCopy(const std::filesystem::path& program, const std::string& script) const {
    return carryOut(script, commandOf(bound, "--data " + quoted(directory_), program));
}

Outcome Handset::carryOut(const std::string& script, const std::string& phone) const {
    std::ofstream(file("script.txt")) << script;
    const std::string command = phone + quoted(file("script.txt")) + " >" + quoted(file("out")) + " 2>" +
                                quoted(file("errors")) + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(file("out")), contentOf(file("errors"))};
}

LivePhone::LivePhone(const Handset& handset) : errors_(handset.file("errors")) {
    int in[2];
    int out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
    constexpr int longBound = 600;
    const std::string command = commandOf(longBound, "--data " + quoted(handset.file(""))) + "- 2>" + quoted(errors_);
    process_ = fork();
    if (process_ == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    input_ = in[1];
    output_ = out[0];
}

LivePhone::~LivePhone() {
    if (input_ >= 0) close(input_);
    close(output_);
    if (process_ > 0) {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
}

void LivePhone::say(const std::string& line) {
    const std::string text = line + '\n';
    std::signal(SIGPIPE, SIG_IGN);
    if (write(input_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) fail();
}

bool LivePhone::readLine(std::string& line) {
    for (;;) {
        if (const auto end = pending_.find('\n'); end != std::string::npos) {
            line = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            return true;
        }
        char bytes[4096];
        const ssize_t count = read(output_, bytes, sizeof bytes);
        if (count <= 0) return false;
        pending_.append(bytes, static_cast<std::size_t>(count));
    }
}

/// The beginning of a second showing tells that the first one is whole.
Outcome LivePhone::show() {
    say("wait");
    say("show");
    say("now show");
    Outcome shown;
    int screens = 0;
    for (std::string line; screens < 2;) {
        if (!readLine(line)) fail();
        if (line.starts_with("screen ")) ++screens;
        if (screens == 1) shown.output += line + '\n';
    }
    shown.status = 0;
    return shown;
}

void LivePhone::fail() { throw std::runtime_error("the Phone has ended: " + finish().errors); }

Outcome LivePhone::finish() {
    if (input_ >= 0) close(std::exchange(input_, -1));
    Outcome ended;
    for (std::string line; readLine(line);) ended.output += line + '\n';
    int status = 0;
    if (process_ > 0) waitpid(std::exchange(process_, -1), &status, 0);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ended.errors = contentOf(errors_);
    return ended;
}

}  // namespace scenarios
